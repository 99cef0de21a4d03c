#!/usr/bin/env bash
# Drives the program of records as a user does: what its verbs print, and how they fail.
# Usage: forms.sh QELFORMS
# shellcheck disable=SC2317
set -uo pipefail

forms=$1
# shellcheck source=tests/cli/support.sh
. "$(dirname "${BASH_SOURCE[0]}")/support.sh"

export XDG_DATA_HOME=$work/data
verb() { "$forms" "$1" --database "$database" "${@:2}"; }
database=notes.db

printf 'one\r\n/b1two\n' >body.qel
printf '{\\rtf1 \\i x\\i0\\par y}' >body.rtf
gives "a record from arguments" $'1\n' verb add --title '/b1Té' --body ''
gives "a record from a file" $'2\n' verb add --body-file body.qel
gives "a record from RTF" $'3\n' verb add --title 3 --body-file - <body.rtf
gives "the list" $'1\tTé\n2\tone two\n3\t3\n' verb list
gives "what is found" $'1\tTé\n' verb find TÉ
verb find b1 >found && fail "find succeeds without a hit"
[[ ! -s found ]] || fail "find prints without a hit: $(<found)"
gives "markup" 'one/nl/b1two/b0/nl' verb show 2
gives "an edit" '' verb edit 2 --title '[a,b]'
gives "the other text stays" $'[a,b]\none\ntwo\n' verb show 2 --as text
gives "two records" $'3\nx\ny\n\nTé\n' verb export 3 1 --as text
gives "each with its own formats" '3/nl/i1x/i0/nly/nl/nl/b1Té/b0/nl' verb export 3 1 --as qel
gives "to a file" '' verb export --as rtf -o all.rtf
grep -qF '\b1 two' all.rtf || fail "no RTF in all.rtf"

gives "tags" '' verb tag 1 2 --add 'green  tea' --add Later
gives "tags again, dropped in any case" '' verb tag 2 --add 'Green Tea' --drop LATER
gives "tags of a record" $'2\tgreen tea\n' verb tag 2
gives "all tags" $'green tea\nLater\n' verb tag
gives "what has a tag, in order" $'2\t[a,b]\n1\tTé\n' verb list --tag 'GREEN TEA' --sort title
gives "nothing else is found" $'1\tTé\n' verb find té --tag later
gives "removal" '' verb remove 1 3
gives "what is left" $'2\t[a,b]\n' verb list
gives "the trash" $'3\t3\n' bash -c "'$forms' trash -d notes.db --reverse | head -n 1; exit 0"
gives "back from the trash, tags and all" $'1\tgreen tea\n1\tLater\n' \
  bash -c "'$forms' restore 1 -d notes.db && '$forms' tag 1 -d notes.db"
gives "a duplicate" $'4\n' verb duplicate 1
gives "for good" '' verb remove --for-good 1 4
gives "an empty trash" '' verb empty-trash
gives "nothing there" '' verb trash

printf '<title>Caf\xe9</title><meta charset=latin1><p>a<p>b' >page.html
printf "%s" "{\\rtf1\\ansicpg1251{\\info{\\title \\'cf}}x\\par y}" >named.rtf
printf 'a /b1\r\n\r\nb\n' >plain.txt
gives "the user's own file, and many files" $'1\n2\n3\n4\n' \
  "$forms" add --files page.html named.rtf plain.txt body.qel
gives "titles and lines" 'Café/nla/nlb/nl/nlП/nlx/nly/nl/nlplain/nla ~/b1/nl/nlb/nl/nlbody/nlone/nl/b1two/b0/nl' \
  "$forms" export
breaks 1 "none.txt: No such file or directory; no file was added" "$forms" add --files body.qel none.txt
printf 'GIF8\0\1' >picture.txt
breaks 1 "cannot import picture.txt: it is not text" "$forms" add --files picture.txt
gives "none of them was added" 4 bash -c "'$forms' list | wc -l | tr -d '\n'"
gives "the format of a file's ending" '' "$forms" export 3 4 -o page.HTM --title 'a<b'
[[ $(grep -v -e meta -e '^<body' page.HTM) == '<!DOCTYPE html>
<html>
<head>
<title>a&lt;b</title>
</head>
<h1>plain</h1>
<p>a /b1</p><p><br></p><p>b</p>
<h1>body</h1>
<p>one</p><p><b>two</b></p>
</body>
</html>' ]] || fail "HTML: $(<page.HTM)"

while IFS='|' read -r status message arguments; do
  read -ra words <<<"$arguments"
  breaks "$status" "$message" "$forms" "${words[@]}"
done <<'END'
1|cannot open none.db: No such file|edit 1 -d none.db --title x
1|cannot open body.rtf: file is not a database|list -d body.rtf
1|cannot open .: Is a directory|add -d . --title x
1|there is no record 9|remove 2 9 -d notes.db
1|cannot read none: No such file|edit 2 --body-file none -d notes.db
1|cannot write none/x.rtf: No such file|export -o none/x.rtf -d notes.db
2|x.doc: its name ends in none of .rtf, .html, .txt, .pdf, .svg, .qel|export -o x.doc -d notes.db
2|no record is named|tag --add x -d notes.db
2|--title excludes --files|add --title x --files y -d notes.db
2|neither a title nor a body|edit 2 -d notes.db
2|--title excludes --title-file|edit 2 -d notes.db --title x --title-file y
2|pdf not in|show 2 --as pdf -d notes.db
END
[[ ! -e none.db ]] || fail "a database that was only to be read is there now"

head -c 3000000 /dev/zero | tr '\0' x >big.qel
limited() (
  ulimit -f 2000 && verb edit 2 --body-file big.qel
)
breaks 1 "cannot write notes.db: File too large" limited
gives "what did not fit leaves the rest" $'[a,b]\none\ntwo\n' verb show 2 --as text
verb edit 2 --body-file big.qel
gives "a big text" 3000011 bash -c "'$forms' show 2 -d notes.db | wc -c | tr -d '\n'"

if "$forms" --help | grep -qe --demo; then
  env -u DISPLAY -u WAYLAND_DISPLAY "$forms" --demo picture.png demo.db 2>demo.log ||
    fail "the demo ended with $?: $(<demo.log)"
  breaks 2 "'--bogus' is not an option" "$forms" demo.db --bogus
  gives "PDF without a display" '' env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM \
    "$forms" export -d notes.db -o notes.pdf --title Notes
  gives "a document" %PDF head -c 4 notes.pdf
  gives "a picture of the demo" PNG bash -c 'head -c 4 picture.png | tail -c 3'
  gives "what the demo has typed" $'6\tShopping\n' \
    bash -c "'$forms' find 'ripe) and' -d demo.db | cut -f 1-2"
fi

# What the help says is in the manual, and what completion offers is what the help says.
# shellcheck source=/dev/null
. "$here/../../apps/qelforms/completion.bash"
sed 's/\\-/-/g' "$here/../../docs/qelforms.1" >manual
for verb in ${_qelforms_verbs:?}; do
  grep -qE "^\.It Cm ${verb}( |$)" manual || fail "$verb is not in the manual"
  "$forms" "$verb" --help | sed '/^Examples/,$d' | grep -oE -- '--[a-z][a-z-]+' | sort -u >options
  COMP_WORDS=(qelforms "$verb" --) COMP_CWORD=2 && _qelforms
  printf '%s\n' "${COMPREPLY[@]}" | sort | diff - options >differences ||
    fail "completion of $verb: $(<differences)"
  while read -r option; do
    grep -qE -- "^\.It.* ${option#-}( |$)" manual || fail "$option of $verb is not in the manual"
  done <options
done
verbs=$("$forms" --help | sed -n '/^Subcommands/,/^Examples/s/^  \([a-z-][a-z-]*\) .*/\1/p')
[[ ${verbs//$'\n'/ } == "$_qelforms_verbs" ]] || fail "verbs: $verbs"
COMP_WORDS=(qelforms re) COMP_CWORD=1 && _qelforms
[[ ${COMPREPLY[*]} == 'remove restore' ]] || fail "completion: ${COMPREPLY[*]}"
if command -v mandoc >/dev/null; then
  mandoc -T lint -W warning "$here/../../docs/qelforms.1" || fail "the manual has faults"
fi

finish

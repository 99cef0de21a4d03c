#!/usr/bin/env bash
# Drives the program of records as a user does: what its verbs print, and how they fail.
# Usage: forms.sh QELFORMS
# shellcheck disable=SC2317
set -uo pipefail

forms=$1
# shellcheck source=tests/cli/support.sh
. "$(dirname "${BASH_SOURCE[0]}")/support.sh"

verb() { "$forms" "$1" --database "$database" "${@:2}"; }
database=notes.db

printf 'one\r\n/b1two\n' >body.qel
printf '{\\rtf1 \\i x\\i0\\par y}' >body.rtf
gives "a record from arguments" $'1\n' verb add --title '/b1Té' --body ''
gives "a record from a file" $'2\n' verb add --body-file body.qel
gives "a record from RTF" $'3\n' verb add --title 3 --body-file - <body.rtf
gives "the list" $'1\tTé\n2\t\n3\t3\n' verb list
gives "what is found" $'1\tTé\n' verb find TÉ
gives "nothing found" '' verb find b1
gives "markup" 'one/nl/b1two/b0/nl' verb show 2
gives "an edit" '' verb edit 2 --title '[a,b]'
gives "the other text stays" $'[a,b]\none\ntwo\n' verb show 2 --as text
gives "two records" $'3\nx\ny\n\nTé\n' verb export 3 1 --as text
gives "each with its own formats" '3/nl/i1x/i0/nly/nl/nl/b1Té/b0/nl' verb export 3 1 --as qel
gives "to a file" '' verb export --as rtf -o all.rtf
grep -qF '\b1 two' all.rtf || fail "no RTF in all.rtf"
gives "removal" '' verb remove 1 3
gives "what is left" $'2\t[a,b]\n' verb list

while IFS='|' read -r status message arguments; do
  read -ra words <<<"$arguments"
  breaks "$status" "$message" "$forms" "${words[@]}"
done <<'END'
1|cannot open none.db: No such file|edit 1 -d none.db --title x
1|cannot open body.rtf: file is not a database|list -d body.rtf
1|cannot open .: Is a directory|add -d . --title x
1|there is no record 9|remove 2 9 -d notes.db
1|cannot read none: No such file|edit 2 --body-file none -d notes.db
1|cannot write none/x: No such file|export -o none/x -d notes.db
2|--database is required (see 'qelforms list --help')|list
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
  gives "a picture of the demo" PNG bash -c 'head -c 4 picture.png | tail -c 3'
  gives "what the demo has typed" $'4\tShopping\n' \
    bash -c "'$forms' find 'ripe) and' -d demo.db | cut -f 1-2"
fi

finish

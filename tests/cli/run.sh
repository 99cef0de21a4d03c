#!/usr/bin/env bash
# Drives the command as a user does: what it writes, where, and how it fails.
# Usage: run.sh QEL
# shellcheck disable=SC1003,SC2317
set -uo pipefail

qel=$1
# shellcheck source=tests/cli/support.sh
. "$(dirname "${BASH_SOURCE[0]}")/support.sh"

# piped INPUT OPTION...: converts what printf prints for INPUT.
piped() {
  # shellcheck disable=SC2059
  printf "$1" | "$qel" convert "${@:2}"
}

no_rest_in() {
  [[ -z $(find "$1" -name '.qel-*') ]] || fail "a temporary file stays behind in $1"
}

echo "== formats =="
gives "runs" '[
{"text":"a\"","bold":true,"italic":false,"underline":false,"small_caps":false,"strike_through":false,"superscript":false,"subscript":false,"font":0,"color":0,"line_codes_before":0},
{"text":"/b1","bold":false,"italic":false,"underline":false,"small_caps":true,"strike_through":false,"superscript":false,"subscript":false,"font":2,"color":3,"line_codes_before":1},
{"text":"","bold":false,"italic":false,"underline":false,"small_caps":false,"strike_through":false,"superscript":false,"subscript":false,"font":0,"color":0,"line_codes_before":2}
]
' piped '/b1a"/b0/nl/c1/f2/y3~/b1/nl\r\n\n' --to segments
gives "simple RTF, and RTF read by its first bytes" '{\rtf1 \f0 \b1 x\b0 \par }' \
  piped ' {\\rtf1\\b x\\b0\\par}' --to simple-rtf
gives "RTF to markup" '/b1x/b0é€' piped '{\\rtf1\\b x\\b0 \xe9\\u8364?}' --to qel
gives "RTF to body" '\b1 x\b0 ' piped '{\\rtf1\\b x}' --to rtf-body
gives "RTF keeps fonts and sizes" '{\rtf1\ansi\ansicpg1252\deff0{\fonttbl{\f0 Arial;}{\f1 Zed;}}{\colortbl ;\red0\green0\blue0;}\cf1\fs20 a\f1\fs40 b}' \
  piped '{\\rtf1{\\fonttbl{\\f0 Arial;}{\\f4 Zed;}}\\fs20 a\\f4\\fs40 b}' --to rtf
gives "text to text" $'/b1\ta\nb\n' piped '/b1\ta\r\nb\n' --from text --to text
gives "markup to HTML" 'a<b> &lt;</b><br>c' piped 'a/b1 </b0/nlc' --to html
gives "HTML as a document with classes" $'qel-y3\nqel-y3\n</p>\n' bash -c "printf '/y3a' |
  $qel convert --to html --html-document --html-classes --html-paragraphs | grep -oE 'qel-y3|</p>'"
if "$qel" convert --from html --to qel </dev/null 2>/dev/null; then
  gives "HTML by its first bytes" '/b1a/nl/b0b' piped '<p><b>a</b><p>b' --to qel
fi
gives "the shortest markup" '/b1ab/p1c/r0d/b0' piped '/b1a/b0/b1b/p1c/r0d/b0\n' --to qel --normalize
for misfit in '--to rtf --normalize:--to qel' '--to qel --html-classes:--to html' '--from qel --to text --links:--from rtf'; do
  read -ra words <<<"${misfit%:*}"
  breaks 2 "${words[-1]} needs ${misfit#*:}" "$qel" convert "${words[@]}"
done
extras='{\\rtf1 a{\\footnote n}{\\header h\\par}{\\field{\\fldinst HYPERLINK "x:y"}{\\fldrslt t}}{\\pict 00}'
gives "notes, headers and links on request" $'a [n]\nh\nt (x:y)' \
  piped "$extras" --to text --notes --headers --links
breaks 0 '1 picture, 1 note, 1 header, 1 link; the input breaks off' piped "$extras" --to text --report
breaks 0 '"broken_off":true,"dropped":{"pictures":1,' piped "$extras" --to text --report=json
breaks 1 'qel: cannot convert standard input: the input is neither text nor RTF nor HTML, but binary data' piped '\x89PNG\r\n\x1a\n\0\0' --to text
gives "what only looks binary" '%PDF-1' piped '%%PDF-1' --from text --to text

echo "== switches =="
for input in 'a\tb/nlc/b1 /nl/b0' '{\\rtf1 a\\tab b\\par c\\b  \\par}'; do
  gives "kept: $input" $'a\tb\nc \n' piped "$input" --to text
  gives "field: $input" 'a b c ' piped "$input" --to text --field
  gives "dropped: $input" 'abc ' piped "$input" --to text --no-recognize-crlf --no-recognize-tabs
  gives "tabs: $input" $'a b\nc \n' piped "$input" --to text --tabs-to-space
  gives "field but tabs: $input" $'a\tb c ' piped "$input" --recognize-tabs --to text --field
done

echo "== bytes =="
gives "UTF-8 with mark" 'é😀' piped '\xef\xbb\xbfé😀' --to text
gives "UTF-16, big endian, a lone surrogate" 'a�' piped '\xfe\xff\0a\xd8\0' --to text
gives "RTF in UTF-16" 'a' piped '\xff\xfe{\0\\\0r\0t\0f\0001\0 \0a\0}\0' --to qel
gives "bytes of code page 1252, overlong, surrogate, cut off" $'é€À¯í\xc2\xa0€â‚' \
  piped '\xe9\x80\xc0\xaf\xed\xa0\x80\xe2\x82' --to text
gives "RTF out in code page 1252" 'a\'"'e9\\u937?\\u-10179?\\u-8704?" piped 'aéΩ😀' --to rtf-body

echo "== tables =="
gives "options" '#1' bash -c "printf x | $qel convert --to rtf --color 4=#0102FE --color 5=66051 \
  --font 4=Zoé --font-size 10.75 | sed -n 's/.*{.f4 Zo.*e9;}.*blue0;.red1.green2.blue254;.red3.green2.blue1;.*fs22 x}}$/#1/p' | tr -d '\n'"
"$qel" tables --font 4=Zed --font-size 7 --color 1=255 >tables.txt
gives "records come back, options win" "$(sed '1s/Zed/Yod/;1s/7$/9/' tables.txt)"$'\n' \
  "$qel" tables --font 4=Yod --font-size 9 --tables tables.txt
gives "RTF has the colours of records" 1 bash -c "printf x | $qel convert --to rtf --tables tables.txt |
  grep -c 'colortbl.red0.green0.blue0;.red255.green0.blue0;' | tr -d '\n'"
echo nonsense >bad.txt
breaks 1 'bad.txt: line 1' "$qel" tables --tables bad.txt

echo "== usage =="
printf 'a/b1b' >a.qel
printf '{\\rtf1 r}' >R.RTF
printf '/b1' >t.txt
breaks 2 "required (see 'qel --help')" "$qel"
breaks 2 "'--too' is not an option (see 'qel convert --help')" "$qel" convert --too=rtf a.qel
breaks 2 'excludes' "$qel" convert a.qel --to qel -o x -d y
breaks 2 '-d DIR' "$qel" convert a.qel t.txt --to qel
breaks 2 'both become out/a.txt' "$qel" convert a.qel sub/a.rtf --to text -d out
breaks 2 'overwrite' "$qel" convert a.qel R.RTF --to qel -d .
breaks 2 "'10=x'" "$qel" tables --font 10=x
[[ ! -e out ]] || fail "a usage error made a folder"
gives "a usage error writes nothing" a/b1b cat a.qel

echo "== files =="
gives "extensions" 'r' "$qel" convert R.RTF --to text
gives "text by its extension" \~/b1 "$qel" convert t.txt --to qel
gives "the stated way" '\\b1' "$qel" --stated convert t.txt --to qel
gives "a folder is made" '' "$qel" convert a.qel R.RTF t.txt --to rtf-body -d new/out --jobs 2
[[ $(cd new/out && echo ./* && cat ./*) == './R.body.rtf ./a.body.rtf ./t.body.rtf
ra\b1 b\b0 /b1' ]] || fail "many files: $(tail -n +1 new/out/*)"
breaks 1 'cannot read missing.qel: No such file or directory' \
  "$qel" convert a.qel missing.qel t.txt --to text -d some
gives "the others go on" ab/b1 cat some/a.txt some/t.txt
breaks 1 'cannot read new: Is a directory (--recursive' "$qel" convert new --to text
breaks 1 'cannot write new: Is a directory' "$qel" convert a.qel --to text -o new
breaks 1 'cannot create a.qel/x' "$qel" convert t.txt --to text -d a.qel/x
gives "a device" '' "$qel" convert a.qel --to text -o /dev/null
if [[ -e /dev/full ]]; then
  breaks 1 'cannot write /dev/full: No space left' "$qel" convert a.qel --to text -o /dev/full
  breaks 1 'cannot write standard output: No space left' bash -c "$qel convert a.qel --to text >/dev/full"
  breaks 1 'cannot write standard output: No space left' bash -c "$qel --help >/dev/full"
fi
# More than a pipe holds, so that the write is sure to fail.
head -c 1000000 /dev/zero | tr '\0' x >large.qel
gives "a closed pipe is no error" '' \
  bash -c "set -o pipefail; { $qel convert large.qel --to text | true; } 2>&1"

printf old >kept
chmod 640 kept
ln -s kept link
gives "through a link" '' "$qel" convert a.qel --to text -o link
[[ -L link ]] || fail "the link is gone"
gives "what it leads to" ab cat kept
is_native && gives "its permissions" $'640\n' stat -c %a kept
gives "in place" '' "$qel" convert a.qel --to qel -o a.qel
breaks 1 'cannot write a.qel: it is the input' "$qel" convert a.qel --to html -o a.qel
if is_native; then # Wine does not tell what is behind a standard stream.
  ln -s a.qel same
  breaks 1 'cannot write same: it is the input' bash -c "$qel convert --to rtf -o same <a.qel"
  breaks 1 'standard output is the file that is read' bash -c "$qel convert a.qel --to qel >>a.qel"
  breaks 1 'standard output is the file' bash -c "$qel convert --csv n --to text <a.qel >>a.qel"
fi
[[ $(cat a.qel) == a/b1b/b0 ]] || fail "in place: $(cat a.qel)"
# A file too large for its limit: the old one must survive.
too_large='File too large'
is_native || too_large=
breaks 1 "cannot write kept: $too_large" \
  bash -c "trap '' XFSZ; ulimit -f 100; $qel convert large.qel --to text -o kept"
[[ $(cat kept) == ab ]] || fail "a failed write damaged the file"
no_rest_in .

echo "== lists and folders =="
mkdir -p notes/sub/deep notes/.hidden
for ((i = 0; i < 300; ++i)); do printf '/b1%s' "$i" >"notes/$i.qel"; done
printf same >notes/sub/deep/0.qel
touch notes/picture.png notes/.hidden/x.qel
ln -s .. notes/sub/up
ln notes/1.qel linked.txt
gives "folders are mirrored" '' "$qel" convert --recursive notes --to text -d notes/out --jobs 3
# More files than are finished together.
gives "all of them, none of the output" '' "$qel" convert --recursive notes --to text -d notes/out -j 1
[[ $(cd notes/out && find . -type f | wc -l && cat 0.txt 299.txt sub/deep/0.txt) == '301
0299same' ]] || fail "a mirrored folder: $(ls -R notes/out)"
no_rest_in notes
is_native && gives "with few open files" '' bash -c "ulimit -n 40 && $qel convert --recursive notes --to text -d notes/few --jobs 2"
breaks 2 "'linked.txt' would overwrite the input notes/1.qel" \
  "$qel" convert -r notes linked.txt --to text -d .
printf 'a.qel\n\nt.txt' >names
gives "a list" '' "$qel" convert --files-from names --to text -d listed R.RTF
break=$'\n'
is_native || break=' '
gives "a list with NUL from standard input" '' \
  bash -c "printf 'a.qel\0new%sline.qel\0' '$break' | (cp a.qel 'new${break}line.qel' && $qel convert --files0-from - --to rtf-body -d listed)"
gives "the files of lists" "R.txt a.body.rtf a.txt new${break}line.body.rtf t.txt " bash -c 'cd listed && printf "%s " *'
gives "an empty list" '' "$qel" convert --files-from /dev/null --to text -d none
breaks 2 'requires --directory' "$qel" convert --files-from names --to text
printf old | tee listed/a.txt listed/t.txt >listed/R.txt
touch -d 2001-01-01 listed/t.txt
gives "what is newer is left alone" '' "$qel" convert --files-from names --to text -d listed --skip-newer
gives "and only that" 'old/b1' cat listed/a.txt listed/t.txt

mkdir dated
{
  until compgen -G 'dated/.qel-*' >/dev/null; do sleep 0.01; done
  sleep 0.05
  touch dated/a.qel
} | "$qel" convert --to text -o dated/a.txt
[[ dated/a.txt -ot dated/a.qel ]] || fail "newer than what was changed meanwhile"

if is_native; then
  echo "== signals =="
  # What a killed process left goes, but not what may be in use or is something else.
  mkdir killed
  touch -d '2 minutes ago' killed/.qel-1-2 killed/.qel-1-3 killed/.qel-notes-1 killed/.qel-1
  touch killed/.qel-1-4
  exec 8<killed/.qel-1-3
  flock 8
  gives "beside what was left" '' "$qel" convert a.qel --to text -o killed/a.txt
  exec 8<&-
  [[ $(cd killed && echo .qel* *) == '.qel-1 .qel-1-3 .qel-1-4 .qel-notes-1 a.txt' ]] ||
    fail "left and kept: $(ls -A killed)"

  mkfifo slow
  exec 9<>slow
  "$qel" convert a.qel slow -d stopped --to text --jobs 2 2>/dev/null &
  "$qel" convert a.qel slow -d alone --to text --jobs 1 2>/dev/null &
  yes '/b1x/b0y' | head -n 500000 | tr -d '\n' >dense.qel
  "$qel" convert dense.qel -d unfinished --to segments &
  for ((i = 0; i < 1000; ++i)); do
    compgen -G 'unfinished/.qel-*' >/dev/null && compgen -G 'alone/.qel-*' >/dev/null && break
    sleep 0.01
  done
  kill -TERM %1 %2 %3
  for job in %1 %2 %3; do
    wait $job
    [[ $? == 143 ]] || fail "SIGTERM: exit status of $job"
  done
  [[ $(ls -A alone stopped unfinished) == 'alone:

stopped:
a.txt

unfinished:' ]] || fail "SIGTERM left: $(ls -A alone stopped unfinished)"
  exec 9>&-
else
  echo "== Windows =="
  # shellcheck source=tests/cli/windows.sh
  . "$here/windows.sh"
fi

# shellcheck source=/dev/null
. "$here/../../apps/qel/completion.bash"
COMP_WORDS=(qel convert --to s) COMP_CWORD=3
_qel
[[ ${COMPREPLY[*]} == 'simple-rtf segments' ]] || fail "completion: ${COMPREPLY[*]}"
gives "version" "qel $(sed -n 's/.*VERSION \([0-9.]*\)$/\1/p' "$here/../../CMakeLists.txt" | tail -n 1)"$'\n' \
  "$qel" --version

finish

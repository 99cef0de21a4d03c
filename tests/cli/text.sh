#!/usr/bin/env bash
# Drives the work on formatted text as a user does, and checks that all options are described.
# Usage: text.sh QEL
# shellcheck disable=SC2317
set -uo pipefail

qel=$1
# shellcheck source=tests/cli/support.sh
. "$(dirname "${BASH_SOURCE[0]}")/support.sh"

text() { "$qel" text "$@"; }
# With a dot after the output, which keeps line breaks at the end.
dotted() { text "$@" && printf .; }

echo "== verbs =="
printf '/b1abc/b0def' >a.qel
printf '/b1abc/b0de' >b.qel
printf 'one two /y2three/y0' >c.qel
# The expected output and the arguments, in which "_" stands for a blank.
while IFS='|' read -r expected arguments; do
  read -ra words <<<"$arguments"
  gives "$arguments" "$(printf '%b.' "$expected")" dotted "${words[@]//_/ }"
done <<'END'
6\n|len a.qel
3\n|find cd a.qel
0\n|find CD a.qel
3\n|find CD --ignore-case a.qel
1\n|find a --last --within 3 -t abca
/b1abc/b0d|left 4 a.qel
/b1c/b0def|right 4 a.qel
/b1bc/b0|mid 2 2 a.qel
/b1a/b0/i1/f2X/f0/i0/b1c/b0def|stuff 2 1 X a.qel --style i,f2
/b1aXc/b0def|stuff 2 1 X -t /b1a/b0/b1b/f1/f0/b0/b1c/b0def --style-from-text
/b1a/b0\n/b1c/b0def\n|split b a.qel
/b1abC/b0Def|case swap a.qel --start 3 --length 2
/b1abc/b0DEf|case upper --start 4 --length 2 a.qel
The/i1 Lay of Way/i0|case title -t the/i1_lay_of_way
One two|case initial -t one_TWO
abcdef|toggle bold a.qel
a/f3b/f0c|toggle font3 -t abc --start 2 --length 1
ABC|toggle upper -t abc
a/nlb/nl\n/nlc\n|split , -t a/nlb/nl,/nlc
2\n|find [ -t a[b
a\n/b1|plain -t a/nl/b1~/b1
0\n|len --text=
one\n\ntwo\nthree\n|wrap -w 99 -t one/nl/nltwo/nlthree
equal\n|compare a.qel -t /b1a/b0/b1bc/b0def
one two\nthr\nee\n|wrap -w 7 --indent 4 --columns -t one_two_three
Hello\nHello\n|wrap -w 23 -t Hello_Hello
Hello Hello\n|wrap -w 26 --font 0=Symbol --font-size 4 -t Hello_Hello
END
[[ $(text compare a.qel b.qel) == different ]] || fail "compare"
text compare a.qel b.qel >/dev/null
[[ $? == 1 ]] || fail "the exit status of different texts"
gives "standard input" 6$'\n' bash -c "printf '/b1abc/b0def\n' | $qel text len"
gives "the end of a line stays" $'AB\r\n' bash -c "printf 'ab\r\n' | $qel text case upper"
head -c 40000 /dev/zero | tr '\0' x >long.qel
gives "a long text" 40000$'\n' text len long.qel
printf %s/nl/i1yz "$(<long.qel)" >longer.qel
gives "a cut there" /i1z/i0 text mid 40002 -1 longer.qel
gives "a switch there" x/nl/i1y/b1z/i0/b0 \
  bash -c "$qel text toggle bold --start 40002 longer.qel | tail -c 18"
gives "a file" '' text left 2 a.qel -o left.qel
[[ $(cat left.qel) == /b1ab/b0 ]] || fail "written: $(cat left.qel)"

echo "== render =="
gives "a picture" '' "$qel" render a.qel --width 200 -o a.svg
grep -q 'font-weight="bold"[^>]*>abc<' a.svg || fail "no bold text in $(cat a.svg)"
if command -v xmllint >/dev/null; then xmllint --noout a.svg || fail "not well-formed"; fi
count_texts() { "$qel" render "$@" -o - | grep -o '<text' | wc -l | tr -d '\n'; }
gives "wrapped" 3 count_texts --width 23 c.qel
gives "not wrapped" 2 count_texts --width 23 --no-wrap c.qel
gives "without hidden text" 1 count_texts --hide-hidden --no-wrap c.qel
gives "one text with all codes" 1 count_texts --reveal-codes c.qel
gives "options" 3$'\n' bash -c "$qel render a.qel -o - --width 300 --margin 7 --indent 3 --align right \
  --label 1 --one-color --transparent --color 0=#010203 | grep -oE '#(010203|cbcfde)' | wc -l"

echo "== lint =="
lint() {
  "$qel" lint "$@"
  printf '%d.' $?
}
printf '/y9a\r\n/b1b/nl/i1c/b0 ~/b1/i0/y0\n' >d.qel
gives "nothing found" 0. lint a.qel c.qel
gives "what was found in files" $'d.qel:1:1: \'/y9\' is the same colour as colour 0
d.qel:2:12: \'/b0\' ends a format before one that began later
d.qel:2:16: \'~/b1\' is text, not a code\n1.' lint d.qel a.qel --color 9=0
gives "an open format, which begins earlier" $'-:1:1: \'/b1\' is not switched off at the end
-:1:5: \'/b1\' has no effect\n1.' lint <<<'/b1a/b1b'
gives "objects" '{"file":"-","line":1,"column":2,"position":1,"length":3,"kind":"unknown-code","code":"/z1","message":"'"'/z1' is not a code"'"}
1.' lint --json <<<'é/z1'
gives "the file behind a missing one" $'d.qel:2:12:' \
  bash -c "$qel lint none.qel d.qel 2>/dev/null | grep -o '^d.qel:2:12:' | tr -d '\n'"
breaks 1 'cannot read none.qel' "$qel" lint none.qel a.qel

echo "== usage =="
breaks 2 'required' "$qel" text
breaks 2 'COUNT' text left
breaks 2 '--start' text case upper a.qel --start 0
breaks 2 "'loud' is not one of upper" text case loud a.qel
breaks 2 "'b,z' is not one of b, i" text stuff 1 1 x a.qel --style b,z
breaks 2 'exclude' text len a.qel -t x
breaks 2 "'loud' is not a command (see 'qel text --help')" text loud
breaks 2 "'--start' is not an option (see 'qel text len --help')" text len --start 3 -t x
breaks 2 "x.PNG': pictures are written as SVG, so the name has to end in .svg" "$qel" render a.qel -o x.PNG
breaks 2 "'a.qel' is the markup to draw" "$qel" render a.qel -o a.qel
breaks 2 "'nan' is not a number" "$qel" render a.qel -o x.svg --width nan
breaks 2 'standard input can be only one' text compare -
breaks 2 '--indent leaves no room' "$qel" render a.qel -o x.svg --width 30 --indent 30
printf '{\\rtf1 x}' >x.rtf
breaks 1 'x.rtf is RTF' text plain x.rtf
breaks 1 'x.rtf is RTF' "$qel" lint x.rtf
breaks 1 'standard input is not text' bash -c "printf 'GIF8\0' | $qel lint"
breaks 2 "'--jsno' is not an option" "$qel" lint --jsno
breaks 1 'cannot write none/x.svg' "$qel" render a.qel -o none/x.svg

echo "== options are described =="
sed 's/\\-/-/g' "$here/../../docs/qel.1" >manual
verbs=$(sed -n "s/^_qel_verbs='\(.*\)'/\1/p" "$here/../../apps/qel/completion.bash")
[[ $(wc -w <<<"$verbs") == 12 ]] || fail "verbs of the completion: $verbs"
{
  "$qel" convert --help
  "$qel" tables --help
  "$qel" render --help
  "$qel" lint --help
  for verb in $verbs; do text "$verb" --help; done
} | grep -oE -- '--[a-z][a-z0-9-]+' | sort -u >options
[[ $(wc -l <options) -ge 35 ]] || fail "too few options in the help: $(cat options)"
while read -r option; do
  # The manual writes "--to" as "Fl \-to".
  grep -qE -- "Fl.* ${option#-}( |$)" manual || fail "$option is not in the manual"
  grep -qE -- "(^|[ '])$option([ ']|$)" "$here/../../apps/qel/completion.bash" ||
    fail "$option is not in the completion"
done <options
for verb in $verbs; do
  grep -qE "^.It Cm $verb( |$)" manual || fail "text $verb is not in the manual"
done
if command -v mandoc >/dev/null; then
  mandoc -T lint -W warning "$here/../../docs/qel.1" || fail "the manual has faults"
fi
finish

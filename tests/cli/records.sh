#!/usr/bin/env bash
# Drives the conversion of fields of records: JSON lines and comma-separated values.
# Usage: records.sh QEL
# shellcheck disable=SC2016,SC2317
set -uo pipefail

qel=$1
# shellcheck source=tests/cli/support.sh
. "$(dirname "${BASH_SOURCE[0]}")/support.sh"

# piped INPUT OPTION...: converts what printf prints for INPUT.
piped() {
  # shellcheck disable=SC2059
  printf "$1" | "$qel" convert "${@:2}"
}
text() { piped "$1" --to text "${@:2}"; }

echo "== JSON lines =="
gives "all but the field stays" $'{ "n" : "xé\\"\\n" ,"o":{"n":"/b1"}, "a":[1,{"}":"]\\"}"}], "f":1.50}\r\n' \
  text '{ "n" : "/b1x\\u00e9\\"/nl" ,"o":{"n":"/b1"}, "a":[1,{"}":"]\\"}"}], "f":1.50}\r\n' --json-lines n
gives "several fields, new and there before" \
  $'{"a":"/b1x","t":"x","s":"/b1","z":"y"}\n{"u":1,"a":null,"t":null}' \
  text '{"a":"/b1x","t":{"k":[]},"s":"/b1","z":"/i1y"}\n{"u":1,"a":null}' --json-lines a=t --json-lines z
gives "no such field, blank lines, names with escapes, a break at the end" \
  $'{}\n\n \t\n{"n\\u006fte":"a\\n"}\n{"note":"b\\n\\u0001"}' \
  text '{}\n\n \t\n{"n\\u006fte":"a\\n"}\n{"note":"b\\r\\n\\u0001"}' --json-lines note
gives "backslashes" '{"n":"\\\"","m":"\\"}' text '{"n":"\\\\\\"","m":"\\\\"}' --json-lines m
gives "RTF and markup by their first bytes, no encodings" \
  $'{"n":"/b1r/b0"}\n{"n":"<u>/i1m/i0"}\n{"n":"\xef\xbb\xbfx"}\n' \
  piped '{"n":"{\\\\rtf1\\\\b r}"}\n{"n":"<u>/i1m"}\n{"n":"\\ufeffx"}\n' --json-lines n --to qel
deep=$(printf '[%.0s' {1..3000})$(printf ']%.0s' {1..3000})
gives "halves of surrogate pairs, deep nesting" '{"n":"�x😀�","d":'"$deep"',"o":"\udc00\\ud800"}' \
  text '{"n":"\\ud800/b1x\\uD83D\\uDE00\\udc00","d":'"$deep"',"o":"\\udc00\\\\ud800"}' --json-lines n
gives "numbers of any size" '{"i":-123456789012345678901234567890,"n":"x","f":[1e999]}' \
  text '{"i":-123456789012345678901234567890,"n":"/b1x","f":[1e999]}' --json-lines n

echo "== comma-separated values =="
gives "quotes, breaks and ends of lines stay" $'\xef\xbb\xbf"n, ""1""",m\r\n"x ""y"",\nz",5" /b1\r\n\r\ny,\n"","."' \
  text '\xef\xbb\xbf"n, ""1""",m\r\n"/b1x ""y"",\nz",5" /b1\r\n\r\n/b1y,\n"","."' --csv 'n, "1"'
gives "quotes where they are needed, a new column" $'n,m,"t,"\n"a\nb",/b1c,c\nd,"""",""""' \
  text 'n,m\na/nlb,/b1c\n/b1d,""""' --csv n --csv m='t,'
printf 'n\n/b1a\n\n' >one.csv
gives "one column, a named file" $'n\na\n\n' "$qel" convert one.csv --csv n --to text
gives "names like lists" $'"[a,b]",[c]\nx,y\n' text '"[a,b]",[c]\n/b1x,/i1y\n' --csv '[a,b]' --csv=[c]
gives "an empty file" '' "$qel" convert /dev/null --csv n --to text

echo "== bad records =="
bad='{"n":"/b1a"}\n{"n":1}\n{"n":"/b1b"}\n{"n":tru}\n[]\n{"n":"/b1c"}x\n{"n":"\xff"}\n'
breaks 1 "record 2: field 'n' is not a string" text "$bad" --json-lines n
breaks 1 'record 2: field' text "$bad" --json-lines n -o kept.jsonl
[[ -z $(find . -name '*.jsonl' -o -name '.qel-*') ]] || fail "a stopped run left a file"
[[ $(text "$bad" --json-lines n 2>/dev/null) == '{"n":"a"}' ]] || fail "what stands before a bad record"
gives "left out" $'{"n":"a"}\n{"n":"b"}\n' text "$bad" --json-lines n --on-error=skip
[[ $(grep -c '^qel: record [24567]: ' .err) == 5 ]] || fail "reported: $(cat .err)"
# shellcheck disable=SC2059
gives "passed on" "$(printf "${bad//\/b1[ab]/}" | sed '1s/""/"a"/;3s/""/"b"/')"$'\n' \
  text "$bad" --json-lines n --on-error=pass
gives "bad lines of values" $'a,b\nx,y\n' text 'a,b\n/b1x,y\nz\n"1"2,3\n1,"' --csv a --on-error skip
[[ $(cat .err) == 'qel: record 2: 1 fields instead of 2
qel: record 3: a field goes on behind its closing quote
qel: record 4: a quote is not closed' ]] || fail "reported: $(cat .err)"
breaks 1 "no field is named 'c'" text 'a,b\n' --csv c
breaks 2 'excludes' text '' --csv a --json-lines a
breaks 2 "'a=' names no field" text '' --json-lines a=
breaks 2 "two fields would both become 'c'" text '' --csv a=c --csv b=c
breaks 2 'more than one file' "$qel" convert one.csv one.csv --csv n --to text

echo "== many records =="
# Larger than several batches, some larger than one.
awk 'BEGIN {
  for (tail = "~"; length(tail) < 300000;) tail = tail tail
  for (i = 0; i < 40000; ++i)
    print "{\"i\":" i ",\"n\":\"/b1note /b0" i (i % 9000 == 5 ? tail : "") "\"}" }' >many.jsonl
sed 's,/b[01],,g' many.jsonl >expected.jsonl
for jobs in 1 3; do
  gives "in order with $jobs" '' "$qel" convert many.jsonl --json-lines n --to text -j "$jobs" -o got.jsonl
  cmp got.jsonl expected.jsonl || fail "$jobs jobs: not the records in their order"
done
sed 's/{"i":\([0-9]*\),"n":"\(.*\)"}/\1,"\2\n"/;1i i,n' many.jsonl >many.csv
sed 's,/b[01],,g' many.csv >expected.csv
"$qel" convert --csv n --to text <many.csv | cmp - expected.csv || fail "values: not the records in their order"
gives "a closed pipe" $'{"i":0,"n":"note 0"}\n' \
  bash -c "set -o pipefail; { $qel convert many.jsonl --json-lines n --to text | head -n 1; } 2>&1"
if is_native && command -v script >/dev/null; then
  script -qec "$qel convert --json-lines n --to text <many.jsonl >got.jsonl" /dev/null >terminal
  grep -q '\[[#.]*\] [0-9]* records, [0-9]*/s' terminal || fail "no progress on a terminal"
fi

echo "== while more is to come =="
if [[ $(head -c 2 "$qel") == '#!' ]]; then
  echo "left out: on Windows the work may go on until more comes or the input ends"
  finish
fi
coproc "$qel" convert --json-lines n --to text --jobs 3 2>/dev/null
# The shell forgets COPROC as soon as the command ends.
exec {records}>&"${COPROC[1]}" {answers}<&"${COPROC[0]}"
echo '{"n":"/b1x"}' >&"$records"
IFS= read -r -t 10 answer <&"$answers" || fail "no answer to one record"
[[ $answer == '{"n":"x"}' ]] || fail "an answer: $answer"
echo '{' >&"$records"
# A bad record ends the work even while the writer waits.
IFS= read -r -t 10 answer <&"$answers"
[[ $? == 1 ]] || fail "a bad record does not end the work"

finish

#!/usr/bin/env bash
# Fails where the work on a hostile text grows faster than the text: where four times the text takes
# more than LIMIT times the instructions. valgrind counts them, so that the load of the machine does
# not matter. Exits with 77 where there is no valgrind.
# Usage: run.sh PATHOLOGICAL QEL [all]
#   all   print every growth, not only those beyond the limit
set -euo pipefail

program=$1 qel=$2 shows=${3:-}
limit=4.8
# What takes fewer instructions for each piece of its text than this has no growth worth the name.
least=600
# An instruction that copies counts once for each byte, which looks like growth.
export GLIBC_TUNABLES=glibc.cpu.x86_rep_movsb_threshold=0x7fffffffff:glibc.cpu.x86_rep_stosb_threshold=0x7fffffffff

if ! valgrind --tool=callgrind --version >/dev/null 2>&1; then
  echo "pathological: skipped, as there is no valgrind"
  exit 77
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# counted FILE COMMAND...: runs it, with its instructions in FILE.
counted() {
  valgrind -q --log-file=/dev/null --tool=callgrind --callgrind-out-file="$1" "${@:2}"
}

# library PART PARTS: what is run once for each size is counted alone.
library() {
  local dump
  mkdir "$1"
  counted "$1/count" --collect-atstart=no --toggle-collect=pathological_run \
    --dump-after=pathological_run --dump-line=no "$program" "$1" "$2" >"$1/names"
  for ((dump = 1; dump <= $(wc -l <"$1/names"); ++dump)); do
    sed -n 's/^summary: //p' "$1/count.$dump"
  done | paste - "$1/names" >"$1.counts"
}

# command_counts NAME SIZE OPTION...: one run of the command.
command_counts() {
  counted count "$qel" convert --to text --jobs 1 "${@:3}" >/dev/null
  printf '%s\t%s\t%s\n' "$(sed -n 's/^summary: //p' count)" "$1" "$2"
}

# times FORMAT: what printf makes of it for each number up to `size`.
times() {
  # shellcheck disable=SC2046,SC2059
  printf "$1" $(seq "$size")
}

commands() {
  local size
  mkdir files
  for size in 5 100 400; do
    for ((i = 1; i <= size; ++i)); do printf '/b1%s' "$i" >"files/$i.qel"; done
    command_counts "many small files" "$size" -r files -d "out$size"
  done
  for size in 5 500 2000; do
    { printf '{' && times '"f%s":["",{}],' && printf '"n":"\/b1a"}\n'; } >fields.jsonl
    command_counts "a JSON line with many fields" "$size" --json-lines n fields.jsonl
  done
  for size in 5 500 2000; do
    { printf '{"n":"' && times '\\u00e9\\n%s\\/b1' && printf '"}\n'; } >long.jsonl
    command_counts "a long string of JSON" "$size" --json-lines n long.jsonl
  done
  for size in 5 500 2000; do
    { times 'f%s,' && printf 'n\n' && times '"",%.0s' && printf '/b1a\n'; } >fields.csv
    command_counts "a record with many fields" "$size" --csv n fields.csv
  done
  for size in 5 500 2000; do
    { printf 'n\n"' && times '""/b1%s,' && printf '"\n'; } >long.csv
    command_counts "a long field" "$size" --csv n long.csv
  done
}

library 0 2 &
{ library 1 2 && commands >2.counts; } &
wait %1 && wait %2

# A line: instructions, name, size. Three lines with the same name are a tiny size, one, and four
# times that.
cat ./*.counts | awk -F '\t' -v limit="$limit" -v least="$least" -v shows="$shows" '
  NR % 3 == 1 { tiny = $1 }
  NR % 3 == 2 { once = $1 - tiny }
  NR % 3 == 0 {
    ++count
    growth = once > 0 ? ($1 - tiny) / once : 0
    fails = growth > limit && $1 - tiny > least * $3
    failures += fails
    if (fails || shows != "")
      printf "%s%6.2f times the instructions for 4 times the text: %s (%d for %d)\n",
        fails ? "FAILED: " : "", growth, $2, $1, $3
  }
  END {
    printf "pathological: %d of %d grow too fast\n", failures, count
    exit failures > 0 || count == 0
  }'

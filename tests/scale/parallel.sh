#!/usr/bin/env bash
# The command at the reading ends of pipes: the pieces come in their order, as from one run. Exits
# with 77 where GNU parallel is missing.
# Usage: parallel.sh QEL
set -euo pipefail

if ! parallel --version 2>/dev/null | grep -q '^GNU parallel'; then
  echo "parallel: skipped, as there is no GNU parallel"
  exit 77
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work PARALLEL_HOME=$work
convert="$1 convert --json-lines note=rtf --from qel --to rtf"

awk 'BEGIN {
  for (tail = "~"; length(tail) < 150000;) tail = tail tail
  for (i = 0; i < 20000; ++i)
    print "{\"id\":" i ",\"note\":\"/b1note/b0 " i (i % 2999 == 5 ? tail : "") "\"}" }' \
  >"$work/notes.jsonl"
$convert "$work/notes.jsonl" -o "$work/one.jsonl"
parallel --pipe --block 500k -k -j 3 --halt now,fail=1 "$convert --jobs 1" \
  <"$work/notes.jsonl" >"$work/many.jsonl"
cmp "$work/one.jsonl" "$work/many.jsonl"
[[ $(wc -l <"$work/many.jsonl") == 20000 ]]

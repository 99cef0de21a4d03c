#!/usr/bin/env bash
# The library for C shows what its header declares, and nothing else; it needs no C++ runtime.
# Usage: symbols.sh NM LIBRARY [DEFINITIONS]
# DEFINITIONS is the .def file of a library for Windows.
set -euo pipefail

nm=$1 library=$2 definitions=${3:-}
header=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/capi/include/qel/capi.h
shown() {
  if [[ $definitions ]]; then
    tr -d '\r' <"$definitions" | awk '$2 ~ /^@/ { print $1 }'
  else
    "$nm" -D --defined-only "$library" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }'
  fi
}
diff <(grep -v '^typedef' "$header" | grep -o '\bqel_[a-z_]*(' | tr -d '(' | sort -u) <(shown | sort)

if [[ $definitions ]]; then
  needed=$("${nm%nm}objdump" -p "$library" | sed -n 's/.*DLL Name: //p')
  if grep -vixE '(kernel32|msvcrt)\.dll' <<<"$needed"; then exit 1; fi
elif command -v readelf >/dev/null && readelf -p .comment "$library" | grep -q GCC; then
  needed=$(readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
  if grep -E 'stdc\+\+|libgcc' <<<"$needed"; then exit 1; fi
fi

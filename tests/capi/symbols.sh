#!/usr/bin/env bash
# The library for C shows what its header declares, and nothing else; it needs no C++ runtime.
# Usage: symbols.sh NM LIBRARY
set -euo pipefail

nm=$1 library=$2
header=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/capi/include/qel/capi.h
diff <(grep -v '^typedef' "$header" | grep -o '\bqel_[a-z_]*(' | tr -d '(' | sort -u) \
  <("$nm" -D --defined-only "$library" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort)
if command -v readelf >/dev/null && readelf -p .comment "$library" | grep -q GCC; then
  needed=$(readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
  if grep -E 'stdc\+\+|libgcc' <<<"$needed"; then exit 1; fi
fi

#!/usr/bin/env bash
# Registers the component and runs scripts and examples against it. A script ends with a line of its
# own, since one that breaks off says nothing.
# Usage: scripts.sh WINE COMPONENT EXAMPLE
set -uo pipefail

wine=$1 component=Z:${2//\//\\} example=$3
cd "$(dirname "${BASH_SOURCE[0]}")" || exit
failed=0

# expect WHAT ENDING COMMAND...: that it succeeds and prints the ending last.
expect() {
  local what=$1 ending=$2 output status=0
  shift 2
  output=$(timeout 100 "$@" 2>&1 | tr -d '\r') || status=$?
  printf '%s\n' "$output"
  if [[ $status != 0 || $output != *"$ending" ]]; then
    echo "FAILED: $what: exit status $status, not at the end: $ending"
    failed=1
  fi
}
run() { expect "$1" "$2" "$wine" cscript //nologo "$1"; }

trap '"$wine" regsvr32 /s /u "$component"' EXIT
expect registration '' "$wine" regsvr32 /s "$component"
run automation.js ' rows, 0 failed'
run automation.vbs ' rows, 0 failed'
runs=$'Hello /b1world/b0/nl\nHello : False\nworld: True'
run ../../examples/windows/round_trip.vbs "$runs"
expect host.cpp "$runs" "$wine" "$example"
runs=${runs/False/false}
run ../../examples/windows/round_trip.js "${runs/True/true}"

expect 'registration for a user' '' "$wine" regsvr32 /s /n /i:user "$component"
expect 'end of that' '' "$wine" regsvr32 /s /u /n /i:user "$component"
exit "$failed"

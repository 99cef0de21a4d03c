#!/usr/bin/env bash
# Registers the component, runs scripts and examples against it, and expects the registry to be as
# before at the end. A script ends with a line of its own, since one that breaks off says nothing.
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

# classes ROOT: what the registry says of classes there, which is for all users or for this one.
classes() { "$wine" reg query "$1\\Software\\Classes" /s | tr -d '\r'; }

# has COUNT PATTERN: that so many of the lines that were added say this.
has() {
  local found
  found=$(grep -cE -- "$2" <<<"$added")
  [[ $found == "$1" ]] && return
  echo "FAILED: $found new lines in the registry: $2"
  failed=1
}

# expect_clean WHEN: that nothing of the component is registered.
expect_clean() {
  [[ $(classes HKLM) == "$before" && $(classes HKCU) == "$own_before" ]] && return
  echo "FAILED: the registry is not as before after $1"
  failed=1
}

register=("$wine" regsvr32 /s)
for_user=(/n /i:user "$component")
unregister() { "${register[@]}" /u "$component"; "${register[@]}" /u "${for_user[@]}"; }
unregister
trap unregister EXIT
before=$(classes HKLM) own_before=$(classes HKCU)

expect registration '' "${register[@]}" "$component"
expect 'registration once more' '' "${register[@]}" "$component"
added=$(diff <(echo "$before") <(classes HKLM))
has 13 'ThreadingModel +REG_SZ +Apartment$'
has 13 'QEL\.[A-Za-z]+\\CurVer$'
has 1 '\\\{B18FA04F-[-0-9A-F]+\}\\Control$'
has 1 '\\\{B18FA04F-[-0-9A-F]+\}\\MiscStatus\\1$'
has 1 'Classes\\Type[Ll]ib\\\{B18FA000-[-0-9A-F]+\}\\1\.0\\0\\win(32|64)$'
[[ $(classes HKCU) == "$own_before" ]] || { echo 'FAILED: it is for one user' && failed=1; }
run automation.js ' rows, 0 failed'
run automation.vbs ' rows, 0 failed'
runs=$'Hello /b1world/b0/nl\nHello : False\nworld: True'
run ../../examples/windows/round_trip.vbs "$runs"
expect host.cpp "$runs" "$wine" "$example"
runs=${runs/False/false}
run ../../examples/windows/round_trip.js "${runs/True/true}"
expect 'its end' '' "${register[@]}" /u "$component"
expect_clean registration

expect 'registration for a user' '' "${register[@]}" "${for_user[@]}"
added=$(diff <(echo "$own_before") <(classes HKCU))
has 13 'ThreadingModel +REG_SZ +Apartment$'
added=$(diff <(echo "$before") <(classes HKLM))
has 0 'QEL\.QELTextbox'
expect 'its end' '' "${register[@]}" /u "${for_user[@]}"
expect_clean 'registration for a user'
if "${register[@]}" /n /i:everybody "$component"; then
  echo 'FAILED: registration for everybody'
  failed=1
fi
expect_clean 'a registration that failed'
exit "$failed"

#!/usr/bin/env bash
# Registers the component, runs scripts and examples against it, and expects the registry to know
# nothing of it at the end. A script ends with a line of its own, since one that breaks off says nothing.
# Usage: scripts.sh WINE COMPONENT EXAMPLE BITS
set -uo pipefail

windows_path() { echo "Z:${1//\//\\}"; }
wine=$1 component=$(windows_path "$2") example=$3 kept=$(mktemp -d)
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

# classes ROOT: the keys and values of all components there, which is for all users or for this one.
classes() {
  local file=$kept/classes.reg
  "$wine" reg export "$1\\Software\\Classes" "$(windows_path "$file")" /y >/dev/null 2>&1
  iconv -f UTF-16LE -t UTF-8 "$file" | tr -d '\r'
  rm "$file"
}
# known ROOT: those of this component.
known() { classes "$1" | awk '/^\[/ { own = /QEL\.|\{B18FA0/ } own'; }

# has COUNT PATTERN: that so many lines of $registered say this.
has() {
  local found
  found=$(grep -cE -- "$2" <<<"$registered")
  [[ $found == "$1" ]] && return
  echo "FAILED: $found lines in the registry: $2"
  failed=1
}

# expect_clean WHEN: that the registry is as it was before.
expect_clean() {
  diff "$kept/before" <(classes HKLM && classes HKCU) >"$kept/difference" && return
  echo "FAILED: after $1 the registry differs"
  cat "$kept/difference"
  failed=1
}

register=("$wine" regsvr32 /s)
for_user=(/n /i:user "$component")
unregister() { "${register[@]}" /u "$component"; "${register[@]}" /u "${for_user[@]}"; }
unregister
if [[ -n $(known HKLM && known HKCU) ]]; then
  echo 'FAILED: the registry knows the component before'
  failed=1
fi
echo 'WScript.Quit(0)' >"$kept/first.js"
"$wine" cscript //nologo "$(windows_path "$kept/first.js")" # the system registers what scripts use
(classes HKLM && classes HKCU) >"$kept/before"
trap 'unregister; rm -rf "$kept"' EXIT

# Its manifest alone is enough.
examples=$(dirname "$example")
expect container.cpp '/b1Dear Anna/b0' "$wine" "$examples/windows_container.exe" 'Dear Anna'

expect registration '' "${register[@]}" "$component"
expect 'registration once more' '' "${register[@]}" "$component"
registered=$(known HKLM)
has 14 '^"ThreadingModel"="Apartment"$'
has 13 'QEL\.[A-Za-z]+\\CurVer\]$'
has 1 '\\\{B18FA04F-[-0-9A-F]+\}\\Control\]$'
has 1 'Categories\\\{40FC6ED4-[-0-9A-F]+\}\]$'
has 25 'Categories\\\{7DD9580[12]-[-0-9A-F]+\}\]$'
has 1 '\\\{B18FA04F-[-0-9A-F]+\}\\MiscStatus\\1\]$'
has 1 'Classes\\Type[Ll]ib\\\{B18FA000-[-0-9A-F]+\}\\1\.0\\0\\win'"$4"'\]$'
registered=$(known HKCU)
has 0 .
run automation.js ' rows, 0 failed'
run automation.vbs ' rows, 0 failed'
runs=$'Hello /b1world/b0/nl\nHello : False\nworld: True'
run ../../examples/windows/round_trip.vbs "$runs"
expect host.cpp "$runs" "$wine" "$example"
expect arguments.cpp $'/b1abc/b0def, 12 characters\n/b1a/b0\n/b1b/b0
error 6 from QELText: MidStr: a number is too large' "$wine" "$examples/example_windows_arguments.exe"
runs=${runs/False/false}
run ../../examples/windows/round_trip.js "${runs/True/true}"
mkdir "$kept/texts"
printf 'a/nl/b1\xc3\xa4/b0' >"$kept/texts/one.qel"
printf '{\\rtf1{\\pict 00}b}' >"$kept/texts/two.rtf"
printf 'b\0\1' >"$kept/texts/three.txt"
run_in_folder=("$wine" cscript //nologo ../../examples/windows/convert_folder.vbs "$(windows_path "$kept/texts")")
rows=$("${run_in_folder[@]}" "$(windows_path "$kept/pages")" txt | tr -d '\r' | sort)
[[ $rows == *'one.qel: nothing dropped'*'three.txt: '*'binary'*'two.rtf: 1 picture dropped' &&
  $(cat "$kept/pages/one.qel.txt") == $'a\r\nä' && ! -e $kept/pages/three.txt.txt ]] || {
  printf 'FAILED: a folder of files\n%s\n' "$rows"
  failed=1
}
expect 'its end' '' "${register[@]}" /u "$component"
expect_clean registration

expect 'registration for a user' '' "${register[@]}" "${for_user[@]}"
registered=$(known HKCU)
has 14 '^"ThreadingModel"="Apartment"$'
registered=$(known HKLM)
has 0 'QEL\.QELTextbox'
expect 'its end' '' "${register[@]}" /u "${for_user[@]}"
expect_clean 'registration for a user'

# It may be registered at one place and removed at another.
for scope in machine user; do
  options=()
  [[ $scope == machine ]] || options=(/n /i:user)
  cp "$2" "$kept/first.dll"
  expect "registration for a $scope" '' "${register[@]}" "${options[@]}" "$(windows_path "$kept/first.dll")"
  mv "$kept/first.dll" "$kept/second.dll"
  expect 'its end elsewhere' '' "${register[@]}" /u "${options[@]}" "$(windows_path "$kept/second.dll")"
  expect_clean "it was moved, for a $scope"
done
if "${register[@]}" /n /i:everybody "$component"; then
  echo 'FAILED: registration for everybody'
  failed=1
fi
expect_clean 'a registration that failed'
exit "$failed"

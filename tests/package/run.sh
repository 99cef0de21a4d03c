#!/usr/bin/env bash
# What scripts/package-windows made: the zip is complete and serves a project of MinGW, and the
# installer installs, repairs, upgrades and removes it, for the machine and for a user, and leaves
# nothing. Runs under Wine; what takes 32-bit programs only where Wine runs them.
# Usage: run.sh FOLDER VERSION [WINE]
# WINE is scripts/wine unless another is named, and QEL_WINE_DIR the folder of its drive.
set -uo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
name=qel-$2-windows setup=$(realpath "$1")/qel-$2-setup.exe
zip=$(realpath "$1")/$name.zip symbols=$(realpath "$1")/$name-symbols.zip
wine=${3:-$root/scripts/wine} drive=${QEL_WINE_DIR:-$root/build/wine}/prefix/drive_c
list='Software\Microsoft\Windows\CurrentVersion\Uninstall\QEL'
work=$(mktemp -d)
cd "$work" || exit
failed=0

fail() {
  echo "FAILED: $*"
  failed=1
}
# expect STATUS COMMAND...
expect() {
  local status=0
  timeout 300 "${@:2}" >output 2>&1 || status=$?
  [[ $status == "$1" ]] || { fail "exit status $status, not $1: ${*:2}" && cat output; }
}
windows_path() { echo "Z:${1//\//\\}"; }

# --- The zip

unzip -q "$zip" && unzip -q "$symbols"
for path in LICENSE.txt README.txt docs/windows.md docs/hosts/vba.md examples/windows/round_trip.vbs \
  x{64,86}/bin/{qel.exe,qel.dll,qelcom.dll,qelcom.manifest} x{64,86}/lib/{libqel.a,libqel_capi.dll.a,qel.def} \
  x{64,86}/include/qel/{capi.h,qelcom.h,qelcom.tlb,version.h} x{64,86}/lib/cmake/QEL/QELConfig.cmake; do
  [[ -s $name/$path ]] || fail "the zip lacks $path"
done
grep -roE '\]\([^)#: ]+' --include='*.md' "$name" | while IFS=: read -r page link; do
  [[ -e ${page%/*}/${link:2} ]] || echo "$page: ${link:2}"
done >dead
[[ ! -s dead ]] || fail "links to nothing: $(cat dead)"
for file in "$setup" "$name"/x*/bin/*.{dll,exe}; do
  texts=$(strings -a -el "$file")
  for text in CompanyName 'QEL Software' LegalCopyright ProductName "$2"; do
    grep -qF "$text" <<<"$texts" || fail "$file does not say: $text"
  done
  if objdump -h "$file" | grep -q '\.debug_info'; then fail "$file holds debug information"; fi
done
for triple in x86_64/x64 i686/x86; do
  library=$name-symbols/${triple#*/}/bin/qelcom.dll.debug
  address=$(nm "$library" | sed -n 's/^\([0-9a-f]*\) T _\?DllGetClassObject\(@12\)\?$/\1/p')
  line=$("${triple%/*}-w64-mingw32-addr2line" -e "$library" "0x$address")
  [[ $line == *com/server/entry_points.cpp:[1-9]* ]] || fail "symbols of ${triple#*/}: $line"
done
if grep -rlaF "$root" "$name" "$name-symbols"; then fail 'these say where they were built'; fi

for architecture in x86_64/x64 i686/x86; do
  prefix=$work/$name/${architecture#*/} build=${architecture#*/}
  expect 0 cmake -G Ninja -S "$root/tests/consumer" -B "$build" -DQEL_DIR="$prefix/lib/cmake/QEL" \
    -DQEL_MINGW_ARCH="${architecture%/*}" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchains/mingw.cmake"
  expect 0 cmake --build "$build"
done
cp "$name"/x64/bin/qel.dll x64
for program in consumer capi html; do
  expect 0 "$wine" "x64/$program.exe"
done

# --- The installer

# snapshot: all that an installer could leave.
snapshot() {
  local hive
  for hive in HKLM HKCU; do
    "$wine" reg export "$hive\\Software" "$(windows_path "$work/hive.reg")" /y >/dev/null 2>&1
    iconv -f UTF-16LE -t UTF-8 hive.reg
  done
  find "$drive" -not -path '*/Temp/*' | sort
}
# installed HIVE: the version that the system's list shows.
installed() {
  "$wine" reg query "$1\\$list" /v DisplayVersion /reg:64 2>/dev/null | tr -d '\r' |
    awk '/DisplayVersion/ { print $3 }'
}
expect_version() { [[ $(installed "$1") == "$2" ]] || fail "$1: $(installed "$1") is listed, not $2"; }
expect_files() {
  diff -r --exclude=uninstall.* "$name" "$folder" >output || { fail "$folder differs" && cat output; }
}
# remove: what is in $folder; its uninstaller goes on in a copy of itself.
remove() {
  "$wine" "$folder/uninstall.exe" /S
  for ((i = 0; i < 300; i++)); do
    [[ -e $folder ]] || return
    sleep 0.1
  done
  fail "$folder is still there"
}

script_of_32=$drive/windows/syswow64/cscript.exe
for_all="$drive/Program Files/QEL"
for_user=$drive/users/$(id -un)/AppData/Local/Programs/QEL
for folder in "$for_all" "$for_user"; do
  [[ ! -e $folder ]] || remove
done

cat >sign <<'END'
#!/bin/sh
[ -s "$1" ] && echo signed >>"$(dirname "$0")/signatures"
END
chmod +x sign
cp -r "$name" older && echo old >older/x64/bin/of_old.dll
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-1}
QEL_SIGN=$work/sign "$root/scripts/package-windows" --setup "$work/older" 0.0.9 "$work/older-qel.exe"
[[ $(grep -c signed signatures) == 2 ]] || fail 'the installer and its uninstaller are not signed'

round_trip=$(windows_path "$work/$name/examples/windows/round_trip.vbs")
for script in cscript "$script_of_32"; do
  "$wine" "$script" //nologo "$round_trip" >/dev/null 2>&1 # the system registers what scripts use
done
# As on every real system.
"$wine" reg add 'HKCU\Software\Classes' /f >/dev/null
"$wine" reg add "HKLM\\${list%QEL}of another" /f >/dev/null
mkdir -p "${for_user%/*}"
snapshot >before
for scope in /AllUsers /CurrentUser; do
  hive=HKLM folder=$for_all
  [[ $scope == /AllUsers ]] || hive=HKCU folder=$for_user
  expect 0 "$wine" older-qel.exe /S $scope
  expect_version $hive 0.0.9
  expect 0 "$wine" "$setup" /S
  expect_version $hive "$2"
  expect_files

  rm "$folder/x64/bin/qelcom.dll" "$folder/uninstall.exe"
  "$wine" reg delete "$hive\\Software\\Classes\\QEL.QELText" /f >/dev/null
  expect 0 "$wine" "$setup" /S
  expect_files
  expect 0 "$wine" reg query "$hive\\Software\\Classes\\QEL.QELText\\CLSID"
  if [[ $hive == HKLM ]]; then
    expect 0 "$wine" cscript //nologo "$round_trip"
    grep -q 'world: True' output || fail 'a script cannot use it'
    if [[ -e $script_of_32 ]]; then
      expect 0 "$wine" "$script_of_32" //nologo "$round_trip"
      grep -q 'world: True' output || fail 'a 32-bit script cannot use it'
    fi
  fi
  expect 3 "$wine" older-qel.exe /S
  expect_version $hive "$2"
  remove
  snapshot | diff before - >output || { fail "something of $scope is left" && cat output; }
done
folder="$work/else where"
expect 0 "$wine" "$setup" /S "/D=$(windows_path "$work/else")" where # a blank without quotes
expect_files
remove
cd / && rm -rf "$work"
exit "$failed"

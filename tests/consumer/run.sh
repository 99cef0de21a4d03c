#!/usr/bin/env bash
# Installs BUILD, and builds and runs the consumer next to this script on the installed tree, with
# find_package and with pkg-config; compiles it with add_subdirectory on the sources too. Whatever the
# consumer does not include is no public header, so it must not have been installed.
# Usage: run.sh CMAKE BUILD COMPILER [CONFIG]
set -euo pipefail

cmake=$1 build=$2 compiler=$3 config=${4:-}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
CMAKE_GENERATOR=$(sed -n 's/^CMAKE_GENERATOR:INTERNAL=//p' "$build/CMakeCache.txt")
export CMAKE_GENERATOR QT_QPA_PLATFORM=offscreen

configure_consumer() {
  "$cmake" -S "$here" -B "$1" -DCMAKE_CXX_COMPILER="$compiler" "${@:2}"
}

echo "== install =="
"$cmake" --install "$build" --prefix installed ${config:+--config "$config"}
# What is found must not depend on where the tree was installed first.
mv installed prefix
packages=$(dirname "$(find "$work/prefix" -name qel.pc)")
export PKG_CONFIG_PATH=$packages LD_LIBRARY_PATH=${packages%/*}

echo "== find_package =="
configure_consumer find_package -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_BUILD_TYPE=Debug
"$cmake" --build find_package --parallel 2
find_package/consumer
for program in capi html widget; do
  [[ ! -x find_package/$program ]] || find_package/$program
done

echo "== pkg-config =="
consume() {
  local flags
  read -ra flags <<<"$(pkg-config --cflags --libs --static "$2")"
  "$compiler" -std=c++20 -fPIC -MMD -MF "$2.d" "$here/$1.cpp" -o "by_$2" "${flags[@]}"
  "./by_$2"
}
consume main qel &
if [[ -f $packages/qel-capi.pc ]]; then
  read -ra flags <<<"$(pkg-config --cflags --libs qel-capi)"
  "$compiler" -x c -std=c99 -MMD -MF qel-capi.d "$here/capi.c" -o by_qel-capi "${flags[@]}"
  ./by_qel-capi
fi
[[ ! -f $packages/qel-html.pc ]] || consume html qel-html
[[ ! -f $packages/qel-qt.pc ]] || consume widget qel-qt
wait $!

echo "== what is installed =="
included=$(sed 's/[: \\]/\n/g' ./*.d | sed -n 's|.*/prefix/.*\(include/qel/.*\)|prefix/\1|p' | sort -u)
diff <(echo "$included") <(find prefix -type f | grep -vE '^prefix/(bin|lib[0-9]*|share)/' | sort)

echo "== add_subdirectory =="
configure_consumer add_subdirectory -DQEL_SOURCE_DIR="$here/../.."
"$cmake" --build add_subdirectory --target compiled

#!/usr/bin/env bash
# Builds and runs the consumer next to this script in the three ways the library can be used:
# find_package and pkg-config on a tree installed from BUILD, add_subdirectory on the sources,
# there as a shared library.
# Usage: run.sh CMAKE BUILD COMPILER [CONFIG]
set -euo pipefail

cmake=$1 build=$2 compiler=$3 config=${4:-}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

build_consumer() {
  local way=$1
  shift
  "$cmake" -S "$here" -B "$work/$way" -DCMAKE_CXX_COMPILER="$compiler" "$@"
  "$cmake" --build "$work/$way" --parallel 2
}

echo "== install =="
"$cmake" --install "$build" --prefix "$work/installed" ${config:+--config "$config"}
# What is found must not depend on where the tree was installed first.
mv "$work/installed" "$work/prefix"

echo "== find_package =="
build_consumer find_package -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_BUILD_TYPE=Debug
"$work/find_package/consumer"
if [[ -x $work/find_package/widget ]]; then
  (cd "$work" && QT_QPA_PLATFORM=offscreen "$work/find_package/widget")
fi

echo "== pkg-config =="
pc=$(find "$work/prefix" -name qel.pc)
read -ra flags <<<"$(PKG_CONFIG_PATH=$(dirname "$pc") pkg-config --cflags --libs --static qel)"
"$compiler" -std=c++20 "$here/main.cpp" -o "$work/by_pkg_config" "${flags[@]}"
LD_LIBRARY_PATH=$(dirname "$(dirname "$pc")") "$work/by_pkg_config"

echo "== add_subdirectory =="
build_consumer add_subdirectory -DQEL_SOURCE_DIR="$here/../.." -DBUILD_SHARED_LIBS=ON
"$work/add_subdirectory/consumer"

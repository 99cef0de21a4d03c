#!/usr/bin/env bash
# Builds the wheel without a network, installs it in a fresh environment, and runs the tests and the
# examples of the documentation there.
# Usage: run.sh PYTHON SOURCE BUILD VERSION
set -euo pipefail

python=$1
export QEL_SOURCE=$2 QEL_BUILD=$3 QEL_VERSION=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The build writes beside its sources. It makes the wheel of what it has packed as sources.
cp -r "$QEL_SOURCE/python" "$work/python"
cd "$work/python"
"$python" -m build --no-isolation >build.log 2>&1 || {
  cat build.log
  exit 1
}
ls dist/*-abi3-*.whl

echo "== what the module shows and needs =="
unzip() { "$python" -m zipfile -e "$1" "$2"; }
unzip dist/*.whl unpacked
module=$(echo unpacked/qel/_qel*.so)
diff <(echo PyInit__qel) <(nm -D --defined-only "$module" | awk '$2 == "T" { print $3 }' | grep -v pypy)
if readelf -d "$module" | grep -E 'NEEDED.*(stdc\+\+|libgcc)'; then exit 1; fi

echo "== tests =="
cd "$work"
# Stays for tests that come behind this one.
environment=$QEL_BUILD/python/environment
"$python" -m venv --clear --system-site-packages "$environment"
"$environment/bin/pip" -q --disable-pip-version-check install --no-index --no-deps python/dist/*.whl
"$environment/bin/python" -m pytest -q -p no:cacheprovider "$QEL_SOURCE/tests/python" \
  --doctest-modules --pyargs qel

#!/usr/bin/env bash
# The example for Dask, in the environment in which the test of the package for Python has installed
# its wheel. Exits with 77 where that or Dask is missing.
# Usage: dask.sh ENVIRONMENT QEL
set -euo pipefail

python=$1/bin/python
if ! "$python" -c 'import distributed, qel' 2>/dev/null; then
  echo "scale: skipped, as the package for Python or python3-distributed is missing"
  exit 77
fi
exec "$python" "$(dirname "${BASH_SOURCE[0]}")/dask_test.py" "$2"

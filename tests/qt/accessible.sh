#!/usr/bin/env bash
# Uses the text boxes of a program as an assistive program does, through the desktop's interface for
# them, on a screen and a message bus of its own.
# Usage: accessible.sh PYTHON PROGRAM
set -euo pipefail

if [[ -z ${QEL_ON_OWN_SCREEN:-} ]]; then
  QEL_ON_OWN_SCREEN=1 exec xvfb-run -a dbus-run-session -- "${BASH_SOURCE[0]}" "$@"
fi

log=$(mktemp)
QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 "$2" >"$log" 2>&1 &
program=$!
trap 'kill "$program" 2>/dev/null || true; rm -f "$log"' EXIT
"$1" "${BASH_SOURCE[0]%.sh}.py" || {
  cat "$log" >&2
  exit 1
}

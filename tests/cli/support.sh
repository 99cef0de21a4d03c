# What the scripts that drive the programs share. They source this file.
# shellcheck shell=bash disable=SC2317

# shellcheck disable=SC2034
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit
failures=0

# Whether the program is one of this system, not one that runs under Wine.
is_native() { [[ ! -e ${qel:-}.exe ]]; }

fail() {
  printf 'FAILED: %s\n' "$@"
  failures=$((failures + 1))
}

# gives WHAT EXPECTED COMMAND...: the command succeeds with exactly this output.
gives() {
  local what=$1 expected=$2
  shift 2
  "$@" >"$work/.out" 2>"$work/.err" || fail "$what: exit status $?, $(cat "$work/.err")"
  printf '%s' "$expected" | cmp -s - "$work/.out" ||
    fail "$what" "  expected: $expected" "  got:      $(cat -v "$work/.out")"
}

# breaks STATUS MESSAGE COMMAND...: the command ends with this exit status, and with one line on
# stderr that contains the message.
breaks() {
  local status=$1 message=$2 got=0
  shift 2
  "$@" >/dev/null 2>"$work/.err" || got=$?
  is_native || sed -i 's,\\,/,g' "$work/.err"
  [[ $got == "$status" ]] || fail "$*: exit status $got instead of $status"
  [[ $(wc -l <"$work/.err") == 1 ]] || fail "$*: not one line on stderr: $(cat "$work/.err")"
  grep -qF -- "$message" "$work/.err" || fail "$*: no '$message' in: $(cat "$work/.err")"
}

finish() {
  ((failures == 0)) || echo "$failures failed"
  exit $((failures > 0))
}

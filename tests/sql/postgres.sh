#!/usr/bin/env bash
# The extension in a server of its own, of which nothing is left. Exits with 77 where there is none.
# Usage: postgres.sh CMAKE BUILD CONFIG
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

version=15
if ! command -v pg_virtualenv >/dev/null || [[ ! -x /usr/lib/postgresql/$version/bin/postgres ]]; then
  echo "postgres: skipped, as there is no server of PostgreSQL $version"
  exit 77
fi
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
"$1" --install "$2" --config "$3" --component postgres --prefix "$root/usr" >/dev/null
# An earlier version, which had less.
cat >"$root/usr/share/postgresql/$version/extension/qel--0.0.sql" <<'SQL'
CREATE FUNCTION qel_plain(markup text, options json DEFAULT '{}') RETURNS text
AS 'MODULE_PATHNAME', 'qelpg_plain' LANGUAGE C;
SQL
# The server runs as another user where this is root.
chmod -R a+rX "$root"

printf '%s' "\\copy cases FROM '$here/cases.tsv' (FORMAT csv, DELIMITER E'\\t', QUOTE E'\\x01', NULL E'\\x02')" \
  >"$root/cases"
server() {
  LC_ALL=C.UTF-8 pg_virtualenv -t -v "$version" -i '--encoding=UTF8 --locale=C.UTF-8' \
    -o "extension_destdir=$root" \
    -o "dynamic_library_path=$root/usr/lib/postgresql/$version/lib:\$libdir" "$@"
}
# shellcheck disable=SC2016
PSQLRC=/dev/null server bash -c 'psql -q -v cases="$(<"$1/cases")" -v script="$1/script" -f "$2" >"$1/output" 2>&1' bash "$root" \
  "$here/postgres.sql" >"$root/server" 2>&1 || {
  cat "$root/output" "$root/server"
  exit 1
}
# The errors that are expected.
grep -vE 'ERROR:  (canceling statement due to statement timeout|.*no equivalent in encoding "LATIN1")$' \
  "$root/output" && exit 1
exit 0

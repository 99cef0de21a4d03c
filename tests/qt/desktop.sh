#!/usr/bin/env bash
# Uses the text boxes of a program on a screen of its own, with keys and mouse: shortcuts, a drag
# from box to box, the large editor, the clipboard of other programs.
# Usage: desktop.sh PROGRAM
set -euo pipefail

if [[ -z ${QEL_ON_OWN_SCREEN:-} ]]; then
  QEL_ON_OWN_SCREEN=1 exec xvfb-run -a "${BASH_SOURCE[0]}" "$@"
fi

log=$(mktemp)
QT_QPA_PLATFORM=xcb "$1" >"$log" &
program=$!
trap 'kill "$program" 2>/dev/null || true; rm -f "$log"' EXIT

# expect LINE: waits until the program has printed the line.
expect() {
  for _ in {1..100}; do
    grep -qxF -- "$1" "$log" && return
    sleep 0.1
  done
  echo "The program did not print: $1" >&2
  cat "$log" >&2
  exit 1
}

expect "window: shown"
sleep 0.5
xdotool mousemove 300 80 click 1
xdotool key ctrl+Home shift+Right shift+Right shift+Right ctrl+b
expect "upper: text /b1one/b0 two"

xdotool mousemove 20 22 mousedown 1
for point in "30 40" "50 100" "70 165" "200 200" "202 200"; do
  read -r x y <<<"$point"
  xdotool mousemove "$x" "$y"
  sleep 0.1
done
xdotool mouseup 1
expect "upper: drags"
expect "lower: is dropped on"
expect "lower: text below/b1one/b0"
expect "upper: text  two"
expect "upper: has dragged, effect 2"

xdotool key ctrl+End
xdotool type '!'
expect "upper: text  two!"
xdotool key shift+F2
sleep 0.5
xdotool type ' more'
expect "upper: text  two! more"
xdotool key alt+o
sleep 0.3
xdotool key i
sleep 0.3
xdotool key Return
sleep 0.3
xdotool type '.'
expect "upper: text  two! more."

# own FORMAT: another program puts its input on the clipboard in that format.
own() {
  xclip -selection clipboard -t "$1" >/dev/null 2>&1
}
printf '%s' '{\rtf1 {\b foreign} rtf}' | own text/rtf
xdotool key ctrl+v
expect "upper: text  two! more./b1foreign/b0 rtf"
printf '%s' '{\rtf1 \i application}' | own application/rtf
xdotool key ctrl+v
expect "upper: text  two! more./b1foreign/b0 rtf/i1application/i0"
printf '%s' '<p>a <i>page</i></p>' | own text/html
xdotool key ctrl+a ctrl+v
expect "upper: text a /i1page/i0"
printf 'one\nline' | own UTF8_STRING
xdotool key ctrl+a ctrl+v
expect "upper: text one/nlline"
xdotool key ctrl+a ctrl+b ctrl+c
sleep 0.3
[[ $(xclip -selection clipboard -o) == $'one\nline' ]]
for form in text/rtf application/rtf; do
  xclip -selection clipboard -o -t "$form" | grep -qF '\b'
done
xclip -selection clipboard -o -t text/html | grep -qF '<b>'
printf '1\n2\n3' | xclip -selection primary >/dev/null 2>&1
xdotool mousemove 300 200 click 2
expect "lower: text below/b1one1/nl2/nl3/b0"

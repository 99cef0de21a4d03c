# What the command does on Windows only. run.sh sources this file.
# shellcheck shell=bash disable=SC2154

while IFS='|' read -r message name; do
  breaks 1 "cannot write $name: $message" "$qel" convert a.qel --to text -o "$name"
  breaks 1 "cannot read $name: $message" "$qel" convert "$name" --to text
done <<'END'
Windows keeps this name for a device|con
Windows keeps this name for a device|new/Aux.txt
Windows keeps this name for a device|lpt1 .rtf
Windows would drop the dot or blank|x.
Windows would drop the dot or blank|new/y /x.txt
Windows allows no name with such a character|a?.qel
Windows allows no name with such a character|"a"
END
breaks 1 'cannot create nul/x: Windows keeps' "$qel" convert a.qel --to text -d nul/x
printf 'a.qel\r\nR.RTF\r\n' >lines
gives "a list with CR LF" 'a.txt R.txt ' bash -c "$qel convert --files-from lines --to text -d crlf && cd crlf && printf '%s ' a* R*"
gives "patterns" 'R.txt a.txt t.txt ' \
  bash -c "$qel convert 'R*.?tf' '?.QEL' t.* --to text -d many && cd many && printf '%s ' *"

long=$(printf 'd%.0s' {1..200})
gives "a name in all scripts, in a long path" '' "$qel" convert a.qel --to text -d "$long/$long/Ω ж 語😀"
gives "what it contains" ab cat "$long/$long/Ω ж 語😀/a.txt"
gives "such a name found" '' "$qel" convert -r "$long" --to html -d found
gives "and mirrored" ab cat "found/$long/Ω ж 語😀/a.html"
gives "a path for the system alone" ab \
  bash -c "$qel convert a.qel --to text -d '\\\\?\\Z:${work//\//\\}\\given' && cat given/a.txt"
gives "such an argument" $'語É😀\n' bash -c "$qel text case upper -t '語é😀' && echo"

chmod 440 kept
breaks 1 'cannot write kept: Permission denied' "$qel" convert a.qel --to text -o kept
yes '/b1x/b0y' | head -n 500000 | tr -d '\n' >dense.qel
"$qel" convert dense.qel -d unfinished --to segments 2>/dev/null &
for ((i = 0; i < 1000; ++i)); do
  compgen -G 'unfinished/.qel-*' >/dev/null && break
  sleep 0.01
done
kill -INT $!
wait $! && fail "Ctrl+C: success"
# Wine closes the file a moment after the program has ended, and only then does it go.
for ((i = 0; i < 1000; ++i)); do
  [[ -n $(ls -A unfinished) ]] || break
  sleep 0.01
done
[[ -z $(ls -A unfinished) ]] || fail "Ctrl+C left: $(ls -A unfinished)"

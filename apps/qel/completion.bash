# Completion of the command qel for bash.

_qel_convert_options='--help --from --to --output --directory --jobs --field
  --nl-to-space --no-nl-to-space --tabs-to-space --no-tabs-to-space
  --recognize-crlf --no-recognize-crlf --recognize-tabs --no-recognize-tabs
  --font --color --font-size --tables'
_qel_tables_options='--help --font --color --font-size --tables'

_qel() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} choices=
  case $before in
    --from) choices='qel rtf text' ;;
    --to) choices='qel qelv6 rtf rtf-body simple-rtf text segments' ;;
    -d | --directory)
      mapfile -t COMPREPLY < <(compgen -d -- "$word")
      return
      ;;
    -j | --jobs | --font | --color | --font-size) return ;;
    *)
      if ((COMP_CWORD == 1)); then
        choices='convert tables --help --version'
      elif [[ $word == -* ]]; then
        case ${COMP_WORDS[1]} in
          convert) choices=$_qel_convert_options ;;
          tables) choices=$_qel_tables_options ;;
        esac
      fi
      ;;
  esac
  # Without choices of our own bash offers the names of files.
  if [[ -n $choices ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
  fi
}

complete -o bashdefault -o default -F _qel qel

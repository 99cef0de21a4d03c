# Completion of the command qel for bash.

_qel_convert_options='--help --stated --from --to --output --directory --jobs --field
  --files-from --files0-from --recursive --skip-newer --normalize --notes --headers --links --alternative-texts --report --html-document --html-paragraphs --html-classes --json-lines --csv --on-error
  --nl-to-space --no-nl-to-space --tabs-to-space --no-tabs-to-space
  --recognize-crlf --no-recognize-crlf --recognize-tabs --no-recognize-tabs
  --font --color --font-size --tables'
_qel_text_options='--help --stated --text --output --ignore-case --last --within --style
  --style-from-text --start --length --ignored-words --width --indent --columns --lines
  --font --color --font-size --tables'
_qel_render_options='--help --stated --text --output --width --margin --indent --align --label --transparent
  --reveal-codes --hide-hidden --one-color --no-wrap --font --color --font-size --tables'
_qel_verbs='len plain find left right mid stuff split case toggle compare wrap'
_qel_letters='upper lower swap title first-upper first-lower'
_qel_attributes="plain bold italic underline strike superscript subscript small-caps
  $(echo font{1..9} color{1..9}) $_qel_letters"
_qel_lint_options='--help --stated --json --font --color --font-size --tables'
_qel_tables_options='--help --font --color --font-size --tables'

_qel() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} choices=
  case $before in
    --from) choices='qel rtf text html' ;;
    --to) choices='qel qelv6 rtf rtf-body simple-rtf text segments html' ;;
    -d | --directory)
      mapfile -t COMPREPLY < <(compgen -d -- "$word")
      return
      ;;
    --on-error) choices='stop pass skip' ;;
    --align) choices='left right center' ;;
    case) choices="$_qel_letters initial" ;;
    toggle) choices=$_qel_attributes ;;
    -t | --text | -j | --jobs | --json-lines | --csv | --font | --color | --font-size) return ;;
    *)
      if ((COMP_CWORD == 1)); then
        choices='convert tables text render lint --help --version --stated'
      elif [[ $COMP_CWORD == 2 && ${COMP_WORDS[1]} == text && $word != -* ]]; then
        choices=$_qel_verbs
      elif [[ $word == -* ]]; then
        case ${COMP_WORDS[1]} in
          convert) choices=$_qel_convert_options ;;
          tables) choices=$_qel_tables_options ;;
          text) choices=$_qel_text_options ;;
          render) choices=$_qel_render_options ;;
          lint) choices=$_qel_lint_options ;;
        esac
      fi
      ;;
  esac
  # Without choices of our own, bash offers file names.
  if [[ -n $choices ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
  fi
}

complete -o bashdefault -o default -F _qel qel

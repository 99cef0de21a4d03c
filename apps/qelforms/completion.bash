# Completion of the command qelforms for bash.

_qelforms_verbs='list find show export trash add edit duplicate tag remove restore empty-trash'

_qelforms() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} verb=${COMP_WORDS[1]}
  local choices='' common='--help --database'
  local texts='--title --title-file --body --body-file' order='--tag --sort --reverse'
  case $before in
    --sort) choices='created changed title' ;;
    --as)
      choices='rtf html text qel'
      [[ $verb == export ]] && choices+=' pdf svg'
      ;;
    -d | --database | -o | --output | --title-file | --body-file | --demo) ;;
    --title | --body | --tag | --add | --drop) return ;;
    *)
      if [[ $word == -* ]]; then
        case $verb in
          list | trash) choices="$common $order" ;;
          find) choices="$common --tag" ;;
          show) choices="$common --as" ;;
          export) choices="$common $order --as --output --title" ;;
          add) choices="$common $texts --files" ;;
          edit) choices="$common $texts" ;;
          tag) choices="$common --add --drop" ;;
          remove) choices="$common --for-good" ;;
          duplicate | restore | empty-trash) choices=$common ;;
          *) choices="$common --version --demo" ;;
        esac
      elif ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$_qelforms_verbs" -- "$word" && compgen -f -- "$word")
        return
      fi
      ;;
  esac
  # Without choices of our own, bash offers file names.
  if [[ -n $choices ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
  fi
}

complete -o bashdefault -o default -F _qelforms qelforms

# What bash offers after "vorda".
_vorda() {
  local words='--help --version --text --json --bar' word
  # One option says it all, but for --bar, which may be watched.
  if [ "$COMP_CWORD" -gt 1 ]; then
    words=
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
      [ "$word" = --bar ] && words=--watch
    done
    [ "$COMP_CWORD" -gt 2 ] && words=
  fi
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "${COMP_WORDS[COMP_CWORD]}")
}
complete -F _vorda vorda

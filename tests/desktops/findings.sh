# shellcheck shell=bash
# What a scene finds out.

# figure TEXT: prints it, and keeps it with the pictures, under the scene's name.
figure() {
  echo "$1" | tee -a "/tmp/pictures/${0##*/}.txt"
}

# must TEXT COMMAND...: notes whether that is so. A scene ends with all_is_so.
failed=0
all_is_so() { [ "$failed" = 0 ]; }
must() {
  local text="$1"
  shift
  if "$@"; then
    figure "true: $text"
  else
    figure "FALSE: $text"
    failed=1
  fi
}

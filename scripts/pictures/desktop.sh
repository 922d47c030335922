# shellcheck shell=bash
# What every scene needs. What it starts ends with it.

started=()

# start COMMAND...: in the background, until the end of the scene.
start() {
  "$@" > /dev/null 2>> /tmp/log &
  started=($! "${started[@]}")
}

end_started() {
  local pid
  for pid in "${started[@]}"; do
    kill "$pid" 2> /dev/null || true
    # Some take their time, or more.
    timeout 5 tail -s 0.1 --pid="$pid" -f /dev/null || kill -KILL "$pid" 2> /dev/null || true
    wait "$pid" 2> /dev/null || true
  done
}
trap end_started EXIT

# eventually COMMAND...: until it succeeds; fails after a minute and a half.
eventually() {
  local end=$((SECONDS + 90))
  while [ "$SECONDS" -lt "$end" ]; do
    "$@" > /dev/null 2>&1 && return
    sleep 0.1
  done
  echo "scene: never came true: $*" >&2
  return 1
}

# The bus name of the program's icon.
tray_icon() {
  busctl --user get-property org.kde.StatusNotifierWatcher /StatusNotifierWatcher \
    org.kde.StatusNotifierWatcher RegisteredStatusNotifierItems | grep -o ":[0-9.]*" | grep -m 1 .
}

click_icon() {
  busctl --user call "$(tray_icon)" /StatusNotifierItem org.kde.StatusNotifierItem Activate ii 0 0
}

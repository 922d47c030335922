# shellcheck shell=bash
# start_bus: a session's bus of the scene's own, which can die. Its pid is in $bus.
start_bus() {
  export DBUS_SESSION_BUS_ADDRESS="unix:path=$XDG_RUNTIME_DIR/own-bus"
  rm -f "$XDG_RUNTIME_DIR/own-bus"
  dbus-daemon --session --nofork --nopidfile --address="$DBUS_SESSION_BUS_ADDRESS" \
    2>> /tmp/log &
  bus=$!
  started=("${started[@]}" "$bus")
  eventually busctl --user status org.freedesktop.DBus
}

# shellcheck shell=bash
# Budgie's panel and window manager. What they ask of the system is answered by a bus of its own
# with a play of UPower.
. ./user.sh

# shellcheck disable=SC2034 # user.sh clicks there
icon='1156 1006'
# Its tray embeds windows.
icon_is_there() { no_window; }
desktop() {
  export XDG_CURRENT_DESKTOP=Budgie:GNOME LIBGL_ALWAYS_SOFTWARE=1 GSETTINGS_BACKEND=keyfile
  exec 8< <(exec dbus-daemon --session --nofork --nopidfile --print-address=1 2>> /tmp/log)
  started=($! "${started[@]}")
  read -r DBUS_SYSTEM_BUS_ADDRESS <&8
  export DBUS_SYSTEM_BUS_ADDRESS
  start /usr/bin/python3 -m dbusmock --system --template upower
  eventually busctl --address="$DBUS_SYSTEM_BUS_ADDRESS" status org.freedesktop.UPower
  host XDG_CURRENT_DESKTOP GSETTINGS_BACKEND
  windows
}
windows() {
  start budgie-wm --x11
  eventually xprop -root _NET_SUPPORTING_WM_CHECK
}
start_host() {
  run_host budgie-panel
  sleep 8
}

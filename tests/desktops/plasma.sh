# shellcheck shell=bash
# KDE Plasma, on X11 and on Wayland.
. ./user.sh

# shellcheck disable=SC2034 # user.sh clicks there
icon='1072 1002'
desktop() {
  export XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5 LIBGL_ALWAYS_SOFTWARE=1
  kwriteconfig5 --file kwinrc --group Compositing --key Enabled false
  kbuildsycoca5 2>> /tmp/log
  # What the bus and the service manager start for the desktop finds it.
  dbus-update-activation-environment --systemd DISPLAY XDG_CURRENT_DESKTOP KDE_FULL_SESSION \
    KDE_SESSION_VERSION
  windows
}
windows() {
  start kglobalaccel5
  start kwin_x11
  eventually xprop -root _NET_SUPPORTING_WM_CHECK
}

# The panel is the tray host. The watcher is another program, which outlives it.
start_host() {
  busctl --user status org.kde.kded5 > /dev/null 2>&1 || start kded5
  eventually busctl --user status org.kde.StatusNotifierWatcher
  run_host plasmashell
  eventually panel_is_host
}
panel_is_host() {
  busctl --user get-property org.kde.StatusNotifierWatcher /StatusNotifierWatcher \
    org.kde.StatusNotifierWatcher IsStatusNotifierHostRegistered | grep -q true
}

icon_is_there() { panel_is_host && tray_icon > /dev/null && no_window; }

# wayland_plasma WIDTH HEIGHT: the same on Wayland, with its panel.
wayland_plasma() {
  export XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5 LIBGL_ALWAYS_SOFTWARE=1
  export XDG_SESSION_TYPE=wayland WAYLAND_DISPLAY=wayland-0 KWIN_SCREENSHOT_NO_PERMISSION_CHECKS=1
  rm -f "$XDG_RUNTIME_DIR"/wayland-*
  kbuildsycoca5 2>> /tmp/log
  dbus-update-activation-environment --systemd WAYLAND_DISPLAY XDG_CURRENT_DESKTOP \
    KDE_FULL_SESSION KDE_SESSION_VERSION XDG_SESSION_TYPE
  # A copy has no file capabilities, which a machine of one's own may not grant.
  cp "$(command -v kwin_wayland)" ~/kwin_wayland
  start ~/kwin_wayland --virtual --width "$1" --height "$2" --socket wayland-0 --no-lockscreen
  eventually test -S "$XDG_RUNTIME_DIR/wayland-0"
  export QT_QPA_PLATFORM=wayland
  start_host
}

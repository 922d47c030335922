# shellcheck shell=bash
# KDE Plasma.
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

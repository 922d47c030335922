# shellcheck shell=bash
# KDE Plasma, on X11 and on Wayland.
. ./findings.sh

# plasma SIZE: on a screen that exists in memory only.
plasma() {
  x11_server "$1"
  export XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5 LIBGL_ALWAYS_SOFTWARE=1
  kwriteconfig5 --file kwinrc --group Compositing --key Enabled false
  kbuildsycoca5 2>> /tmp/log
  # What the bus and the service manager start for the desktop finds it.
  dbus-update-activation-environment --systemd DISPLAY XDG_CURRENT_DESKTOP KDE_FULL_SESSION \
    KDE_SESSION_VERSION
  start kglobalaccel5
  start kded5
  start kwin_x11
  eventually xprop -root _NET_SUPPORTING_WM_CHECK
  start_panel
}

# The panel is the tray host. The watcher is another program, which outlives it.
start_panel() {
  plasmashell > /dev/null 2>> /tmp/log &
  panel=$!
  started=("$panel" "${started[@]}")
  eventually panel_is_host
}
end_panel() {
  kill -KILL "$panel"
  wait "$panel" || true
}
panel_is_host() {
  busctl --user get-property org.kde.StatusNotifierWatcher /StatusNotifierWatcher \
    org.kde.StatusNotifierWatcher IsStatusNotifierHostRegistered | grep -q true
}

icon_is_there() { panel_is_host && tray_icon > /dev/null && ! window 'Vorda²' > /dev/null; }

# wayland_plasma WIDTH HEIGHT: the same on Wayland.
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
  start kded5
  start_panel
}

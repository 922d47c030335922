# shellcheck shell=bash
# KDE Plasma on Wayland, and what x11.sh and colors.sh do on X11.
. ./plasma.sh

# wayland_plasma WIDTH HEIGHT: with its panel, pointer and keys.
wayland_plasma() {
  export XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5 LIBGL_ALWAYS_SOFTWARE=1
  export XDG_SESSION_TYPE=wayland WAYLAND_DISPLAY=wayland-0 KWIN_SCREENSHOT_NO_PERMISSION_CHECKS=1
  export KWIN_WAYLAND_NO_PERMISSION_CHECKS=1
  rm -f "$XDG_RUNTIME_DIR"/wayland-*
  kbuildsycoca5 2>> /tmp/log
  dbus-update-activation-environment --systemd WAYLAND_DISPLAY XDG_CURRENT_DESKTOP \
    KDE_FULL_SESSION KDE_SESSION_VERSION XDG_SESSION_TYPE
  # A copy has no file capabilities, which a machine of one's own may not grant.
  [ -e ~/kwin_wayland ] || cp "$(command -v kwin_wayland)" ~/kwin_wayland
  start ~/kwin_wayland --virtual --width "$1" --height "$2" --socket wayland-0 --no-lockscreen
  compositor=${started[0]}
  compositors_bus=$DBUS_SESSION_BUS_ADDRESS
  eventually test -S "$XDG_RUNTIME_DIR/wayland-0"
  export QT_QPA_PLATFORM=wayland
  start_host
  command -v play_input > /dev/null || {
    echo 'scene: play_input is not built (make desktops builds it)' >&2
    return 1
  }
  exec 6> >(exec play_input 2>> /tmp/log)
  started=($! "${started[@]}")
}
end_wayland_plasma() {
  exec 6>&-
  end_host
  kill "$compositor"
  wait "$compositor" || true
}

screen() { DBUS_SESSION_BUS_ADDRESS="$compositors_bus" ./plasma_picture "$1"; }
picture() {
  sleep 1
  screen "/tmp/pictures/$1.png"
}
window() { ./accessible_tree --shown "$1"; }
alert_is_open() { ./accessible_tree | grep -q '^  dialog\|^  alert'; }
# lightness X Y: in percent, of what is right and below of there.
lightness() {
  screen /tmp/screen.png
  convert /tmp/screen.png -crop "200x300+$1+$2" +repage -colorspace gray \
    -format '%[fx:int(100*mean)]' info:
}
menu_is_dark() { [ "$(lightness 1000 200)" -lt 30 ]; }
play() { printf '%s\n' "$@" >&6; }
move() { play "move $1 $2"; }
click() {
  move "$1" "$2"
  sleep 0.5
  play "press ${3:-1}" "release ${3:-1}"
}
key() {
  local name
  for name in "$@"; do play "key $name"; done
}

# shellcheck shell=bash
# Xfce's panel and window manager.
. ./user.sh

# shellcheck disable=SC2034 # user.sh clicks there
icon='1269 14'
desktop() {
  export XDG_CURRENT_DESKTOP=XFCE
  mkdir -p ~/.config/xfce4/xfconf/xfce-perchannel-xml
  cp xfce4-panel.xml ~/.config/xfce4/xfconf/xfce-perchannel-xml/
  host XDG_CURRENT_DESKTOP
  windows
}
windows() {
  start xfwm4
  eventually xprop -root _NET_SUPPORTING_WM_CHECK
  xsetroot -solid '#3c4656' -cursor_name left_ptr
}
start_host() {
  run_host xfce4-panel --disable-wm-check
  eventually busctl --user status org.kde.StatusNotifierWatcher
}

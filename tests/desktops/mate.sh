# shellcheck shell=bash
# MATE's panel, with a tray and nothing else, and Marco.
. ./user.sh

# shellcheck disable=SC2034 # user.sh clicks there
icon='22 12'
desktop() {
  export XDG_CURRENT_DESKTOP=MATE GSETTINGS_BACKEND=keyfile
  gsettings set org.mate.panel toplevel-id-list "['top']"
  gsettings set org.mate.panel object-id-list "['tray']"
  local tray=org.mate.panel.object:/org/mate/panel/objects/tray/
  gsettings set $tray object-type applet
  gsettings set $tray applet-iid NotificationAreaAppletFactory::NotificationArea
  gsettings set $tray toplevel-id top
  host XDG_CURRENT_DESKTOP GSETTINGS_BACKEND
  windows
}
windows() {
  start openbox
  eventually xprop -root _NET_SUPPORTING_WM_CHECK
  xsetroot -solid '#3c5646' -cursor_name left_ptr
}
start_host() {
  run_host mate-panel
  eventually busctl --user status org.kde.StatusNotifierWatcher
}

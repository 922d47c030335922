# shellcheck shell=bash
# Cinnamon, which is its own window manager. The watcher of its trays is another program.
. ./user.sh

# shellcheck disable=SC2034 # user.sh clicks there
icon='1134 1004'
desktop() {
  export XDG_CURRENT_DESKTOP=X-Cinnamon DESKTOP_SESSION=cinnamon LIBGL_ALWAYS_SOFTWARE=1
  export GSETTINGS_BACKEND=keyfile
  gsettings set org.cinnamon.desktop.interface enable-animations false || true
  host XDG_CURRENT_DESKTOP GSETTINGS_BACKEND
}
windows() { :; }
start_host() {
  if ! busctl --user status org.kde.StatusNotifierWatcher > /dev/null 2>&1; then
    start /usr/libexec/xapps/sn-watcher/xapp-sn-watcher
  fi
  run_host cinnamon --replace
  eventually xprop -root _NET_SUPPORTING_WM_CHECK
  sleep 12
}

# shellcheck shell=bash
# What a user does with the tray, with pointer and keys, on a desktop that is there (X11). A desktop
# has start_host and end_host, and says in $icon where the icon is.
. ./bus.sh
. ./findings.sh
. ./colors.sh

# The menu can be read in the tree of the screen readers.
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
host() { dbus-update-activation-environment --systemd DISPLAY "$@"; }

# run_host COMMAND...: the tray host, which end_host ends as an accident would.
run_host() {
  "$@" > /dev/null 2>> /tmp/log &
  host_pid=$!
  started=("$host_pid" "${started[@]}")
}
end_host() {
  kill -KILL "$host_pid"
  wait "$host_pid" 2> /dev/null || true
}

start_tray() {
  vorda-tray 2>> /tmp/log &
  tray=$!
  started=("$tray" "${started[@]}")
}
end_tray() {
  kill "$tray"
  wait "$tray" || true
}

no_window() { ! window 'Vorda²' > /dev/null; }
icon_is_there() { tray_icon > /dev/null && no_window; }
menu_is_open() { window 'Vorda menu' > /dev/null; }
menu_is_closed() { ! menu_is_open; }
alert_is_open() { window 'Vorda' > /dev/null; }
alert_is_closed() { ! alert_is_open; }
is_gone() { ! kill -0 "$1" 2> /dev/null; }

# victim NAME [MIB]: a model server that may be ended; its pid is in $victim.
victim() {
  exec 7< <(exec play_process --seconds 1200 --memory "${2:-600}" -- vllm serve "$1")
  victim=$!
  started=("$victim" "${started[@]}")
  read -r _ <&7
  exec 7<&-
}

# at_icon [BUTTON]: where the desktop shows the icon.
at_icon() {
  # shellcheck disable=SC2154,SC2086 # the desktop says where
  click $icon "${1:-1}"
}
# A panel draws the icon a while after it knows of it: a click may come too soon.
opens_by_click() {
  at_icon "${1:-1}"
  for _ in $(seq 25); do
    menu_is_open && return
    sleep 0.2
  done
  return 1
}
open_menu() { menu_is_open || eventually opens_by_click; }
# Escape may close no more than a submenu.
close_menu() {
  for _ in $(seq 20); do
    menu_is_closed && return
    key Escape
    sleep 0.5
  done
  menu_is_closed
}

# keys_to NAME KEY: that key, until the row of that name is chosen.
keys_to() {
  for _ in $(seq 150); do
    [[ "$(./accessible_tree --keys)" = "$1"* ]] && return
    key "$2"
    sleep 0.2
  done
  return 1
}

# choose NAME ENTRY PICTURE: in the submenu of the row of that name, that entry, by keys.
choose() {
  open_menu || return
  keys_to "$1" Down || return
  key Right
  sleep 0.5
  keys_to "$2" Up || return
  picture "$3"
  key Return
}

strip() {
  ./accessible_tree > /tmp/tree
  grep -m 1 'percent used' /tmp/tree
}
strip_is_new() { [ "$(strip)" != "$1" ]; }

# stays_alive PICTURE: while it is open, the strip shows what has just been started.
stays_alive() {
  local before
  open_menu || return
  before=$(strip) || return
  victim newcomer
  eventually strip_is_new "$before" || return
  picture "$1"
  menu_is_open
}

quits() {
  local quitting=$victim
  choose 'vLLM: to quit' Quit "$1" || return
  eventually is_gone "$quitting"
}
quits_by_force() {
  choose 'vLLM: to kill' 'Force Quit' "$1" || return
  eventually alert_is_open || return
  picture "$1-alert"
  key Return
  eventually is_gone "$victim"
}
shows_details() {
  choose 'vLLM: to see' 'Full details' "$1" || return
  eventually alert_is_open || return
  picture "$1-alert"
  key Return
  eventually alert_is_closed
}

is_read() {
  ./accessible_tree > "$1"
  grep -q "$2" "$1"
}

# try_menu NAME: all that can be done from the icon.
try_menu() {
  local name="$1"
  start_tray
  must 'the icon is there, and no window' eventually icon_is_there
  victim to-quit; local quitting=$victim
  victim to-kill; local killed=$victim
  victim to-see
  sleep 6
  move 300 300
  picture "$name-icon"
  # shellcheck disable=SC2086
  move $icon
  sleep 3
  picture "$name-tooltip"
  must 'a left click opens the menu' eventually opens_by_click
  picture "$name-left"
  must 'a screen reader finds row, memory and role' \
    eventually is_read "/tmp/pictures/$name-screen-reader.txt" \
    'menu item "vLLM: to quit, .*B, model server'
  must 'the open menu stays alive' stays_alive "$name-live"
  must 'the menu closes' close_menu
  victim=$quitting
  must 'a process is quit, by keys' quits "$name-submenu"
  close_menu || true
  victim=$killed
  must 'a process is quit by force, once confirmed' quits_by_force "$name-force"
  close_menu || true
  must 'details are shown' shows_details "$name-details"
  close_menu || true
  at_icon 3
  sleep 3
  # Off the menu.
  move "$((${icon% *} > 300 ? ${icon% *} - 300 : 0))" "${icon#* }"
  picture "$name-right"
  key Escape
  sleep 0.5
  key Escape
  sleep 0.5
  must 'a middle click opens the menu' eventually opens_by_click 2
  picture "$name-middle"
  close_menu || true
}

# try_host_restart NAME: the host dies, and comes back.
try_host_restart() {
  end_host
  must 'the small window appears when the host dies' eventually window 'Vorda²'
  start_host
  must 'the icon comes back with the host' eventually icon_is_there
  sleep 3
  picture "$1-host-restart"
}

# try_bus_restart NAME: the session's bus dies, and all that hangs on it but Vorda is started anew.
try_bus_restart() {
  end_host
  end_tray
  start_bus
  start_host
  start_tray
  must 'the icon is there on a bus of its own' eventually icon_is_there
  kill -KILL "$bus"
  end_host
  sleep 3
  start_bus
  start_host
  must 'the icon comes back with bus and host' eventually icon_is_there
  must 'it is the same process' kill -0 "$tray"
  sleep 3
  picture "$1-bus-restart"
}

# Dark or light, as desktops with GTK tell it.
color_scheme() { gsettings set org.gnome.desktop.interface color-scheme "$1"; }

# try_dark NAME: the desktop has just been made dark.
try_dark() {
  open_menu
  must 'the menu is dark on a dark desktop' eventually menu_is_dark
  picture "$1-dark"
  close_menu || true
}

# try_hidpi NAME X Y: on a screen of two pixels a point, with the panel's call for the place.
try_hidpi() {
  end_host
  end_tray
  x11_server 2400x1800
  echo 'Xft.dpi: 192' | xrdb -nocpp -merge
  export GDK_SCALE=2 GDK_DPI_SCALE=0.5 PLASMA_USE_QT_SCALING=1 QT_SCREEN_SCALE_FACTORS=2
  host GDK_SCALE GDK_DPI_SCALE PLASMA_USE_QT_SCALING QT_SCREEN_SCALE_FACTORS
  windows
  start_host
  start_tray
  must 'the icon is there with two pixels a point' eventually icon_is_there
  sleep 6
  icon="$2 $3"
  must 'the menu opens with two pixels a point' eventually opens_by_click
  must 'it is twice as wide' menu_is_wide
  picture "$1-hidpi"
}
menu_is_wide() {
  eval "$(xdotool getwindowgeometry --shell "$(window 'Vorda menu')")"
  [ "$WIDTH" -gt 600 ]
}

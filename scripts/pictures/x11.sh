# shellcheck shell=bash
# An X11 desktop on a screen that exists in memory only.
. ./desktop.sh

# x11_server SIZE: nobody manages its windows.
x11_server() {
  local number
  exec 9< <(exec Xvfb -displayfd 1 -screen 0 "$1x24" -dpi 96 -nolisten tcp -noreset 2> /dev/null)
  started=($! "${started[@]}")
  read -r number <&9
  export DISPLAY=":$number"
}

# x11_screen SIZE COLOR: with openbox, and a ground of that colour.
x11_screen() {
  x11_server "$1"
  start openbox
  eventually xprop -root _NET_SUPPORTING_WM_CHECK
  xsetroot -solid "$2" -cursor_name left_ptr
}

# What a user does with pointer and keys: move X Y, click X Y [BUTTON], key NAME...
move() { xdotool mousemove "$1" "$2"; }
click() {
  move "$1" "$2"
  sleep 0.3
  xdotool click "${3:-1}"
}
key() { xdotool key "$@"; }

# A window of that title that can be seen, and whatever window of the program can.
window() { xdotool search --onlyvisible --name "^$1\$"; }
any_window() { xdotool search --onlyvisible --class '^Vorda$'; }

# picture NAME [WIDTHxHEIGHT+X+Y]: of the screen, or of a part of it.
picture() {
  sleep 0.5
  import -silent -window root ${2:+-crop "$2"} +repage "/tmp/pictures/$1.png"
}

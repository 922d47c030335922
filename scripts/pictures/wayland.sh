# shellcheck shell=bash
# A sway desktop on a screen that exists in memory only.
. ./desktop.sh

# sway_screen SIZE
sway_screen() {
  export WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1
  cat > ~/sway.conf << CONFIG
output HEADLESS-1 mode ${1}@60Hz scale 1 background #3c4656 solid_color
default_border pixel 1
CONFIG
  rm -f "$XDG_RUNTIME_DIR"/wayland-* "$XDG_RUNTIME_DIR"/sway-ipc.*
  start sway -c ~/sway.conf
  eventually compgen -G "$XDG_RUNTIME_DIR/sway-ipc.*"
  export SWAYSOCK WAYLAND_DISPLAY=wayland-1
  SWAYSOCK=$(echo "$XDG_RUNTIME_DIR"/sway-ipc.*)
  eventually swaymsg -t get_version
}

# picture NAME [WIDTHxHEIGHT+X+Y]: of the screen, or of a part of it.
picture() {
  sleep 0.5
  grim /tmp/screen.png
  convert /tmp/screen.png ${2:+-crop "$2"} +repage "/tmp/pictures/$1.png"
}

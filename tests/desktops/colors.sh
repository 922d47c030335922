# shellcheck shell=bash
# Dark or light, as seen (X11).

# Whether the middle of the open menu is darker than grey.
menu_is_dark() {
  local place
  eval "$(xdotool getwindowgeometry --shell "$(window 'Vorda menu')")"
  place="$((WIDTH - 60))x40+$((X + 30))+$((Y + 60))"
  import -silent -window root -crop "$place" +repage /tmp/place.png
  [ "$(convert /tmp/place.png -colorspace gray -format '%[fx:mean<0.5?1:0]' info:)" = 1 ]
}
menu_is_light() { ! menu_is_dark; }

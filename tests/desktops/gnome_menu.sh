# shellcheck shell=bash
# What can be done from the menu on GNOME, with the pointer. The desktop is there.
. ./odd_names.sh

menu='global.icons()[0].menu'

# menu_picture NAME: the menu and what is around it.
menu_picture() {
  local area
  mapfile -t area < <(shell "const [x, y] = $menu.actor.get_transformed_position().map(Math.round);
    [x - 24, 0, global.stage.width - x + 24, y + $menu.actor.height + 24]" | tr -d '[]' | tr , '\n')
  shell_picture "$1" "${area[@]}"
}

# Whether some row has that name, as the shell shows it.
row_is_called() {
  shell "JSON.stringify([$menu, ...['Largest', 'Model'].map(start => global.item($menu, start))
    .filter(item => item).map(item => item.menu)].flatMap(menu =>
    global.items(menu).map(i => i.label.text)))" |
    python3 -c 'import json, sys
rows = json.loads(json.load(sys.stdin))
sys.exit(not any(row.startswith(sys.argv[1] + "  ·  ") for row in rows))' "$1"
}

open_menu() {
  shell_says "$menu.isOpen" true || shell_click 'global.icons()[0]'
  eventually shell_says "$menu.isOpen" true
}

# Whether the whole menu is on the screen.
menu_fits() {
  shell_says "(() => { const [, y] = $menu.actor.get_transformed_position();
    const last = global.items($menu).pop();
    const [, lastY] = last.get_transformed_position();
    return y >= 0 && lastY + last.height <= global.stage.height &&
      y + $menu.actor.height <= global.stage.height; })()" true
}

# menu_fits_with_each_submenu NAME: all of the submenu, too, with a picture of each.
menu_fits_with_each_submenu() {
  local start
  open_menu
  menu_fits || return
  shell_picture "$1"
  for start in Largest Training Model Agents Auto; do
    shell "!global.item($menu, '$start')" | grep -q true && continue
    shell "global.section('$start').open(false)" > /dev/null
    sleep 0.5
    figure "$1: with $start open the menu is $(shell "$menu.actor.height") lines high"
    shell_picture "$1-$start"
    menu_fits && shell_says "global.section('$start').actor.height ===
      global.section('$start').actor.get_preferred_height(-1)[1]" true || return
    shell "global.section('$start').close(false)" > /dev/null
  done
}

# The menu that the program draws itself. On Wayland it is no window with a title.
own_menu() {
  shell_says "global.get_window_actors().map(actor => actor.meta_window).some(window =>
    (window.title === 'Vorda menu' ||
      (window.get_transient_for() && window.get_transient_for().title === 'Vorda²')) && $1)" true
}
own_menu_is_open() { own_menu true; }
own_menu_is_closed() { ! own_menu_is_open; }
own_menu_fits() {
  own_menu '[window.get_frame_rect()].every(place => place.y >= Main.panel.height &&
    place.y + place.height <= global.stage.height)'
}

# shows COMMAND...: whether that is so, in the menu opened anew if need be: no row comes into an
# open one.
shows() {
  "$@" && return
  shell "$menu.close(false)" > /dev/null
  sleep 1
  open_menu
  "$@"
}
has_row() { shell_says "!!global.item($menu, '$1')" true; }

# from_the_row NAME PLACE PICTURE: in the small menu of that row, the entry at that place from its
# end, by keys.
from_the_row() {
  open_menu
  eventually shows has_row "$1" || return
  shell_click "global.item($menu, '$1')" || return
  eventually own_menu_is_open || return
  for _ in $(seq "$2"); do shell_key Up; done
  shell_picture "$3" 1280 0 640 600
  shell_key Return
}
quits_by_force() {
  from_the_row "$1" 2 "$2" || return
  eventually shell_shows Vorda || return
  shell_picture "$2-alert"
  shell_key Return
  eventually is_gone "$victim"
}
shows_details() {
  from_the_row "$1" 1 "$2" || return
  eventually shell_shows Vorda || return
  shell_picture "$2-alert"
  shell_key Return
  eventually shell_hides Vorda
}
# stays_alive PICTURE: while it is open, the strip shows what has just been started.
stays_alive() {
  local before
  open_menu || return
  before=$(shell "global.items($menu)[0].label.text")
  play_process --seconds 600 --memory 1500 -- newcomer > /dev/null &
  started=($! "${started[@]}")
  eventually strip_is_new "$before" || return
  menu_picture "$1"
  shell_says "$menu.isOpen" true
}
strip_is_new() { [ "$(shell "global.items($menu)[0].label.text")" != "$1" ]; }

# quits_from_the_menu PICTURE: one's own process, from its row's small menu.
quits_from_the_menu() {
  local victim
  play_process --seconds 600 --memory 5000 -- victim > /dev/null &
  victim=$!
  open_menu
  eventually shows has_row victim || return
  shell_click "global.item($menu, 'victim')" || return
  eventually own_menu_is_open || return
  shell_picture "$1" 1280 0 640 600
  # From its last row up: details, Force Quit, Quit.
  shell_key Up; shell_key Up; shell_key Up
  shell_key Return
  eventually is_gone "$victim"
}
is_gone() { ! kill -0 "$1" 2> /dev/null; }

# opens_whole_menu PICTURE
opens_whole_menu() {
  open_menu
  shell_click "global.item($menu, 'Open Vorda')" || return
  eventually own_menu_is_open || return
  shell_shows 'Vorda²' || return
  shell_picture "$1"
  must "the whole menu is on the screen: $1" own_menu_fits
  shell_key Escape
  eventually own_menu_is_closed && eventually shell_hides 'Vorda²'
}
shell_hides() { ! shell_shows "$1"; }

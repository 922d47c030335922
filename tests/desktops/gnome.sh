# shellcheck shell=bash
# GNOME Shell with the AppIndicator extension. What it asks of the system is answered by a bus of
# its own with a play of logind.
. ./findings.sh

kExtension=ubuntu-appindicators@ubuntu.com

# gnome_system: what the shell asks of the system, and how it is set.
gnome_system() {
  local address
  exec 8< <(exec dbus-daemon --session --nofork --nopidfile --print-address=1 2>> /tmp/log)
  started=($! "${started[@]}")
  read -r address <&8
  export DBUS_SYSTEM_BUS_ADDRESS="$address"
  export XDG_CURRENT_DESKTOP=GNOME XDG_SESSION_CLASS=user GNOME_SHELL_SESSION_MODE=user
  export XDG_SESSION_ID=c1 LIBGL_ALWAYS_SOFTWARE=1 GSETTINGS_BACKEND=keyfile
  start /usr/bin/python3 -m dbusmock --system --template logind
  eventually busctl --address="$address" status org.freedesktop.login1
  busctl --address="$address" call org.freedesktop.login1 /org/freedesktop/login1 \
    org.freedesktop.DBus.Mock AddSession ssusb c1 seat0 1000 ada true > /dev/null
  gsettings set org.gnome.shell enabled-extensions "['$kExtension']"
  gsettings set org.gnome.shell disabled-extensions '[]'
  gsettings set org.gnome.shell welcome-dialog-last-shown-version 999
  gsettings set org.gnome.desktop.interface enable-animations false
  dbus-update-activation-environment --systemd ${DISPLAY:+DISPLAY} XDG_CURRENT_DESKTOP \
    GSETTINGS_BACKEND
}

# gnome_shell OPTION...: starts it and waits until it is there. Its pid is in $shell.
gnome_shell() {
  start gnome-shell --sm-disable --unsafe-mode "$@"
  # shellcheck disable=SC2034 # scenes end it
  shell=${started[0]}
  eventually shell_says 'Main.layoutManager._startingUp' false
  eventually busctl --user status org.kde.StatusNotifierWatcher
  shell 'Main.overview.hide();
    global.pointer = imports.gi.Clutter.get_default_backend().get_default_seat()
      .create_virtual_device(imports.gi.Clutter.InputDeviceType.POINTER_DEVICE);
    global.keyboard = imports.gi.Clutter.get_default_backend().get_default_seat()
      .create_virtual_device(imports.gi.Clutter.InputDeviceType.KEYBOARD_DEVICE);
    global.icons = () => Object.entries(Main.panel.statusArea).filter(([name, icon]) =>
      name.startsWith("appindicator-") && icon.visible && icon._indicator.id === "vorda")
      .map(([name, icon]) => icon);
    global.items = menu => menu._getMenuItems().filter(item => item.label);
    global.item = (menu, start) => global.items(menu).find(i => i.label.text.startsWith(start));
    global.section = start => global.item(global.icons()[0].menu, start).menu;
    1' > /dev/null
}

# x11_gnome SIZE, wayland_gnome SIZE: on a screen that exists in memory only.
x11_gnome() {
  x11_server "$1"
  gnome_system
  gnome_shell --x11
}
wayland_gnome() {
  export WAYLAND_DISPLAY=wayland-0
  gnome_system
  gnome_shell --wayland --headless --no-x11 --virtual-monitor "$1"
}

# shell SCRIPT: what it comes to in the shell, as JSON.
shell() {
  busctl --user --json=short call org.gnome.Shell /org/gnome/Shell org.gnome.Shell Eval s "$1" |
    python3 -c 'import json, sys; done, value = json.load(sys.stdin)["data"]; print(value)
sys.exit(not done)'
}
shell_says() { [ "$(shell "$1")" = "$2" ]; }

# shell_click ACTOR: with the pointer, into its middle, as a user would.
shell_click() {
  shell "(() => { const actor = $1; const [x, y] = actor.get_transformed_position();
    global.pointer.notify_absolute_motion(0, x + actor.width / 2, y + actor.height / 2); })()" \
    > /dev/null
  sleep 0.3
  shell_button PRESSED
  shell_button RELEASED
  sleep 0.7
}
shell_button() {
  shell "global.pointer.notify_button(0, 1, imports.gi.Clutter.ButtonState.$1)" > /dev/null
}

# shell_key NAME: as Clutter names it.
shell_key() {
  shell "for (const state of ['PRESSED', 'RELEASED']) global.keyboard.notify_keyval(0,
    imports.gi.Clutter.KEY_$1, imports.gi.Clutter.KeyState[state])" > /dev/null
  sleep 0.7
}

# shell_picture NAME [X Y WIDTH HEIGHT]: the screen as the shell shows it, or a part of it.
shell_picture() {
  local method=Screenshot arguments=(bbs false false)
  if [ $# -gt 1 ]; then
    method=ScreenshotArea
    arguments=(iiiibs "${@:2}" false)
  fi
  sleep 0.5
  busctl --user call org.gnome.Shell.Screenshot /org/gnome/Shell/Screenshot \
    org.gnome.Shell.Screenshot "$method" "${arguments[@]}" "/tmp/pictures/$1.png" > /dev/null
}

# Whether the shell shows a window of that title; they are those of this desktop alone.
shell_shows() {
  shell_says "global.get_window_actors().some(a => a.visible && a.meta_window.title === '$1')" true
}

# gnome_scale SCALE: on the one monitor that there is, as the settings do it.
gnome_scale() {
  local display=(org.gnome.Mutter.DisplayConfig /org/gnome/Mutter/DisplayConfig
    org.gnome.Mutter.DisplayConfig)
  local serial connector mode
  read -r serial connector mode < <(busctl --user --json=short call "${display[@]}" GetCurrentState |
    python3 -c 'import json, sys
serial, monitors = json.load(sys.stdin)["data"][:2]
print(serial, monitors[0][0][0], monitors[0][1][0][0])')
  busctl --user call "${display[@]}" ApplyMonitorsConfig 'uua(iiduba(ssa{sv}))a{sv}' \
    "$serial" 1 1 0 0 "$1" 0 true 1 "$connector" "$mode" 0 0
}

# extension on|off
extension() {
  local verb=enable
  [ "$1" = on ] || verb=disable
  shell "Main.extensionManager.${verb}Extension('$kExtension')" > /dev/null
}

# One icon, not more, and the list agrees.
icon_is_there() {
  shell_says 'global.icons().length' 1 && tray_icon > /dev/null
}

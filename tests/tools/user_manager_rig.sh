#!/usr/bin/env bash
# Runs a real systemd user manager on a machine whose PID 1 is not systemd, for tests.
#
#   user_manager_rig.sh FOLDER [UID]
#
# FOLDER becomes the manager's world: units are read from FOLDER/home/.config/systemd/user,
# its bus is FOLDER/run/bus. It runs as the user UID (root when not given; the user needs no
# account); its pid is in FOLDER/manager.pid. Prints "ready" once the manager answers, and runs
# until its standard input is closed or it is told to end; then everything that it started is
# gone. Clients run outside, as the same user, with
#
#   XDG_RUNTIME_DIR=FOLDER/run DBUS_SESSION_BUS_ADDRESS=unix:path=FOLDER/run/bus
#
# Exit status 77 with a line on standard error: that can't be done on this machine.
set -u

cannot() {
  echo "no user manager here: $*" >&2
  exit 77
}

if [ "${1:-}" != --inside ]; then
  [ $# -ge 1 ] || { echo "usage: $0 FOLDER [UID]" >&2; exit 2; }
  [ "$(id -u)" = 0 ] || cannot "only root can prepare one"
  [ -x /lib/systemd/systemd ] || cannot "systemd is not installed"
  [ -e /usr/lib/systemd/user/dbus.socket ] || cannot "dbus-user-session is not installed"
  unshare --mount true 2>/dev/null || cannot "no mount namespaces"
  exec unshare --mount --propagation private "$0" --inside "$(realpath "$1")" "${2:-0}"
fi

folder=$2
user=$3
home=$folder/home
runtime=$folder/run

# A machine that seems to run systemd, with one control group of its own.
mount -t tmpfs tmpfs /run/systemd 2>/dev/null ||
  { mkdir -p /run/systemd && mount -t tmpfs tmpfs /run/systemd; } || cannot "no tmpfs"
mkdir -p /run/systemd/system
mount -t cgroup2 cgroup2 /sys/fs/cgroup || cannot "no cgroup2"
cgroup=$(mktemp -d /sys/fs/cgroup/vorda-test-XXXXXX) || cannot "no control groups"
chmod 755 "$cgroup"

end() {
  trap - EXIT
  # Whatever the manager started is in the group, wherever it forked itself to.
  for _ in $(seq 200); do
    # shellcheck disable=SC2038 # what goes through the pipe is pids, not file names
    echo 1 > "$cgroup/cgroup.kill" 2>/dev/null ||
      find "$cgroup" -name cgroup.procs -exec cat {} + | xargs -r kill -KILL 2>/dev/null
    find "$cgroup" -depth -type d -exec rmdir {} + 2>/dev/null && break
    sleep 0.02
  done
  exit "${1:-0}"
}
trap end EXIT
trap 'end 0' TERM INT HUP

# dbus-daemon serves nobody without an account; inside, the user has one.
if ! getent passwd "$user" > /dev/null; then
  { cat /etc/passwd; echo "vorda-test:x:$user:$user::$home:/bin/sh"; } > "$folder/passwd"
  mount --bind "$folder/passwd" /etc/passwd || cannot "no account for user $user"
fi

mkdir -p "$home/.config/systemd/user" "$runtime"
chmod 700 "$runtime"
chown -R "$user" "$home" "$runtime"
chown "$user" "$cgroup" "$cgroup"/cgroup.{procs,subtree_control,threads}
export HOME=$home XDG_RUNTIME_DIR=$runtime DBUS_SESSION_BUS_ADDRESS=unix:path=$runtime/bus
unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CONFIG_DIRS XDG_DATA_DIRS NOTIFY_SOCKET LISTEN_FDS LISTEN_PID

as_user() { setpriv --reuid "$user" --regid "$user" --clear-groups -- "$@"; }

(
  echo "$BASHPID" > "$cgroup/cgroup.procs"
  exec setpriv --reuid "$user" --regid "$user" --clear-groups -- \
    /lib/systemd/systemd --user --unit=dbus.service --log-target=console
) < /dev/null > /dev/null 2> "$folder/manager.log" &
echo $! > "$folder/manager.pid"
disown

for _ in $(seq 200); do
  if as_user busctl --user status org.freedesktop.systemd1 > /dev/null 2>&1; then
    echo ready
    # Ends when the other end does. In the background, so that a signal is not kept waiting.
    cat > /dev/null <&0 &
    wait $!
    end 0
  fi
  sleep 0.05
done
cat "$folder/manager.log" >&2
cannot "it does not answer"

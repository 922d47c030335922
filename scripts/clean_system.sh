# shellcheck shell=bash
# Clean systems of Debian's kind, for the scripts that build packages in them or try some.
#
# Needs root, and what packages.txt lists for check-packages. MIRROR names where a system's packages
# come from (default: where this machine's apt has its own from), KEYRING the file of the keys that
# they are signed with (default: debootstrap's for that system).

# Exit status 77: such a system can't be made on this machine.
cannot() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 77
}

this_suite() {
  # shellcheck source=/dev/null
  (. /etc/os-release && echo "$VERSION_CODENAME")
}

# MIRROR, else this machine's.
mirror_here() {
  # shellcheck disable=SC2016 # apt-get expands it
  [ -n "${MIRROR:-}" ] || MIRROR="$(apt-get indextargets --format '$(SITE)' "Created-By: Packages" \
    "Codename: $(this_suite)" | awk 'NR == 1')"
  echo "$MIRROR"
}

# make_clean_system SUITE FOLDER
make_clean_system() {
  local scripts=/usr/share/debootstrap/scripts components=main keyring=()
  local script="$scripts/$1"
  # A debootstrap that is older than a release of Ubuntu makes it like the others.
  [ -e "$script" ] || script="$scripts/gutsy"
  # There most of what a build needs is in another component.
  [ "$(realpath "$script")" != "$scripts/gutsy" ] || components=main,universe
  [ -z "${KEYRING:-}" ] || keyring=(--keyring="$KEYRING")
  debootstrap --variant=minbase --components="$components" "${keyring[@]}" "$1" "$2" \
    "$(mirror_here)" "$script" > "$2.log" || cannot "debootstrap fails: $(tail -n 1 "$2.log")"
}

# mount_into FOLDER, unmount_from FOLDER: what programs need to run in it.
mount_into() {
  mount -t proc proc "$1/proc" || cannot "no mounts"
  mount -t devpts -o ptmxmode=666 devpts "$1/dev/pts" || cannot "no mounts"
  ln -sf pts/ptmx "$1/dev/ptmx"
}
unmount_from() { umount "$1/proc" "$1/dev/pts" 2> /dev/null || true; }

# inside FOLDER COMMAND...
inside() {
  chroot "$1" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 "${@:2}"
}
# apt_inside FOLDER ARGUMENT...
apt_inside() {
  inside "$1" DEBIAN_FRONTEND=noninteractive apt-get -q -y --no-install-recommends \
    -o APT::Sandbox::User=root "${@:2}" > /dev/null
}

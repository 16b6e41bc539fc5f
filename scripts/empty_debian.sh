# An empty Debian in a folder, made by debootstrap as root. To be sourced, before anything that takes its time.
[ "$(id -u)" -eq 0 ] || { echo "${0##*/}: only root makes an empty system" >&2 && exit 1; }

# Where this machine has its Debian from.
debian_mirror() {
  local found
  found=$({ cat /etc/apt/sources.list /etc/apt/sources.list.d/*.{list,sources} 2> /dev/null || true; } |
    sed -n '/^#/d; s/.*\(https\?:[^ ]*\/debian\)\/\?\( .*\)\?$/\1/p' | head -n 1)
  echo "${found:-http://deb.debian.org/debian}"
}

# start_debian RELEASE FOLDER: the system, with what this machine's apt says of proxies and certificates.
start_debian() {
  local mirror proxy="" more=()
  mirror=$(debian_mirror)
  [[ $mirror != https:* ]] || more=(--include=ca-certificates)
  eval "$(apt-config shell proxy Acquire::http::Proxy)"
  mkdir -p "$2"
  http_proxy=${proxy:-${http_proxy:-}} debootstrap --variant=minbase "${more[@]}" "$1" "$2" "$mirror" ||
    return 1
  apt-config dump | grep -E '^Acquire::(https?|Check|Retries)' > "$2/etc/apt/apt.conf.d/90host" || true
  echo force-unsafe-io > "$2/etc/dpkg/dpkg.cfg.d/fast" # it is thrown away
  cp -L /etc/resolv.conf "$2/etc/"
  # Its devices are its own: who takes away by hand what a killed script has left takes none of this machine's.
  mount -t proc proc "$2/proc" && mount -t devpts -o newinstance,ptmxmode=666 devpts "$2/dev/pts" &&
    mount -t tmpfs -o mode=1777 shm "$2/dev/shm"
}

# inside FOLDER COMMAND...: by a new user, whose environment says nothing.
inside() {
  chroot "$1" env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root "${@:2}"
}

# end_debian FOLDER: takes the system away. What still runs there keeps nothing of this machine's own.
end_debian() {
  local mounted
  for mounted in dev/shm dev/pts proc; do
    ! mountpoint -q "$1/$mounted" || umount "$1/$mounted" || umount -l "$1/$mounted"
  done
  rm -rf --one-file-system "$1"
}

#!/bin/sh
# Makes a disk with Debian's own tools, for what busybox's do not do: the project's tests. When something changed; without root.
#
#   build_disk.sh FOLDER ARCH    makes FOLDER/disk
set -eu
folder=$(cd "$1" && pwd)
arch=$2
scripts=$(cd "$(dirname "$0")" && pwd)

"$scripts/fetch.sh" -d "$folder/debian" "$arch" dash bash coreutils debianutils diffutils findutils grep sed mawk util-linux mount \
  procps net-tools bridge-utils hostname libstdc++6 libc-bin sysvinit-utils login passwd psmisc base-files base-passwd || exit 3
key=$(cat "$folder/debian/list" "$0" | sha256sum)
[ -f "$folder/disk.key" ] && [ -f "$folder/disk" ] && [ "$(cat "$folder/disk.key")" = "$key" ] && exit 0

root=$folder/debian-root
rm -rf "$root" "$folder/disk"
mkdir -p "$root"
while read -r deb; do dpkg -x "$deb" "$root"; done <"$folder/debian/list"
rm -rf "$root/usr/share/doc" "$root/usr/share/man" "$root/usr/share/locale" "$root/usr/share/i18n"
# What the packages' own scripts would have done.
mkdir -p "$root/proc" "$root/sys" "$root/dev" "$root/tmp" "$root/run" "$root/out" "$root/etc" "$root/root" "$root/var/tmp" "$root/mnt"
chmod 1777 "$root/tmp" "$root/var/tmp"
[ -e "$root/bin/sh" ] || ln -s dash "$root/bin/sh"
[ -e "$root/usr/bin/awk" ] || ln -s mawk "$root/usr/bin/awk"
cp "$root/usr/share/base-passwd/passwd.master" "$root/etc/passwd"
cp "$root/usr/share/base-passwd/group.master" "$root/etc/group"
echo gateway >"$root/etc/hostname"
echo "127.0.0.1 localhost" >"$root/etc/hosts"
truncate -s 256M "$folder/disk"
mke2fs -q -t ext4 -m 0 -E root_owner=0:0 -d "$root" "$folder/disk"
echo "$key" >"$folder/disk.key"

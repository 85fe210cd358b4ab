#!/bin/sh
# Makes kernel and first file system of the machine, when something changed. Nothing of it needs root.
#
#   build_image.sh FOLDER ARCH KERNEL BUILD
#
# FOLDER has packages/ and modules/; BUILD is the project's build for ARCH. Makes FOLDER/kernel and FOLDER/image.
set -eu
folder=$(cd "$1" && pwd)
arch=$2
kernel=$3
build=$(cd "$4" && pwd)
tree=$(cd "$(dirname "$0")/../.." && pwd)
case $arch in
  arm64) triplet=aarch64-linux-gnu linker=lib/ld-linux-aarch64.so.1 ;;
  amd64) triplet=x86_64-linux-gnu linker=lib64/ld-linux-x86-64.so.2 ;;
esac

# What Debian's kernel has as modules: 9p for the results, bridges, a disk with ext4, and what simulations need.
wanted="virtio_mmio virtio_pci 9p 9pnet_virtio bridge virtio_blk ext4 overlay veth"

if [ ! -f "$folder/kernel-files/$kernel" ]; then
  rm -rf "$folder/kernel-files"
  mkdir -p "$folder/kernel-files"
  modules=./lib/modules/$kernel/kernel
  dpkg --fsys-tarfile "$folder"/packages/linux-image-"$kernel"_*.deb |
    tar -x -C "$folder/kernel-files" --wildcards "./boot/vmlinuz-*" "$modules/net/9p/*" "$modules/fs/9p/*" \
      "$modules/fs/netfs/*" "$modules/fs/fscache/*" "$modules/drivers/virtio/*" "$modules/net/bridge/bridge.ko" \
      "$modules/net/llc/*" "$modules/net/802/*" "$modules/drivers/block/virtio_blk.ko" "$modules/fs/ext4/*" "$modules/fs/jbd2/*" \
      "$modules/fs/mbcache.ko" "$modules/lib/crc*" "$modules/lib/libcrc*" "$modules/crypto/crc*" "$modules/fs/overlayfs/*" \
      "$modules/drivers/net/veth.ko"
  touch "$folder/kernel-files/$kernel"
fi
cp "$folder/kernel-files/boot/vmlinuz-$kernel" "$folder/kernel"

key=$(cd "$tree" && cat box/image/* box/questions/*.[ch] box/tools/*.c include/*.h tests/gateway/library_probe.* tests/gateway/probe_*.c "$build"/share/gateway-sim/dat/* \
  "$folder/modules/stamp" "$folder/packages/list" "$build"/lib/lib*.so.1 "$build/bin/wlanctl" "$build/bin/apply_settings" \
  "$build/libexec/gateway-sim/gateway-tools" "$0" | sha256sum)
[ -f "$folder/image" ] && [ -f "$folder/image.key" ] && [ "$(cat "$folder/image.key")" = "$key" ] && exit 0

root=$folder/root
rm -rf "$root"
mkdir -p "$root"
for name in bin sbin etc dev proc sys tmp run out lib lib64 usr/bin usr/lib usr/sbin userfs/bin modules var/run \
  lib/modules/4.4.115 etc/Wireless/RT2860AP etc/Wireless/RT2860AP_AC root; do
  mkdir -p "$root/$name"
done

# A module after those that it needs.
add_module() {
  case " $added " in *" $1 "*) return ;; esac
  added="$added $1"
  file=$(find "$folder/kernel-files/lib" -name "$1.ko" -o -name "$(echo "$1" | tr _ -).ko" | head -n 1)
  # What is not among the files is built in.
  [ -n "$file" ] || return 0
  for needed in $(modinfo -F depends "$file" | tr , ' '); do add_module "$needed"; done
  file=$(find "$folder/kernel-files/lib" -name "$1.ko" -o -name "$(echo "$1" | tr _ -).ko" | head -n 1)
  cp "$file" "$root/modules/$1.ko"
  echo "$1" >>"$root/modules/order"
}
added=
for name in $wanted crc32c_generic; do add_module "$name"; done

user=$folder/user
rm -rf "$user"
mkdir "$user"
for name in busybox-static libc6 libstdc++6 libgcc-s1 libiw30 wireless-tools; do
  for deb in "$folder/packages/$name"_*_"$arch".deb; do dpkg -x "$deb" "$user"; done
done
cp "$user/bin/busybox" "$root/bin/busybox"
ln -s busybox "$root/bin/sh"
cp -L "$user/$linker" "$root/$linker"
for name in libc.so.6 libm.so.6 libgcc_s.so.1; do cp -L "$user/lib/$triplet/$name" "$root/lib"; done
for name in libstdc++.so.6 libiw.so.30; do
  for place in lib usr/lib; do
    [ ! -e "$user/$place/$triplet/$name" ] || cp -L "$user/$place/$triplet/$name" "$root/lib"
  done
done
cp "$user/sbin/iwpriv" "$root/userfs/bin/iwpriv"

# The project's, stripped; the library as it ships.
for name in "$build"/lib/lib*.so.*; do [ -L "$name" ] || cp "$name" "$root/lib/"; done
for name in "$build"/lib/lib*.so*; do [ ! -L "$name" ] || cp -P "$name" "$root/lib/"; done
for name in wlanctl apply_settings attach_store status_page switch_radio; do
  ${triplet}-strip -o "$root/usr/bin/$name" "$build/bin/$name"
done
${triplet}-strip -o "$root/userfs/bin/gateway-tools" "$build/libexec/gateway-sim/gateway-tools"
for name in simctl mtd; do ln -s gateway-tools "$root/userfs/bin/$name"; done
ln -s /userfs/bin/simctl "$root/usr/bin/simctl"
ln -s /userfs/bin/gateway-tools "$root/usr/bin/wscd"
ln -s /userfs/bin/gateway-tools "$root/usr/bin/sys"
ln -s /userfs/bin/mtd "$root/usr/bin/mtd"
cp "$build/share/gateway-sim/dat/RT2860AP.dat" "$root/etc/Wireless/RT2860AP/RT2860AP.dat"
cp "$build/share/gateway-sim/dat/RT2860AP_AC.dat" "$root/etc/Wireless/RT2860AP_AC/RT2860AP.dat"
cp "$folder"/modules/*.ko "$root/lib/modules/4.4.115/"
mv "$root/lib/modules/4.4.115/mt7915_ap.ko" "$root/lib/modules/"

flags="-O2 -Wall -Wextra -Werror"
${triplet}-gcc $flags -nostdlib -static -o "$root/bin/leave" "$tree/box/image/leave_$arch.S"
${triplet}-gcc $flags -o "$root/usr/bin/ask" "$tree/box/questions/ask.c" "$tree/box/questions/plain_ioctl.c"
${triplet}-gcc $flags -static -o "$root/usr/bin/ask-static" "$tree/box/questions/ask.c" "$tree/box/questions/own_ioctl.c"
${triplet}-gcc $flags -o "$root/usr/bin/cut_at" "$tree/box/tools/cut_at.c"
${triplet}-gcc -O2 -I"$tree/include" -o "$root/usr/bin/library_probe" "$tree"/tests/gateway/library_probe.c "$tree"/tests/gateway/probe_*.c \
  -L"$build/lib" -Wl,-rpath-link,"$build/lib" -lapi_lib_wifimgr
cp "$tree/box/image/init" "$root/init"
cp "$tree/box/image/inittab" "$root/etc/inittab"
cp "$tree/box/image/passwd" "$root/etc/passwd"
cp "$tree/box/image/boot" "$tree/box/image/gateway" "$tree/box/image/on-disk" "$root/bin/"
chmod 755 "$root/init" "$root"/bin/boot "$root/bin/gateway" "$root/bin/on-disk"

(cd "$root" && find . | LC_ALL=C sort | cpio -o -H newc -R 0:0 --quiet) | gzip -1 >"$folder/image.new"
mv "$folder/image.new" "$folder/image"
echo "$key" >"$folder/image.key"

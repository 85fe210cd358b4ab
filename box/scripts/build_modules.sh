#!/bin/sh
# Builds the driver's modules against Debian's headers, when something changed.
#
#   build_modules.sh FOLDER ARCH KERNEL    FOLDER/packages has the headers; the modules go to FOLDER/modules
set -eu
folder=$(cd "$1" && pwd)
arch=$2
kernel=$3
tree=$(cd "$(dirname "$0")/../.." && pwd)
case $arch in
  arm64) kernel_arch=arm64 prefix=aarch64-linux-gnu- ;;
  amd64) kernel_arch=x86_64 prefix=x86_64-linux-gnu- ;;
esac

shared="lists reading stations wps neighbours processes request_table state_text"
modules="mt7603eap mt7615_ap mt7662e_ap mt7663_ap mt7915_ap"
headers=$folder/headers/usr/src/linux-headers-$kernel

stamp=$folder/modules/stamp
key=$(cd "$tree" && cat box/driver/* box/driver/libc/* sim/driver/*.[ch] "$0" 2>/dev/null | sha256sum; echo "$kernel $folder")
[ -f "$stamp" ] && [ "$(cat "$stamp")" = "$key" ] && exit 0

if [ "$(cat "$headers/unpacked" 2>/dev/null)" != "$folder" ]; then
  rm -rf "$folder/headers"
  mkdir -p "$folder/headers"
  for deb in "$folder"/packages/linux-headers-"${kernel%-"$arch"}"*.deb "$folder"/packages/linux-kbuild-*.deb; do
    dpkg -x "$deb" "$folder/headers"
  done
  # Headers lie where they are installed to, says their makefile.
  sed -i "s|/usr/src/|$folder/headers/usr/src/|" "$headers/Makefile"
  echo "$folder" >"$headers/unpacked"
fi

work=$folder/modules/work
rm -rf "$folder/modules"
mkdir -p "$work"
cp "$tree"/box/driver/*.[ch] "$tree/box/driver/Kbuild" "$work"
for name in $shared; do cp "$tree/sim/driver/$name.c" "$work"; done
cp "$tree/sim/driver/radio.c" "$work/answer_radio.c"
for name in $modules; do cp "$work/chip.c" "$work/$name.c"; done

log=$folder/modules/log
make -s -C "$headers" M="$work" ARCH=$kernel_arch CROSS_COMPILE=$prefix TREE="$tree" -j2 modules >"$log" 2>&1 || {
  cat "$log" >&2
  exit 1
}
# Skipping BTF is for want of the kernel's own, which modules do without.
if grep -v -e "^Skipping BTF" -e "^warning: the compiler differs" -e "^  The kernel was built by" -e "^  You are using" "$log"; then
  echo "build_modules: the modules are to be built without a warning" >&2
  exit 1
fi
for name in zq2810 $modules; do
  ${prefix}strip --strip-debug -o "$folder/modules/$name.ko" "$work/$name.ko"
done
echo "$key" >"$stamp"

#!/bin/sh
# Builds the machine and runs stories in it, each beside the same story in the simulated gateway.
#
#   box.sh build|shell|all|STORY...     ARCH=arm64 (the default) or native
#
# Exit codes: 0 all is as it should be; 1 a story failed or its facts differ in another way than differences.txt says; 2 no such story;
# 3 something is missing on this machine.
set -eu
tree=$(cd "$(dirname "$0")/../.." && pwd)
scripts=$tree/box/scripts
PATH=$PATH:/usr/sbin:/sbin
host=$(dpkg --print-architecture 2>/dev/null || echo unknown)

missing() {
  echo "box: $1" >&2
  exit 3
}

case ${ARCH:-arm64} in
  arm64) arch=arm64 build=$tree/build/arm64 qemu=qemu-system-aarch64 package=qemu-system-arm ;;
  native)
    arch=$host build=$tree/build/release qemu=qemu-system-x86_64 package=qemu-system-x86
    [ "$arch" = amd64 ] || missing "ARCH=native is for amd64 machines; this one is $host"
    ;;
  *) missing "no machine is called $ARCH: arm64 or native" ;;
esac
native=$tree/build/release
folder=$tree/build/box/$arch

command -v dpkg >/dev/null 2>&1 || missing "this needs a Debian system"
for need in "$qemu:$package" cpio:cpio modinfo:kmod make:make gcc:gcc; do
  command -v "${need%%:*}" >/dev/null 2>&1 || missing "${need%%:*} is missing: apt-get install ${need#*:}"
done
if [ $arch = arm64 ] && ! command -v aarch64-linux-gnu-gcc >/dev/null 2>&1; then
  missing "a compiler for ARM64 is missing: apt-get install g++-aarch64-linux-gnu"
fi
[ -f "$build/bin/wlanctl" ] && [ -f "$native/bin/gateway-sim" ] || missing "nothing is built yet: make box does that"

# Kernel, headers and user space in one version: what Debian has today.
kernel=$("$scripts/fetch.sh" -k "$folder/packages" "$arch") || exit 3
[ -n "$kernel" ] || missing "Debian has no kernel for $arch"
"$scripts/fetch.sh" "$folder/packages" "$arch" "linux-image-$kernel:$arch" "linux-headers-$kernel:$arch" \
  "linux-headers-${kernel%-"$arch"}-common" "linux-kbuild-$(echo "$kernel" | cut -d. -f1,2):$host" "busybox-static:$arch" \
  "wireless-tools:$arch" "libiw30:$arch" "libc6:$arch" "libstdc++6:$arch" "libgcc-s1:$arch" || exit 3
"$scripts/build_modules.sh" "$folder" $arch "$kernel"
"$scripts/build_image.sh" "$folder" $arch "$kernel" "$build"

# KVM may be there and not work, as inside another machine.
if [ $arch = amd64 ] && [ ! -f "$folder/accel" ]; then
  mkdir -p "$folder/runs/probe"
  if [ -r /dev/kvm ] && [ -w /dev/kvm ]; then
    echo kvm >"$folder/accel"
    code=0
    BOX_APPEND=probe "$scripts/machine.sh" "$folder" $arch "$folder/runs/probe" 15 >/dev/null 2>&1 || code=$?
    [ $code -eq 42 ] || echo tcg >"$folder/accel"
  else
    echo tcg >"$folder/accel"
  fi
  echo "box: the machine runs under $(cat "$folder/accel")"
fi
bus=device
[ $arch = arm64 ] || bus=pci

# The same questions are asked inside the simulated gateway.
mkdir -p "$folder/native"
for kind in plain own; do
  name=ask
  static=
  [ $kind = plain ] || name=ask-static static=-static
  gcc -O2 -Wall -Wextra -Werror $static -o "$folder/native/$name" "$tree/box/questions/ask.c" "$tree/box/questions/${kind}_ioctl.c"
done

gcc -O2 -Wall -Wextra -Werror -o "$folder/native/cut_at" "$tree/box/tools/cut_at.c"
gcc -O2 -I"$tree/include" -o "$folder/native/library_probe" "$tree"/tests/gateway/library_probe.c "$tree"/tests/gateway/probe_*.c \
  -L"$native/lib" -Wl,-rpath,"$native/lib" -lapi_lib_wifimgr

# setting STORY NAME DEFAULT: from the head of the story.
setting() {
  value=$(sed -n "s/^# $2: //p" "$tree/box/stories/$1.sh" | head -n 1)
  echo "${value:-$3}"
}

# Prepares the folder that the machine sees.
prepare() {
  run=$folder/runs/$1
  rm -rf "$run"
  mkdir -p "$run/sim"
  cp "$tree"/box/stories/lib.sh "$tree"/box/questions/*.txt "$run"
  [ "$1" = shell ] || cp "$tree/box/stories/$1.sh" "$run/story.sh"
  printf 'story=%s\nchips=%s\nkeeps=%s\nexport STORY=/out WORLD=box TREE=%s BUILD=%s TORTURE_SECONDS=%s TORTURE_SEED=%s\n' \
    "$1" "$2" "$3" "$tree" "$build" "${TORTURE_SECONDS:-600}" "${TORTURE_SEED:-}" >"$run/machine"
}

in_simulation() {
  (cd "$run/sim" && STORY=$run WORLD=sim TORTURE_SECONDS=20 PATH="$native/bin:$folder/native:$PATH" \
    timeout 300 "$native/bin/gateway-sim" --chips "$2" -- sh "$run/story.sh") >"$run/sim-facts" 2>"$run/sim-complaints"
}

# Every line that differs is a row of differences.txt, and every row of the story differs.
compare() {
  diff "$run/sim-facts" "$run/facts" | sed -n 's/^< /sim\t/p; s/^> /box\t/p' | sort >"$run/differ"
  awk -F '\t' -v story="$1" '$1 == story { print $2 "\t" $3 }' "$tree/box/differences.txt" | sort >"$run/expected"
  diff -u "$run/expected" "$run/differ" >"$run/unexpected" && return
  echo "box: $1: the machine and the simulated gateway differ in another way than box/differences.txt says (-: it says, +: they do):"
  sed 1,3d "$run/unexpected"
  return 1
}

run_story() {
  [ -f "$tree/box/stories/$1.sh" ] || { echo "box: no story is called $1; there are: $stories" >&2; exit 2; }
  chips=$(setting "$1" chips 7603,7663)
  seconds=$(setting "$1" seconds 180)
  prepare "$1" "$chips" "$(setting "$1" keeps nothing)"
  code=0
  # What the machine has beside its first file system.
  set -- "$1"
  append= memory=160
  if [ "$(setting "$1" disk no)" = debian ]; then
    "$scripts/build_disk.sh" "$folder" $arch
    append=disk memory=512
    set -- "$1" -drive "file=$folder/disk,if=none,id=disk,format=raw,snapshot=on" -device virtio-blk-$bus,drive=disk \
      -fsdev "local,id=tree,path=$tree,security_model=none,readonly=on" -device virtio-9p-$bus,fsdev=tree,mount_tag=tree
  fi
  story=$1
  shift
  BOX_REBOOTS=$(setting "$story" reboots no)
  export BOX_APPEND="$append" BOX_MEMORY=$memory BOX_REBOOTS
  if [ -x "$tree/box/stories/$story.machine" ]; then
    FOLDER=$folder MACHINE_ARCH=$arch RUN=$run "$tree/box/stories/$story.machine" || code=$?
  else
    "$scripts/machine.sh" "$folder" $arch "$run" "$((seconds * ${BOX_PATIENCE:-1}))" "$@" || code=$?
  fi
  touch "$run/facts" "$run/cpu"
  cpu=$(awk '{ sum += $1 } END { printf "%.1f", sum }' "$run/cpu")
  case $code in
    0) ;;
    95) echo "box: $story: the machine ended before its story did; console: $run/console" ;;
    97) echo "box: $story: the kernel complained: $run/kernel-complaints" ;;
    124 | 137) echo "box: $story: not done after $seconds seconds; console: $run/console" ;;
    *)
      echo "box: $story: exit code $code; console: $run/console"
      grep '^not true' "$run/facts" || tail -n 5 "$run/console" "$run/complaints" 2>/dev/null || :
      ;;
  esac
  if [ $code -eq 0 ] && [ "$(setting "$story" simulation yes)" = yes ]; then
    in_simulation "$story" "$chips" || { code=$?; echo "box: $story: in the simulated gateway it ends with $code:"
      grep '^not true' "$run/sim-facts" || cat "$run/sim-complaints"; }
    [ $code -ne 0 ] || compare "$story" || code=1
  fi
  result=passed
  [ $code -eq 0 ] || result=FAILED
  printf '%-12s %s  %s CPU s\n' "$story" $result "$cpu"
  [ $code -eq 0 ] || failed="$failed $story"
}

stories=$(cd "$tree/box/stories" && ls ./*.sh | sed 's|^\./||; s|\.sh$||' | grep -v '^lib$' | tr '\n' ' ')
failed=
case ${1:-} in
  build) exit 0 ;;
  shell)
    prepare shell 7603,7663 nothing
    BOX_SHELL=1 exec "$scripts/machine.sh" "$folder" $arch "$run" 86400
    ;;
  all) set -- $stories ;;
  '') echo "usage: box.sh build|shell|all|STORY..." >&2; exit 2 ;;
esac
for story in "$@"; do run_story "$story"; done
[ -z "$failed" ] || { echo "box: failed:$failed" >&2; exit 1; }

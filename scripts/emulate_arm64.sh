#!/bin/sh
# Runs a command where ARM64 programs start like the machine's own: in a user and a mount namespace in which the kernel
# hands them to QEMU. Nothing of the machine changes.
#
#   emulate_arm64.sh ARM64-BUILD NATIVE-BUILD COMMAND...
#
# Linux 6.7 is the first with hand-overs per user namespace. An older one must hand ARM64 programs over everywhere, as it
# does once Debian's binfmt-support is installed along with qemu-user-static.
set -eu

emulator=/usr/bin/qemu-aarch64-static
libraries=/usr/aarch64-linux-gnu/lib
driver=libexec/gateway-sim/libgateway_driver.so

refuse() {
  echo "emulate_arm64: $1" >&2
  exit 1
}

# QEMU looks for what a program opens below this folder first. It has the loader and the libraries, under the machine's own
# links, and the driver of a simulated gateway. That is preloaded into every program there: the machine's own, such as the
# shell, need it built for them, and see the native one under its name.
make_prefix() {
  prefix=$arm64/emulation
  rm -rf "$prefix"
  mkdir -p "$prefix/usr/lib" "$prefix/userfs/lib"
  if [ -L /lib ]; then ln -s usr/lib "$prefix/lib"; else mkdir "$prefix/lib"; fi
  ln -s "$libraries" "$prefix/usr/lib/aarch64-linux-gnu"
  ln -s "$libraries/ld-linux-aarch64.so.1" "$prefix/lib/"
  cp "$arm64/$driver" "$prefix/userfs/lib/"
  mount --bind "$native/$driver" "$arm64/$driver"
  export QEMU_LD_PREFIX="$prefix"
}

register_emulator() {
  formats=/proc/sys/fs/binfmt_misc
  if ! mount -t binfmt_misc binfmt_misc "$formats" 2>/dev/null; then
    "$arm64/bin/gateway-sim" --version >/dev/null 2>&1 ||
      refuse "Linux $(uname -r) needs to be told what runs ARM64 programs: install binfmt-support and qemu-user-static again"
    return
  fi
  magic='\x7fELF\x02\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\xb7\x00'
  mask='\xff\xff\xff\xff\xff\xff\xff\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff'
  printf '%s' ":arm64:M::$magic:$mask:$emulator:OCPF" >"$formats/register"
}

if [ "${EMULATE_ARM64:-}" = inside ]; then
  unset EMULATE_ARM64
  # The identities of this namespace are there once this line comes.
  read -r _ <&3
  exec 3<&-
  arm64=$1 native=$2
  shift 2
  make_prefix
  register_emulator
  exec "$@"
fi

[ $# -ge 3 ] || refuse "usage: emulate_arm64.sh ARM64-BUILD NATIVE-BUILD COMMAND..."
for part in "$1/$driver" "$2/$driver" "$emulator" "$libraries/ld-linux-aarch64.so.1"; do
  [ -e "$part" ] || refuse "$part is missing"
done
arm64=$(cd "$1" && pwd) native=$(cd "$2" && pwd)
shift 2
script=$(cd "$(dirname "$0")" && pwd)/$(basename "$0")
export EMULATE_ARM64=inside

work=$(mktemp -d)
child=
# The command has a group of its own, so that an interrupt ends all of it.
end() {
  [ -z "$child" ] || kill -TERM -- -"$child" 2>/dev/null || true
  rm -rf "$work"
}
trap end EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
mkfifo "$work/ready"
if [ "$(id -u)" -eq 0 ]; then
  # All users stay themselves, for the tests that run as another one.
  setsid unshare -U -m sh "$script" "$arm64" "$native" "$@" 3<>"$work/ready" &
  child=$!
  own=$(readlink /proc/self/ns/user)
  while [ "$(readlink /proc/$child/ns/user)" = "$own" ]; do sleep 0.01; done
  for map in uid_map gid_map; do cat /proc/self/$map >/proc/$child/$map; done
else
  setsid unshare -U -r -m sh "$script" "$arm64" "$native" "$@" 3<>"$work/ready" &
  child=$!
fi
exec 4<>"$work/ready"
echo >&4
status=0
wait $child || status=$?
exit $status

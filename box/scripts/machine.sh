#!/bin/sh
# Runs one machine until it ends by itself or its time is over, and exits with its exit code.
#
#   machine.sh FOLDER ARCH RUN SECONDS [QEMU-OPTION...]
#
# RUN is the folder that the machine sees as /out; its console is kept in RUN/console, the CPU seconds that it took are added to
# RUN/cpu. 124: the time was over; 95: the machine ended, but not by its story.
set -eu
folder=$1
arch=$2
run=$3
seconds=$4
shift 4

bus=device
case $arch in
  arm64)
    set -- qemu-system-aarch64 -machine virt -cpu cortex-a53 -accel tcg,thread=multi \
      -semihosting-config enable=on,userspace=on,target=native "$@"
    console=ttyAMA0
    ;;
  amd64)
    # Of the accelerators the one that was seen to work here.
    accel=$(cat "$folder/accel" 2>/dev/null || echo tcg)
    cpu=qemu64 bus=pci
    [ "$accel" = tcg ] || cpu=host
    set -- qemu-system-x86_64 -machine q35 -cpu $cpu -accel "$accel" -device isa-debug-exit,iobase=0xf4 "$@"
    # Where the machine outside is busy the kernel takes its timer for broken.
    console="ttyS0 no_timer_check"
    ;;
esac
serial=file:$run/console.last
[ "${BOX_SHELL:-}" != 1 ] || serial=mon:stdio

reboot=-no-reboot
[ "${BOX_REBOOTS:-}" != yes ] || reboot=

code=0
# shellcheck disable=SC2086 # no word where reboots are let through
set -- timeout --foreground --kill-after=5 "$seconds" "$@" -smp 2 -m "${BOX_MEMORY:-160}" -nic none -display none -monitor none \
  $reboot -kernel "$folder/kernel" -initrd "${BOX_IMAGE:-$folder/image}" \
  -append "console=$console quiet panic=-1 rdinit=/init ${BOX_APPEND:-}" \
  -fsdev "local,id=out,path=$run,security_model=none" -device virtio-9p-$bus,fsdev=out,mount_tag=out -serial "$serial"
rm -f "$run/console.last" "$run/code"
"$@" 2>"$run/qemu-says" &
machine=$!
echo $machine >"$run/machine.pid"
wait $machine || code=$?
rm -f "$run/machine.pid"
[ ! -f "$run/console.last" ] || cat "$run/console.last" >>"$run/console"
rm -f "$run/console.last"
# User and system time of what has ended.
times >"$run/times"
sed -n 2p "$run/times" | tr 'ms' '  ' | awk '{ print $1 * 60 + $2 + $3 * 60 + $4 }' >>"$run/cpu"
# The debug device's codes are odd: twice the story's and one. 0 is a machine that went off, or a kernel that gave up.
if [ "$arch" = amd64 ]; then
  case $code in
    0) code=95 ;;
    *[13579]) [ $code -eq 137 ] || code=$((code / 2)) ;;
  esac
fi
# A story leaves its code behind; so a machine that goes off before, or does not even start, is not taken for one that is done.
[ $code -ne 0 ] || [ ! -f "$run/story.sh" ] || [ -f "$run/code" ] || code=95
exit $code

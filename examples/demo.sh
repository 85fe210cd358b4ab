#!/bin/sh
# The demo: a management process changes and applies settings inside the simulated gateway; then the system, not the
# library, shows what that did.
#
# usage: demo.sh BUILD_FOLDER
set -eu

build=$1
here=$(cd "$(dirname "$0")" && pwd)

if [ -z "${GATEWAY_SIM:-}" ]; then
  # Chips with a loadable driver, so that the change of the SSID count shows a module being reloaded.
  exec "$build/bin/gateway-sim" --chips 7603,7612 -- "$here/demo.sh" "$build"
fi

bold='' plain=''
if [ -t 1 ]; then
  bold=$(printf '\033[1m') plain=$(printf '\033[0m')
fi

heading() { printf '\n%s== %s%s\n' "$bold" "$1" "$plain"; }

# What the kernel says of every radio interface: up or down, and its bridge.
interfaces() {
  for device in /sys/class/net/ra* /sys/class/net/wds*; do
    name=${device##*/}
    state=down
    [ $(($(cat "$device/flags") & 1)) -eq 1 ] && state=up
    bridge=-
    [ -e "$device/master" ] && bridge=$(basename "$(readlink "$device/master")")
    printf '%s %s %s\n' "$name" "$state" "$bridge"
  done | sort | awk '{ line = sprintf("%-6s %-5s %s", $1, $2, $3); printf "  %-24s", line; if (NR % 3 == 0) print "" }
    END { if (NR % 3) print "" }'
}

dat24=/etc/Wireless/RT2860AP/RT2860AP.dat
dat5=/etc/Wireless/RT2860AP_AC/RT2860AP.dat

heading "The gateway after its boot: radio interfaces, from the kernel (name, state, bridge)"
interfaces

# Errors on, trace off: an operator's switch, read by the platform's debug library.
printf '1\n' >/tmp/wifi_lib_dbg_enable
printf '1\n' >/tmp/vexalib_dbg
cp "$dat24" /tmp/before-2.4g.dat
cp "$dat5" /tmp/before-5g.dat
calls_before=$(wc -l </run/gateway-sim/journal)

"$build/bin/apply_settings" 2>&1

heading "What changed in the dat files (comments and blank lines are gone: a save writes the store)"
for band in 2.4g 5g; do
  file=$dat24
  [ "$band" = 5g ] && file=$dat5
  echo "$band:"
  for side in "/tmp/before-$band.dat" "$file"; do
    grep -v -e '^#' -e '^$' "$side" >"$side.settings"
  done
  diff "/tmp/before-$band.dat.settings" "$file.settings" | grep '^[<>]' | cut -c1-110 | sed 's/^/  /' || true
done

heading "The commands that the library ran, from the gateway's journal (call, what it changed)"
tail -n "+$((calls_before + 1))" /run/gateway-sim/journal | cut -f2- | awk -F '\t' '{ printf "  %-52s %s\n", $1, $2 }'

heading "The radio interfaces now, from the kernel"
interfaces

heading "A second process attaches to the same store: it sees the unsaved beacon period, the file does not have it"
"$build/bin/attach_store"
printf '      the 2.4G dat file says %s\n' "$(grep '^BeaconPeriod=' "$dat24")"

heading "Done"
echo "The gateway above was simulated in namespaces of its own and is gone now. Look around in one yourself:"
echo "  $build/bin/gateway-sim --shell"

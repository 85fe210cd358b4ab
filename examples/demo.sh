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
echo
echo "(\"device wds0 is not a port of br-lan\" is what brctl says: a commit takes the WDS links out of the bridge"
echo "whether they are in it or not, and does not look at the answer.)"

heading "What changed in the dat files"
for band in 2.4g 5g; do
  file=$dat24
  [ "$band" = 5g ] && file=$dat5
  echo "$band: $file"
  grep -v -e '^#' -e '^$' "/tmp/before-$band.dat" | awk -F= '
    function shortened(text) { return length(text) > 28 ? substr(text, 1, 25) "..." : text }
    NR == FNR { old[$1] = substr($0, length($1) + 2); next }
    {
      new = substr($0, length($1) + 2)
      seen[$1] = 1
      if (old[$1] == new) next
      if (index(old[$1], new ";") == 1) { cut++; next }
      printf "  %-18s %s -> %s\n", $1, shortened(old[$1]), shortened(new)
    }
    END {
      for (key in old) if (!(key in seen)) dropped++
      printf "  and %d lists cut to the SSID count, %d keys of SSIDs beyond it left out\n", cut, dropped
    }' - "$file"
  comments=$(grep -c -e '^#' -e '^$' "/tmp/before-$band.dat" || true)
  echo "  and $comments comments and blank lines gone: a save writes what the store holds"
done

# Calls since a line of the journal: the call, and what it changed.
journal_since() {
  tail -n "+$(($1 + 1))" /run/gateway-sim/journal | cut -f2- | awk -F '\t' '{ printf "  %-52s %s\n", $1, $2 }'
}

heading "The commands that the library ran, from the gateway's journal (call, what it changed)"
journal_since "$calls_before" | grep -v '^  iwpriv' | grep -v '/iwpriv '

heading "The execute script of the last SSID of 2.4G, and what the driver has taken up on its interface"
sed 's/^/  /' /etc/Wireless/RT2860AP/WLAN_exec.sh
echo "ra2 in the driver:"
iwpriv ra2 show | grep -E 'AuthMode|EncrypType|HideSSID|SSID=|TxBurst' | sed 's/^/  /'

heading "The radio interfaces now, from the kernel"
interfaces

heading "A second process attaches to the same store: it sees the unsaved beacon period, the file does not have it"
"$build/bin/attach_store"
printf '      the 2.4G dat file says %s\n' "$(grep '^BeaconPeriod=' "$dat24")"

heading "A narrow restart of 5G: interfaces only, no dat file, no driver"
calls_before=$(wc -l </run/gateway-sim/journal)
"$build/bin/switch_radio" restart 1
journal_since "$calls_before"

heading "2.4G switched off, then on"
echo "The switch works on br0, the commit on br-lan. An interface in br-lan can neither leave nor join"
echo "br0, so these go down and up and stay where they are."
"$build/bin/switch_radio" off 0 2>&1 | grep -v 'is not a port of br0' || true
echo "off:" && interfaces
"$build/bin/switch_radio" on 0 2>&1 | grep -v 'already a member of a bridge' || true
echo "on:" && interfaces

# Both went down, so whoever was there has left; the home's devices find the new networks.
simctl station add ra0 02:5a:10:24:00:11 rrm=7300000000000000 btm=01
simctl station add ra2 02:5a:10:24:00:12
simctl station add rai0 02:5a:10:50:00:21 rrm=7300000000000000 btm=01
heading "What the radios are doing, asked through the library"
"$build/bin/status_page"

heading "The air changes: a station joins ra0 and starts WPS, another access point appears, 5G moves; the page follows"
simctl station add ra0 02:5a:10:24:00:77 rrm=7100000000000000
simctl wps ra0 state 3 peer 02:5a:10:24:00:77
simctl neighbour add 2.4G 02:6e:40:24:00:99 channel=11 signal=-41 ssid=New-Upstairs
iwpriv rai0 set Channel=100
"$build/bin/status_page" | grep -E '^(2.4G|5G)|:77|New-Upstairs'

heading "Done"
echo "The gateway above was simulated in namespaces of its own and is gone now. Go on in one yourself:"
echo "  $build/bin/gateway-sim --shell"
echo "and there, with the operator's tool and the simulation's controls:"
echo "  wlanctl status                      where you are"
echo "  wlanctl set 2.4g SSID:1=Kitchen Channel=11"
echo "  wlanctl apply 2.4g"
echo "  simctl show                         what the driver and the board answer"
echo "  simctl --help                       make them answer otherwise, or fail"
echo "  cat /run/gateway-sim/journal        the commands that ran"

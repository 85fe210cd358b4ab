# What stories have in common. A story runs in the machine and in the simulated gateway alike; what it prints on standard output
# is compared, its exit code is the number of what was not true.

wrong=0

# fact WORDS...: something to compare.
fact() { printf '%s\n' "$*"; }

# must COMMAND...: it succeeds.
must() {
  "$@" && return
  printf 'not true: %s\n' "$*"
  wrong=$((wrong + 1))
}

# must_be TEXT COMMAND...: it prints TEXT.
must_be() {
  expected=$1
  shift
  printed=$("$@" 2>&1) || :
  [ "$printed" = "$expected" ] && return
  printf 'not true: %s prints "%s", not "%s"\n' "$*" "$printed" "$expected"
  wrong=$((wrong + 1))
}

# What the radios report, without its wandering.
steady() {
  for band in 2.4G:-90:30:50 5G:-94:10:55; do
    set -- $(printf '%s' "$band" | tr : ' ')
    must simctl noise "$1" "$2"
    must simctl load "$1" "$3"
    must simctl temperature "$1" "$4"
    must simctl neighbour remove "$1" all
  done
  must simctl neighbour add 2.4G 02:6e:40:24:00:01 channel=6 signal=-71 ssid='Corner Bakery' wps=1
  must simctl neighbour add 2.4G 02:6e:40:24:00:02 channel=11 signal=-64 ssid=Two
  must simctl neighbour add 5G 02:6e:40:50:00:01 channel=36 signal=-77 ssid=Three
}

# Every radio interface: up or down, and its bridge.
interfaces() {
  for device in /sys/class/net/ra* /sys/class/net/wds*; do
    [ -d "$device" ] || continue
    state=down
    [ $(($(cat "$device/flags") & 1)) -eq 1 ] && state=up
    bridge=-
    [ -e "$device/master" ] && bridge=$(basename "$(readlink "$device/master")")
    fact "${device##*/} $state $bridge"
  done
}

dat24=/etc/Wireless/RT2860AP/RT2860AP.dat
dat5=/etc/Wireless/RT2860AP_AC/RT2860AP.dat
script24=/etc/Wireless/RT2860AP/WLAN_exec.sh
script5=/etc/Wireless/RT2860AP_AC/WLAN_exec.sh

# file PATH: its bytes, in a number.
file() { fact "$1 $( [ -f "$1" ] && md5sum <"$1" | cut -d" " -f1 || echo absent)"; }

# settings INTERFACE: what the driver knows of it, but for readings.
settings() { iwpriv "$1" show | grep -E '^[A-Za-z0-9]+=' | grep -vE '^(Noise|ChannelLoad|Temperature)='; }

# Stations of all interfaces.
stations() { simctl show | sed -n 's/^  station \([0-9a-f:]*\) on \([a-z0-9]*\): .*/\2 \1/p'; }

# probe WORD...: a process that uses the library, one step after the other.
probe() { library_probe "$@" 2>>complaints; }

# done_here: the story's end.
done_here() { exit $wrong; }

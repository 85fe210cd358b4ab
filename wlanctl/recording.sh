#!/bin/sh
# Records the main story of wlanctl in the simulated gateway, as it looks on a terminal: a change that is confirmed, and
# one that is not. Prints the recording, with the longest lists of the dry run cut.
#
# usage: recording.sh BUILD_FOLDER
set -eu

build=${1:?usage: recording.sh BUILD_FOLDER}
cd "$build"

# shellcheck disable=SC2016 # the inner shell expands
bin/gateway-sim -- sh -c '
PATH=$PWD/bin:$PATH

type() {
  echo "gateway# $1"
  eval "$1" 2>&1 || echo "(exit code $?)"
}

type "wlanctl set 2.4g SSID:1=Kitchen Channel=11"
type "wlanctl diff 2.4g"
type "wlanctl apply 2.4g --dry-run"
type "wlanctl apply 2.4g --confirm 60"
type "wlanctl confirm 2.4g"
type "wlanctl status 2.4g | grep -oE \"channel [0-9]+|settings.*\""
echo
echo "# The same, but nobody confirms: within three seconds all is as before."
type "wlanctl set 2.4g SSID:1=Attic"
type "wlanctl apply 2.4g --confirm 3"
type "while [ -e /var/run/wlanctl-pending-2.4g ]; do sleep 1; done"
type "wlanctl get 2.4g SSID:1"
type "wlanctl diff 2.4g"
' | awk '
function show(  i) {
  for (i = 1; i <= lines; ++i) {
    if (lines > 12 && i > 2 && i < lines - 1) {
      if (i == 3) print "    [...]"
    } else {
      sub(/ +$/, "", list[i])
      print list[i]
    }
  }
  lines = 0
}
# The hour is another one each time.
{
  while (match($0, /[0-9]+-[0-9]+-[0-9]+ [0-9]+:[0-9]+:[0-9]+/))
    $0 = substr($0, 1, RSTART - 1) "DATE " (++times % 2 ? "12:00:00" : "12:00:03") substr($0, RSTART + RLENGTH)
  gsub(/DATE/, "2027-01-31")
}
/^    / { list[++lines] = $0; next }
{ show(); print }
END { show() }'

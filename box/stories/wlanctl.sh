# The operator's tool: set, diff, dry run, apply, confirm, take back; and what a kill leaves behind.
# seconds: 240
. "$STORY/lib.sh"
steady
status() { wlanctl status 2>>complaints | grep -E '(channel|SSID|pending|confirm)' | head -n 12; }
must wlanctl set 2.4g SSID:1=Kitchen Channel=11
wlanctl diff 2.4g 2>&1
wlanctl apply 2.4g --dry-run >dry-run 2>&1
fact "dry run: $?, $(grep -c ifconfig dry-run) lines of ifconfig"
file $dat24
wlanctl apply 2.4g --confirm 60 2>&1
wlanctl confirm 2.4g 2>&1
interfaces
settings ra0 | grep -E '^(SSID|Channel)='
fact "nobody confirms"
must wlanctl set 2.4g SSID:1=Cellar Channel=3
wlanctl apply 2.4g --confirm 10 >applied 2>&1
fact "apply: $?"
waited=0
until iwpriv ra0 show | grep -q '^SSID=Kitchen$' || [ $waited = 300 ]; do
  sleep 0.2
  waited=$((waited + 1))
done
# The tool is still at it when the radio is back.
until [ -z "$(pidof wlanctl)" ] || [ $waited = 300 ]; do
  sleep 0.2
  waited=$((waited + 1))
done
settings ra0 | grep -E '^(SSID|Channel)='
interfaces
grep -E '^(SSID1|Channel)=' $dat24
fact "the one who waits is killed"
must wlanctl set 2.4g SSID:1=Attic
wlanctl apply 2.4g --confirm 15 >applied 2>&1
kill -9 $(pidof wlanctl)
sleep 16
# Who looks is told; who changes something has it taken back first.
wlanctl diff 2.4g >after-kill 2>&1
fact "diff: $?"
settings ra0 | grep -E '^SSID='
must wlanctl set 2.4g Channel=5
settings ra0 | grep -E '^SSID='
fact "the process that applies is killed"
must wlanctl set 2.4g Channel=9
wlanctl apply 2.4g >applied 2>&1 &
victim=$!
sleep 0.3
kill -9 $victim 2>/dev/null
wait $victim 2>/dev/null
must wlanctl apply 2.4g >applied 2>&1
settings ra0 | grep -E '^(SSID|Channel)='
interfaces
done_here

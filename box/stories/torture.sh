# Modules go and come, two processes commit, two ask, all at once and at random; afterwards no lock is lost and nothing is held.
# seconds: 900
. "$STORY/lib.sh"
steady
seed=${TORTURE_SEED:-$(cut -c1-6 /proc/sys/kernel/random/uuid)}
echo "seed $seed" >&2
seed=$(printf '%d' "0x$seed")
now() { cut -d. -f1 /proc/uptime; }
end=$(($(now) + ${TORTURE_SECONDS:-600}))

# chosen SALT CHOICES: so many numbers below CHOICES that nobody runs out of them.
chosen() { awk -v seed=$((seed + $1)) -v most="$2" 'BEGIN { srand(seed); for (i = 0; i < 20000; ++i) print int(rand() * most) }'; }

modules() {
  chosen 1 4 | while read -r choice && [ "$(now)" -lt "$end" ]; do
    case $choice in
      0) rmmod mt7603eap ; insmod /lib/modules/4.4.115/mt7603eap.ko ;;
      1) rmmod mt7663_ap ; insmod /lib/modules/4.4.115/mt7663_ap.ko ;;
      2) rmmod mt7663_ap ; rmmod mt7603eap.ko ; insmod /lib/modules/4.4.115/mt7663_ap.ko
         insmod /lib/modules/4.4.115/mt7603eap.ko ;;
      3) simctl station add ra0 02:aa:bb:cc:dd:01 ; simctl noise 5g -80 ; simctl fail channel EIO ra0 2 ;;
    esac
    echo modules >>turns
  done
}
ask_all() {
  chosen 2 3 | while read -r choice && [ "$(now)" -lt "$end" ]; do
    case $choice in
      0) ask <"$STORY/requests.txt" ;;
      1) ask 1000 <"$STORY/hostile.txt" ;;
      2) iwpriv ra0 show ; iwpriv rai0 get_site_survey ; cat /run/gateway-sim/lists/* ;;
    esac
    echo ask >>turns
  done
}
commit() {
  chosen 3 11 | while read -r choice && [ "$(now)" -lt "$end" ]; do
    library_probe init 0 oper 0 0 set wifimgr_lib_set_channel 0 -1 $((choice + 1)) put ReloadFlag 0 -1 $((choice % 2)) commit 0 1
    echo commit >>turns
  done
}
operate() {
  chosen 4 3 | while read -r choice && [ "$(now)" -lt "$end" ]; do
    case $choice in
      0) wlanctl set 5g SSID:1=Name$choice ; wlanctl apply 5g ;;
      1) wlanctl status ;;
      2) wlanctl show 5g ;;
    esac
    echo operate >>turns
  done
}
: >turns
modules >/dev/null 2>&1 &
ask_all >/dev/null 2>&1 &
commit >/dev/null 2>&1 &
operate >/dev/null 2>&1 &
wait
for worker in modules ask commit operate; do
  turns=$(grep -c "^$worker" turns)
  echo "$worker: $turns" >&2
  must [ "$turns" -gt 2 ]
done
insmod /lib/modules/4.4.115/mt7603eap.ko 2>/dev/null
insmod /lib/modules/4.4.115/mt7663_ap.ko 2>/dev/null
simctl fail none
# Who waits for a lock that is lost waits for ever.
for band in 2.4g 5g; do
  timeout 60 wlanctl set $band SSID:1=After >/dev/null 2>&1
  fact "$band: the lock is free: $?"
done
fact "channel asked: $(echo 'ra0 8b05 0 16' | ask | grep -c 'ra0 8b05 0000 16 : [0-9]* 0$')"
must rmmod mt7603eap
must rmmod mt7663_ap
fact "interfaces left: $(ls /sys/class/net | grep -c -e '^ra' -e '^wds')"
[ "$WORLD" != box ] || must rmmod zq2810
done_here

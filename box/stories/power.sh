# The power is cut at every step of a save, while nobody has confirmed an apply, and while somebody confirms; then the gateway boots again.
# The flash is a disk on which each step is whole before the next one.
# keeps: flash
# seconds: 60
# phases: save:20 window:1 confirm:2
# This is the part inside; power.machine is the part outside. In the simulated gateway the story cuts the power itself.
. "$STORY/lib.sh"
dat=$dat24
factory=/etc/Wireless/factory.dat
console=${console:-/dev/console}

# What the story has come to, if anything yet.
come_to() { grep -o -E '(CUT|END) [0-9]+.*' console.last 2>/dev/null | head -n 1; }

# A boot with the factory's settings, a cut at a step, and the look of the next boot. False when there is no such step.
cut_in_simulation() {
  cp $factory $dat
  rm -f console.last
  simctl power-cut
  phase=$1 cut=$2 console=$PWD/console.last sh "$STORY/story.sh" >cut-facts 2>cut-complaints &
  said=
  while [ -z "$said" ] && kill -0 $! 2>/dev/null; do
    said=$(come_to)
  done
  # It may have ended since.
  said=${said:-$(come_to)}
  case $said in
    CUT*) ;;
    END*) wait; return 1 ;;
    *) fact "not true: $1 $2 comes to its step"; wrong=1; return 1 ;;
  esac
  simctl power-cut
  wait
  phase=look sh "$STORY/story.sh" >look-facts 2>>complaints || wrong=$?
  fact "$1, after ${said#CUT }: $(head -n 1 look-facts)"
}

case ${phase:-all} in
  all)
    cp $dat $factory
    for phase in $(sed -n 's/^# phases: //p' "$STORY/story.sh"); do
      step=1
      while [ $step -le "${phase#*:}" ] && cut_in_simulation "${phase%:*}" $step; do
        step=$((step + 1))
      done
    done
    ;;
  save)
    cut_at "$cut" /etc/Wireless/ library_probe init 0 set wifimgr_lib_set_ssid 0 1 Changed set wifimgr_lib_set_channel 0 -1 11 save 0 \
      2>&1 >"$console" | cat >/dev/null
    ;;
  window)
    wlanctl set 2.4g SSID:1=Changed Channel=11 >/dev/null 2>&1
    wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1
    echo "CUT 1 waiting" >"$console"
    sleep 600
    ;;
  confirm)
    wlanctl set 2.4g SSID:1=Changed Channel=11 >/dev/null 2>&1
    wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1
    cut_at "$cut" / wlanctl confirm 2.4g 2>/dev/null >"$console"
    ;;
  look)
    lines=$(wc -l <$dat)
    ssid=$(sed -n 's/^SSID1=//p' $dat)
    # Whatever is in the file: the library reads it, the driver has come up with it, the tool says something.
    timeout 60 library_probe init 0 get SSID1 0 -1 >init 2>&1
    must [ $? -lt 100 ]
    must [ -d /sys/class/net/ra0 ]
    timeout 60 wlanctl status >status 2>&1
    must [ $? -lt 100 ]
    if [ ! -s $dat ]; then
      found="an empty file"
    elif [ "$ssid" = Gateway-Home ]; then
      found="the old settings"
    elif [ "$ssid" = Changed ]; then
      found="the first $lines lines of the new settings"
    else
      found="$lines lines without a name"
    fi
    fact "$found; the driver serves \"$(iwpriv ra0 show | sed -n 's/^SSID=//p')\""
    # A save makes it whole again.
    cp $factory $dat
    must probe init 0 save 0
    ;;
esac
done_here

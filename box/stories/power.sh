# The power is cut at every step of a save, while nobody has confirmed an apply, and while somebody confirms; then the gateway boots again.
# The flash is a disk on which each step is whole before the next one.
# keeps: flash
# simulation: no
# seconds: 60
# This is the part inside; power.machine is the part outside.
. "$STORY/lib.sh"
dat=$dat24
new_settings() { library_probe init 0 set wifimgr_lib_set_ssid 0 1 Changed set wifimgr_lib_set_channel 0 -1 11 "$@"; }
case $phase in
  save)
    cut_at "$cut" /etc/Wireless/ library_probe init 0 set wifimgr_lib_set_ssid 0 1 Changed set wifimgr_lib_set_channel 0 -1 11 save 0 \
      2>&1 >/dev/console | cat >/dev/null
    ;;
  window)
    wlanctl set 2.4g SSID:1=Changed Channel=11 >/dev/null 2>&1
    wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1
    echo "CUT 1 waiting" >/dev/console
    sleep 600
    ;;
  confirm)
    wlanctl set 2.4g SSID:1=Changed Channel=11 >/dev/null 2>&1
    wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1
    cut_at "$cut" / wlanctl confirm 2.4g 2>/dev/null >/dev/console
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
    cp /etc/Wireless/factory.dat $dat
    must probe init 0 save 0
    ;;
esac
done_here

# A reboot that the library asks for, for a new WDS setting: what outlives it and what does not.
# keeps: dat
# reboots: yes
. "$STORY/lib.sh"
# What the story notes for itself lies outside the gateway.
notes=/out
[ "$WORLD" = box ] || notes=$PWD
if [ ! -e "$notes/boot-id" ]; then
  cat /proc/sys/kernel/random/boot_id >"$notes/boot-id"
  touch /tmp/in-memory
  must iwpriv ra0 set HideSSID=1
  must simctl station remove ra0 all
  echo $wrong >"$notes/wrong-before"
  library_probe init 0 init 1 set wifimgr_lib_set_ssid 0 1 Outlives save 0 put WdsEnable 0 -1 0 reboot 0 0 1 1 4 WdsEnable >"$notes/asked" 2>&1
  # The machine is on its way down, and begins the story anew. In the simulated gateway who waits for a reboot looks on from outside.
  [ "$WORLD" != box ] || { sleep 60; exit 96; }
fi
wrong=$(cat "$notes/wrong-before")
must grep -q '^save 0$' "$notes/asked"
must_be "" grep 'not found' "$notes/asked"
must [ "$(cat "$notes/boot-id")" != "$(cat /proc/sys/kernel/random/boot_id)" ]
must [ ! -e /tmp/in-memory ]
fact "segments: $(($(wc -l </proc/sysvipc/shm) - 1)), semaphores: $(($(wc -l </proc/sysvipc/sem) - 1))"
must_be "HideSSID=0" sh -c "iwpriv ra0 show | grep ^HideSSID"
must_be "SSID=Outlives" sh -c "iwpriv ra0 show | grep ^SSID"
# The new value went into the store alone, and that is gone.
must_be "WdsEnable=0" grep '^WdsEnable=' $dat24
file $dat24
stations
interfaces
done_here

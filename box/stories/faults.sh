# Requests that fail, answer late or answer with less than there is; and callers that are killed while they wait.
. "$STORY/lib.sh"
steady
faults=/run/gateway-sim/lists/faults

# Whether no fault is left; the files of a kernel have no size.
used_up() { ! grep -q . $faults; }

# late REQUEST: asks what waits a minute, in the background; goes on when it waits, which is when the fault is used up.
late() {
  echo "$1" >question
  ask <question >late-answer &
  caller=$!
  until used_up; do :; done
}

# ended: the caller is killed, and does not wait on.
ended() {
  kill -KILL $caller
  wait $caller
  fact "killed while it waits: $?, answer \"$(cat late-answer)\""
}

fact "late"
for request in 'channel ra0' 'stations rai0' 'noise ra0' 'processes rai0' 'neighbours rai0'; do
  must simctl fail ${request% *} slow=0.1 ${request#* } 1
done
probe band-text wifimgr_lib_get_CHANNEL 0 stations 8 index-text wifimgr_lib_get_Noise 0 -1 processes neighbours 1
must_be "" cat $faults
fact "late, and failed"
must simctl fail channel EIO slow=0.1 rai0 2
probe band-text wifimgr_lib_get_CHANNEL 1 text UpdateChannelAC text UpdateChannelAC
fact "cut"
for bytes in 88 57 48 8 0; do
  must simctl fail stations cut=$bytes 3
  printf 'ra0 8bef 0 8\n' | ask
  probe stations 0 stations 1
done
for request in noise load temperature wps-state wps-pin wps-access wps-station wps-status 11k 11v ap-count processes neighbours statistics; do
  must simctl fail $request cut=7
done
ask <"$STORY/requests.txt"
probe index-text wifimgr_lib_get_Noise 0 -1 index-text wifimgr_lib_get_chanLoad 0 -1 temperature 0 text UpdatePinCode \
  session-of 0 0 access 0 0 aps 0 status 0 processes neighbours 0 station wifimgr_lib_get_Sta11vCap 0 1 025a10240011
wlanctl neighbours >told 2>&1
fact "a neighbour table that is cut: wlanctl ends with $?"
must simctl fail none
fact "killed"
for request in 'channel:ra0 8b05 0 16' 'noise:rai0 8be1 069c 4' 'ap-count:ra0 8bfc 0 80'; do
  must simctl fail "${request%%:*}" slow=60 1
  late "${request#*:}"
  ended
done
must simctl fail channel slow=60 1
library_probe band-text wifimgr_lib_get_CHANNEL 0 >late-answer 2>>complaints &
caller=$!
until used_up; do :; done
ended
fact "while one waits"
must simctl fail noise slow=60 ra0 1
late 'ra0 8be1 069c 4'
echo 'rai0 8be1 069c 4' | ask >other-answer &
other=$!
# A kernel lets nobody by: who asks for the lock can be seen at it, or, where the compiler made that a jump, right before.
state=answered
until [ -s other-answer ]; do
  [ "$WORLD" = box ] && head -n 1 /proc/$other/stack | grep -q -e rtnl_lock -e wext_ && state="held up" && break
done
fact "another caller is $state"
ended
wait $other
cat other-answer
fact "a list of faults that is none"
printf 'nonsense\n8b05 -1 5 *\n8b05 -1 0 ra0 -1 99999999 -1\n8b05 -1 0 ra0 -1 4294967296 -1\n\n' >$faults
printf 'ra0 8b05 0 16\n' | ask
must simctl fail none
# Nobody holds a radio that somebody waited for.
must rmmod mt7603eap
must rmmod mt7663_ap
must insmod /lib/modules/4.4.115/mt7603eap.ko
must insmod /lib/modules/4.4.115/mt7663_ap.ko
probe band-text wifimgr_lib_get_CHANNEL 0 band-text wifimgr_lib_get_CHANNEL 1
done_here

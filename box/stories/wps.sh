# WPS by push button and by PIN, to the end of a session.
. "$STORY/lib.sh"
probe init 0 init 1 oper 0 0 oper 1 0 set wifimgr_lib_set_wscConfMode 0 1 7 session-of 0 0 text UpdatePinCode
fact "push button"
probe init 0 oper 0 0 service-start /tmp/start.wps 0 0 1 0
cat /tmp/start.wps
sh /tmp/start.wps
probe session-of 0 0 status 0
must simctl wps ra0 state 3 peer 02:aa:bb:cc:dd:01
probe session-of 0 0 band-text wifimgr_lib_get_WPS_STA_MAC 0
must simctl wps ra0 state 4
probe session-of 0 0
probe do wifimgr_lib_set_wscStop 0 1 session-of 0 0 status 0
fact "PIN"
probe init 1 oper 1 0 service-start /tmp/start.wps 1 1 0 12345670
sh /tmp/start.wps
probe session-of 1 1 index-text wifimgr_lib_get_WPS_PIN_CODE 1 1 index-text wifimgr_lib_get_wscPinCode 1 2
probe init 1 oper 1 0 service wifimgr_lib_service_stop_wps /tmp/stop.wps 1 1
sh /tmp/stop.wps
probe session-of 1 1
must simctl wps rai0 access 02:aa:bb:cc:dd:01,02:aa:bb:cc:dd:02
probe access 1 0
must simctl wps rai0 state 4294967295
probe session-of 1 0
must simctl fail wps-state EIO rai0 1
probe session-of 1 0 session-of 1 0
fact "refused"
iwpriv ra0 set WscPinCode=12x >/dev/null 2>&1 && fact "a PIN that is no number is taken" || fact "a PIN that is no number is refused"
settings ra0
done_here

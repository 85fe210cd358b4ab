# Links to other access points.
. "$STORY/lib.sh"
probe init 0 oper 0 0 \
  set wifimgr_lib_set_wdsenable 0 -1 1 \
  set wifimgr_lib_set_wdsencryptype 0 -1 "AES;AES;NONE;NONE" \
  set wifimgr_lib_set_wdskey 0 1 "a shared wds key" \
  set wifimgr_lib_set_wdskey 0 2 'quote " and $dollar' \
  set wifimgr_lib_set_wdslist 0 -1 "02:00:00:00:10:01;02:00:00:00:10:02;00:00:00:00:00:00;00:00:00:00:00:00" \
  oper 0 1 commit 0 1
interfaces
file $dat24
grep -i '^wds' $dat24
fact "and off again"
probe init 0 oper 0 0 set wifimgr_lib_set_wdsenable 0 -1 0 oper 0 1 commit 0 1
interfaces
grep -i '^wds' $dat24
done_here

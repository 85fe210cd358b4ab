# Narrow restarts, and a radio switched off and on.
. "$STORY/lib.sh"
probe init 0 init 1 oper 0 0 oper 1 0
for step in "restart 0 2 2 1 0" "restart 0 2 2 3 1" "restart 1 2 1 1 0" "dispatch 0 2 1 1" "dispatch 1 2 1 2" "dispatch 1 2 1 3" \
  "execute 0 0" "execute 0 1" "downup 1 0" "downup 1 1"; do
  fact "$step"
  # shellcheck disable=SC2086 # the words of a step
  probe oper 0 0 oper 1 0 state 0 2 state 1 2 $step
  interfaces
done
fact "radio off"
probe init 0 radio 0 0
interfaces
stations
fact "radio on"
probe init 0 radio 0 1
interfaces
settings ra0
txqueue() { cat /sys/class/net/ra0/tx_queue_len; }
fact "ra0 queues $(txqueue)"
done_here

# The examples, as an integrator runs them.
. "$STORY/lib.sh"
steady
attach_store 2>&1
probe init 0 init 1
must attach_store
switch_radio off 0 2>>complaints
interfaces
stations
switch_radio on 0 2>>complaints
switch_radio restart 1 2>>complaints
interfaces
# How long ago a neighbour was heard is the clock's.
status_page 2>>complaints | sed -e 's/[0-9]* s ago/N s ago/' -e 's/[0-9]* s$/N s/'
done_here

# A management process changes both radios and applies that, with modules that are really reloaded: dat files, interfaces, bridges,
# execute scripts.
. "$STORY/lib.sh"
file $dat24
file $dat5
interfaces
apply_settings 2>complaints
file $dat24
file $dat5
file $script24
file $script5
interfaces
settings ra0
settings rai0
stations
done_here

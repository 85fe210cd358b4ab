# Arguments that no sane program has.
. "$STORY/lib.sh"
steady
fact "root"
ask <"$STORY/hostile.txt"
fact "another user"
ask 1000 <"$STORY/hostile.txt"
done_here

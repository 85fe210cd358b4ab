# Every request, of root and of another user; and from a program that makes its system calls itself.
. "$STORY/lib.sh"
steady
fact "root"
ask <"$STORY/requests.txt" | tee answers
fact "another user"
ask 1000 <"$STORY/requests.txt"
ask-static <"$STORY/requests.txt" >own-answers
cmp -s answers own-answers && fact "past the C library: the same" || fact "past the C library: not the driver's answers"
done_here

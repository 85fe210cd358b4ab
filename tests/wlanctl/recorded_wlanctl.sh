#!/bin/sh
# wlanctl as the tests have it on their path: the program itself, and a copy of each JSON document with the exit code
# in its file's name. A call that refreshes is left alone, so that it prints and is interrupted as ever.
json=no
for word in "$@"; do
  case $word in
    --json) json=yes ;;
    --watch* | monitor) exec "$WLANCTL_PROGRAM" "$@" ;;
  esac
done
[ $json = yes ] || exec "$WLANCTL_PROGRAM" "$@"
copy=$WLANCTL_DOCUMENTS/document-$$
"$WLANCTL_PROGRAM" "$@" >"$copy"
status=$?
cat "$copy"
if [ $status -lt 128 ]; then mv "$copy" "$copy-$status.json"; else rm -f "$copy"; fi
exit $status

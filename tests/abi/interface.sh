#!/bin/sh
# Compares the binary interface of a build, names, types and layouts, with its description, and says what changed. A change
# that is meant is taken over with scripts/describe_interface.sh.
#
#   interface.sh ABIDIFF SOURCE_DIR LIBRARY
set -eu
abidiff=$1 source=$2 library=$3

# Without it only names can be compared. Told where the headers are, abidiff takes every type for a private one, as the
# description has no places, and would not show a change of it.
readelf -SW "$library" | grep -q ' \.debug_info ' || { echo "$library has no debug information"; exit 1; }

status=0
"$abidiff" --no-architecture "$source/tests/abi/wifimgr.abi" "$library" || status=$?
case $status in
  0) exit 0 ;;
  *[!0-9]* | 1 | 2 | 3) echo "abidiff failed" ;;
  4 | 5 | 6 | 7) echo "the binary interface changed; existing callers break unless it is an addition; if it is meant: make interface" ;;
  *) echo "the binary interface changed, and existing callers break" ;;
esac
exit 1

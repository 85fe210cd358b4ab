#!/bin/sh
# Compares the binary interface of a build, names, types and layouts, with its description, and says what changed. A change
# that is meant is taken over with scripts/describe_interface.sh.
#
#   interface.sh ABIDIFF SOURCE_DIR LIBRARY
set -eu
abidiff=$1 source=$2 library=$3

status=0
"$abidiff" --no-architecture --headers-dir2 "$source/include" "$source/tests/abi/wifimgr.abi" "$library" || status=$?
case $status in
  0) exit 0 ;;
  *[!0-9]* | 1 | 2 | 3) echo "abidiff failed" ;;
  4 | 5 | 6 | 7) echo "the binary interface changed, in a way that may suit existing callers" ;;
  *) echo "the binary interface changed, and existing callers break" ;;
esac
exit 1

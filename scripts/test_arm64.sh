#!/bin/sh
# Runs the tests of an ARM64 build under emulation, all but those that it cannot run.
#
#   test_arm64.sh ARM64-BUILD NATIVE-BUILD
set -eu
arm64=$1 native=$2
here=$(cd "$(dirname "$0")" && pwd)
list=$here/not_emulated.txt
emulator="qemu-aarch64-static -L /usr/aarch64-linux-gnu"

# A name of the list that its program does not have would hide nothing but say so.
left_out=
while IFS='	' read -r program name _; do
  case $program in '#'* | '') continue ;; esac
  # GoogleTest lists a suite with its dot, and its tests below.
  found=$($emulator "$arm64/tests/$program" --gtest_list_tests --gtest_filter="$name" | tr -d ' \n')
  case $found in
    *"$name") left_out="$left_out:$name" ;;
    *) echo "test_arm64: $program has no test $name, but $list lists it" >&2; exit 1 ;;
  esac
done <"$list"

echo "== Not run as ARM64 code, $(grep -c '^[^#]' "$list") tests, and why"
grep '^[^#]' "$list" | sed 's/^\([^	]*\)	\([^	]*\)	/  \1: \2: /'
GTEST_FILTER="-${left_out#:}" "$here/emulate_arm64.sh" "$arm64" "$native" "$here/run_tests.sh" "$arm64"

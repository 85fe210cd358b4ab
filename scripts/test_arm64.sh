#!/bin/sh
# Runs the tests of an ARM64 build under emulation, all but those that it cannot run.
#
#   test_arm64.sh ARM64-BUILD NATIVE-BUILD JOBS
set -eu
arm64=$1 native=$2 jobs=$3
here=$(cd "$(dirname "$0")" && pwd)
list=$here/not_emulated.txt

count() { ctest --test-dir "$1" -N | sed -n 's/^Total Tests: //p'; }
names() { ctest --test-dir "$1" -N | sed -n 's/^ *Test *#[0-9]*: //p'; }

# A name of the list that no test has would hide nothing but say so.
left_out=
known=$(names "$arm64")
while IFS='	' read -r name _; do
  case $name in '#'* | '') continue ;; esac
  echo "$known" | grep -qxF "$name" || { echo "test_arm64: no test is named $name, but $list lists it" >&2; exit 1; }
  left_out="$left_out|$(echo "$name" | sed 's/\./\\./g')"
done <"$list"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
{
  status=0
  "$here/emulate_arm64.sh" "$arm64" "$native" \
    ctest --test-dir "$arm64" -j "$jobs" --output-on-failure --no-tests=error -E "^(${left_out#|})\$" || status=$?
  echo $status >"$work/status"
} | tee "$work/log"

status=$(cat "$work/status")
ran=$(sed -n 's/^.* tests failed out of \([0-9]*\)$/\1/p' "$work/log")
skipped=$(grep -c '^[^#]' "$list")
echo "== Not run as ARM64 code, $skipped tests, and why"
grep '^[^#]' "$list" | sed 's/^\([^	]*\)	/  \1: /'
has="$(count "$native") tests"
# The tests of a program show one by one only once it is built.
! names "$native" | grep -q '_NOT_BUILT$' || has="tests that are not built yet"
echo "== Tests run as ARM64 code: ${ran:-none} of $(count "$arm64"); this machine's own build has $has"
exit $status

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

status=0
"$here/emulate_arm64.sh" "$arm64" "$native" \
  ctest --test-dir "$arm64" -j "$jobs" --timeout 300 --output-on-failure --no-tests=error -E "^(${left_out#|})\$" ||
  status=$?

all=$(count "$arm64")
skipped=$(grep -c '^[^#]' "$list")
echo "== Not run as ARM64 code, $skipped tests, and why"
grep '^[^#]' "$list" | sed 's/^\([^	]*\)	/  \1: /'
here_too="all $(count "$native")"
# The tests of a program show one by one only once it is built.
! names "$native" | grep -q '_NOT_BUILT$' || here_too="not built yet, see make test-native"
echo "== Tests run as ARM64 code: $((all - skipped)) of $all; as this machine's own: $here_too"
exit $status

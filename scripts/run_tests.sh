#!/bin/sh
# Runs the tests of a build and says how many there were: ctest counts programs. Its closing lines come last, and are kept in
# build/closing.
#
#   run_tests.sh BUILD [CTEST-OPTION...]
set -eu
build=$1
shift
here=$(cd "$(dirname "$0")" && pwd)
# More at once than there are processors: many wait for what they started.
jobs=$(($(nproc) * 3 / 2))
mkdir -p "$here/../build"
closing=$here/../build/closing
work=$(mktemp -d)
: >"$work/closing"
trap 'rm -rf "$work"' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

{
  status=0
  ctest --test-dir "$build" -j "$jobs" --output-on-failure --no-tests=error --no-label-summary "$@" || status=$?
  echo $status >"$work/status"
} | awk -v closing="$work/closing" '/% tests passed, / { ends = 1 } ends { print >closing; next } { print; fflush() }'

log=$build/Testing/Temporary/LastTest.log
{
  echo "$(grep -o '\[       OK \] ' "$log" | wc -l) tests passed in the programs that ctest counts:"
  cat "$work/closing"
} | tee "$closing"
exit "$(cat "$work/status")"

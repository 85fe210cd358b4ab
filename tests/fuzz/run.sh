#!/bin/sh
# Runs the fuzz doors one after the other, and says last what each of them did.
#
#   run.sh BUILD SECONDS [DOOR...]
#
# What an input finds is kept in BUILD/found/DOOR-...: mended, it belongs into tests/fuzz/kept/DOOR, where the tests replay it.
# What reached new code stays in BUILD/corpus/DOOR for the next time. The door "broken", which finds something in every
# input, goes first: where its find would pass, so would those of the others.
set -eu
build=$1
seconds=$2
shift 2
here=$(cd "$(dirname "$0")" && pwd)
[ $# -gt 0 ] || set -- $(sed -n 's/^DOOR(\([a-z_]*\),.*/\1/p' "$here/doors.def")

# A door has /tmp to itself; paths that begin at the current folder stay what they are.
cd "$build"
rm -rf found log inputs
mkdir -p found log corpus inputs
cp -R "$here/seeds" inputs
[ ! -d "$here/kept" ] || cp -R "$here/kept" inputs
sh "$here/../../scripts/settings.sh" dictionary >settings.dict

# Ends as the door's program does.
run() {
  mkdir -p "corpus/$1" "inputs/seeds/$1" "inputs/kept/$1"
  ASAN_OPTIONS=allocator_may_return_null=1 "fuzz/fuzz_$1" -max_total_time="$seconds" -max_len=8192 -timeout=20 \
    -rss_limit_mb=1024 -dict=settings.dict -artifact_prefix="found/$1-" -print_final_stats=1 \
    "corpus/$1" "inputs/seeds/$1" "inputs/kept/$1" >"log/$1" 2>&1
}

finds_of() {
  find found -name "$1-*" | wc -l
}

# How many inputs it tried, which is none where it did not begin.
inputs_of() {
  sed -n 's/^stat::number_of_executed_units: *//p' "log/$1"
}

for door in broken "$@"; do
  [ -x "fuzz/fuzz_$door" ] || { echo "fuzz: there is no door $door" >&2; exit 2; }
done
if run broken || [ "$(finds_of broken)" -eq 0 ]; then
  echo "fuzz: the door that finds something in every input found nothing" >&2
  exit 2
fi
rm -f found/broken-*

failed=0
for door; do
  echo "== $door: $seconds seconds"
  if run "$door" && [ "$(finds_of "$door")" -eq 0 ] && [ "0$(inputs_of "$door")" -gt 0 ]; then continue; fi
  failed=1
  tail -n 40 "log/$door"
done

printf '%-14s %10s %8s %6s %6s\n' door inputs "a second" edges found
for door; do
  awk -v door="$door" -v found="$(finds_of "$door")" '
    / cov: / { for (i = 1; i < NF; ++i) if ($i == "cov:") edges = $(i + 1) }
    /^stat::number_of_executed_units:/ { inputs = $2 }
    /^stat::average_exec_per_sec:/ { speed = $2 }
    END { printf "%-14s %10d %8d %6d %6d\n", door, inputs, speed, edges, found }' "log/$door"
done
exit $failed

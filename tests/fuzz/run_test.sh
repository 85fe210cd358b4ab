#!/bin/sh
# make fuzz must not pass when a door finds something, or tries nothing. Scripts stand in for the doors' programs.
#
#   run_test.sh
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$(mktemp -d)
trap 'rm -rf "$build"' EXIT
mkdir "$build/fuzz"

# door NAME STATUS INPUTS LEAVES-A-FIND: a program that ends so.
door() {
  cat >"$build/fuzz/fuzz_$1" <<END
#!/bin/sh
echo "#1 INITED cov: 12 ft: 3"
echo "stat::number_of_executed_units: $3"
[ "$4" = no ] || : >found/$1-crash
exit $2
END
  chmod +x "$build/fuzz/fuzz_$1"
}

# expect STATUS WHAT DOOR...
expect() {
  wanted=$1
  what=$2
  shift 2
  status=0
  sh "$here/run.sh" "$build" 1 "$@" >"$build/out" 2>&1 || status=$?
  [ $status -eq "$wanted" ] || { echo "$what: run.sh ended with $status instead of $wanted"; cat "$build/out"; exit 1; }
}

door broken 77 1 yes
door good 0 5 no
door crash 77 5 yes
door quiet 0 5 yes
door killed 137 5 no
door idle 0 0 no
expect 0 "doors that find nothing" good
grep -q '^good  *5  *0  *12  *0$' "$build/out" || { echo "the figures are not told"; cat "$build/out"; exit 1; }
[ -z "$(ls "$build/found")" ] || { echo "what the broken door found is left"; exit 1; }
expect 1 "a find" crash
grep -q '^crash .* 1$' "$build/out" || { echo "a find is not told"; cat "$build/out"; exit 1; }
expect 1 "a find before a door without" crash good
expect 1 "a find of a program that ends well" quiet
expect 1 "a program that was killed" killed
expect 1 "a door that tries nothing" idle
expect 2 "a door that is not there" none
door broken 0 1 yes
expect 2 "a find that passes" good
door broken 77 1 no
expect 2 "a find that is not kept" good

# The tests that emulation of programs cannot run, as ARM64 code on an ARM64 kernel. They bring simulations of their own.
# disk: debian
# simulation: no
# seconds: 300
passed=0
wrong=0
: >/out/tests
for program in $(grep -v '^#' "$TREE/scripts/not_emulated.txt" | cut -f1 | uniq); do
  names=$(awk -F '\t' -v program="$program" '$1 == program { printf "%s%s", colon, $2; colon = ":" }' "$TREE/scripts/not_emulated.txt")
  wanted=$(printf '%s\n' "$names" | tr ':' '\n' | grep -c .)
  WIFIMGR_TEST_BUILD=$BUILD WIFIMGR_TEST_GATEWAY=$BUILD timeout 120 "$BUILD/tests/$program" --gtest_filter="$names" >output 2>&1 ||
    { wrong=$((wrong + 1)); cat output >&2; }
  cat output >>/out/tests
  ok=$(grep -c '^\[       OK \] ' output)
  echo "$program: $ok of $wanted"
  [ "$ok" = "$wanted" ] || wrong=$((wrong + 1))
  passed=$((passed + ok))
done
echo "$passed tests passed on the kernel that emulation cannot run"
exit $wrong

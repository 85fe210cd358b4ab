// ssid add and import that put records into the store which it lacks, killed at each write into the store and at each
// step of a file: whoever looks right then finds no half-made SSID in service, and the next wlanctl loses nothing.
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

// A store made of a saved file, which has no keys of a third SSID; what it says, and what it says with that SSID.
const std::string kPrepared =
    "fresh() { wlanctl revert 2.4g --force >/dev/null 2>&1; }\n"
    "wlanctl save 2.4g --force >/dev/null 2>&1; fresh; cp " +
    std::string(kDat) +
    " file; wlanctl check >sound 2>&1; wlanctl export >before; wlanctl dump 2.4g | grep -c SSID3=; $change >/dev/null "
    "2>&1 || echo fails;"
    "wlanctl export 2>/dev/null >whole; wlanctl export 2.4g 2>/dev/null | grep ':3\"' >third; cmp -s before whole && "
    "echo nothing to do; fresh;";

// By who only looks, right behind the kill: an SSID that is served has all that it was to have.
const std::string kNoHalfOne =
    "case $(wlanctl get 2.4g BssidNum 2>/dev/null) in 2) ;; 3) wlanctl export 2.4g 2>/dev/null | grep ':3\"' >half;"
    "cmp -s third half || echo half made at $n ;; *) echo count at $n ;; esac;";

// The next verb that changes something, and whoever comes then, once for each store that it leaves.
const std::string kNothingLost =
    "segment 2.4g | tr '\\0' '\\n' | grep -qx SSID3 && left=1;"
    "wlanctl set 2.4g RTSThreshold=2347 >/dev/null 2>&1 || echo set at $n;"
    "[ ! -e /run/wlanctl-storing ] || echo note left at $n;"
    "sum=$(segment 2.4g | cksum); if ! grep -qsx \"$sum\" sums; then echo \"$sum\" >>sums;"
    "  if wlanctl export | cmp -s - before; then wlanctl diff 2.4g --exit-code >/dev/null 2>&1 || echo differs at $n;"
    "    wlanctl save 2.4g >/dev/null 2>&1 || echo unsaved at $n; cmp " +
    std::string(kDat) +
    " file || echo another file at $n; wlanctl check 2>&1 | cmp -s - sound || echo unsound at $n;"
    "    $change >/dev/null 2>&1 || echo no second try at $n; fi;"
    "  wlanctl export 2>/dev/null | cmp - whole || echo neither at $n; fi;";

// "killer WISH" is what ends the call; the turns end where one comes through.
std::string killed_at_each(const std::string& change, const std::string& killer, int least) {
  return "change='" + change + "';" + kPrepared + "left=0; n=1; while " + killer +
         " $change >/dev/null 2>&1; [ $? = 137 ]; do " + kNoHalfOne + kNothingLost +
         "fresh; n=$((n + 1)); [ $n -lt 300 ] || break; done; wlanctl export 2>/dev/null | cmp - whole && echo whole "
         "behind $((n > " +
         std::to_string(least) + ")) empty ones left $left";
}

std::string functions_with_kill() {
  return functions() + "at_write() { WLANCTL_STORE_WRITE=\"$1\"; shift; export WLANCTL_STORE_WRITE\n" +
         "  LD_PRELOAD=\"$LD_PRELOAD:" + built("lib/libkill_at_store_write.so") +
         "\" \"$@\"; set -- $?; unset WLANCTL_STORE_WRITE; return $1; }\necho guest-word-1 >word\n" +
         into("f.json", settings("\"BssidNum\": 3, \"SSID:3\": \"Attic\", \"AuthMode:3\": \"WPA2PSK\", "
                                 "\"EncrypType:3\": \"AES\", \"WPAPSK:3\": \"guest-word-2\", \"Channel\": 11"));
}

constexpr char kAdd[] = "wlanctl ssid add 2.4g Kitchen --passphrase-file word";
constexpr char kImport[] = "wlanctl import f.json";

TEST(AddedRecordsKilled, AtEachWriteOfAnAddIsHarmless) {
  const auto steps = run_live({functions_with_kill() + killed_at_each(kAdd, "at_write $n", 30)});
  EXPECT_EQ("0\nwhole behind 1 empty ones left 1\n", steps[0].out) << steps[0].err;
}

TEST(AddedRecordsKilled, AtEachStepOfAFileOfAnAddIsHarmless) {
  const auto steps = run_live({functions_with_kill() + killed_at_each(kAdd, "killed_in \"$n /\"", 4)});
  EXPECT_EQ("0\nwhole behind 1 empty ones left 1\n", steps[0].out) << steps[0].err;
}

TEST(AddedRecordsKilled, AtEachWriteOfAnImportIsHarmless) {
  const auto steps = run_live({functions_with_kill() + killed_at_each(kImport, "at_write $n", 10)});
  EXPECT_EQ("0\nwhole behind 1 empty ones left 1\n", steps[0].out) << steps[0].err;
}

TEST(AddedRecordsKilled, AtEachStepOfAFileOfAnImportIsHarmless) {
  const auto steps = run_live({functions_with_kill() + killed_at_each(kImport, "killed_in \"$n /\"", 4)});
  EXPECT_EQ("0\nwhole behind 1 empty ones left 1\n", steps[0].out) << steps[0].err;
}

}  // namespace
}  // namespace wlanctl_test

// What other processes hold in the live store survives every verb, and no verb touches the other band.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::Contains;
using testing::HasSubstr;

enum class Where { kAsItIs, kMade };

struct Call {
  std::string words;
  int status;
  Where store = Where::kAsItIs;  // that is not there: it is made by who works on it
};

// How each verb is called on 5G; a new one must be added. In an order in which each does its work: what was saved is
// there for a revert.
const std::vector<Call>& calls() {
  // Nobody is there to edit.
  setenv("VISUAL", "true", 1);
  static const std::vector<Call> all = {
      {"show 5g", 0},
      {"get 5g Channel", 0},
      {"set 5g Channel=40", 0, Where::kMade},
      {"keys 5g", 0},
      {"explain Channel", 0},
      {"ssid list 5g", 0},
      {"ssid disable 5g 2", 0, Where::kMade},
      {"ssid enable 5g 2", 0, Where::kMade},
      {"ssid rename 5g 2 Cellar", 0, Where::kMade},
      {"ssid add 5g Kitchen --security open", 0, Where::kMade},
      {"ssid remove 5g Kitchen --yes", 0, Where::kMade},
      {"edit 5g", 0, Where::kMade},
      {"export 5g", 0},
      {"import /etc/Wireless/RT2860AP_AC/RT2860AP.dat 5g --dry-run", 0},
      {"diff 5g", 0},
      {"save 5g", 0, Where::kMade},
      {"revert 5g", 0, Where::kMade},
      {"check /etc/Wireless/RT2860AP_AC/RT2860AP.dat", 0},
      {"apply 5g --dry-run", 0},
      {"apply 5g", 0, Where::kMade},
      {"confirm 5g", 0},
      {"set 5g Channel=44", 0, Where::kMade},
      {"apply 5g --confirm 600", 0, Where::kMade},
      {"confirm 5g", 0},
      {"rollback 5g", 1},
      {"log 5g", 0},
      {"undo 5g --dry-run", 0},
      {"status", 0},
      {"stations 5g", 0},
      {"neighbours 5g", 0},
      {"wps pbc 5g 1", 0},
      {"wps pin 5g 1", 0},
      {"wps status 5g 1", 0},
      {"wps stop 5g 1", 0},
      {"radio off 5g", 0},
      {"radio on 5g", 0},
      {"led blink", 0},
      {"button wps", 0},
      {"calibration read 5g", 1},
      {"calibration write 5g --yes", 2},
      {"dump 5g", 0},
      {"trace on", 0},
      {"trace off", 0},
      {"trace level 1", 0},
      {"unlock 5g", 0},
      {"monitor 5g --for 1", 0},
      {"doctor 5g", 0},
      {"completion bash", 0},
      {"help get", 0},
  };
  return all;
}

// The call, which ends as it should; the shell says it where it does not.
std::string made(const Call& call) {
  return "timeout 60 wlanctl " + call.words + " >/dev/null 2>&1 </dev/null; s=$?; [ $s -eq " +
         std::to_string(call.status) + " ] || echo " + call.words + ": $s\n";
}

// Another process with a change of both bands, unsaved. It lives until the file "done" is there, and then says what it
// finds.
constexpr char kHolder[] =
    "library_probe init 0 init 1 set wifimgr_lib_set_ssid 0 1 Unsaved set wifimgr_lib_set_ssid 1 1 Unsaved5 run 0 "
    "'touch held; until [ -e done ]; do sleep 0.05; done' get SSID1 0 1 get SSID1 1 1 >found & holder=$!\n"
    "until [ -e held ]; do sleep 0.05; done\n";
constexpr char kRelease[] = "touch done; wait $holder; tail -n 2 found\n";
constexpr char kKept[] = "SSID1 0 Unsaved\nSSID1 0 Unsaved5\n";

TEST(LiveStore, EveryVerbIsTried) {
  const Words found = verbs();
  EXPECT_THAT(found, Contains("show"));
  for (const std::string& verb : found) {
    EXPECT_TRUE(
        std::any_of(calls().begin(), calls().end(),
                    [&](const Call& call) { return call.words == verb || call.words.rfind(verb + " ", 0) == 0; }))
        << verb << ": how is it called?";
  }
}

TEST(LiveStore, AnUnsavedChangeOfAnotherProcessSurvivesEveryVerb) {
  std::string script =
      std::string(kHolder) + "ssid() { segment_bytes $1 | tr -s '\\0' '\\n' | grep -A1 -x SSID1 | tail -n 1; }\n";
  for (const Call& call : calls()) {
    script += made(call);
    script += "ssids=$(ssid 0x12345)$(ssid 0x12346); [ $ssids = UnsavedUnsaved5 ] || echo " + call.words + " $ssids\n";
  }
  EXPECT_EQ(kKept, run(script + kRelease).out);
}

TEST(LiveStore, NoVerbTouchesTheOtherBandsSegmentOrFile) {
  std::string script = kHolder;
  script +=
      "state() { segment_bytes 0x12345 | md5sum; md5sum /etc/Wireless/RT2860AP/*; "
      "ls -l --time-style=full-iso /etc/Wireless/RT2860AP; }\nbefore=$(state)\n";
  for (const Call& call : calls()) {
    script += made(call);
    script += "[ \"$(state)\" = \"$before\" ] || { echo " + call.words + "; before=$(state); }\n";
  }
  EXPECT_EQ("SSID1 0 Unsaved\n", run(script + kRelease + "true").out.substr(0, 16));
}

// Ends with what the kernel has of stores: their keys, sizes and bytes.
constexpr char kKernelObjects[] =
    "objects() { awk 'FNR > 1 { print FILENAME, $1, $2, $4 }' /proc/sysvipc/shm; awk 'FNR > 1 { print FILENAME, $1, $2 "
    "}' "
    "/proc/sysvipc/sem; }\n";

TEST(LiveStore, ThatIsNotThereIsMadeByWhoWorksOnItAlone) {
  std::string script = kKernelObjects;
  for (const Call& call : calls()) {
    script += "rm -f /run/wlanctl-*; ipcrm --all; timeout 60 wlanctl " + call.words +
              " >/dev/null 2>&1 </dev/null; [ $? -lt 100 ] || echo ended\n";
    script += "[ -n \"$(objects)\" ] && made=yes || made=no; [ $made = " +
              std::string(call.store == Where::kMade ? "yes" : "no") + " ] || echo '" + call.words + "': $made\n";
  }
  EXPECT_EQ("", run(script).out);
}

TEST(LiveStore, ThatIsTooSmallForItsFileIsNeitherMadeAnewNorClearedByAnybody) {
  std::string script = std::string(kKernelObjects) +
                       "dat=/etc/Wireless/RT2860AP_AC/RT2860AP.dat; cp $dat whole; grep -E "
                       "'^(Default|BssidNum|SSID[12]|Channel|EnableSSID)' "
                       "whole >$dat; library_probe init 1 >/dev/null; cp whole $dat; segment_bytes 0x12346 >full\n";
  for (const Call& call : calls()) {
    script += "cp whole $dat; rm -f /run/wlanctl-*; before=$(objects); timeout 60 wlanctl " + call.words +
              " >/dev/null 2>&1 </dev/null; [ $? -lt 100 ] || echo ended\n[ \"$(objects)\" = \"$before\" ] || echo '" +
              call.words + "'\n";
    if (call.store == Where::kAsItIs) script += "segment_bytes 0x12346 | cmp - full || echo '" + call.words + "'\n";
    script += "segment_bytes 0x12346 >full; grep -aq SSID1 full || echo '" + call.words + "': cleared\n";
  }
  EXPECT_EQ("", run(script).out);
}

TEST(LiveStore, IsMadeByNobodyWithoutADatFile) {
  std::string script = std::string(kKernelObjects) + "rm /etc/Wireless/RT2860AP_AC/RT2860AP.dat\n";
  for (const Call& call : calls()) {
    script += "timeout 60 wlanctl " + call.words + " >/dev/null 2>&1 </dev/null; [ $? -lt 100 ] || echo ended\n[ -z " +
              "\"$(objects)\" ] || echo '" + call.words + "'\n";
  }
  EXPECT_EQ("", run(script).out);
}

TEST(LiveStore, GetsNoLockFromWhoLooks) {
  std::string script =
      std::string(kKernelObjects) + "library_probe init 1 >/dev/null; ipcrm -S 0x12349; before=$(objects)\n";
  for (const Call& call : calls()) {
    if (call.store == Where::kMade) continue;
    script += "timeout 60 wlanctl " + call.words + " >/dev/null 2>&1 </dev/null; [ $? -lt 100 ] || echo ended\n[ " +
              "\"$(objects)\" = \"$before\" ] || echo '" + call.words + "'\n";
  }
  EXPECT_EQ("", run(script).out);
}

TEST(LiveStore, IsAttachedNotMadeAnew) {
  const Result result =
      run(std::string(kHolder) + "before=$(cut -c 1-30 /proc/sysvipc/shm)\nwlanctl show >/dev/null\n" +
          "[ \"$before\" = \"$(cut -c 1-30 /proc/sysvipc/shm)\" ] || echo anew\n" + kRelease);
  EXPECT_EQ(kKept, result.out);
}

TEST(LiveStore, IsLoadedFromTheFileWhereThereIsNone) {
  const std::vector<Result> steps = run_steps({"wlanctl get 2.4g SSID:1", "wlanctl set 2.4g SSID:1=Kitchen",
                                               "wlanctl get 2.4g SSID:1", "wc -l </proc/sysvipc/shm"});
  EXPECT_EQ("Gateway-Home\n", steps[0].out);
  EXPECT_EQ("Kitchen\n", steps[2].out);
  EXPECT_EQ("2\n", steps[3].out);  // the head and 2.4G's: nobody has asked for 5G
}

TEST(LiveStore, SaysThreeWhenThereIsNoneAndNoneCanBeMade) {
  Words steps = {"rm -r /etc/Wireless"};
  const Words verbs_of_a_store = {"show", "show 5g", "get 2.4g Channel", "set 2.4g Channel=1", "diff",
                                  "save", "revert"};
  for (const std::string& verb : verbs_of_a_store) steps.push_back("wlanctl " + verb + " --json");
  steps.push_back("wlanctl show");
  std::vector<Result> results = run_steps(steps);
  EXPECT_THAT(results.back().err, HasSubstr("wlanctl: there is no store of 2.4g, and its dat file cannot be read; "));
  EXPECT_EQ(2u, lines_of(results.back().err).size());
  results.erase(results.begin());
  for (size_t i = 0; i < results.size(); ++i) EXPECT_EQ(3, results[i].status) << i << results[i].out;
}

TEST(LiveStore, SeveralThatFindNoneMakeOne) {
  const Result result =
      run("for i in 1 2 3 4 5 6 7 8 9 10; do\n"
          "ipcrm -M 0x12345 2>/dev/null; for j in 1 2 3; do wlanctl show 2.4g 1 | wc -l >lines$j & done\n"
          "wlanctl set 2.4g Channel=3 >/dev/null || echo failed; wait; wlanctl get 2.4g Channel; cmp lines1 lines2; "
          "cmp lines1 lines3; done | sort -u");
  EXPECT_EQ("3\n", result.out) << result.err;
}

TEST(LiveStore, ThatIsEmptyIsNone) {
  const std::vector<Result> steps =
      run_steps({std::string("library_probe init 0 init 1 >/dev/null; ipcrm -M 0x12345; '") + PYTHON_PROGRAM +
                     "' -c 'import ctypes; ctypes.CDLL(None).shmget(0x12345, 358440, 0o1666)'",
                 "wlanctl show 2.4g", "wlanctl status --json", "wlanctl revert 2.4g", "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ(3, steps[1].status);
  EXPECT_EQ("wlanctl: the store of 2.4g is empty; wlanctl revert 2.4g fills it from the dat file\n", steps[1].err);
  EXPECT_EQ(3, steps[2].status);
  EXPECT_EQ(0, steps[3].status) << steps[3].err;
  EXPECT_EQ("Gateway-Home\n", steps[4].out);
}

TEST(LiveStore, ThatAnotherProcessHoldsIsSaid) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; hold_store 0x12348 & holder=$!\n"
          "until [ -e held ]; do sleep 0.02; done\n"
          "wlanctl show 2.4g >/dev/null 2>&1 & show=$!\n"
          "wlanctl set 2.4g Channel=1 2>err; echo $?; grep -c \"held by process $holder (hold_store),\" err; wait "
          "$show; echo $?\n"
          "wlanctl get 5g Channel >/dev/null; echo $?; touch done; wait $holder; wlanctl get 2.4g Channel");
  EXPECT_EQ("3\n1\n3\n0\n6\n", result.out) << result.err;
}

TEST(LiveStore, AHolderThatIsGoneIsNotToBeEnded) {
  const Result result =
      run(std::string("library_probe init 0 init 1 >/dev/null; '") + PYTHON_PROGRAM +
          "' -c 'import ctypes, struct; libc = ctypes.CDLL(None); "
          "libc.semop(libc.semget(0x12348, 1, 0o666), struct.pack(\"HhH\", 0, -1, 0), 1)'; wlanctl get 2.4g Channel");
  EXPECT_EQ(3, result.status);
  EXPECT_THAT(result.err,
              testing::AllOf(HasSubstr("which is gone and cannot let go"), HasSubstr("wlanctl unlock 2.4g")));
}

TEST(LiveStore, WhoseLockIsGoneIsNotTakenForAnEmptyOne) {
  const std::string gone =
      "wlanctl: the store of 2.4g cannot be used: the semaphore that locks it is gone; start the process that makes "
      "the store, by init_shm and init, anew\n";
  Words steps = {
      "library_probe init 0 init 1 >/dev/null; wlanctl export 2.4g --output b.json; cp b.json good; ipcrm -S 0x12348"};
  const Words needing = {"show 2.4g",        "ssid list 2.4g", "export 2.4g --output b.json",
                         "get 2.4g Channel", "stations 2.4g",  "set 2.4g Channel=1",
                         "revert 2.4g"};
  for (const std::string& words : needing) steps.push_back("wlanctl " + words);
  steps.push_back("cmp b.json good");
  steps.push_back("wlanctl status 2.4g");
  steps.push_back("wlanctl status 2.4g --json");
  const std::vector<Result> results = run_steps(steps);
  for (size_t i = 0; i < needing.size(); ++i) {
    const Result& result = results[i + 1];
    EXPECT_EQ(3, result.status) << needing[i];
    EXPECT_EQ("", result.out) << needing[i];
    EXPECT_EQ(gone, result.err) << needing[i];
  }
  EXPECT_EQ(0, results[needing.size() + 1].status);
  const Result& status = results[needing.size() + 2];
  EXPECT_EQ(3, status.status);
  EXPECT_EQ(gone, status.err);
  EXPECT_THAT(status.out, testing::Not(HasSubstr("agree")));
  EXPECT_EQ(3, document_in(results.back().out)["exit_code"]);
}

}  // namespace
}  // namespace wlanctl_test

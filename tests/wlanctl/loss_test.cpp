// What a write of the dat file would lose is told before it, and kept; what is damaged neither harms nor stops the tool.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

const std::string kDat = "/etc/Wireless/RT2860AP/RT2860AP.dat";
const std::string kDat5g = "/etc/Wireless/RT2860AP_AC/RT2860AP.dat";
const std::string kKept = "/var/run/wlanctl-kept-2.4g";

// Lines that are put at the head of the file.
constexpr struct {
  const char* line;
  const char* reason;
} kDamages[] = {
    {"no equals sign", "line 2: there is no = in the line"},
    {"SSID1=a=b", "line 2: SSID1: the loader ends the value at the second ="},
    {"HideSSID=0;;1", "line 2: HideSSID: 1 empty field between others"},
    {"SSID1=a;b", "line 2: SSID1: 2 values for one SSID"},
};

TEST(Loss, OfALineOfTheFileIsRefusedByApplyAndSaveWithTheLineNamed) {
  for (const auto& damage : kDamages) {
    const std::vector<Result> steps = run_steps(
        {"sed -i '1a " + std::string(damage.line) + "' " + kDat + "; cp " + kDat + " before",
         "wlanctl set 2.4g Channel=11", "wlanctl save 2.4g", "wlanctl apply 2.4g", "wlanctl apply 2.4g --json",
         "cmp " + kDat + " before && ! ls " + kKept, "wlanctl apply 2.4g --force", "cmp " + kKept + " before"});
    for (const size_t refused : {2U, 3U}) {
      EXPECT_EQ(1, steps[refused].status) << damage.line;
      EXPECT_THAT(steps[refused].err, AllOf(HasSubstr(damage.reason), HasSubstr("--force"))) << damage.line;
    }
    EXPECT_EQ(0, steps[5].status) << damage.line;
    EXPECT_EQ(0, steps[6].status) << steps[6].err;
    EXPECT_THAT(steps[6].err, HasSubstr("as it was is kept in " + kKept));
    EXPECT_EQ(0, steps[7].status) << damage.line;
  }
}

TEST(Loss, OfAFileWithCarriageReturnsIsRefusedOnceForAllLines) {
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 >/dev/null; sed -i 's/$/\\r/' " + kDat, "wlanctl save 2.4g"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("the line ends in CR LF"));
}

TEST(Loss, BehindAnEmptyFieldOfTheStoreIsRefused) {
  const std::vector<Result> steps = run_steps(
      {"library_probe init 0 put HideSSID 0 1 '' >/dev/null", "wlanctl save 2.4g", "wlanctl save 2.4g --force"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("HideSSID: value 1 is empty, and a save loses all behind it"));
  EXPECT_EQ(0, steps[2].status);
}

TEST(Loss, OfServedSsidsBehindALowerCountIsRefused) {
  const std::vector<Result> steps =
      run_steps({"wlanctl set 2.4g BssidNum=1", "wlanctl apply 2.4g", "wlanctl apply 2.4g --force"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, AllOf(HasSubstr("with 1 instead of 2 SSIDs"), HasSubstr("SSID2")));
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
}

TEST(Loss, OfWhatNoSsidUsesIsKeptAndTold) {
  const std::vector<Result> steps = run_steps({"cp " + kDat + " before; wlanctl set 2.4g Channel=11",
                                               "wlanctl save 2.4g", "cmp before " + kKept + "; stat -c %a " + kKept,
                                               "wlanctl set 2.4g Channel=1; wlanctl diff 2.4g; wlanctl save 2.4g"});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[1].err, HasSubstr(kDat +
                                      " had values of SSIDs behind BssidNum, which a save leaves out; as it was it "
                                      "is kept in " +
                                      kKept));
  EXPECT_EQ("600\n", steps[2].out);
  EXPECT_THAT(steps[3].err, Not(HasSubstr("behind BssidNum"))) << "there are none any more";
}

// Nothing is known of what was applied, but the file has changed since the store was made.
TEST(Loss, OfValuesThatTheFileHasGotSinceABootIsToldAndTheFileKept) {
  const auto steps =
      run_steps({"library_probe init 0 >/dev/null; sed -i s/^SSID1=.*/SSID1=Theirs/ " + kDat +
                     "; touch -d '1 minute' " + kDat + "; wlanctl set 2.4g Channel=11; cp " + kDat + " file",
                 "wlanctl apply 2.4g", "cmp file " + kKept});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[1].err, HasSubstr(kDat +
                                      " had values that the store does not have, of Channel, SSID:1: the store's are "
                                      "written in their place, and the file as it was is kept in " +
                                      kKept));
  EXPECT_EQ(0, steps[2].status);
}

TEST(Loss, OfWhatNoSsidUsesIsToldBeforehand) {
  const auto steps = run_steps({"wlanctl diff 2.4g", "wlanctl set 2.4g Channel=11; wlanctl diff 2.4g"});
  EXPECT_THAT(steps[0].err, Not(HasSubstr("behind BssidNum"))) << "nothing is to be applied";
  EXPECT_THAT(steps[1].err, HasSubstr(kDat +
                                      " has values of SSIDs behind BssidNum, which a save leaves out; it is kept "
                                      "in " +
                                      kKept + " then"));
}

const std::string kApplied =
    "library_probe init 0 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; wlanctl set 2.4g SSID:1=N1 >/dev/null; "
    "wlanctl "
    "apply 2.4g >/dev/null 2>&1; ";

TEST(Loss, OfALineWhoseKeyTheStoreDoesNotHaveIsRefused) {
  const std::vector<Result> steps =
      run_steps({kApplied + "echo VendorTweak=42 >>" + kDat + "; cp " + kDat +
                     " file; wlanctl set 2.4g SSID:1=N2; rm -f " + kKept,
                 "wlanctl save 2.4g", "wlanctl apply 2.4g", "wlanctl apply 2.4g --dry-run",
                 "cmp " + kDat + " file && ! ls " + kKept, "wlanctl save 2.4g --force",
                 "cmp " + kKept + " file; grep Vendor " + kDat});
  for (const size_t refused : {1U, 2U, 3U}) {
    EXPECT_EQ(1, steps[refused].status) << refused;
    EXPECT_THAT(steps[refused].err,
                HasSubstr("VendorTweak: the store has no such key, the line would be lost; wlanctl revert "
                          "2.4g takes the file into the store"));
  }
  EXPECT_EQ(0, steps[4].status) << steps[4].err;
  EXPECT_EQ(0, steps[5].status) << steps[5].err;
  EXPECT_THAT(steps[5].err, HasSubstr("as it was is kept in " + kKept));
  EXPECT_EQ("", steps[6].out);
}

TEST(Loss, OfALineThatARevertHasTakenInIsNone) {
  const std::vector<Result> steps = run_steps(
      {kApplied + "echo VendorTweak=42 >>" + kDat, "wlanctl revert 2.4g", "wlanctl save 2.4g", "grep Vendor " + kDat});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_EQ("VendorTweak=42\n", steps[3].out);
}

TEST(Loss, OfCommentsBlankLinesAndWhatNoSsidUsesIsNone) {
  const std::vector<Result> steps =
      run_steps({kApplied + "printf '\\n# a comment\\n#Key=1\\nSSID7=nobody\\nHideSSID=0;0;1;1\\n' >>" + kDat,
                 "wlanctl save 2.4g"});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
}

TEST(Loss, OfTheLinesThatADamagedStoreLacksIsRefused) {
  const std::vector<Result> steps = run_steps(
      {kApplied + "cp " + kDat + " file; damage_store quarter 0x12345", "wlanctl save 2.4g", "cmp " + kDat + " file"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, testing::ContainsRegex("the line would be lost; and so on, in [0-9]+ more places"));
  EXPECT_EQ(0, steps[2].status) << steps[2].out;
}

TEST(Loss, OfValuesThatTheFileAloneHasIsToldAndTheFileKept) {
  const std::string note =
      "had values that the store does not have, of SSID:2: the store's are written in their place, and the "
      "file as it was is kept in " +
      kKept;
  const std::string imported =
      "echo '{\"wlanctl_settings\": 1, \"bands\": {\"2.4g\": {\"settings\": {\"SSID:2\": \"Imp\"}}}}' "
      ">more.json; wlanctl import more.json --to-file";
  for (const std::string& change : Words{imported, "sed -i s/^SSID2=.*/SSID2=Imp/ " + kDat}) {
    for (const char* const verb : {"save", "apply"}) {
      const std::vector<Result> steps = run_steps({kApplied, change, "cp " + kDat + " file; wlanctl set 2.4g Channel=3",
                                                   std::string("wlanctl ") + verb + " 2.4g", "cmp " + kKept + " file"});
      EXPECT_EQ(0, steps[1].status) << steps[1].err;
      EXPECT_EQ(0, steps[3].status) << steps[3].err;
      EXPECT_THAT(steps[3].err, HasSubstr(note)) << change << verb;
      EXPECT_EQ(0, steps[4].status) << change << verb;
    }
  }
}

TEST(Loss, OfAValueThatWasSavedAndIsSetAnewIsNotTold) {
  const std::vector<Result> steps = run_steps(
      {kApplied + "wlanctl set 2.4g SSID:2=N2; wlanctl save 2.4g; wlanctl set 2.4g SSID:2=N3", "wlanctl save 2.4g"});
  EXPECT_EQ(0, steps[1].status);
  EXPECT_THAT(steps[1].err, Not(HasSubstr("does not have")));
}

TEST(Diff, ListsWhatAnApplyChangesByItself) {
  const Json band = document_in(
      run_steps({"wlanctl set 2.4g TxBurst=0 AuthMode:1=OPEN", "wlanctl diff 2.4g --json"})[1].out)["data"]["bands"][0];
  EXPECT_THAT(band["adjustments"], testing::Contains(Json::parse(R"({"key":"TxBurst","from":0,"to":1})")));
  EXPECT_THAT(band["adjustments"], testing::Contains(Json::parse(R"({"key":"WPAPSK:1","from":"********","to":"0"})")));
}

TEST(Diff, TellsNoRestartFromNothingAndWhatIsSavedFromWhatIsInForce) {
  const std::vector<Result> steps = run_steps(
      {"wlanctl diff 2.4g --json", "wlanctl set 2.4g Channel=11; wlanctl save 2.4g", "wlanctl diff 2.4g --json",
       "wlanctl apply 2.4g; wlanctl set 2.4g HideSSID:1=1", "wlanctl diff 2.4g --json"});
  EXPECT_EQ("nothing", document_in(steps[0].out)["data"]["bands"][0]["apply"]);
  const Json saved = document_in(steps[2].out)["data"]["bands"][0];
  EXPECT_EQ("radio", saved["apply"]);
  EXPECT_EQ(Json::array(), saved["changes"]);
  EXPECT_EQ(Json::parse(R"([{"key":"Channel","live":11,"in_force":6}])"), saved["not_in_force"]);
  EXPECT_EQ("save", document_in(steps[4].out)["data"]["bands"][0]["apply"]);
}

TEST(Diff, SaysThatOfAnAccessListTheFirstAddressCounts) {
  const std::vector<Result> steps =
      run_steps({"wlanctl set 2.4g 'AccessControlList:1=00:11:22:33:44:55;00:11:22:33:44:66'", "wlanctl diff 2.4g"});
  EXPECT_THAT(steps[1].err,
              HasSubstr("AccessControlList:1 of 2.4g: of several addresses the driver gets the first one"));
}

TEST(Bands, OneWithoutAStoreKeepsNoVerbFromTheOther) {
  for (const std::string& verb : Words{"status", "show", "diff", "dump", "stations", "save", "revert", "apply"}) {
    const std::vector<Result> steps = run_steps({"rm " + kDat, "wlanctl " + verb + " --json"});
    EXPECT_EQ(3, steps[1].status) << verb;
    const Json document = document_in(steps[1].out);
    EXPECT_THAT(document["problems"].dump(), HasSubstr("there is no store of 2.4g")) << verb;
    ASSERT_THAT(document["data"]["bands"], SizeIs(1)) << verb;
    EXPECT_THAT(document["data"]["bands"][0].dump(), HasSubstr("5g")) << verb;
  }
}

TEST(Bands, OneThatCannotBeAppliedKeepsNoApplyFromTheOther) {
  const std::string change =
      "library_probe init 0 init 1 >/dev/null; wlanctl set 2.4g Channel=1 >/dev/null; wlanctl set 5g Channel=44 "
      ">/dev/null; ";
  const std::string folder = kDat.substr(0, kDat.rfind('/'));
  const std::pair<std::string, int> troubles[] = {
      {"wlanctl set 2.4g --force 'SSID:1=$(reboot)' >/dev/null 2>&1", 1},
      {"rm " + kDat + "; mkdir " + kDat, 2},
      {"mv " + kDat + " dat; (cat dat; echo damaged) >" + kDat, 1},
      {"wlanctl set 2.4g Channel=3 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1", 1},
      {"cp " + kDat + " ..; mount -t tmpfs none " + folder + "; cp ../*.dat " + folder + "; mount -o remount,ro " +
           folder,
       1},
  };
  for (const auto& [trouble, status] : troubles) {
    const auto steps = run_steps({change + trouble, "wlanctl apply --json", "wlanctl diff 5g"});
    EXPECT_EQ(status, steps[1].status) << trouble << steps[1].err;
    const Json document = document_in(steps[1].out);
    EXPECT_THAT(document["problems"].dump(), HasSubstr("2.4g")) << trouble;
    const Json& bands = document["data"]["bands"];
    ASSERT_FALSE(bands.empty()) << trouble;
    EXPECT_EQ("5g", bands.back()["band"]) << trouble;
    EXPECT_EQ("committed", bands.back()["action"]) << trouble;
    EXPECT_THAT(steps[2].out, HasSubstr("5g: the store is as the dat file; an apply would mean: nothing")) << trouble;
  }
}

TEST(Status, TakesABand) {
  const Json bands = json_of("status 5g")["data"]["bands"];
  ASSERT_THAT(bands, SizeIs(1));
  EXPECT_EQ("5g", bands[0]["band"]);
}

TEST(Damage, AnSsidCountThatNoBandHasIsTold) {
  const std::vector<Result> steps = run_steps(
      {"library_probe init 0 put BssidNum 0 1 2147483647 >/dev/null", "timeout 10 wlanctl diff 2.4g",
       "timeout 10 wlanctl apply 2.4g --dry-run", "timeout 10 wlanctl save 2.4g", "wlanctl set 2.4g BssidNum=2"});
  for (const size_t told : {1U, 2U, 3U}) {
    EXPECT_EQ(1, steps[told].status);
    EXPECT_THAT(steps[told].err, HasSubstr("BssidNum of 2.4g is \"2147483647\" in the store"));
  }
  EXPECT_EQ(0, steps[4].status) << steps[4].err;
}

TEST(Damage, AMissingSsidCountIsToldWithTheWayOut) {
  const std::string next = "give " + kDat + " a line BssidNum=2, then wlanctl revert 2.4g";
  const auto steps = run_steps({"library_probe init 0 init 1 >/dev/null; sed -i /^BssidNum=/d " + kDat +
                                    "; ipcrm -M 0x12345; wlanctl set "
                                    "2.4g Channel=1 >/dev/null 2>&1; wlanctl apply 2.4g",
                                "sed -i 1aBssidNum=2 " + kDat + "; wlanctl revert 2.4g", "wlanctl apply 2.4g",
                                "wlanctl get 2.4g BssidNum"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err,
              HasSubstr("the store of 2.4g has no BssidNum, which says how many SSIDs there are; " + next));
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_EQ("2\n", steps[3].out);
}

TEST(Damage, APipeInThePlaceOfAStateFileHangsNothing) {
  for (const char* const name : {"applied-2.4g", "pending-2.4g"}) {
    const std::vector<Result> steps =
        run_steps({std::string("mkfifo -m 600 /var/run/wlanctl-") + name, "timeout 10 wlanctl diff 2.4g",
                   "timeout 10 wlanctl get 2.4g Channel"});
    EXPECT_EQ(0, steps[1].status) << name << steps[1].err;
    EXPECT_EQ("6\n", steps[2].out) << name;
  }
}

// A control character of each block, an overlong one, half of a pair, and one beyond the last.
TEST(Damage, NothingThatATerminalActsOnIsPrinted) {
  const std::string bytes = "\\033[2J\\177\\302\\233\\300\\233\\340\\202\\233\\355\\240\\200\\364\\220\\200\\200";
  const std::vector<Result> steps =
      run_steps({"cp " + kDat + " fresh; library_probe init 0 put SSID1 0 1 \"$(printf 'a" + bytes + "')\" >/dev/null",
                 "printf 'x" + bytes + "=1\\n' >>" + kDat + "; wlanctl revert 2.4g >/dev/null; cp fresh " + kDat,
                 "wlanctl diff 2.4g", "wlanctl diff 2.4g --json", "wlanctl get 2.4g SSID:1"});
  for (const Result& step : {steps[2], steps[3], steps[4]}) {
    for (const char* const sequence : {"\033", "\177", "\302\233", "\300", "\340\202", "\355\240", "\364\220"}) {
      EXPECT_THAT(step.out + step.err, Not(HasSubstr(sequence)));
    }
  }
}

// The marks and overrides of the direction, those of lines, and the one without width: from the first and the last of each
// span, in the order of their numbers.
TEST(Damage, NothingThatTurnsATextIsPrinted) {
  const Words sequences = {"\u061c", "\u200e", "\u200f", "\u2028", "\u2029",
                           "\u202a", "\u202e", "\u2066", "\u2069", "\ufeff"};
  const Words escapes = {"061c", "200e", "200f", "2028", "2029", "202a", "202e", "2066", "2069", "feff"};
  const std::string kept = "\u061b\u200d\u2010\u2027\u202f\u2065\u206a\ufefe";
  for (size_t i = 0; i < sequences.size(); i += 5) {
    std::string name = "a";
    std::string shown = "a";
    std::string escaped = "a";
    for (size_t j = i; j < i + 5; ++j) {
      name += sequences[j];
      shown += std::string(sequences[j].size(), '?');
      escaped += "\\u" + escapes[j];
    }
    const std::vector<Result> steps =
        run_steps({"library_probe init 0 init 1 >/dev/null; wlanctl set 2.4g SSID:1=" + name + " >/dev/null",
                   "wlanctl diff 2.4g", "wlanctl diff 2.4g --json", "wlanctl export 2.4g"});
    EXPECT_THAT(steps[1].out, HasSubstr("-> " + shown + "\n"));
    EXPECT_THAT(steps[2].out, HasSubstr("\"" + escaped + "\""));
    EXPECT_EQ(name, document_in(steps[3].out)["bands"]["2.4g"]["settings"]["SSID:1"]);
    for (const Result& step : steps) {
      for (const std::string& sequence : sequences) EXPECT_THAT(step.out + step.err, Not(HasSubstr(sequence)));
    }
  }
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 >/dev/null; wlanctl set 2.4g SSID:1=" + kept, "wlanctl diff 2.4g --json"});
  EXPECT_THAT(steps[0].out, HasSubstr(kept));
  EXPECT_THAT(steps[1].out, HasSubstr(kept));
}

TEST(Messages, HaveAtMostEightyColumns) {
  const std::vector<Result> steps = run_steps(
      {"wlanctl diff 2>messages; wlanctl set 2.4g Channel=36 AuthMode:1=none HideSSID:1= 2>>messages; wlanctl set 2.4g "
       "AuthMode:1=OPEN TxBurst=0 2>>messages; wlanctl conform 2>>messages; sed 's/^ */|/' messages",
       "awk 'length > 80' messages; grep -c '^         ' messages"});
  EXPECT_THAT(lines_of(steps[0].out), SizeIs(testing::Ge(8)));
  EXPECT_THAT(lines_of(steps[1].out), SizeIs(1)) << steps[1].out;
}

// Of every setting that SSIDs have: either it is refused, or a save and a load leave the next one's value as it was.
TEST(EmptyValue, LosesTheNextSsidsValueOfNoKey) {
  const Result result = run(R"sh(cat >judge.py <<'END'
import json, subprocess

def tool(*words):
    return subprocess.run(["wlanctl", *words], capture_output=True, text=True)

judged = accepted = 0
for setting in json.loads(tool("keys", "--json").stdout)["data"]["keys"]:
    if setting["scope"] != "ssid" or "2.4g" not in setting["bands"]:
        continue
    key = setting["key"]
    # One that is empty has nothing to lose.
    for value in ["", "1", "02:11:22:33:44:55", "abcdefghij", "10.0.0.1"]:
        if value:
            tool("set", "2.4g", f"{key}:2={value}")
        before = tool("get", "2.4g", key + ":2").stdout
        if before.strip():
            break
    else:
        print(key, "has no value to lose")
    judged += 1
    if tool("set", "2.4g", key + ":1=").returncode != 0:
        continue
    accepted += 1
    for verb in "save", "revert":
        if tool(verb, "2.4g").returncode != 0:
            print(key, "refused by", verb)
    after = tool("get", "2.4g", key + ":2").stdout
    if after != before:
        print(key, "lost", before, "for", after)
print(judged > 40, accepted > 5)
END
python3 judge.py)sh");
  EXPECT_EQ("True True\n", result.out) << result.err;
}

}  // namespace
}  // namespace wlanctl_test

// diff, save and revert: the live store and the dat file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr char kFile[] = "/etc/Wireless/RT2860AP/RT2860AP.dat";

Json band_of(const Result& step, size_t band = 0) {
  return document_in(step.out)["data"]["bands"][band];
}

TEST(Diff, SaysWhenNothingDiffers) {
  const std::vector<Result> steps = run_steps({"wlanctl diff --json", "wlanctl diff 5g"});
  EXPECT_EQ(0, steps[0].status);
  for (const size_t band : {0u, 1u}) {
    EXPECT_THAT(band_of(steps[0], band)["changes"], IsEmpty());
    EXPECT_EQ("nothing", band_of(steps[0], band)["apply"]);
  }
  EXPECT_THAT(steps[1].out, StartsWith("5g: the store is as the dat file"));
}

TEST(Diff, ShowsValueByValueAndTheWeight) {
  const std::vector<Result> steps = run_steps({"wlanctl set 2.4g Channel=11 HideSSID:2=1 SSID:1=Kitchen >/dev/null",
                                               "wlanctl diff 2.4g --json", "wlanctl diff 2.4g"});
  EXPECT_EQ(Json::parse(R"([{"key":"Channel","live":11,"file":6},{"key":"HideSSID:2","live":1,"file":0},
                            {"key":"SSID:1","live":"Kitchen","file":"Gateway-Home"}])"),
            band_of(steps[1])["changes"]);
  EXPECT_EQ("radio", band_of(steps[1])["apply"]);
  EXPECT_THAT(steps[2].out, HasSubstr("\n  SSID:1      Gateway-Home -> Kitchen\n"));
}

TEST(Diff, TellsAnApplyWithoutARestartFromNone) {
  const auto steps = run_steps({"wlanctl set 2.4g HideSSID:1=1", "wlanctl diff 2.4g", "wlanctl diff 5g"});
  EXPECT_THAT(steps[1].out, StartsWith("2.4g: 1 value differs (dat file -> store); an apply would mean: no restart\n"));
  EXPECT_EQ("5g: the store is as the dat file; an apply would mean: nothing\n", steps[2].out);
}

// A save has cut the list in the file, and a revert has it cut in the store.
TEST(Diff, NamesWhatIsNotInForceThoughStoreAndFileAgree) {
  const auto steps =
      run_steps({"wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; wlanctl "
                 "revert 2.4g >/dev/null",
                 "wlanctl diff 2.4g"});
  EXPECT_THAT(steps[1].out, HasSubstr("  1 value differs from what is in force (in force -> store)\n"
                                      "  AutoChannelSkipList  12;13;14 -> 12;13\n"));
}

TEST(Diff, WaitsForASlowDriverOnce) {
  const auto steps =
      run_steps({"wlanctl apply 2.4g --again >/dev/null 2>&1; simctl fail channel slow=60 ra0", "wlanctl diff 2.4g"});
  EXPECT_EQ(0, steps[1].status);
  EXPECT_THAT(steps[1].err, testing::EndsWith("wlanctl: note: 2.4g: the driver took longer than 3 s to tell its "
                                              "channel; whether it serves what was applied is not known\n"));
}

TEST(Diff, AnotherSsidCountWeighsAReboot) {
  const auto steps = run_steps({"wlanctl set 2.4g BssidNum=1", "wlanctl diff 2.4g --json", "wlanctl diff 2.4g"});
  EXPECT_EQ("reboot", document_in(steps[1].out)["data"]["bands"][0]["apply"]);
  EXPECT_THAT(steps[2].out,
              HasSubstr("an apply would mean: reboot\n"
                        "  a restart of the radio, and a reboot: the driver makes interfaces for another\n"
                        "  BssidNum, and switches hardware NAT, when it is loaded\n"));
}

TEST(Diff, WhatIsNotWatchedWeighsNothingAndIsShown) {
  const Json band = json_of("diff 2.4g", "wlanctl set 2.4g EAPifname=br0")["data"]["bands"][0];
  EXPECT_EQ(1u, band["changes"].size());
  EXPECT_EQ("save", band["apply"]);
}

TEST(Diff, MeasuresAgainstWhatIsInForceAlsoAfterASave) {
  const std::vector<Result> steps =
      run_steps({"wlanctl set 2.4g Channel=11 >/dev/null; wlanctl save 2.4g >/dev/null", "wlanctl diff 2.4g --json"});
  EXPECT_THAT(band_of(steps[1])["changes"], IsEmpty());
  EXPECT_EQ("radio", band_of(steps[1])["apply"]);
}

TEST(Diff, SaysThatItDoesNotKnowWhatIsInForce) {
  EXPECT_THAT(run("wlanctl diff 2.4g").err, HasSubstr("its dat file counts as what is in force"));
}

TEST(Diff, AStateFileThatIsNotBelievableIsNotUsed) {
  const char* const kState = "/var/run/wlanctl-applied-2.4g";
  for (const char* const harm : {"chmod 644 %", "echo x >>%", "sed -i '1s/ 3 / 9 /' %", "echo >%",
                                 "mv % x; ln -s \"$PWD/x\" %", "sed -i s/2.4g/5g/ %"}) {
    std::string script = harm;
    for (size_t at = script.find('%'); at != std::string::npos; at = script.find('%')) script.replace(at, 1, kState);
    const std::vector<Result> steps =
        run_steps({"wlanctl save 2.4g >/dev/null 2>&1", "wlanctl diff 2.4g", "stat -c %a /var/run/wlanctl-applied-2.4g",
                   script, "wlanctl diff 2.4g"});
    EXPECT_THAT(steps[1].err, Not(HasSubstr("nothing is known")));
    EXPECT_EQ("600\n", steps[2].out);
    EXPECT_EQ(0, steps[4].status) << harm;
    EXPECT_THAT(steps[4].err, HasSubstr("nothing is known of what was last applied")) << harm;
  }
}

TEST(Diff, SaysTwoWithoutADatFile) {
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 init 1 >/dev/null; rm -r /etc/Wireless", "wlanctl diff --json",
                 "wlanctl revert --json", "wlanctl diff 6g --json"});
  EXPECT_EQ(2, steps[1].status);
  EXPECT_EQ(2, steps[2].status);
  EXPECT_EQ(2, steps[3].status);
}

TEST(Save, WritesTheStoreToTheDatFileAndTellsNoDriver) {
  const std::vector<Result> steps =
      run_steps({"wlanctl set 2.4g SSID:1=Kitchen >/dev/null; wc -l </run/gateway-sim/journal", "wlanctl save --json",
                 std::string("grep ^SSID1= ") + kFile, "wc -l </run/gateway-sim/journal"});
  EXPECT_EQ(Json::parse(R"(["2.4g","5g"])"), document_in(steps[1].out)["data"]["bands"]);
  EXPECT_EQ("SSID1=Kitchen\n", steps[2].out);
  EXPECT_EQ(steps[0].out, steps[3].out);
}

TEST(Save, OfOneBandLeavesTheOthersFileAlone) {
  const std::vector<Result> steps =
      run_steps({"cd /etc/Wireless/RT2860AP_AC; stat -c %y%i RT2860AP.dat; md5sum *", "wlanctl save 2.4g >/dev/null",
                 "cd /etc/Wireless/RT2860AP_AC; stat -c %y%i RT2860AP.dat; md5sum *"});
  EXPECT_EQ(steps[0].out, steps[2].out);
}

TEST(Save, IsRefusedWhenTheLibraryRefuses) {
  const std::string longest(149, 'x');
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 init 1 >/dev/null; library_probe init 0 put EnableSSID 0 1 " + longest +
                     " put EnableSSID 0 2 " + longest,
                 std::string("md5sum <") + kFile, "wlanctl save 2.4g --json", std::string("md5sum <") + kFile});
  EXPECT_EQ(1, steps[2].status);
  EXPECT_THAT(document_in(steps[2].out)["problems"][0]["message"].get<std::string>(), HasSubstr("2.4g was not saved"));
  EXPECT_EQ(steps[1].out, steps[3].out);
}

TEST(Revert, PutsTheStoreBackForAllProcesses) {
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 init 1 >/dev/null; segment_bytes 0x12345 | md5sum",
                 "wlanctl set 2.4g SSID:1=Kitchen Channel=11 >/dev/null", "wlanctl revert 2.4g --json",
                 "segment_bytes 0x12345 | md5sum", "wlanctl revert 2.4g"});
  EXPECT_EQ(Json::parse(R"([{"band":"2.4g","values":2}])"), document_in(steps[2].out)["data"]["bands"]);
  EXPECT_EQ(steps[0].out, steps[3].out);
  EXPECT_EQ("2.4g: 0 values put back to the dat file's\n", steps[4].out);
}

TEST(Revert, TakesNoLineEndOfAValueForOneOfItsKey) {
  const auto steps = run_steps({"library_probe init 0 init 1 >/dev/null; damage_store unended 0x12345",
                                "wlanctl revert 2.4g", "wlanctl revert 2.4g --force"});
  EXPECT_EQ(1, steps[1].status) << steps[1].out;
  EXPECT_THAT(steps[1].err, HasSubstr("xxxxxxxx"));
}

TEST(Revert, OfOneBandLeavesTheOtherAlone) {
  const std::vector<Result> steps = run_steps(
      {"wlanctl set 5g SSID:1=Kitchen >/dev/null", "wlanctl revert 2.4g >/dev/null", "wlanctl get 5g SSID:1"});
  EXPECT_EQ("Kitchen\n", steps[2].out);
}

TEST(Revert, IsRefusedWhenTheFileHasOutgrownTheStore) {
  const std::vector<Result> steps = run_steps({"wlanctl set 2.4g SSID:1=Kitchen >/dev/null",
                                               std::string("for i in $(seq 400); do echo Added$i=1; done >>") + kFile,
                                               "wlanctl revert 2.4g --json", "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ(1, steps[2].status);
  EXPECT_EQ("Kitchen\n", steps[3].out);
}

TEST(Diff, TellsOfANewSsidWhatMatters) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; echo topsecret | wlanctl ssid add 2.4g Guest --passphrase-file - "
          ">/dev/null 2>&1; wlanctl diff 2.4g; echo == json; wlanctl diff 2.4g --json");
  const std::string text = result.out.substr(0, result.out.find("== json"));
  EXPECT_THAT(text, testing::ContainsRegex("\n  SSID:3 +-> Guest\n"));
  EXPECT_THAT(text, testing::ContainsRegex("\n  SSID 3 is new: [0-9]+ more values, which --json lists\n"));
  EXPECT_LT(lines_of(text).size(), 24u);
  EXPECT_GT(document_in(result.out.substr(result.out.find("== json") + 8))["data"]["bands"][0]["changes"].size(), 30u);
}

// However little its file has of it.
TEST(Diff, CallsNoSsidNewThatTheFileServes) {
  const auto steps = run_steps({std::string("cp ") + kFile +
                                    " poor.dat; sed -i -e '/^AutoChannelSkipList/!s/;.*//' -e '/^SSID2=/d' -e "
                                    "'/^WPAPSK2=/d' poor.dat; grep ^BssidNum poor.dat",
                                "wlanctl diff 2.4g poor.dat"});
  EXPECT_EQ("BssidNum=2\n", steps[0].out);
  EXPECT_THAT(steps[1].out, HasSubstr("  SSID:2 "));
  EXPECT_THAT(steps[1].out, testing::Not(HasSubstr("is new")));
  EXPECT_THAT(steps[1].out, HasSubstr("  HideSSID:2 "));
}

TEST(Diff, TwoLongValuesFitAConsole) {
  const Result result =
      run("wlanctl set 2.4g SSID:1=12345678901234567890123456789012 >/dev/null; wlanctl save 2.4g "
          ">/dev/null 2>&1; wlanctl set 2.4g SSID:1=abcdefghijabcdefghijabcdefghijab >/dev/null;"
          "wlanctl diff 2.4g");
  EXPECT_THAT(result.out, HasSubstr("-> abcdefghijabcdefghijabcdefghijab"));
  for (const std::string& line : lines_of(result.out)) EXPECT_LE(line.size(), 80u) << line;
}

// The driver may have it, but nobody knows.
TEST(Diff, WhatOthersHaveCommittedIsAppliedAnew) {
  const Result result =
      run("wlanctl set 2.4g Channel=3 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1;"
          "library_probe init 0 oper 0 0 set wifimgr_lib_set_channel 0 -1 11 commit 0 1 >/dev/null 2>&1; wlanctl diff "
          "2.4g");
  EXPECT_THAT(result.out, HasSubstr("an apply would mean: radio"));
  EXPECT_THAT(result.err, HasSubstr("has changed since wlanctl last applied it"));
}

TEST(Diff, AFileThatWasCutOffIsNotWhatIsInForce) {
  const std::vector<Result> steps = run_steps({"wlanctl save 2.4g >/dev/null 2>&1", std::string(": >") + kFile,
                                               "wlanctl save 2.4g >/dev/null", "wlanctl diff 2.4g"});
  EXPECT_EQ("2.4g: the store is as the dat file; an apply would mean: nothing\n", steps[3].out);
  EXPECT_THAT(steps[2].err + steps[3].err, testing::Not(HasSubstr("counts as what is in force")));
}

TEST(Revert, IsRefusedWhenTheFileWasCutOff) {
  for (const char* const harm : {": >F", "printf 'hello\\nworld\\n' >F", "head -c 3000 F >part; cat part >F"}) {
    const std::string file = kFile;
    std::string script = harm;
    for (size_t at = script.find('F'); at != std::string::npos; at = script.find('F', at + file.size())) {
      script.replace(at, 1, file);
    }
    const std::vector<Result> steps = run_steps(
        {"library_probe init 0 init 1 >/dev/null; segment_bytes 0x12345 | md5sum", script, "wlanctl revert 2.4g",
         "segment_bytes 0x12345 | md5sum", "wlanctl save 2.4g --force && wlanctl revert 2.4g"});
    EXPECT_EQ(1, steps[2].status) << harm;
    EXPECT_THAT(steps[2].err, HasSubstr("was it cut off? wlanctl save 2.4g --force writes it anew"));
    EXPECT_EQ(steps[0].out, steps[3].out) << harm;
    EXPECT_EQ(0, steps[4].status) << steps[4].err;
  }
}

TEST(Revert, IsRefusedWhereTheFileWouldBeMisread) {
  const struct {
    const char* harm;
    const char* said;
  } kRows[] = {
      {"sed -i 's/$/\\r/'", "RT2860AP.dat, line 1: the line ends in CR LF, like "},
      {"sed -i 's/^Channel=6/Channel=6=7/'", ": Channel: the loader ends the value at the second ="},
      {"sed -i '5i nonsense'",
       "RT2860AP.dat, line 5: there is no = in the line; mend the line, or insist with --force"},
      {"sed -i 's/^HideSSID=.*/HideSSID=0;;1/'", ": HideSSID: 1 empty field between others"},
  };
  for (const auto& row : kRows) {
    const std::vector<Result> steps = run_steps(
        {"library_probe init 0 init 1 >/dev/null; segment_bytes 0x12345 | md5sum", std::string(row.harm) + " " + kFile,
         "wlanctl revert 2.4g", "segment_bytes 0x12345 | md5sum", "wlanctl revert 2.4g --force"});
    EXPECT_EQ(1, steps[2].status) << row.harm;
    EXPECT_THAT(steps[2].err, HasSubstr(row.said));
    EXPECT_EQ(steps[0].out, steps[3].out) << row.harm;
    EXPECT_EQ(0, steps[4].status) << row.harm;
    EXPECT_THAT(steps[4].err, HasSubstr("; the store has it as the loader reads it")) << row.harm;
  }
}

TEST(Revert, OfAMendedFileTakesAwayWhatWasMisread) {
  const std::vector<Result> steps = run_steps(
      {"library_probe init 0 init 1 >/dev/null; segment_bytes 0x12345 | md5sum",
       std::string("F=") + kFile +
           "; cp $F good; sed -i -e 's/^Channel=.*/&\\r/' -e '3i nonsense' -e '3i \\r' $F; wlanctl revert 2.4g "
           "--force >/dev/null; cat good >$F",
       "wlanctl revert 2.4g", "segment_bytes 0x12345 | md5sum"});
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_EQ("2.4g: 1 value put back to the dat file's\n", steps[2].out);
  EXPECT_EQ(steps[0].out, steps[3].out);
}

TEST(Revert, NamesTheLinesOfAFileThatHasAllOfThemTwice) {
  const std::vector<Result> steps = run_steps({std::string("library_probe init 0 init 1 >/dev/null; F=") + kFile +
                                               "; cat $F $F >twice; cat twice >$F; wlanctl revert 2.4g"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("the store of 2.4g has no room for its dat file; 253 lines of it repeat others"));
  EXPECT_THAT(steps[0].err, HasSubstr("RT2860AP.dat, line 290: CountryRegion: line 5 has it already, and that one "
                                      "counts; take the line out, and revert again"));
}

TEST(Revert, ToAFileThatLacksKeysCanBeForced) {
  const std::vector<Result> steps =
      run_steps({"wlanctl set 2.4g SSID:1=Kitchen >/dev/null", std::string("sed -i /^BGProtection=/d ") + kFile,
                 "wlanctl revert 2.4g", "wlanctl revert 2.4g --force >/dev/null", "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ(1, steps[2].status);
  EXPECT_EQ("Gateway-Home\n", steps[4].out);
}

TEST(Revert, BesideSavesOfAnotherProcessLosesNothing) {
  const Result result =
      run("library_probe init 0 save 0 init 0 run 0 'touch ready' $(yes 'save 0' | head -n 400) run 0 'touch saved' "
          ">/dev/null 2>&1 &\n"
          "until [ -e ready ]; do sleep 0.02; done; wlanctl dump 2.4g | wc -l >before\n"
          "until [ -e saved ]; do wlanctl revert 2.4g >/dev/null || echo refused; done; wait\n"
          "wlanctl dump 2.4g | wc -l | cmp - before && echo same");
  EXPECT_EQ("same\n", result.out) << result.err;
}

// What set and diff say that an apply will make of a value, it makes.
TEST(Diff, SaysWhatAnApplyOverwritesAndItDoes) {
  struct {
    const char* before;
    const char* key;
    const char* value;
    const char* becomes;
  } const cases[] = {
      {"", "FixedTxMode:1", "1", "0"},
      {"AuthMode:1=WPA2 EncrypType:1=AES RADIUS_Server:1=10.0.0.1", "IEEE8021X:1", "1", "0"},
      {"", "DefaultKeyID:1", "3", "2"},
  };
  for (const auto& one : cases) {
    const std::string key = one.key;
    const auto steps = run_steps({"wlanctl set 2.4g Channel=6 " + std::string(one.before) + "; wlanctl apply 2.4g",
                                  "wlanctl set 2.4g " + key + "=" + one.value, "wlanctl diff 2.4g",
                                  "wlanctl apply 2.4g >/dev/null 2>&1; wlanctl get 2.4g " + key});
    EXPECT_THAT(steps[1].err, HasSubstr("note: " + key + ": an apply will make it " + one.becomes + "\n")) << key;
    EXPECT_THAT(steps[2].out, HasSubstr("  " + key + "  " + one.value + " -> " + one.becomes + "\n")) << key;
    EXPECT_EQ(std::string(one.becomes) + "\n", steps[3].out) << key;
  }
}

}  // namespace
}  // namespace wlanctl_test

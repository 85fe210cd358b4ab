// import: settings from a file, all of them or none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char kInit[] = "library_probe init 0 init 1 >/dev/null";

std::vector<Result> run_live(Words steps, const Words& options = {}) {
  steps.insert(steps.begin(), kInit);
  std::vector<Result> results = run_steps(steps, options);
  results.erase(results.begin());
  return results;
}

// A settings file of 2.4g with these members.
std::string settings(const std::string& members) {
  return "{\"wlanctl_settings\": 1,\n\"bands\": {\"2.4g\": {\"settings\": {\n" + members + "}}}}\n";
}

std::string into(const std::string& name, const std::string& text) {
  return "cat >" + name + " <<'.'\n" + text + ".\n";
}

TEST(Import, BringsAnExportBack) {
  const auto steps =
      run_live({"wlanctl export >all.json",
                "wlanctl set 2.4g Channel=11 SSID:1=Attic HideSSID:2=1 >/dev/null; wlanctl set 5g "
                "Channel=40 AuthMode:1=OPEN EncrypType:1=NONE >/dev/null",
                "wlanctl import all.json", "wlanctl export | cmp - all.json && echo same", "wlanctl import all.json"});
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_THAT(steps[2].out, HasSubstr("2.4g Channel = 6  (was 11)\n"));
  EXPECT_THAT(steps[2].out, HasSubstr("2.4g: 3 values stored; save or apply brings them to the dat file\n"));
  EXPECT_EQ("same\n", steps[3].out);
  EXPECT_EQ("2.4g: nothing changes; the store has it all\n5g: nothing changes; the store has it all\n", steps[4].out);
}

TEST(Import, SaysWhatItChangedInJson) {
  const auto steps = run_live({into("one.json", settings("\"Channel\": 11, \"WPAPSK:1\": \"another-one\"")) +
                               "wlanctl import one.json --json"});
  const Json data = document_in(steps[0].out)["data"];
  EXPECT_EQ("one.json", data["file"]);
  EXPECT_EQ(Json::parse(R"([{"key":"Channel","index":-1,"before":6,"after":11},
                            {"key":"WPAPSK","index":1,"before":"********","after":"********"}])"),
            data["bands"][0]["changes"]);
  EXPECT_EQ(1u, data["bands"].size());
}

TEST(Import, ReadsStandardInput) {
  const auto steps = run_live({"wlanctl export 5g | wlanctl import -", "echo '{' | wlanctl import -"});
  EXPECT_EQ("5g: nothing changes; the store has it all\n", steps[0].out);
  EXPECT_THAT(steps[1].err, HasSubstr("standard input:1: this is no JSON that can be read"));
}

// The list of a dat file is cut by a save, the export of it is not.
TEST(Import, TakesADatFileOfOneBand) {
  const auto steps = run_live(
      {"wlanctl export 2.4g >before.json; wlanctl export 2.4g --format dat >radio.dat; wlanctl set 2.4g SSID:1=Attic "
       "AutoChannelSkipList=1 >/dev/null",
       "wlanctl import radio.dat", "wlanctl import radio.dat 2.4g",
       "wlanctl export 2.4g | cmp - before.json && echo same", "wlanctl import /etc/Wireless/RT2860AP/RT2860AP.dat"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("which band this dat file is for is not known; name the band behind the file"));
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_EQ("same\n", steps[3].out);
  EXPECT_EQ(0, steps[4].status);
  EXPECT_THAT(steps[4].err, HasSubstr("behind the last SSID of the file are nobody's, and left out"));
}

TEST(Import, OfADatFileRefusesWhatALoadWouldLose) {
  const auto steps =
      run_live({into("bad.dat", "Default\nChannel=11\nSSID1=a=b\nnothing\nHideSSID=0;;1\nChannel=1\nHideSSID:1=2\n") +
                    "wlanctl import bad.dat 2.4g",
                "wlanctl get 2.4g Channel", ": >empty.dat; wlanctl import empty.dat 2.4g"});
  EXPECT_EQ(1, steps[0].status);
  for (const char* const place :
       {"bad.dat:3: SSID1: ", "bad.dat:4: ", "bad.dat:5: HideSSID: ", "bad.dat:6: Channel: line 2 has it already"}) {
    EXPECT_THAT(steps[0].err, HasSubstr(place));
  }
  EXPECT_EQ("6\n", steps[1].out);
  EXPECT_THAT(steps[2].err, HasSubstr("empty.dat: there are no settings in it"));
}

TEST(Import, TellsEveryRefusalAtOnceWithItsLine) {
  const auto steps =
      run_live({into("bad.json", settings("\"Channel\": 181,\n\"HideSSID:1\": 2,\n\"SSID:1\": "
                                          "\"$(reboot)\",\n\"WPAPSK:1\": \"short\",\n\"TxPower\": 50\n")) +
                    "wlanctl import bad.json --json",
                "wlanctl import bad.json", "wlanctl get 2.4g TxPower"});
  const Json problems = document_in(steps[0].out)["problems"];
  std::vector<std::string> places;
  for (const Json& problem : problems)
    places.push_back(problem["key"].get<std::string>() + " " + problem["line"].dump());
  EXPECT_THAT(places, testing::UnorderedElementsAre("Channel 3", "HideSSID:1 4", "SSID:1 5", "WPAPSK:1 6"));
  EXPECT_EQ("bad.json", problems[0]["file"]);
  EXPECT_THAT(steps[1].err, HasSubstr("wlanctl: bad.json:3: Channel cannot be \"181\": The input channel is invalid."));
  EXPECT_THAT(steps[1].err, HasSubstr("bad.json:5: SSID:1 cannot be \"$(reboot)\": a shell acts on $ and `"));
  EXPECT_THAT(steps[1].err, Not(HasSubstr("short\"")));
  EXPECT_EQ("100\n", steps[2].out);
}

TEST(Import, ForceTakesWhatTheLibraryTakes) {
  const auto steps = run_live({into("a.json", settings("\"SSID:1\": \"a;b\"")) + "wlanctl import a.json",
                               "wlanctl import a.json --force; wlanctl get 2.4g SSID:1",
                               into("b.json", settings("\"Channel\": 181")) + "wlanctl import b.json --force"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[1].out, HasSubstr("a;b\n"));
  EXPECT_EQ(1, steps[2].status);
}

TEST(Import, NamesWhatIsWrongWithAText) {
  const std::string deep = std::string(200, '[') + std::string(200, ']');
  const struct {
    std::string text;
    const char* reason;
  } kRows[] = {
      {"{\"wlanctl_settings\": 1,\n\"bands\": {\"2.4g\": {\"settings\": {\"Chanel\": 1}}}}",
       ":2: there is no key \"Chanel\"; do you mean Channel?"},
      {settings("\"Channel\": 1,\n\"Channel\": 2"), ":4: \"Channel\" stands in line 3 already"},
      {settings("\"Channel\": 1,\n\"channel\": 2"), ":4: Channel stands in line 3 already"},
      {settings("\"Channel\": true"), ":3: Channel: it cannot be true or false; write a text or a number"},
      {settings("\"Channel\": 1.5"), ":3: Channel: it cannot be a number that is not whole or too large"},
      {settings("\"Channel\": 1.5\n\n"), ":3: Channel: it cannot be a number that is not whole"},
      {settings("\"Channel\": 99999999999999999999"), ":3: Channel: it cannot be a number that is not whole"},
      {settings("\"Channel\": [1]"), ":3: Channel: it cannot be an array"},
      {settings("\"Channel\": null"), ":3: Channel: null stands for a secret that was left out, and this is none"},
      {settings("\"SSID:1\": 1"), ":3: SSID:1: a number where a text belongs"},
      {settings("\"SSID:1\": {\"hex\": \"6\"}"), ":3: SSID:1: an object that is not"},
      {settings("\"SSID:1\": {\"hex\": \"6g\"}"), ":3: SSID:1: an object that is not"},
      {settings("\"SSID:1\": {\"hex\": \"61\", \"more\": 1}"), ":3: SSID:1: an object that is not"},
      {settings("\"SSID:1\": {\"hex\": \"6100\"}"), ":3: SSID:1: a NUL byte is in the value"},
      {settings("\"SSID:1\": \"a\\u0000b\""), ":3: SSID:1: a NUL byte is in the value"},
      {settings("\"SSID:1\": \"\xff\""), ":3: this is no JSON that can be read"},
      {settings("\"CountryRegionABand\": 1"), ":3: CountryRegionABand is no setting of 2.4g"},
      {settings("\"SSID\": \"a\""), ":3: SSID is set for each ssid; write SSID:1"},
      {settings("\"SSID:9\": \"a\""), ":3: \"9\" is no ssid of SSID"},
      {"{\"wlanctl_settings\": 1, \"bands\": {\"6g\": {}}}", ":1: there is no band \"6g\""},
      {"{\"wlanctl_settings\": 1, \"bands\": {\"2.4g\": {\"set\": {}}}}", ":1: there is no \"set\" in \"2.4g\""},
      {"{\"wlanctl_settings\": 1, \"more\": 1, \"bands\": {}}", ":1: there is no \"more\"; compare it"},
      {"{\"wlanctl_settings\": 1, \"bands\": []}", ":1: \"bands\" is an object, and here is an array"},
      {"{\"wlanctl_settings\": 1}", ":1: there are no \"bands\" in it"},
      {"{\"wlanctl_settings\": 1, \"bands\": {}}", "there are no settings in f.json"},
      {"{\"wlanctl_settings\": 2, \"bands\": {}}",
       ":1: the version of the settings is 2; this wlanctl reads version 1"},
      {"{\"wlanctl_settings\": \"1\", \"bands\": {}}", ":1: the version of the settings is a text"},
      {"{\"bands\": {}}", ":1: there is no \"wlanctl_settings\" in it: these are no settings of wlanctl"},
      {"{\"version\": 1, \"exit_code\": 0}", "this is what a verb says with --json; wlanctl export without --json"},
      {"[1]", ":1: settings are an object, and here is an array"},
      {"{\"wlanctl_settings\": 1, \"bands\": " + deep + "}",
       ":1: this is no JSON that can be read: it is nested deeper"},
      {settings("\"Channel\": 1") + "more", "this is no JSON that can be read"},
      {"{\"wlanctl_settings\": 1, \"bands\": {\"2.4g\": {\"other\": {\"Channel\": \"1\"}}}}",
       ":1: \"Channel\" belongs to the settings, as Channel"},
  };
  Words steps;
  for (const auto& row : kRows) steps.push_back(into("f.json", row.text + "\n") + "wlanctl import f.json");
  const auto results = run_live(steps);
  for (size_t i = 0; i < results.size(); ++i) {
    EXPECT_EQ(1, results[i].status) << kRows[i].text;
    EXPECT_THAT(results[i].err, HasSubstr(kRows[i].reason)) << kRows[i].text;
    EXPECT_THAT(results[i].out, IsEmpty());
  }
}

TEST(Import, DoesNotShowWhatItCannotRead) {
  const auto steps =
      run_live({into("f.json", settings("\"WPAPSK:1\": \"secret-word\\q\"")) + "wlanctl import f.json --json",
                into("g.json", settings("\"WPAPSK:1\": secret-word")) + "wlanctl import g.json"});
  for (const Result& step : steps) {
    EXPECT_EQ(1, step.status);
    EXPECT_THAT(step.out + step.err, Not(HasSubstr("secret-word")));
  }
}

TEST(Import, RefusesWhatIsNoFile) {
  const auto steps = run_live(
      {"mkfifo pipe; timeout 5 wlanctl import pipe --json", "timeout 5 wlanctl import /dev/zero", "wlanctl import /etc",
       "wlanctl import nowhere.json", "head -c 1100000 /dev/zero | tr '\\0' ' ' >large.json; wlanctl import large.json",
       "timeout 5 wlanctl import - </dev/zero", "printf '{\\n\\0}' >nul.json; wlanctl import nul.json"});
  for (size_t i = 0; i < 6; ++i) EXPECT_EQ(2, steps[i].status) << i;
  EXPECT_THAT(steps[0].out, HasSubstr("cannot read pipe: it is a pipe, no file"));
  EXPECT_THAT(steps[1].err, HasSubstr("cannot read /dev/zero: it is a device, no file"));
  EXPECT_THAT(steps[2].err, HasSubstr("cannot read /etc: it is a folder, no file"));
  EXPECT_THAT(steps[3].err, HasSubstr("cannot read nowhere.json: No such file or directory"));
  EXPECT_THAT(steps[4].err, HasSubstr("cannot read large.json: it is larger than 1 MiB"));
  EXPECT_THAT(steps[5].err, HasSubstr("cannot read standard input: it is larger than 1 MiB"));
  EXPECT_EQ(1, steps[6].status);
  EXPECT_THAT(steps[6].err, HasSubstr("nul.json:2: there is a NUL byte in the line"));
}

// Each name is looked for among all settings.
TEST(Import, GivesUpOnATextWithoutSense) {
  const auto steps =
      run_live({"{ echo '{\"wlanctl_settings\": 1, \"bands\": {\"5g\": {\"other\": {'; seq -s, 1 60000 | sed "
                "'s/[0-9][0-9]*/\"&\":1/g'; echo '}}}}'; "
                "} >many.json; wlanctl import many.json",
                "{ echo '{\"wlanctl_settings\": 1, \"bands\": {\"5g\": {\"settings\": {'; seq -s, 1 4000 | sed "
                "'s/[0-9][0-9]*/\"&\":1/g'; echo '}}}}'; "
                "} >wrong.json; wlanctl import wrong.json --json",
                "seq 1 100000 | sed s/$/=1/ >many.dat; wlanctl import many.dat 5g", "wlanctl set 5g --from many.dat",
                "seq 1 4000 | sed s/$/=1/ | wlanctl set 5g --from - --json",
                into("nul.json", settings("\"Channel\\u0000x\": 1")) + "wlanctl import nul.json"});
  for (const Result& step : steps) EXPECT_EQ(1, step.status);
  EXPECT_THAT(steps[0].err, HasSubstr("many.json:1: there are more than 4096 names in it"));
  EXPECT_EQ(101u, document_in(steps[1].out)["problems"].size());
  EXPECT_THAT(steps[2].err, HasSubstr("many.dat: it has more than 4096 lines"));
  EXPECT_THAT(steps[3].err, HasSubstr("many.dat: it has more than 4096 lines"));
  EXPECT_EQ(101u, document_in(steps[4].out)["problems"].size());
  EXPECT_THAT(steps[5].err, HasSubstr("is no setting"));
}

TEST(Import, TakesOneBandOfAFileWithBoth) {
  const auto steps =
      run_live({"wlanctl export >all.json; wlanctl set 2.4g Channel=1 >/dev/null; wlanctl set 5g Channel=40 >/dev/null",
                "wlanctl import all.json 5g", "wlanctl get 2.4g Channel",
                "wlanctl export 2.4g >one.json; wlanctl import one.json 5g"});
  EXPECT_EQ("5g Channel = 36  (was 40)\n5g: 1 value stored; save or apply brings them to the dat file\n", steps[1].out);
  EXPECT_EQ("1\n", steps[2].out);
  EXPECT_EQ(1, steps[3].status);
  EXPECT_THAT(steps[3].err, HasSubstr("there are no settings of 5g in one.json, but of 2.4g only"));
}

TEST(Import, StoresNothingOfEitherBandWhenOneIsRefused) {
  const auto steps = run_live({into("f.json",
                                    "{\"wlanctl_settings\": 1, \"bands\": {\"2.4g\": {\"settings\": {\"Channel\": "
                                    "11}},\n\"5g\": {\"settings\": {\"Channel\": 11}}}}\n") +
                                   "wlanctl import f.json",
                               "wlanctl get 2.4g Channel"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("f.json:2: Channel cannot be \"11\": the channels of 5g are"));
  EXPECT_EQ("6\n", steps[1].out);
}

TEST(Import, MergesUnlessItIsToReplace) {
  const auto steps =
      run_live({into("f.json", settings("\"Channel\": 11")) +
                    "wlanctl set 2.4g SSID:1=Attic WPAPSK:1=somebody-elses TxPower=50 >/dev/null; wlanctl "
                    "import f.json; wlanctl get 2.4g Channel SSID:1 TxPower",
                "wlanctl import f.json --replace; wlanctl get 2.4g Channel SSID:1 TxPower WPAPSK:1",
                "wlanctl import f.json --replace --merge"});
  EXPECT_THAT(steps[0].out, HasSubstr("Channel  11\nSSID:1   Attic\nTxPower  50\n"));
  EXPECT_THAT(steps[1].out,
              HasSubstr("Channel   11\nSSID:1    Gateway-Home\nTxPower   100\nWPAPSK:1  sample-passphrase-1\n"));
  EXPECT_EQ(2, steps[2].status);
}

TEST(Import, OnlyShowsWhatItWouldChangeInADryRun) {
  const auto steps = run_live({into("f.json", settings("\"Channel\": 11")) + "wlanctl import f.json --dry-run",
                               "wlanctl import f.json --dry-run --json", "wlanctl get 2.4g Channel"});
  EXPECT_EQ("2.4g Channel = 11  (was 6)\n2.4g: 1 value would be stored\n", steps[0].out);
  EXPECT_EQ(true, document_in(steps[1].out)["data"]["dry_run"]);
  EXPECT_EQ("6\n", steps[2].out);
}

TEST(Import, KeepsTheSecretsThatWereLeftOut) {
  const auto steps =
      run_live({"wlanctl export 2.4g --no-secrets >f.json; wlanctl export 2.4g --no-secrets --format dat >f.dat",
                "wlanctl set 2.4g WPAPSK:1=somebody-elses SSID:1=Attic >/dev/null",
                "wlanctl import f.json --replace; wlanctl get 2.4g WPAPSK:1 SSID:1",
                "wlanctl set 2.4g SSID:1=Attic >/dev/null; wlanctl import f.dat 2.4g --replace; wlanctl get 2.4g "
                "WPAPSK:1 SSID:1"});
  for (const size_t at : {2u, 3u}) {
    EXPECT_THAT(steps[at].out, HasSubstr("WPAPSK:1  somebody-elses\nSSID:1    Gateway-Home\n"));
  }
}

TEST(Import, KeepsEveryByte) {
  const auto steps = run_live(
      {"wlanctl set 2.4g SSID:1=\"$(printf '\\377\\376a')\" SSID:2=' blanks ' >/dev/null; wlanctl export 2.4g >f.json",
       "wlanctl set 2.4g SSID:1=a SSID:2=b >/dev/null; wlanctl import f.json >/dev/null; wlanctl get "
       "2.4g SSID:1 SSID:2; segment_bytes 0x12345 | grep -ac \"$(printf '\\377\\376a')\"",
       "wlanctl export 2.4g | cmp - f.json && echo same"});
  EXPECT_THAT(steps[1].out, testing::EndsWith("\n1\n"));
  EXPECT_EQ("same\n", steps[2].out);
}

// HT_BW asks for a WirelessMode, whichever stands first; a cipher goes with its mode.
TEST(Import, SetsWhatDependsOnEachOtherInTheRightOrder) {
  const auto steps =
      run_live({"wlanctl set 2.4g HT_BW=0 WirelessMode=4 >/dev/null",
                into("f.json", settings("\"HT_BW\": 1, \"WirelessMode\": \"9\"")) + "wlanctl import f.json",
                "wlanctl get 2.4g HT_BW WirelessMode"});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_EQ("HT_BW         1\nWirelessMode  9\n", steps[2].out);
}

// A link's key is taken as long as its cipher has one.
TEST(Import, SetsWhatGoesWithTheValueBeforeAnotherFirst) {
  const auto steps =
      run_live({into("f.json", settings("\"WdsEncrypType\": \"NONE;NONE;NONE;NONE\", \"WdsKey:1\": \"12345678\"")) +
                    "wlanctl import f.json",
                "wlanctl get 2.4g WdsEncrypType WdsKey:1"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("WdsEncrypType  NONE;NONE;NONE;NONE\nWdsKey:1       12345678\n", steps[1].out);
}

TEST(Import, GrowsTheCountOfSsidsFirst) {
  const auto steps = run_live(
      {into("f.json", settings("\"SSID:3\": \"Cellar\", \"BssidNum\": 3, \"HideSSID:3\": 1")) + "wlanctl import f.json",
       "wlanctl get 2.4g SSID:3 HideSSID:3 BssidNum",
       into("g.json", settings("\"BssidNum\": \"2\", \"SSID:3\": \"x\"")) + "wlanctl import g.json"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("SSID:3      Cellar\nHideSSID:3  1\nBssidNum    3\n", steps[1].out);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_THAT(steps[2].err,
              HasSubstr("g.json:3: SSID:3 cannot be \"x\": The ssid index should be from 1 to BssidNum:2."));
}

// A store that was made of a saved file has none, nor much room for them.
TEST(Import, PutsInTheRecordsOfAnSsidThatASaveDropped) {
  const std::string saved =
      "wlanctl set 2.4g BssidNum=3 SSID:3=Cellar >/dev/null; wlanctl export 2.4g >f.json; wlanctl revert "
      "2.4g; wlanctl save 2.4g; wlanctl revert 2.4g >/dev/null";
  const auto steps = run_live(
      {saved, "wlanctl dump 2.4g | grep -c SSID3=",
       "wlanctl import f.json --dry-run >/dev/null; wlanctl dump 2.4g | grep -c SSID3=", "wlanctl import f.json",
       "wlanctl export 2.4g | grep -v ApCliMacManual:3 >now; grep -v ApCliMacManual:3 f.json | cmp - now && echo "
       "same"});
  EXPECT_EQ("0\n", steps[1].out);
  EXPECT_EQ("0\n", steps[2].out);
  EXPECT_EQ(0, steps[3].status) << steps[3].err;
  EXPECT_EQ("same\n", steps[4].out);
  const auto small = run_live({saved + "; ipcrm -M 0x12345; library_probe init 0 >/dev/null",
                               "wlanctl import f.json; s=$?; wlanctl get 2.4g BssidNum; exit $s"});
  EXPECT_EQ(1, small[1].status);
  EXPECT_THAT(small[1].err,
              HasSubstr("SSID:3 cannot be \"Cellar\": the store of 2.4g has no room for the keys of SSID 3; "
                        "wlanctl ssid add 2.4g NAME --to-file makes room"));
  EXPECT_EQ("2\n", small[1].out);
}

TEST(Import, ComparesWhatNothingSets) {
  const std::string text =
      "{\"wlanctl_settings\": 1, \"bands\": {\"2.4g\": {\"settings\": {\n\"MacAddress\": "
      "\"02:00:00:00:00:01\"},\n\"other\": "
      "{\"IdleTimeout\": \"300\",\n\"RED_Enable\": \"0\", \"Unheard\": \"x\", \"Password\": \"mine\"}}}}\n";
  const auto steps = run_live({into("f.json", text) + "wlanctl import f.json", "wlanctl import f.json --json"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].err,
              HasSubstr("f.json:2: MacAddress is \"02:00:00:00:00:01\" there and is \"02:28:10:24:00:00\" in "
                        "the store; nothing sets it, and it stays as it is"));
  EXPECT_THAT(steps[0].err, HasSubstr("f.json:4: RED_Enable is \"0\" there and is \"1\" in the store"));
  EXPECT_THAT(steps[0].err, HasSubstr("f.json:4: Unheard is \"x\" there and is not in the store"));
  EXPECT_THAT(steps[0].err, Not(HasSubstr("IdleTimeout")));
  EXPECT_THAT(steps[0].err, Not(HasSubstr("mine")));
  EXPECT_EQ(Json({"MacAddress", "RED_Enable", "Unheard", "Password"}),
            document_in(steps[1].out)["data"]["bands"][0]["left"]);
}

TEST(Import, WaitsForAnotherWlanctlAndSaysWhenItGivesUp) {
  const auto steps =
      run_live({"exec 9>/var/run/wlanctl.lock; flock 9; wlanctl export 2.4g | wlanctl import - --wait 0"});
  EXPECT_EQ(4, steps[0].status);
}

TEST(Import, SaysThatAnApplyWaitsForItsConfirmation) {
  const Result result = run_story(
      "library_probe init 0 init 1 >/dev/null 2>&1; wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g "
      "--confirm "
      "600 >/dev/null 2>&1; wlanctl export 2.4g 2>/dev/null | wlanctl import -; wlanctl confirm 2.4g; no_guardian");
  EXPECT_THAT(result.err, HasSubstr("more seconds for wlanctl confirm 2.4g"));
}

TEST(Import, SaysThatTheDriverDoesNotTakeAValue) {
  const auto steps =
      run_live({"rm /userfs/bin/iwpriv; printf '#!/bin/sh\\necho prints; exit 7\\n' >/userfs/bin/iwpriv; chmod 755 "
                "/userfs/bin/iwpriv;" +
                    into("f.json", settings("\"WscConfMode:1\": 2")) + "wlanctl import f.json --json",
                "wlanctl get 2.4g WscConfMode:1"});
  EXPECT_EQ(5, steps[0].status);
  EXPECT_EQ("WscConfMode:1", document_in(steps[0].out)["problems"][0]["key"]);
  EXPECT_EQ("2\n", steps[1].out);
}

TEST(Import, HasNoStoreWhereNoneCanBeMade) {
  const auto steps = run_steps(
      {"wlanctl export 2.4g >f.json 2>/dev/null; rm /etc/Wireless/RT2860AP/RT2860AP.dat; wlanctl import f.json"});
  EXPECT_EQ(3, steps[0].status);
}

// Between each two writes of the library, of the bands one after the other: nothing is left half set.
TEST(ImportKilled, LeavesNothingHalfSet) {
  const std::string text =
      "{\"wlanctl_settings\": 1, \"bands\": {\"2.4g\": {\"settings\": {\"Channel\": 11, \"SSID:1\": \"Attic\", "
      "\"AutoChannelSkipList\": \"1;2\", \"BssidNum\": 3, \"WirelessMode\": \"4\", \"AuthMode:1\": \"OPEN\", "
      "\"EncrypType:1\": \"NONE\", \"AccessControlList:1\": \"02:00:00:00:01:00;02:00:00:00:01:01\"}}, \"5g\": "
      "{\"settings\": {\"Channel\": 40, \"SSID:2\": \"Cellar\"}}}}\n";
  const Result result =
      run_story("library_probe init 0 init 1 >/dev/null 2>&1; wlanctl export >before.json;" + into("f.json", text) +
                "step=0; while :; do step=$((step + 1)); WLANCTL_STEP=$step LD_PRELOAD=\"$LD_PRELOAD:" +
                built("lib/libkill_at_step.so") +
                "\" wlanctl import f.json >/dev/null 2>&1; status=$?; [ $status = 137 ] || break;"
                "  [ -e /var/run/wlanctl-storing ] || echo no note at $step;"
                "  wlanctl export 2.4g 2>told >/dev/null; grep -q 'is storing settings' told || echo untold at $step;"
                "  wlanctl set 2.4g TxPower=100 >/dev/null 2>told; grep -q 'ended in the middle' told || echo "
                "unfinished at $step;"
                "  [ -e /var/run/wlanctl-storing ] && echo note left at $step;"
                "  wlanctl export 2>/dev/null | cmp - before.json || echo half set at $step; done;"
                "echo steps $((step > 10)) status $status; wlanctl get 5g SSID:2; ls /var/run | grep storing");
  EXPECT_EQ("steps 1 status 0\nCellar\n", result.out) << result.err;
}

TEST(ImportKilled, BeforeItsNoteIsThereChangesNothing) {
  const Result result =
      run_story("library_probe init 0 init 1 >/dev/null 2>&1; wlanctl export >before.json;" +
                into("f.json", settings("\"Channel\": 11, \"TxPower\": 50")) +
                "killed_at 'before 1 /var/run/wlanctl-storing' wlanctl import f.json; echo $?;"
                "wlanctl export | cmp - before.json && echo same;"
                "killed_at 'after 1 /var/run/wlanctl-storing' wlanctl import f.json; echo $?;"
                "wlanctl set 2.4g RTSThreshold=2347; wlanctl export | cmp - before.json && echo same");
  EXPECT_THAT(result.out, testing::StartsWith("137\nsame\n137\n"));
  EXPECT_THAT(result.out, testing::EndsWith("same\n"));
  EXPECT_THAT(result.err,
              HasSubstr("wlanctl import ended in the middle of storing settings of 2.4g; nothing of it is in"));
}

// A test's call of wlanctl that is killed behind the given write.
std::string killed_behind(int step, const std::string& call) {
  return "WLANCTL_STEP=" + std::to_string(step) + " LD_PRELOAD=\"$LD_PRELOAD:" + built("lib/libkill_at_step.so") +
         "\" \"$WLANCTL_PROGRAM\" " + call + ";";
}

// What somebody else has set since is not the killed one's.
TEST(ImportKilled, LeavesWhatSomebodyElseHasSetSince) {
  const auto steps =
      run_live({into("f.json", settings("\"Channel\": 11, \"TxPower\": 50")) +
                    killed_behind(99, "import f.json --dry-run >/dev/null") + killed_behind(4, "import f.json"),
                "wlanctl get 2.4g Channel TxPower; library_probe attach put Channel 0 -1 3 >/dev/null",
                "wlanctl set 2.4g RTSThreshold=2347 >/dev/null", "wlanctl get 2.4g Channel TxPower"});
  EXPECT_EQ(137, steps[0].status);
  EXPECT_EQ("Channel  11\nTxPower  50\n", steps[1].out);
  EXPECT_THAT(steps[2].err, HasSubstr("what it had set is put back, 1 value"));
  EXPECT_EQ("Channel  3\nTxPower  100\n", steps[3].out);
}

// Another process gets in between: what was set goes back, what is the other's stays.
TEST(Import, TakesBackWhatItHadSetWhenASetterRefuses) {
  const auto steps = run_live({into("f.json", settings("\"Channel\": 11,\n\"HideSSID:2\": 1")) +
                                   "WLANCTL_STEP_RUN='library_probe attach put BssidNum 0 -1 1 >/dev/null'; export "
                                   "WLANCTL_STEP_RUN;" +
                                   killed_behind(2, "import f.json"),
                               "wlanctl get 2.4g Channel BssidNum; ls /var/run/wlanctl-storing"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("f.json:4: HideSSID:2 cannot be \"1\": The ssid index should be from 1 to "
                                      "BssidNum:1.; another process changed the store; try again"));
  EXPECT_EQ("Channel   6\nBssidNum  1\n", steps[1].out);
}

TEST(Import, IsDoneOnlyWhenAllOfItIsThere) {
  const auto steps = run_live({into("f.json", settings("\"Channel\": 11,\n\"TxPower\": 50")) +
                                   "WLANCTL_STEP_RUN='library_probe attach put Channel 0 -1 3 >/dev/null'; export "
                                   "WLANCTL_STEP_RUN;" +
                                   killed_behind(3, "import f.json"),
                               "wlanctl get 2.4g Channel TxPower"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("f.json:3: Channel cannot be \"11\": it is another one in the store now"));
  EXPECT_EQ("Channel  3\nTxPower  100\n", steps[1].out);
}

// A revert is what the operator wants now; what the killed one found is older.
TEST(ImportKilled, IsNotPutBackOverARevert) {
  const auto steps = run_live({into("f.json", settings("\"Channel\": 6, \"TxPower\": 50")) +
                                   "wlanctl set 2.4g Channel=1 >/dev/null;" + killed_behind(4, "import f.json"),
                               "wlanctl revert 2.4g >/dev/null; wlanctl set 2.4g RTSThreshold=2347 >/dev/null",
                               "wlanctl get 2.4g Channel TxPower; ls /var/run/wlanctl-storing"});
  EXPECT_EQ(137, steps[0].status);
  EXPECT_EQ("", steps[1].err);
  EXPECT_EQ("Channel  6\nTxPower  100\n", steps[2].out);
}

TEST(ImportKilled, ANoteThatIsDamagedIsToldAndGone) {
  const auto steps = run_live({"umask 077; echo nonsense >/var/run/wlanctl-storing; wlanctl set 2.4g Channel=11",
                               "ls /var/run/wlanctl-storing"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("is damaged; look whether the settings are as they should"));
  EXPECT_NE(0, steps[1].status);
}

// The dat files that the tests of library, simulator and tool know, each as both bands' file.
struct DatText {
  const char* text;
  const char* refused;  // the first setting that no gateway takes anew; "" where all are taken
};

class RoundTrip : public testing::TestWithParam<DatText> {
 protected:
  static Words options(const TestFolder& folder) {
    write_file(folder / "radio.dat", GetParam().text);
    return {"--dat24", folder / "radio.dat", "--dat5", folder / "radio.dat"};
  }
};

// Whatever a setting was meanwhile: what is there already needs no setter.
TEST_P(RoundTrip, GivesTheSameTextAgain) {
  const TestFolder folder;
  const auto steps =
      run_live({"wlanctl export >before.json; wlanctl export 2.4g --format dat >before.dat",
                "wlanctl import before.json; wlanctl export | cmp - before.json && echo same",
                "for i in TxPower=7 HideSSID:1=1 SSID:1=Other BeaconPeriod=30; do wlanctl set 2.4g $i --force; done "
                ">/dev/null 2>&1; wlanctl import before.json --force; wlanctl export | cmp - before.json && echo same",
                "wlanctl import before.dat 2.4g; wlanctl export 2.4g --format dat | cmp - before.dat && echo same"},
               options(folder));
  for (const size_t at : {1u, 2u, 3u}) {
    EXPECT_THAT(steps[at].out, testing::EndsWith("same\n")) << at << steps[at].err;
  }
}

// Into a gateway with the dat files that it is supplied with. Those have keys that the text lacks.
TEST_P(RoundTrip, GoesOverIntoASuppliedGateway) {
  const TestFolder folder;
  const std::string exported = run_live({"wlanctl export 2.4g"}, options(folder))[0].out;
  const auto steps = run_live({into("f.json", exported) + "wlanctl export 2.4g >before; wlanctl import f.json --force",
                               "wlanctl export 2.4g", "wlanctl export 2.4g | cmp - before && echo same"});
  if (GetParam().refused[0] != '\0') {
    EXPECT_EQ(1, steps[0].status);
    EXPECT_THAT(steps[0].err, HasSubstr(std::string(GetParam().refused) + " cannot be "));
    EXPECT_EQ("same\n", steps[2].out);
    return;
  }
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  const Json wanted = document_in(exported)["bands"]["2.4g"]["settings"];
  const Json now = document_in(steps[1].out)["bands"]["2.4g"]["settings"];
  for (const auto& [name, value] : wanted.items()) {
    // Nothing sets these.
    if (name == "MacAddress" || name.starts_with("ApCliMacManual:")) continue;
    EXPECT_EQ(value, now[name]) << name;
  }
}

constexpr DatText kDatTexts[] = {
    {"Default\nBssidNum=1\n", ""},
    {"Default\nBssidNum=2\nHideSSID=0;1\nSSID1=One\nNobodyKnows=x\nEmpty=\n", ""},
    {"Default\nBssidNum=2\nHideSSID=0;1\n", ""},
    {"Default\n# comment\n\nBssidNum=2\nWirelessMode=16\nReloadFlag=0\nWdsEncrypType=AES;AES;AES;WEP\n", ""},
    {"Default\nBssidNum=3\nChannel=6\nHT_TxStream=1;22;333;4;5;6;7;8\nSSID1=home\nSSID3=a guest\nWPAPSK2=secret pass\n",
     ""},
    {"BssidNum=8\nChannel=6\nHT_TxStream=1;1;1;1;1;1;1;1\nSSID1=home\nWPAPSK1=secret\n", ""},
    {"Default\n#comment\n\nBssidNum=2\nSSID1=a\nSSID2=b\nSSID3=c\nAccessPolicy0=0\nAccessPolicy1=1\nAccessPolicy2=2\n"
     "AccessControlList0=02:00:00:00:01:00;02:00:00:00:01:01\n",
     ""},
    {"Default\nBssidNum=2\nDfsDedicatedZeroWait=0\nDfsZeroWaitDefault=0\nMapMode=1\nMboSupport1=0\nMboSupport2=1\n",
     ""},
    {"BssidNum=2\nWHNAT=102\nChannel=103\nCountryRegion=104\nCountryRegionABand=105\nBeaconPeriod=106\n", "WHNAT"},
    {"Default\nBssidNum=2\nSSID1=Kitchen\nSSID2=Guest\nHideSSID=0;1\nAuthMode=OPEN;WPA2PSK\nKey1Str1=12345\nVHT_BW=1;"
     "1\n",
     ""},
    {"Default\nBssidNum=8\nHideSSID=0;1;2;3;4;5;6;7\nWdsList=02:00:00:00:00:01\nAPAifsn=3;7;1;1\nRADIUS_Key1=k\n"
     "AutoChannelSkipList=52;56;60;64\n",
     "HideSSID:3"},
    {"BssidNum=8\nSSID1=\xff\xfe\nSSID2= blanks \nSSID3=caf\xc3\xa9\n", ""},
    {"Default\nBssidNum=2\nHT_TxStream=1;2\n", ""},
    {"Default\nBssidNum=4\nAuthMode=OPEN\n", ""},
    {"Default\nBssidNum=2\nReloadFlag=0\nCountryRegion=5\nWirelessMode=9\nChannel=6\n"
     "AutoChannelSkipList=12;13\nCountryCode=DE\nMacAddress=02:00:00:00:00:01\nBeaconPeriod=100\n"
     "DtimPeriod=1\nRTSThreshold=2347\nFragThreshold=2346\nTxPower=100\nPERCENTAGEenable=0\n"
     "BGProtection=0\nDisableOLBC=0\nTxPreamble=0\nTxBurst=0\nPktAggregate=0\nTurboRate=0\n"
     "NoForwardingBTNBSSID=0\nShortSlot=0\nWirelessEvent=0\nPMKCachePeriod=10\nBasicRate=15\n"
     "DLSCapable=0\nEfuseBufferMode=0\nAMSDU_NUM=8\nDscpPriMapEnable=0\nHT_BW=1\nHT_GI=1\n"
     "HT_OpMode=0\nHT_TxStream=2\nHT_RxStream=2\nHT_LDPC=0\nHT_EXTCHA=0\nHT_BSSCoexistence=0\n"
     "HT_AutoBA=0\nHT_RDG=0\nHT_MpduDensity=0\nHT_BAWinSize=64\nHT_HTC=0\nHT_LinkAdapt=0\n"
     "HT_AMSDU=0\nHT_STBC=0\nIEEE80211H=0\nG_BAND_256QAM=0\nWHNAT=0\nWOEOFF=0\nProbeHideSSID=0\n"
     "SHORTGIFLAG=0\nITxBfEn=0\nETxBfEnCond=0\nETxBfIncapable=0\nMUTxRxEnable=0\nStaNumDetect=0\n"
     "VHT_BW=1;1\nVHT_SGI=1;1\nVHT_LDPC=0\nVHT_STBC=0\nVHT_BW_SIGNAL=0\nVht1024QamSupport=0\n"
     "MuOfdmaDlEnable=0\nMuOfdmaUlEnable=0\nMuMimoDlEnable=0\nMuMimoUlEnable=0\nSREnable=0\n"
     "SRMode=0\nSRSDEnable=0\nPPEnable=0\nTWTSupport=0\nHeraStbcPriority=0\nMaxRuOfdma=8\n"
     "MaxDLMuMimo=4\nMaxULMuMimo=4\nDisable160RuMu=0\nown_ip_addr=192.168.1.1\n"
     "session_timeout_interval=0\nEAPifname=br-lan\nPreAuthifname=br-lan\nEnableSSID=1;1\n"
     "HideSSID=0;0\nNoForwarding=0;0\nMaxStaNum=32;32\nMbssMaxStaNum=32;32\nWmmCapable=1;1\n"
     "APSDCapable=1;1\nIgmpSnEnable=1;1\nFixedTxMode=0;0\nTxRate=0;0\nHT_MCS=33;33\n"
     "FtSupport=0;0\nFtOtd=0;0\nRRMEnable=1;1\nWNMEnable=1;1\nApCliMacManual_Flag=0;0\n"
     "ApCliMacManual=02:00:00:00:00:03;02:00:00:00:00:04\nAuthMode=WPA2PSK;WPA2PSK\n"
     "EncrypType=AES;AES\nWEPAuthType=OPEN;OPEN\nIEEE8021X=0;0\nDefaultKeyID=1;1\nKey1Type=0;0\n"
     "Key2Type=0;0\nKey3Type=0;0\nKey4Type=0;0\nRekeyMethod=TIME;TIME\nRekeyInterval=3600;3600\n"
     "PreAuth=0;0\nPMFMFPC=0;0\nPMFMFPR=0;0\nPMFSHA256=0;0\n"
     "RADIUS_Server=192.168.1.2;192.168.1.2\nRADIUS_Port=1812;1812\nWscConfMode=7;7\n"
     "WscConfStatus=2;2\nWscV2Support=1;1\nWdsEnable=0\nWdsEncrypType=NONE;NONE;NONE;NONE\n"
     "WdsPhyMode=HTMIX;HTMIX;HTMIX;HTMIX\n"
     "WdsList=00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00\n"
     "Wds0Key=linkkey0\nWds1Key=linkkey1\nWds2Key=linkkey2\nWds3Key=linkkey3\nAPAifsn=3;7;1;1\n"
     "APCwmin=4;4;3;2\nAPCwmax=6;10;4;3\nAPTxop=0;0;94;47\nAPACM=0;0;0;0\nBSSAifsn=3;7;2;2\n"
     "BSSCwmin=4;4;3;2\nBSSCwmax=10;10;4;3\nBSSTxop=0;0;94;47\nBSSACM=0;0;0;0\nAckPolicy=0;0;0;0\n"
     "SSID1=Net0-1\nSSID2=Net0-2\nWPAPSK1=passphrase1\nRADIUS_Key1=secret-of-1\nKey1Str1=key1-1\n"
     "WscDefaultSSID1=Default-1\nAccessPolicy0=0\nAccessControlList0=02:00:00:00:01:00\n",
     ""},
    {"Default\n# soaked\nBssidNum=8\nReloadFlag=0\nWirelessMode=9\nChannel=6\n"
     "HideSSID=0;1;0;1;0;1;0;1\nAuthMode=OPEN;WPA2PSK;WPA2PSK;OPEN;OPEN;OPEN;OPEN;OPEN\n"
     "EncrypType=NONE;AES;AES;NONE;NONE;NONE;NONE;NONE\nBeaconPeriod=100\nTxPower=100\nHT_BW=1\n"
     "WmmCapable=1;1;1;1;1;1;1;1\nEnableSSID=1;1;0;0;0;0;0;0\nAPAifsn=3;7;1;1\nWdsEnable=0\n"
     "WdsList=02:00:00:00:00:01\nNoForwarding=0;0;0;0;0;0;0;0\nSSID1=Network-1\nSSID2=Network-2\n"
     "SSID3=Network-3\nSSID4=Network-4\nSSID5=Network-5\nSSID6=Network-6\nSSID7=Network-7\n"
     "SSID8=Network-8\n"
     "WPAPSK1="
     "11111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111"
     "111111111111111111111111111\n",
     "WPAPSK:1"},
};

INSTANTIATE_TEST_SUITE_P(DatTexts, RoundTrip, testing::ValuesIn(kDatTexts));

TEST(Import, BringsASuppliedGatewayToAnother) {
  const auto first =
      run_live({"wlanctl set 2.4g BssidNum=4 SSID:1=Attic SSID:4=Cellar HideSSID:3=1 WPAPSK:1=one-of-mine "
                "AuthMode:2=OPEN EncrypType:2=NONE Channel=11 WirelessMode=9 HT_BW=0 AccessPolicy:1=1 "
                "'AccessControlList:1=02:00:00:00:01:00;02:00:00:00:01:01' 'AutoChannelSkipList=1;2;3;4;5' "
                ">/dev/null; wlanctl set 5g Channel=100 VHT_BW=0 WdsEnable=1 WdsKey:1=12345678 >/dev/null; "
                "wlanctl export",
                "wlanctl export 5g --format dat"});
  const auto second =
      run_steps({into("all.json", first[0].out) + "wlanctl import all.json >/dev/null", "wlanctl export"});
  EXPECT_EQ(0, second[0].status) << second[0].err;
  EXPECT_EQ(first[0].out, second[1].out);
  const auto third = run_steps({into("radio.dat", first[1].out) + "wlanctl import radio.dat 5g --replace >/dev/null",
                                "wlanctl export 5g --format dat"});
  EXPECT_EQ(0, third[0].status) << third[0].err;
  EXPECT_EQ(first[1].out, third[1].out);
}

// A line for each setting that takes one of several values, with the last of them.
std::string lines_of_other_values(const std::string& band) {
  std::string lines;
  const Json document = json_of("keys " + band);
  for (const Json& key : document["data"]["keys"]) {
    if (key["choices"].empty() || key["key"] == "BssidNum" || key["key"] == "AuthMode") continue;
    const std::string value = key["choices"].back();
    if (key["scope"] == "band") {
      lines += key["key"].get<std::string>() + "=" + value + "\n";
    } else {
      for (const char* const index : {":1=", ":2="}) lines += key["key"].get<std::string>() + index + value + "\n";
    }
  }
  return lines;
}

// Whatever the setters make of each other's values.
TEST(Import, BringsEverySettingToAnotherGateway) {
  for (const char* const band : {"2.4g", "5g"}) {
    const std::string lines = lines_of_other_values(band);
    EXPECT_GT(lines_of(lines).size(), 80u);
    const auto first =
        run_live({into("f", lines) + "while read -r line; do \"$WLANCTL_PROGRAM\" set " + band +
                      " --force \"$line\"; done <f >/dev/null 2>&1",
                  std::string("wlanctl export ") + band, std::string("wlanctl export --format dat ") + band});
    const auto second =
        run_live({into("f.json", first[1].out) + "wlanctl export >before; wlanctl import --force f.json >/dev/null",
                  std::string("wlanctl export ") + band, "wlanctl import before --force >/dev/null",
                  into("f.dat", first[2].out) + "wlanctl import --force f.dat " + band + " >/dev/null",
                  std::string("wlanctl export ") + band});
    EXPECT_EQ(0, second[0].status) << second[0].err;
    EXPECT_EQ(first[1].out, second[1].out);
    EXPECT_EQ(0, second[2].status) << second[2].err;
    EXPECT_EQ(0, second[3].status) << second[3].err;
    EXPECT_EQ(first[1].out, second[4].out);
  }
}

TEST(Import, SaysTwoForWrongWords) {
  for (const Result& step : run_live({"wlanctl import --json", "wlanctl import f.json 6g --json"})) {
    EXPECT_EQ(2, step.status);
  }
}

}  // namespace
}  // namespace wlanctl_test

// import: settings from a file, all of them or none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

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

TEST(Import, SaysThatAModeWithoutPskAsksARadiusServer) {
  const std::string file = into("mode.json", settings("\"AuthMode:1\": \"WPA2\""));
  for (const std::string words : {"", " --dry-run"}) {
    const auto steps = run_live({file + "wlanctl import mode.json" + words});
    EXPECT_EQ(0, steps[0].status) << steps[0].err;
    EXPECT_THAT(steps[0].err, HasSubstr("note: AuthMode:1: WPA2 asks a RADIUS server, and no passphrase"));
  }
}

TEST(Import, SaysOnceOfAFileWithoutASettingThatItIsNone) {
  const auto steps = run_live({"wlanctl import /etc/passwd", "wlanctl import /etc/passwd 2.4g",
                               into("words", "no setting\nNoKey=1\n") + "wlanctl import words 5g",
                               into("blank.dat", "TxPower=50\nChannel = 11\n") + "wlanctl import blank.dat 2.4g"});
  for (const char* const file : {"/etc/passwd", "words"}) {
    const Result& step = steps.at(file == std::string("words") ? 2 : 0);
    EXPECT_EQ(1, step.status);
    EXPECT_EQ("wlanctl: " + std::string(file) +
                  ": it is no settings file: none of its lines begins with a setting and =; name what export wrote, or "
                  "a dat file\n",
              step.err);
  }
  EXPECT_EQ(steps[0].err, steps[1].err);
  EXPECT_THAT(steps[3].err, HasSubstr("it stays as it is; a dat file has Channel without a blank in front of =\n"));
}

TEST(Import, ListsTenLinesThatCannotBeReadAndCountsTheOthers) {
  const auto steps = run_live({"{ echo Channel=11; seq 24; } >many.dat; wlanctl import many.dat 2.4g",
                               "wlanctl import many.dat 2.4g --json", "seq 11 | wlanctl set 2.4g --from -"});
  EXPECT_EQ(11u, lines_of(steps[0].err).size()) << steps[0].err;
  EXPECT_THAT(steps[0].err, HasSubstr("many.dat:11: there is no = in the line"));
  EXPECT_THAT(steps[0].err, HasSubstr("wlanctl: many.dat: 14 more lines are wrong; mend the others first\n"));
  EXPECT_EQ(11u, document_in(steps[1].out)["problems"].size());
  EXPECT_THAT(steps[2].err, HasSubstr("wlanctl: standard input: 1 more line is wrong; mend the others first\n"));
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
  EXPECT_THAT(steps[1].err, HasSubstr("wlanctl: bad.json:3: Channel cannot be \"181\": The input channel is invalid"));
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
      {settings("\"SSID\": \"a\""), ":3: SSID is set for each SSID; write SSID:1"},
      {settings("\"SSID:9\": \"a\""), ":3: \"9\" is the number of no SSID; write SSID:1 to SSID:8"},
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
  EXPECT_EQ(12u, document_in(steps[1].out)["problems"].size());
  EXPECT_THAT(steps[2].err, HasSubstr("many.dat: it has more than 4096 lines"));
  EXPECT_THAT(steps[3].err, HasSubstr("many.dat: it has more than 4096 lines"));
  EXPECT_EQ(12u, document_in(steps[4].out)["problems"].size());
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
              HasSubstr("g.json:3: SSID:3 cannot be \"x\": The ssid index should be from 1 to BssidNum:2; it takes "));
}

TEST(Import, NamesForceWhereTheFileWouldHaveFewerSsids) {
  const auto steps = run_live(
      {"wlanctl set 2.4g BssidNum=3 >/dev/null; wlanctl save 2.4g >/dev/null",
       into("f.json", settings("\"BssidNum\": 2")) + "wlanctl import f.json --dry-run >&2; wlanctl import "
                                                     "f.json --json",
       "wlanctl set 2.4g BssidNum=3 >/dev/null; wlanctl import f.json", "wlanctl apply 2.4g",
       "wlanctl apply 2.4g --force", into("g.json", settings("\"Channel\": 11")) + "wlanctl import g.json --json"});
  EXPECT_THAT(steps[1].err, HasSubstr("2.4g: 1 value would be stored\n"));
  EXPECT_EQ("wlanctl apply 2.4g --force", document_in(steps[1].out)["data"]["bands"][0]["next"]);
  EXPECT_THAT(steps[2].out,
              HasSubstr("2.4g: 1 value stored; wlanctl apply 2.4g --force brings them\n  to the dat file, "
                        "which has more SSIDs now\n"));
  EXPECT_EQ(1, steps[3].status);
  EXPECT_EQ(0, steps[4].status) << steps[4].err;
  EXPECT_EQ("wlanctl apply 2.4g", document_in(steps[5].out)["data"]["bands"][0]["next"]);
}

TEST(Import, SaysThatADatFileIsOfTheOtherBandByItsPath) {
  const auto steps = run_live({"wlanctl import /etc/Wireless/RT2860AP_AC/RT2860AP.dat 2.4g --dry-run",
                               "wlanctl import /etc/Wireless/RT2860AP_AC/RT2860AP.dat 5g --dry-run"});
  EXPECT_THAT(steps[0].err,
              HasSubstr("/etc/Wireless/RT2860AP_AC/RT2860AP.dat is a dat file of 5g by its path, and goes "
                        "to 2.4g"));
  EXPECT_THAT(steps[1].err, Not(HasSubstr("by its path")));
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

TEST(Import, SaysTwoForWrongWords) {
  for (const Result& step : run_live({"wlanctl import --json", "wlanctl import f.json 6g --json"})) {
    EXPECT_EQ(2, step.status);
  }
}

}  // namespace
}  // namespace wlanctl_test

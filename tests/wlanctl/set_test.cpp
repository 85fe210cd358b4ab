// set and get: the live store, all of the values or none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char kInit[] = "library_probe init 0 init 1 >/dev/null";

Words keys_of(const Json& problems) {
  Words keys;
  for (const Json& problem : problems) keys.push_back(problem["key"]);
  return keys;
}

TEST(Set, ChangesTheLiveStoreForAllProcesses) {
  const auto steps = run_live({"wlanctl set 2.4g Channel=11 HideSSID:2=1",
                               "segment_bytes 0x12345 | tr -s '\\0' '\\n' | grep -A1 -x Channel",
                               "wlanctl get 2.4g Channel HideSSID:1 HideSSID:2"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("2.4g Channel = 11  (was 6)\n2.4g HideSSID:2 = 1  (was 0)\n", steps[0].out);
  EXPECT_THAT(steps[1].out, HasSubstr("\n11\n"));
  EXPECT_EQ("Channel     11\nHideSSID:1  0\nHideSSID:2  1\n", steps[2].out);
}

TEST(Set, DoesNotTouchTheDatFile) {
  const auto steps =
      run_live({"wlanctl set 2.4g SSID:1=Kitchen", "grep -c Kitchen /etc/Wireless/RT2860AP/RT2860AP.dat"});
  EXPECT_EQ("0\n", steps[1].out);
}

TEST(Set, SaysWhatItChangedInJson) {
  const auto steps = run_live({"wlanctl set 2.4g Channel=11 SSID:1=Kitchen --json"});
  const Json document = document_in(steps[0].out);
  EXPECT_EQ(Json::parse(R"([{"key":"Channel","index":-1,"before":6,"after":11},
                            {"key":"SSID","index":1,"before":"Gateway-Home","after":"Kitchen"}])"),
            document["data"]["changes"]);
}

TEST(Set, StoresNothingWhenOneIsRefused) {
  const auto steps = run_live({"wlanctl set 2.4g Channel=11 HideSSID:1=2 SSID:1=Kitchen >/dev/null",
                               "wlanctl get 2.4g Channel HideSSID:1 SSID:1"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ("Channel     6\nHideSSID:1  0\nSSID:1      Gateway-Home\n", steps[1].out);
}

TEST(Set, ReportsAllRefusalsAtOnce) {
  const auto steps = run_live({"wlanctl set 2.4g Channel=181 HideSSID:1=2 SSID:1=Kitchen HT_MCS:3=1 --json",
                               "wlanctl set 2.4g Channel=181 HideSSID:1=2"});
  const Json document = document_in(steps[0].out);
  EXPECT_THAT(keys_of(document["problems"]), ElementsAre("Channel", "HideSSID:1", "HT_MCS:3"));
  EXPECT_THAT(document["data"]["changes"], IsEmpty());
  const Json problem = document["problems"][0];
  EXPECT_EQ("181", problem["value"]);
  EXPECT_EQ("The input channel is invalid", problem["reason"]);
  EXPECT_EQ("0; 2.4g 1 to 14; 5g 36 to 64, 100 to 144, 149 to 177 in steps of 4", problem["accepted"]);
  EXPECT_EQ("The ssid index should be from 1 to BssidNum:2", document["problems"][2]["reason"]);
  EXPECT_THAT(steps[1].out, IsEmpty());
  EXPECT_THAT(lines_of(steps[1].err),
              ElementsAre("wlanctl: Channel cannot be \"181\": The input channel is invalid; "
                          "it takes 0; 2.4g 1 to 14; 5g 36 to 64, 100 to 144, 149 to 177 in steps of 4",
                          "wlanctl: HideSSID:1 cannot be \"2\": The HideSSID value should be 0 or 1; it takes 0 or 1"));
}

TEST(Set, AValueMayDependOnOneBeforeIt) {
  const auto steps = run_live({"wlanctl set 2.4g WirelessMode=4 HT_BW=1", "wlanctl set 2.4g WirelessMode=4 >/dev/null",
                               "wlanctl set 2.4g HT_BW=1", "wlanctl set 2.4g WirelessMode=9 HT_BW=1",
                               "wlanctl set 2.4g BssidNum=3 SSID:3=Cellar"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_EQ(0, steps[3].status);
  EXPECT_EQ(0, steps[4].status);
}

TEST(Set, AFailedTryRunsNothingAndRemembersNothing) {
  const auto steps = run_live({"wc -l </run/gateway-sim/journal", "wlanctl set 2.4g WscConfMode:1=1 Channel=999",
                               "wc -l </run/gateway-sim/journal", "wlanctl set 2.4g WscConfMode:1=1 >/dev/null",
                               "tail -n 1 /run/gateway-sim/journal | cut -f 2"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_EQ(steps[0].out, steps[2].out);
  EXPECT_THAT(steps[4].out, HasSubstr("iwpriv ra0 set WscConfMode=1"));
}

TEST(Set, SaysThatAModeWithoutPskAsksARadiusServer) {
  const auto steps = run_live({"wlanctl set 2.4g AuthMode:1=WPA3", "wlanctl set 2.4g AuthMode:1=WPA3PSK",
                               "wlanctl set 2.4g AuthMode:1=WPA2PSK"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_EQ("wlanctl: note: AuthMode:1: WPA3 asks a RADIUS server, and no passphrase; with one it is WPA3PSK\n",
            steps[0].err);
  EXPECT_EQ("", steps[1].err);
  EXPECT_EQ("", steps[2].err);
}

TEST(Set, NamesWhatIsWrongWithAKey) {
  const auto steps =
      run_live({"wlanctl set 2.4g Chanel=6 HideSSID=1 Channel:1=6 HideSSID:9=1 CountryRegionABand=1 Channel"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(lines_of(steps[0].err),
              ElementsAre("wlanctl: there is no key \"Chanel\"; do you mean Channel?",
                          "wlanctl: HideSSID is set for each SSID; write HideSSID:1",
                          "wlanctl: Channel is set for the whole band; leave out \":1\"",
                          "wlanctl: \"9\" is the number of no SSID; write HideSSID:1 to HideSSID:8",
                          "wlanctl: CountryRegionABand is no setting of 2.4g; set it on 5g",
                          "wlanctl: \"Channel\" sets nothing; write KEY=VALUE or KEY:SSID=VALUE"));
}

TEST(Set, CapitalsOfAKeyAndABandDoNotMatter) {
  EXPECT_EQ(0, run_live({"wlanctl set 2.4G channel=11"})[0].status);
}

TEST(Set, TakesValuesFromStandardInputALineEach) {
  const auto steps = run_live({"printf 'Kitchen\\nCellar\\r\\n' | wlanctl set 2.4g SSID:1=- SSID:2=-",
                               "wlanctl get 2.4g SSID:1 SSID:2", "printf 'one\\n' | wlanctl set 2.4g SSID:1=- SSID:2=-",
                               "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ("SSID:1  Kitchen\nSSID:2  Cellar\n", steps[1].out);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_EQ("wlanctl: standard input has no line for SSID:2; give one line for each \"-\"\n", steps[2].err);
  EXPECT_EQ("Kitchen\n", steps[3].out);
}

TEST(Set, ADashIsADashWithLiteral) {
  const auto steps = run_live({"wlanctl set 2.4g --literal SSID:1=- </dev/null", "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ("-\n", steps[1].out);
}

TEST(Set, TakesAValueFromAFile) {
  const auto steps = run_live({"echo Kitchen >name; wlanctl set 2.4g --file SSID:1=name Channel=1",
                               "wlanctl get 2.4g SSID:1", "wlanctl set 2.4g --file SSID:1=nowhere"});
  EXPECT_EQ("Kitchen\n", steps[1].out);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_THAT(steps[2].err,
              HasSubstr("cannot read a value for SSID:1 from nowhere: No such file or directory; is the file there"));
}

TEST(Set, RefusesWhatTheDatFileCannotHoldUnlessForced) {
  const std::string longest(149, 'x');
  const auto steps =
      run_live({"wlanctl set 2.4g SSID:1=a=b --json", "wlanctl set 2.4g SSID:1='a;b' --json",
                "wlanctl set 2.4g SSID:1=\"$(printf 'a\\nb')\" --json", "wlanctl set 2.4g WEPAuthType:1=" + longest,
                "wlanctl set 2.4g --json WEPAuthType:1=x" + longest, "wlanctl set 2.4g AutoChannelSkipList='1;2'",
                "wlanctl set 2.4g --force SSID:1=a=b", "wlanctl get 2.4g SSID:1"});
  for (const size_t refused : {0u, 1u, 2u, 4u}) EXPECT_EQ(1, steps[refused].status) << refused;
  for (const size_t taken : {3u, 5u, 6u}) EXPECT_EQ(0, steps[taken].status) << taken;
  EXPECT_EQ("a=b\n", steps[7].out);
}

TEST(Set, ForceDoesNotForceTheLibrary) {
  EXPECT_EQ(1, run_live({"wlanctl set 2.4g --force Channel=181"})[0].status);
}

TEST(Set, SaysTwoForWrongWords) {
  for (const Result& step : run_live({"wlanctl set --json", "wlanctl set 6g Channel=1 --json",
                                      "wlanctl set 2.4g --json", "wlanctl set 2.4g Channel=1 --nonsense --json"})) {
    EXPECT_EQ(2, step.status) << step.out;
  }
}

TEST(Get, PrintsOneValueBare) {
  EXPECT_EQ("6\n", run_live({"wlanctl get 2.4g Channel"})[0].out);
}

TEST(Get, NumbersAreNumbersAndTextsAreTexts) {
  const auto steps = run_live({"wlanctl set 2.4g SSID:1=42 >/dev/null", "wlanctl get 2.4g Channel SSID:1 --json"});
  EXPECT_EQ(Json::parse(R"([{"key":"Channel","index":-1,"value":6},{"key":"SSID","index":1,"value":"42"}])"),
            document_in(steps[1].out)["data"]["values"]);
}

TEST(Get, SaysWhatIsNotInTheDatFile) {
  const TestFolder folder;
  write_file(folder / "radio.dat", "Default\nBssidNum=1\nSSID1=a\n");
  const auto steps = run_steps({"wlanctl get 2.4g SSID:1 Channel --json", "wlanctl get 2.4g Nonsense --json"},
                               {"--dat24", folder / "radio.dat"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ(1u, document_in(steps[0].out)["data"]["values"].size());
  EXPECT_THAT(steps[0].out, HasSubstr("Channel is not in the dat file of 2.4g"));
  EXPECT_EQ(1, steps[1].status);
}

TEST(Get, SaysTwoForWrongWords) {
  for (const Result& step : run_live({"wlanctl get --json", "wlanctl get 2.4g --json"})) EXPECT_EQ(2, step.status);
}

constexpr char kDatFile[] = "/etc/Wireless/RT2860AP/RT2860AP.dat";

TEST(Set, AListTakesThePlaceOfALongerOne) {
  const std::vector<Result> steps = run_steps(
      {std::string("sed -i s/^AutoChannelSkipList=.*/AutoChannelSkipList=12\\;13\\;14/ ") + kDatFile + "; " + kInit,
       "wlanctl get 2.4g AutoChannelSkipList", "wlanctl set 2.4g 'AutoChannelSkipList=1;6'; wlanctl save 2.4g",
       std::string("grep ^AutoChannelSkipList= ") + kDatFile,
       "wlanctl get 2.4g AutoChannelSkipList; wlanctl diff 2.4g; wlanctl revert 2.4g"});
  EXPECT_EQ("12;13;14\n", steps[1].out);
  EXPECT_EQ("AutoChannelSkipList=1;6\n", steps[3].out);
  EXPECT_THAT(steps[4].out, testing::StartsWith("1;6\n2.4g: the store is as the dat file"));
  EXPECT_THAT(steps[4].out, HasSubstr("2.4g: 0 values"));
}

TEST(Set, AnAddressListStaysWholeThroughApplyAndRevert) {
  const std::vector<Result> steps =
      run_live({"wlanctl set 2.4g AutoChannelSkipList=12 'AccessControlList:1=00:11:22:33:44:55;00:11:22:33:44:66'",
                "wlanctl apply 2.4g", "wlanctl apply 2.4g; wlanctl diff 2.4g; wlanctl revert 2.4g",
                "wlanctl get 2.4g AccessControlList:1"});
  EXPECT_THAT(steps[0].err,
              HasSubstr("of several addresses the driver gets the first one only, at an apply as well as at a boot"));
  EXPECT_THAT(steps[2].out, testing::AllOf(HasSubstr("nothing to apply"), HasSubstr("the store is as the dat file"),
                                           HasSubstr("2.4g: 0 values")));
  EXPECT_EQ("00:11:22:33:44:55;00:11:22:33:44:66\n", steps[3].out);
}

TEST(Set, WhatTheDriversToolPrintsIsNoOutputAndItsFailureIsSaid) {
  const std::vector<Result> steps =
      run_live({"rm /userfs/bin/iwpriv; printf '#!/bin/sh\\necho prints; exit 7\\n' >/userfs/bin/iwpriv; chmod 755 "
                "/userfs/bin/iwpriv; wlanctl set 2.4g WscConfMode:1=2 --json",
                "wlanctl set 2.4g Channel=11"});
  EXPECT_EQ(5, steps[0].status);
  const Json document = document_in(steps[0].out);
  EXPECT_EQ("WscConfMode:1", document["problems"][0]["key"]);
  EXPECT_EQ(1u, document["data"]["changes"].size());
  EXPECT_EQ(0, steps[1].status);
}

TEST(Set, RefusesWhatTheGatewayCannotServe) {
  const std::string name(33, 'x');
  for (const std::string& assignment :
       Words{"BssidNum=0", "BssidNum=9", "BssidNum=abc", "SSID:1=" + name, "WPAPSK:1=seven-7"}) {
    const auto steps = run_live({"wlanctl set 2.4g " + assignment, "wlanctl set 2.4g --force " + assignment});
    EXPECT_EQ(1, steps[0].status) << assignment;
    EXPECT_EQ(0, steps[1].status) << assignment;
  }
}

// A word that the library does not know makes an open network.
TEST(Set, RefusesAModeThatWouldOpenTheNetwork) {
  for (const char* const mode : {"WPA9", "WPA2psk", "SHARED", "''"}) {
    const std::string assignment = std::string(" AuthMode:1=") + mode;
    const auto steps = run_live({"wlanctl set 5g" + assignment, "wlanctl set 5g --force" + assignment});
    EXPECT_EQ(1, steps[0].status) << mode;
    EXPECT_THAT(steps[0].err, HasSubstr("it would open the network")) << mode;
    EXPECT_EQ(0, steps[1].status) << mode;
  }
}

// All that it takes are still what they were, or what they stand for, once they were applied.
TEST(Set, TakesEveryModeThatTheLibraryKnows) {
  for (const char* const mode : {"OPEN", "WEP", "WEPAUTO", "WEPRadius", "WPAPSK", "WPA2PSK", "WPAPSKWPA2PSK", "WPA3PSK",
                                 "WPA2PSKWPA3PSK", "WPA", "WPA2", "WPA1WPA2", "WPA3", "WPA3-192Bit", "WPA3-192"}) {
    const auto steps = run_live({std::string("wlanctl set 5g AuthMode:1=") + mode, "wlanctl apply 5g >/dev/null 2>&1",
                                 "wlanctl get 5g AuthMode:1"});
    EXPECT_EQ(0, steps[0].status) << mode;
    EXPECT_EQ(mode == std::string("OPEN"), steps[2].out == "OPEN\n") << mode;
  }
}

TEST(Set, TakesNoPassphraseAsTheLibraryHasIt) {
  EXPECT_EQ(0, run_live({"wlanctl set 2.4g AuthMode:1=OPEN EncrypType:1=NONE WPAPSK:1=0"})[0].status);
}

// What the library makes of WPA3-192Bit.
TEST(Set, SaysThatTheStrongestModeAsksARadiusServer) {
  for (const std::string mode : {"WPA3-192Bit", "WPA3-192"}) {
    const auto steps = run_live({"wlanctl set 2.4g EncrypType:1=GCMP256 AuthMode:1=" + mode});
    EXPECT_EQ(0, steps[0].status) << steps[0].err;
    EXPECT_THAT(steps[0].err, HasSubstr("asks a RADIUS server, and no passphrase; with one it is WPA3PSK")) << mode;
  }
}

TEST(Set, OfAModeThatComesAndGoesInOneCallSaysNothing) {
  const auto steps = run_live({"wlanctl set 2.4g AuthMode:1=WPA2 AuthMode:1=WPA3PSK"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].err, Not(HasSubstr("RADIUS")));
}

TEST(Set, TakesAnEmptyPassphraseForNone) {
  const auto steps = run_live({"wlanctl set 2.4g AuthMode:1=OPEN EncrypType:1=NONE; wlanctl set 2.4g WPAPSK:1= --force",
                               "wlanctl set 2.4g AuthMode:1=WPA2PSK EncrypType:1=AES", "wlanctl get 2.4g AuthMode:1"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err,
              HasSubstr("WPA2PSK needs a passphrase, and WPAPSK is empty: it has none; set WPAPSK with it"));
  EXPECT_EQ("OPEN\n", steps[2].out);
}

TEST(Set, OfNoPassphraseWhereOneIsNeededSaysWhatStandsForNone) {
  const auto steps = run_live({"wlanctl set 2.4g WPAPSK:1=0"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr(": WPA2PSK needs a passphrase, and 0 stands for none; "));
  EXPECT_THAT(steps[0].err, Not(HasSubstr("set WPAPSK")));
}

TEST(Set, SecuresNoNetworkThatHasNoPassphrase) {
  const auto steps = run_live({"wlanctl set 2.4g WPAPSK:1=0", "wlanctl set 2.4g AuthMode:1=OPEN; wlanctl apply 2.4g",
                               "wlanctl set 2.4g AuthMode:1=WPA2PSK EncrypType:1=AES",
                               "wlanctl set 2.4g AuthMode:1=WPA2PSK EncrypType:1=AES WPAPSK:1=new-secret",
                               "wlanctl set 2.4g WPAPSK:1=0 --force; wlanctl save 2.4g --force; "
                               "wlanctl check /etc/Wireless/RT2860AP/RT2860AP.dat"});
  for (const size_t refused : {0U, 2U}) EXPECT_EQ(1, steps[refused].status);
  EXPECT_THAT(steps[0].err, HasSubstr("WPA2PSK needs a passphrase, and 0 stands for none"));
  EXPECT_THAT(steps[2].err, HasSubstr("WPA2PSK needs a passphrase, and WPAPSK is 0: it has none; set WPAPSK"));
  EXPECT_EQ(0, steps[3].status) << steps[3].err;
  EXPECT_THAT(steps[4].out, HasSubstr("WPA2PSK needs a passphrase"));
}

// What the library takes and no gateway can serve.
constexpr struct {
  const char* assignments;
  const char* reason;
} kUnserved[] = {
    {"2.4g Channel=36", "the channels of 2.4g are 1 to 14"},
    {"5g Channel=1", "the channels of 5g are 36 to 64"},
    {"5g Channel=38", "in steps of 4"},
    {"2.4g EnableSSID:1=on", "0 or 1 only"},
    {"2.4g BssidNum=08", "1 to 8 only"},
    {"2.4g EncrypType:1=NONE", "WPA2PSK cannot have the cipher NONE, but TKIP or AES or TKIPAES"},
    {"2.4g AuthMode:1=WPA3PSK EncrypType:1=TKIP", "WPA3PSK cannot have the cipher TKIP"},
    {"2.4g WPAPSK:1=zzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzz", "must be hexadecimal digits"},
    {"2.4g WPAPSK:1=", "8 characters at least"},
    {"2.4g SSID:1=", "has no name"},
    {"2.4g Key1Str:1=1234", "5 or 13 characters"},
    {"2.4g Key1Str:1=12345678zz", "10 or 26 hexadecimal digits"},
    {"2.4g HideSSID:1=", "is empty, and a save loses all behind it"},
    {"2.4g HideSSID:2=", "it is empty then, and it takes 0 or 1"},
    {"2.4g TxPower=", "it is empty then, and it takes 0 to 100"},
    {"2.4g WirelessMode=", "it is empty then, and it takes 2.4g 0, 1"},
    {"5g AccessPolicy:1=", "it is empty then, and it takes 0 to 2"},
};

TEST(Set, RefusesWhatTheGatewayCannotServeWithTheReasonUnlessForced) {
  for (const auto& row : kUnserved) {
    const std::string words = row.assignments;
    const auto steps = run_live({"wlanctl set " + words, "wlanctl set --force " + words});
    EXPECT_EQ(1, steps[0].status) << words;
    EXPECT_THAT(steps[0].err, testing::AllOf(HasSubstr(row.reason), HasSubstr("--force"))) << words;
    EXPECT_EQ(0, steps[1].status) << words << steps[1].err;
  }
}

TEST(Set, TakesTheEdgesOfWhatCanBeServed) {
  for (const char* const words :
       {"2.4g Channel=0", "2.4g Channel=14", "5g Channel=0", "5g Channel=36", "5g Channel=177", "2.4g BssidNum=8",
        "2.4g AuthMode:1=WPA3PSK EncrypType:1=AES", "2.4g AuthMode:1=OPEN", "2.4g Key1Str:1=12345",
        "2.4g Key1Str:1=0123456789", "2.4g HideSSID:2=1",
        "2.4g WPAPSK:1=0123456789abcdef0123456789ABCDEF0123456789abcdef0123456789abcdef"}) {
    EXPECT_EQ(0, run_live({std::string("wlanctl set ") + words})[0].status) << words;
  }
}

TEST(Set, SaysWhatAnApplyWillMakeOfAValue) {
  const auto steps =
      run_live({"wlanctl set 2.4g TxBurst=0", "wlanctl set 2.4g AuthMode:1=OPEN", "wlanctl set 2.4g Channel=11"});
  EXPECT_THAT(steps[0].err, HasSubstr("note: TxBurst: an apply will make it 1\n"));
  EXPECT_THAT(steps[1].err,
              HasSubstr("note: WPAPSK:1: an apply will make it 0: an open network keeps no passphrase\n"));
  EXPECT_THAT(steps[1].err, HasSubstr("note: EncrypType:1: an apply will make it NONE\n"));
  EXPECT_THAT(steps[2].err, IsEmpty());
}

TEST(Set, AWordWithoutAKeyFitsItsSchema) {
  EXPECT_THAT(run_live({"wlanctl set 2.4g = --json"})[0].out, HasSubstr("there is no key in front of ="));
}

TEST(Get, MakesNoStore) {
  const auto steps =
      run_steps({"wlanctl get 2.4g Channel; wlanctl get 2.4g Channel --json >/dev/null",
                 "grep -c . /proc/sysvipc/shm; ls /var/run | grep wlanctl", ": >/etc/Wireless/RT2860AP/RT2860AP.dat",
                 "wlanctl get 2.4g Channel", "grep -c . /proc/sysvipc/shm"});
  EXPECT_EQ("6\n", steps[0].out);
  EXPECT_THAT(steps[0].err, HasSubstr("there is no live store of 2.4g yet; this is what its dat file says"));
  EXPECT_EQ("1\n", steps[1].out);
  EXPECT_EQ(3, steps[3].status);
  EXPECT_EQ("1\n", steps[4].out);
}

// The library makes the store first, and asks for the count then.
TEST(Set, SaysThatAStoreIsThereNowThoughItsFileLacksAKey) {
  const std::string dat = "/etc/Wireless/RT2860AP/RT2860AP.dat";
  const auto steps =
      run_steps({"sed -i /^BssidNum=/d " + dat + "; wlanctl set 2.4g Channel=1", "wlanctl set 2.4g Channel=1",
                 "sed -i '$aBssidNum=2' " + dat + "; wlanctl revert 2.4g && wlanctl get 2.4g BssidNum"});
  EXPECT_EQ(3, steps[0].status);
  EXPECT_EQ(
      "wlanctl: the store of 2.4g was made, and is there now, but the library was not content with it: The attr_name "
      "do "
      "not exist; wlanctl doctor 2.4g tells what it lacks; mend " +
          dat + ", and wlanctl revert 2.4g\n",
      steps[0].err);
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
}

}  // namespace
}  // namespace wlanctl_test

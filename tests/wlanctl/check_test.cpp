// check: every mistake that a dat file can have, said with its line, and nothing touched meanwhile.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// Enough of a file that every setter can judge; 6 lines.
constexpr char kHead[] =
    "Default\nBssidNum=2\nWirelessMode=16\nReloadFlag=0\nWdsEncrypType=AES;AES;AES;WEP\n# two SSIDs\n";

struct Checked {
  int status;
  Json document;
};

// Runs a shell line outside any gateway; $WLANCTL is the program.
Result shell_in(const TestFolder& folder, const std::string& line) {
  std::string whole = "cd '";
  whole += folder.path() + "' && WLANCTL='" + wlanctl_program() + "'; " + line;
  return sim_test::shell(whole);
}

// Checks a file outside any gateway: no store is needed.
Checked check(const std::string& text, const std::string& band = "2.4g") {
  const TestFolder folder;
  write_file(folder / "radio.dat", text);
  const Result result =
      shell_in(folder, std::string("$WLANCTL check radio.dat --json") + (band.empty() ? "" : " --band ") + band);
  validate_text(result.out);
  return {result.status, document_in(result.out)};
}

// "LINE KIND KEY" of each finding, with ":FIELD" where it names one.
Words findings_in(const Json& document) {
  Words found;
  for (const Json& finding : document["data"]["files"][0]["findings"]) {
    const std::string line = finding["line"].is_null() ? "-" : std::to_string(finding["line"].get<int>());
    const std::string field = finding["field"].is_null() ? "" : ":" + std::to_string(finding["field"].get<int>());
    found.push_back(line + " " + finding["kind"].get<std::string>() + " " + finding["key"].get<std::string>() + field);
  }
  return found;
}

Words findings_of(const std::string& text, const std::string& band = "2.4g") {
  const Checked checked = check(text, band);
  const Words found = findings_in(checked.document);
  bool has_error = false;
  bool has_warning = false;
  for (const Json& finding : checked.document["data"]["files"][0]["findings"]) {
    has_error = has_error || finding["severity"] == "error";
    has_warning = has_warning || finding["severity"] == "warning";
  }
  EXPECT_EQ(has_error ? 1 : has_warning ? 7 : 0, checked.status) << text;
  return found;
}

Words findings_of_lines(const std::string& lines, const std::string& band = "2.4g") {
  return findings_of(kHead + lines, band);
}

std::string text_of(size_t length, char c) {
  return std::string(length, c);
}

TEST(Check, FindsNothingInAGoodFile) {
  EXPECT_THAT(findings_of_lines("Channel=6\nHideSSID=0;1\nSSID1=Kitchen\n\nWPAPSK2=passphrase\nAPAifsn=3;7;1;1\n"
                                "WdsList=00:11:22:33:44:55;00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00\n"
                                "VHT_BW=1;1\nMacAddress=02:28:10:24:00:00\nBandSteering=1\nCountryRegionABand=7\n"),
              IsEmpty());
}

TEST(Check, FindsNothingInAFileThatTheLibrarySaved) {
  const Result result =
      run("library_probe init 0 init 1 set wifimgr_lib_set_ssid 0 1 Kitchen save 0 save 1 >/dev/null\n"
          "wlanctl check --json /etc/Wireless/RT2860AP/RT2860AP.dat /etc/Wireless/RT2860AP_AC/RT2860AP.dat");
  EXPECT_EQ(0, result.status) << result.out;
}

TEST(Check, NamesAnUnknownKey) {
  EXPECT_THAT(findings_of_lines("Chanel=6\nChannel =6\nWds4Key=abcdefgh\nMboSupport9=0\n"),
              ElementsAre("7 unknown-key Chanel", "8 unknown-key Channel ", "9 unknown-key Wds4Key",
                          "10 unknown-key MboSupport9"));
}

TEST(Check, GuessesWhichKeyIsMeant) {
  const Json document = check(std::string(kHead) + "Chanel=6\n").document;
  EXPECT_THAT(document["data"]["files"][0]["findings"][0]["reason"].get<std::string>(), HasSubstr("mean Channel?"));
}

TEST(Check, NamesAValueThatTheSetterRefuses) {
  EXPECT_THAT(findings_of_lines("Channel=181\nHideSSID=0;2\nHT_MCS=16\nWPAPSK1=" + text_of(65, 'x') +
                                "\nEncrypType=aes\nAPAifsn=1;2;3\nRADIUS_Server=1.2.3\nWscConfMode=8\nHT_BW=\n"
                                "BeaconPeriod=19\n"),
              ElementsAre("7 refused Channel", "8 refused HideSSID:2", "9 refused HT_MCS", "10 refused WPAPSK1",
                          "11 refused EncrypType", "12 refused APAifsn", "13 refused RADIUS_Server",
                          "14 refused WscConfMode", "16 refused BeaconPeriod"));
}

TEST(Check, SaysWhatTheLibrarySaysAndWhatItTakes) {
  const Json finding = check(std::string(kHead) + "Channel=181\n").document["data"]["files"][0]["findings"][0];
  EXPECT_EQ("181", finding["value"]);
  EXPECT_EQ("0; 2.4g 1 to 14; 5g 36 to 64, 100 to 144, 149 to 177 in steps of 4", finding["accepted"]);
  EXPECT_EQ("\"181\" is refused: The input channel is invalid", finding["reason"]);
}

TEST(Check, NamesAModeWhosePassphraseIsEmpty) {
  EXPECT_THAT(findings_of("BssidNum=1\nAuthMode=WPA2PSK\nEncrypType=AES\nWPAPSK1=\n"),
              ElementsAre("2 unserved AuthMode"));
  EXPECT_THAT(findings_of("BssidNum=1\nAuthMode=WPA2PSK\nEncrypType=AES\n"), IsEmpty());
}
TEST(Check, JudgesAWdsKeyByItsLinksCipher) {
  EXPECT_THAT(findings_of_lines("Wds0Key=12345\nWds3Key=12345\nWds1Key=long-enough\n"),
              ElementsAre("7 refused Wds0Key"));
}

TEST(Check, JudgesHtBandwidthByTheFilesMode) {
  EXPECT_THAT(findings_of("BssidNum=1\nWirelessMode=4\nHT_BW=1\n"), ElementsAre("3 refused HT_BW"));
}

TEST(Check, JudgesTheValuesOfSsidsThatAreNotServed) {
  EXPECT_THAT(findings_of_lines("HideSSID=0;0;0;7\n"), ElementsAre("7 excess-field HideSSID", "7 refused HideSSID:4"));
}

TEST(Check, NamesASecondLineOfAKey) {
  EXPECT_THAT(findings_of_lines("Channel=6\nChannel=11\n"), ElementsAre("8 duplicate-key Channel"));
}

TEST(Check, NamesALineThatIsTooLongForTheLoader) {
  const auto line_of = [](size_t length) { return "AckPolicy=" + text_of(length - 10, '1'); };
  // 185 with its line end, and one more.
  EXPECT_THAT(findings_of_lines(line_of(184) + "\n"), ElementsAre("7 long-field AckPolicy"));
  EXPECT_THAT(findings_of_lines(line_of(185) + "\n"), ElementsAre("7 long-line AckPolicy", "7 long-field AckPolicy"));
  EXPECT_THAT(findings_of_lines(line_of(185)), ElementsAre("7 long-line AckPolicy", "7 long-field AckPolicy"));
}

TEST(Check, CallsTooLongWhatASaveRefuses) {
  const std::string longest = "CountryCode=" + text_of(149, 'a') + ";" + text_of(22, 'b');
  ASSERT_EQ(184u, longest.size());
  for (const std::string& more : Words{"", "c"}) {
    const TestFolder folder;
    write_file(folder / "radio.dat", "Default\nBssidNum=2\n" + longest + more + "\n");
    const Result saved = run("library_probe init 0 save 0", {"--dat24", folder / "radio.dat"});
    EXPECT_THAT(saved.out, HasSubstr(more.empty() ? "save 0" : "save 1"));
    EXPECT_EQ(more.empty(), findings_of(read_file(folder / "radio.dat")).empty());
  }
}

TEST(Check, NamesASecondEqualsSign) {
  EXPECT_THAT(findings_of_lines("SSID1=a=b\n"), ElementsAre("7 second-equals SSID1"));
}

TEST(Check, NamesALineWithoutEqualsSignAndDoesNotRepeatIt) {
  const Checked checked = check(std::string(kHead) + "WPAPSK1 my-passphrase\nDef\n");
  EXPECT_THAT(findings_in(checked.document), ElementsAre("7 no-equals ", "8 no-equals "));
  EXPECT_THAT(checked.document.dump(), Not(HasSubstr("my-passphrase")));
}

TEST(Check, NamesALineThatBeginsWithEqualsSign) {
  EXPECT_THAT(findings_of_lines("=6\nChannel=6\n"), ElementsAre("7 no-key "));
}

TEST(Check, NamesCarriageReturnsOnce) {
  EXPECT_THAT(findings_of("Default\r\nBssidNum=1\r\nSSID1=a\r\n"), ElementsAre("1 line-end "));
  EXPECT_THAT(findings_of_lines("SSID1=a\rb\n"), ElementsAre("7 line-end SSID1"));
}

TEST(Check, NamesANulByte) {
  EXPECT_THAT(findings_of_lines(std::string("SSID1=a\0b\n", 10)), ElementsAre("7 nul-byte SSID1"));
}

TEST(Check, NamesMoreFieldsThanSsids) {
  EXPECT_THAT(findings_of_lines("HideSSID=0;0;0\nAutoChannelSkipList=12;13;14\n"),
              ElementsAre("7 excess-field HideSSID", "8 excess-field AutoChannelSkipList"));
}

TEST(Check, NamesASecondValueOfAKeyThatHasOne) {
  EXPECT_THAT(findings_of_lines("SSID1=a;b\nAccessControlList0=00:11:22:33:44:55;00:11:22:33:44:66\n"),
              ElementsAre("7 second-value SSID1", "8 access-list AccessControlList0"));
}

TEST(Check, NamesAnEmptyFieldInFrontOfOthers) {
  EXPECT_THAT(findings_of_lines("HideSSID=0;;\nMaxStaNum=;1\nTxRate=0;;1\n"),
              ElementsAre("8 empty-field MaxStaNum", "9 empty-field TxRate"));
}

TEST(Check, NamesKeysThatASaveLeavesOut) {
  EXPECT_THAT(findings_of_lines("SSID2=b\nSSID3=c\nAccessPolicy1=0\nAccessPolicy2=0\nSSID9=x\nMboSupport3=0\n"),
              ElementsAre("8 left-out SSID3", "10 left-out AccessPolicy2", "11 left-out SSID9"));
}

TEST(Check, WhatItCallsLeftOutIsWhatASaveLeavesOut) {
  const std::string file = "/etc/Wireless/RT2860AP/RT2860AP.dat";
  const TestFolder folder;
  write_file(folder / "radio.dat", std::string(kHead) +
                                       "SSID1=a\nSSID2=b\nSSID3=c\nSSID9=x\nWPAPSK3=passphrase\nAccessPolicy1=0\n"
                                       "AccessPolicy2=0\nMboSupport3=0\nWds3Key=12345\n");
  const std::vector<Result> steps =
      run_steps({"wlanctl check --json " + file, "library_probe init 0 save 0", "cat " + file},
                {"--dat24", folder / "radio.dat"});
  Words lost;
  const Json document = document_in(steps[0].out);
  for (const Json& finding : document["data"]["files"][0]["findings"]) {
    if (finding["kind"] == "left-out") lost.push_back(finding["key"]);
  }
  EXPECT_THAT(lost, ElementsAre("SSID3", "SSID9", "WPAPSK3", "AccessPolicy2"));
  Words kept;
  for (const std::string& line : lines_of(steps[2].out)) kept.push_back(line.substr(0, line.find('=')));
  EXPECT_THAT(kept, ElementsAre("Default", "BssidNum", "WirelessMode", "ReloadFlag", "WdsEncrypType", "SSID1", "SSID2",
                                "AccessPolicy1", "MboSupport3", "Wds3Key"));
}

TEST(Check, NamesALongKeyAndALongField) {
  EXPECT_THAT(findings_of_lines("CountryCode=" + text_of(150, 'x') + "\nCountryRegion" + text_of(23, 'x') + "=1\n"),
              ElementsAre("7 long-field CountryCode", "8 long-key CountryRegion" + text_of(23, 'x'),
                          "8 unknown-key CountryRegion" + text_of(23, 'x')));
  EXPECT_THAT(findings_of_lines("CountryCode=" + text_of(149, 'x') + "\n"), IsEmpty());
  EXPECT_THAT(findings_of_lines(text_of(35, 'x') + "=1\n"), ElementsAre("7 unknown-key " + text_of(35, 'x')));
}

TEST(Check, NamesAMissingOrSenselessSsidCount) {
  EXPECT_THAT(findings_of("Default\nSSID1=a\n"), ElementsAre("- ssid-count BssidNum"));
  for (const std::string& count : Words{"0", "9", "two", ""}) {
    EXPECT_THAT(findings_of("BssidNum=" + count + "\n"), ElementsAre("1 ssid-count BssidNum")) << count;
  }
}

TEST(Check, NamesAValueThatAShellWouldActOn) {
  EXPECT_THAT(findings_of_lines("SSID1=`reboot`\nRADIUS_Key1=pass$(reboot)\nAccessControlList0=x&\n"),
              ElementsAre("7 shell SSID1", "8 shell RADIUS_Key1", "9 shell AccessControlList0"));
}

// Which of the two numbers is an error, a warning or harmless; the exit code is that of the worst.
TEST(Check, SaysHowBadAFindingIs) {
  const struct {
    const char* line;
    const char* severity;
    int status;
  } kRows[] = {{"SSID1=a=b", "error", 1},       {"Channel=181", "error", 1},
               {"Chanel=6", "warning", 7},      {"Channel=36", "warning", 7},
               {"EnableSSID=on", "warning", 7}, {"AuthMode=WPA2PSK\nEncrypType=NONE", "warning", 7},
               {"HideSSID=0;0;0", "note", 0}};
  for (const auto& row : kRows) {
    const Checked checked = check(std::string(kHead) + row.line + "\n");
    EXPECT_EQ(row.status, checked.status) << row.line;
    EXPECT_EQ(row.severity, checked.document["data"]["files"][0]["findings"][0]["severity"]) << row.line;
  }
}

TEST(Check, PassesTheFilesOfAFreshGateway) {
  const Result result = run("wlanctl check /etc/Wireless/RT2860AP*/RT2860AP.dat");
  EXPECT_EQ(0, result.status);
  EXPECT_EQ(4u, lines_of(result.out).size()) << result.out;
}

TEST(Check, MasksSecrets) {
  const std::string secret = "never$shown-" + text_of(60, 'x');
  const Checked checked = check(std::string(kHead) + "WPAPSK1=" + secret + "\nKey1Str1=$x\nRADIUS_Key1=short\n");
  EXPECT_THAT(findings_in(checked.document),
              ElementsAre("7 refused WPAPSK1", "8 shell Key1Str1", "9 refused RADIUS_Key1"));
  for (const Json& finding : checked.document["data"]["files"][0]["findings"]) EXPECT_EQ("********", finding["value"]);
  EXPECT_THAT(checked.document.dump(), Not(HasSubstr("never")));
  EXPECT_THAT(checked.document.dump(), Not(HasSubstr("short\"")));
}

TEST(Check, TakesTheBandFromTheFoldersOrTheFilesName) {
  const TestFolder folder;
  const Result result = shell_in(folder,
                                 "mkdir RT2860AP RT2860AP_AC; printf 'BssidNum=1\\nWirelessMode=16\\n' |"
                                 " tee RT2860AP/a.dat RT2860AP_AC/a.dat RT2860AP_AC.dat other.dat >/dev/null;"
                                 " $WLANCTL check --json RT2860AP/a.dat RT2860AP_AC/a.dat RT2860AP_AC.dat other.dat");
  validate_text(result.out);
  const Json document = document_in(result.out);
  Words bands;
  for (const Json& file : document["data"]["files"]) {
    bands.push_back(file["band"].dump() + " " + std::to_string(file["findings"].size()));
  }
  // 16 is a mode of 2.4G only; a file of either band is given the benefit of the doubt, and a note says so.
  EXPECT_THAT(bands, ElementsAre("\"2.4g\" 0", "\"5g\" 1", "\"5g\" 1", "null 0"));
  EXPECT_EQ(1u, document["notes"].size());
}

TEST(Check, TakesTheBandFromTheFolderThatItIsCalledIn) {
  const std::vector<Result> steps =
      run_steps({"cd /etc/Wireless/RT2860AP_AC; wlanctl check RT2860AP.dat --json",
                 "cp /etc/Wireless/RT2860AP_AC/RT2860AP.dat .; wlanctl check RT2860AP.dat --json"});
  EXPECT_EQ("5g", document_in(steps[0].out)["data"]["files"][0]["band"]);
  EXPECT_TRUE(document_in(steps[1].out)["data"]["files"][0]["band"].is_null());
}

TEST(Check, AFileWithoutAnEndIsNoFile) {
  EXPECT_EQ(2, run("wlanctl check /dev/zero --json >/dev/null").status);
}

TEST(Check, AnUnknownBandRefusesWhatBothRefuse) {
  EXPECT_THAT(findings_of("BssidNum=1\nWirelessMode=12\n", ""), ElementsAre("2 refused WirelessMode"));
}

TEST(Check, PrintsALineThatAnEditorCanJumpTo) {
  const TestFolder folder;
  write_file(folder / "radio.dat", "BssidNum=1\nHideSSID=9\n");
  const Result result = shell_in(folder, "$WLANCTL check --band 2.4g radio.dat 2>&1");
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(
      "radio.dat:2: HideSSID: error: \"9\" is refused: The HideSSID value should be 0 or\n    1\n"
      "wlanctl: 1 error in radio.dat; mend the lines and check again\n",
      result.out);
}

TEST(Check, SaysTwoWhenAFileCannotBeRead) {
  const std::vector<Result> steps =
      run_steps({"wlanctl check --json /nowhere.dat", "wlanctl check --json /etc /etc/Wireless/RT2860AP/RT2860AP.dat",
                 "wlanctl check --json", "wlanctl check --json --band 6g x"});
  for (const Result& step : steps) EXPECT_EQ(2, step.status) << step.out;
  // What could be read is there.
  EXPECT_EQ(1u, document_in(steps[1].out)["data"]["files"].size());
}

TEST(Check, NeedsAndMakesNoStore) {
  const std::vector<Result> steps =
      run_steps({"wlanctl check --json /etc/Wireless/RT2860AP/RT2860AP.dat >/dev/null; test $? = 0",
                 "grep -c . /proc/sysvipc/shm; grep -c . /proc/sysvipc/sem", "ls /var/run"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_EQ("1\n1\n", steps[1].out);  // the heads of both lists
  EXPECT_THAT(steps[2].out, Not(HasSubstr("wlanctl")));
}

TEST(Check, LeavesTheFileAndTheJournalAlone) {
  const std::vector<Result> steps = run_steps(
      {"cd /etc/Wireless/RT2860AP; stat -c %y%z%i RT2860AP.dat >$OLDPWD/before; wc -l </run/gateway-sim/journal",
       "wlanctl check /etc/Wireless/RT2860AP/RT2860AP.dat >/dev/null; true",
       "cd /etc/Wireless/RT2860AP; stat -c %y%z%i RT2860AP.dat; cat $OLDPWD/before",
       "wc -l </run/gateway-sim/journal"});
  const Words stats = lines_of(steps[2].out);
  ASSERT_EQ(2u, stats.size());
  EXPECT_EQ(stats[0], stats[1]);
  EXPECT_EQ(steps[0].out, steps[3].out);
}

TEST(Check, OfTheShippedFilesEndsWellInEightyColumns) {
  const std::vector<Result> steps = run_steps(
      {"wlanctl check /etc/Wireless/RT2860AP/RT2860AP.dat", "wlanctl check /etc/Wireless/RT2860AP_AC/RT2860AP.dat"});
  for (const Result& step : steps) {
    EXPECT_EQ(0, step.status) << step.out;
    EXPECT_THAT(lines_of(step.out),
                testing::Each(testing::ResultOf([](const auto& line) { return line.size(); }, testing::Le(80u))));
  }
}

}  // namespace
}  // namespace wlanctl_test

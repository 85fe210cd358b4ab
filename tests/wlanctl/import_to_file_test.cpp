// import --to-file: settings into the dat file, with the lines that it lacks.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kFile = kDat;

// A dat file with few lines, and a store of it that has room for a few more.
Words few_lines(const TestFolder& folder) {
  write_file(folder / "few.dat", "Default\nBssidNum=1\nReloadFlag=0\nChannel=6\nMacAddress=02:00:00:00:00:01\n");
  return {"--dat24", folder / "few.dat"};
}

const std::string kMore = into("more.json", settings("\"Channel\": 11, \"TxPower\": 50, \"SSID:1\": \"Attic\""));

TEST(ImportToFile, AddsTheLinesThatTheFileLacks) {
  const TestFolder folder;
  const auto steps = run_live(
      {kMore + "wlanctl import more.json", "wlanctl import more.json --to-file", "cat " + kFile}, few_lines(folder));
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("TxPower is not in the dat file of 2.4g"));
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[1].out, HasSubstr("2.4g Channel = 11  (was 6)\n"));
  EXPECT_THAT(steps[1].out, HasSubstr("2.4g: 3 values stored in\n  " + kFile + ",\n  with 2 new lines\n"));
  EXPECT_EQ("Default\nBssidNum=1\nReloadFlag=0\nChannel=11\nMacAddress=02:00:00:00:00:01\nTxPower=50\nSSID1=Attic\n",
            steps[2].out);
}

TEST(ImportToFile, TellsTheStepsToAStoreWithRoom) {
  const TestFolder folder;
  const auto steps = run_live({into("more.json", settings("\"Channel\": 11, \"TxPower\": 50, \"SSID:1\": \"Attic\", "
                                                          "\"EnableSSID:1\": 1, \"HideSSID:1\": 0, \"BeaconPeriod\": "
                                                          "100, \"DtimPeriod\": 1, \"ShortSlot\": 1, \"TxBurst\": 1")) +
                                   "wlanctl import more.json --to-file",
                               "wlanctl get 2.4g Channel; ipcrm -M 0x12345; wlanctl apply 2.4g --again",
                               "wlanctl get 2.4g Channel TxPower SSID:1; wlanctl status 2.4g | grep channel"},
                              few_lines(folder));
  EXPECT_THAT(steps[0].out, HasSubstr(kFile + " has all of that; the live store has no room for it.\n"));
  EXPECT_THAT(steps[0].out, HasSubstr("2. ipcrm -M 0x12345\n    3. wlanctl apply 2.4g --again "));
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[1].out, testing::StartsWith("6\n"));
  EXPECT_THAT(steps[2].out, HasSubstr("Channel  11\nTxPower  50\n"));
  EXPECT_THAT(steps[2].out, HasSubstr("channel 11"));
}

TEST(ImportToFile, NamesRevertWhereTheStoreHasRoom) {
  const auto steps =
      run_live({kMore + "wlanctl import more.json --to-file", "wlanctl get 2.4g Channel",
                "wlanctl revert 2.4g && wlanctl apply 2.4g --again && wlanctl get 2.4g Channel TxPower SSID:1"});
  EXPECT_THAT(steps[0].out,
              HasSubstr("  wlanctl revert 2.4g takes it into the live store,\n  wlanctl apply 2.4g --again "
                        "brings it into force\n"));
  EXPECT_THAT(steps[0].err,
              HasSubstr("until then a save or an apply of the live store writes the dat file without it"));
  EXPECT_EQ("6\n", steps[1].out);
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_THAT(steps[2].out, HasSubstr("Channel  11\nTxPower  50\nSSID:1   Attic\n"));
}

TEST(ImportToFile, MakesTheDatFileOfAGatewayWithoutSettings) {
  const TestFolder folder;
  write_file(folder / "empty.dat", "Default\n");
  const auto steps = run_steps(
      {into("f.json",
            settings("\"BssidNum\": 2, \"Channel\": 11, \"SSID:2\": \"Guest\", \"HideSSID:2\": 1, \"SSID:1\": "
                     "\"Home\", \"HideSSID:1\": 0, \"MacAddress\": \"02:00:00:00:00:01\"")) +
           "wlanctl import f.json --to-file --dry-run; cat " + kFile,
       "wlanctl import f.json --to-file", "cat " + kFile, "wlanctl get 2.4g SSID:2"},
      {"--dat24", folder / "empty.dat"});
  EXPECT_THAT(steps[0].out, HasSubstr("2.4g: 6 values would be stored in\n"));
  EXPECT_THAT(steps[0].out, testing::EndsWith("\nDefault\n"));
  EXPECT_THAT(steps[1].out,
              HasSubstr("  wlanctl apply 2.4g --again makes the live store of it, and brings it into force"));
  EXPECT_EQ(
      "Default\nBssidNum=2\nChannel=11\nSSID2=Guest\nHideSSID=0;1\nSSID1=Home\nMacAddress=02:00:00:00:00:01\n"
      "ReloadFlag=0\n",
      steps[2].out);
  EXPECT_EQ("Guest\n", steps[3].out);
}

TEST(ImportToFile, LeavesWhatNothingSetsAsTheFileHasIt) {
  const TestFolder folder;
  const auto steps = run_live({into("f.json", settings("\"MacAddress\": \"02:00:00:00:00:99\", \"Channel\": 11")) +
                                   "wlanctl import f.json --to-file --force",
                               "grep MacAddress " + kFile},
                              few_lines(folder));
  EXPECT_THAT(steps[0].err,
              HasSubstr("is \"02:00:00:00:00:01\" in the dat file; nothing sets it, and it stays as it is"));
  EXPECT_EQ("MacAddress=02:00:00:00:00:01\n", steps[1].out);
}

TEST(ImportToFile, HoldsWhatTheLibraryRefusesOnlyWhereThatIsInsistedOn) {
  const std::string refused = into("f.json", settings("\"WHNAT\": 102")) + "wlanctl import f.json --to-file";
  const auto steps = run_live({"grep WHNAT " + kFile, refused, "grep WHNAT " + kFile, refused + " --force",
                               "grep WHNAT " + kFile, "wlanctl import f.json --force"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("f.json:3: WHNAT cannot be \"102\""));
  EXPECT_EQ(steps[0].out, steps[2].out);
  EXPECT_EQ(0, steps[3].status);
  EXPECT_THAT(steps[3].err, HasSubstr("note: WHNAT is taken all the same: "));
  EXPECT_EQ("WHNAT=102\n", steps[4].out);
  EXPECT_EQ(1, steps[5].status);
}

TEST(ImportToFile, HoldsACountThatNoGatewayServesOnlyWhereThatIsInsistedOn) {
  for (const char* const count : {"0", "9"}) {
    const TestFolder folder;
    write_file(folder / "odd.dat", std::string("Default\nBssidNum=") + count + "\nChannel=6\nSSID1=a\n");
    const auto steps = run_steps(
        {"wlanctl export 2.4g >f.json; echo Default >" + kFile,
         "wlanctl import f.json --to-file; echo $?; cat " + kFile, "wlanctl import f.json --to-file --force; echo $?",
         "wlanctl export 2.4g | cmp - f.json && echo same"},
        {"--dat24", folder / "odd.dat"});
    EXPECT_EQ("1\nDefault\n", steps[1].out);
    EXPECT_THAT(steps[2].out, testing::EndsWith("\n0\n")) << steps[2].err;
    EXPECT_EQ("same\n", steps[3].out);
  }
}

TEST(ImportToFile, RefusesWhatADatFileCannotHold) {
  const auto steps = run_live({into("f.json", settings("\"SSID:1\": \"a=b\", \"Channel\": 11")) + "cp " + kFile +
                                   " before; wlanctl import f.json --to-file --force",
                               "cmp before " + kFile + " && echo same"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("SSID:1"));
  EXPECT_EQ("same\n", steps[1].out);
}

TEST(ImportToFile, KeepsListsWholeThatASaveCuts) {
  const auto steps =
      run_live({into("f.json", settings("\"AutoChannelSkipList\": \"1;2;3;4\"")) + "wlanctl import f.json --to-file",
                "grep SkipList " + kFile});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("AutoChannelSkipList=1;2;3;4\n", steps[1].out);
}

TEST(ImportToFile, IntoTheFilesOfBothOrOfNone) {
  const auto steps =
      run_live({"wlanctl set 2.4g Channel=11 >/dev/null; wlanctl set 5g Channel=100 >/dev/null; wlanctl "
                "export >all.json; wlanctl revert >/dev/null; cp " +
                    kFile +
                    " before; d=/etc/Wireless/RT2860AP_AC; mount --bind $d $d; mount -o "
                    "remount,ro,bind $d; wlanctl import all.json --to-file",
                "cmp before " + kFile + " && echo same", "wlanctl log show 4"});
  EXPECT_EQ(1, steps[0].status) << steps[0].err;
  EXPECT_THAT(steps[2].out, testing::ContainsRegex("Channel +11 -> 6")) << "what was written, and came back";
  EXPECT_THAT(steps[0].err,
              HasSubstr("/etc/Wireless/RT2860AP_AC/RT2860AP.dat cannot be written: Read-only file system"));
  EXPECT_THAT(steps[0].out, Not(HasSubstr("stored")));
  EXPECT_EQ("same\n", steps[1].out);
}

TEST(ImportToFile, KeepsTheFileAsItWasAndAnEntryOfIt) {
  const auto steps = run_live({"cp " + kFile + " before; " + kMore + "wlanctl import more.json --to-file",
                               "cmp before /var/run/wlanctl-kept-2.4g && echo same", "wlanctl log 2.4g"});
  EXPECT_EQ("same\n", steps[1].out);
  EXPECT_THAT(steps[2].out, HasSubstr("save"));
}

TEST(ImportToFile, KilledAtAnyMomentLeavesTheOldFileOrTheNewOne) {
  for (const std::string when : {"before", "after"}) {
    const Result result =
        run_story("library_probe init 0 >/dev/null; cp " + kFile + " before;" + kMore + "killed_at '" + when + " 1 " +
                  kFile + "' wlanctl import more.json --to-file; echo $?; cmp -s before " + kFile +
                  " && echo old; grep -c -x -e Channel=11 -e TxPower=50 -e SSID1=Attic " + kFile +
                  "; wlanctl import more.json --to-file >/dev/null; ls -l /etc/Wireless/RT2860AP | grep -c -e "
                  "'^-rw-r--r--.*dat$' -e new");
    EXPECT_EQ(when == "before" ? "137\nold\n0\n1\n" : "137\n3\n1\n", result.out) << result.err;
  }
}

const std::string kOther = "/etc/Wireless/RT2860AP_AC/RT2860AP.dat";
const std::string kBoth =
    "library_probe init 0 init 1 >/dev/null; wlanctl set 2.4g Channel=11 >/dev/null; wlanctl set 5g Channel=100 "
    ">/dev/null; "
    "wlanctl export >all.json; wlanctl revert >/dev/null; cp " +
    kFile + " before; cp " + kOther + " before5;";

// Wherever it was killed: nobody keeps one of the files.
TEST(ImportToFile, OfBothThatWasKilledBetweenTheFilesIsTakenBack) {
  const std::string are_before = "cmp before " + kFile + " && cmp before5 " + kOther + " && echo same;";
  for (const std::string& when : {"before 1 " + kFile, "after 1 " + kFile, "before 1 " + kOther, "after 1 " + kOther}) {
    const Result result = run_story(kBoth + "killed_at '" + when + "' wlanctl import all.json --to-file; echo $?;" +
                                    "wlanctl status 2.4g 2>&1 >/dev/null | grep -c 'is writing both dat files';" +
                                    "wlanctl set 5g TxPower=100 >/dev/null;" + are_before +
                                    "ls /run | grep filing; wlanctl diff 2.4g --in-force 2>&1 | grep known");
    EXPECT_EQ("137\n1\nsame\n", result.out) << when << result.err;
    const bool is_one_there = when != "before 1 " + kFile;
    EXPECT_EQ(is_one_there, result.err.find("did not write both dat files") != std::string::npos) << result.err;
  }
}

TEST(ImportToFile, LeavesWhatSomebodyElseHasWrittenSince) {
  const Result result =
      run_story(kBoth + "killed_at 'before 1 " + kOther + "' wlanctl import all.json --to-file; echo '#' >>" + kFile +
                "; cp " + kFile + " mine; wlanctl set 5g TxPower=100 >/dev/null; cmp mine " + kFile +
                " && echo same; ls /run | grep filing");
  EXPECT_EQ("same\n", result.out) << result.err;
}

TEST(SsidAdd, IntoTheFilesOfBothThatWasKilledBetweenThemIsTakenBack) {
  const Result result = run_story(
      kBoth +
      "echo guest-word-1 >word; killed_at 'before 2 /var/run/wlanctl-applied-5g' wlanctl ssid add --both Kitchen "
      "--passphrase-file word --to-file >/dev/null; echo $?; wlanctl set 5g TxPower=100 >/dev/null; cmp before " +
      kFile + " && grep -c ^SSID3=Kitchen " + kOther + "; ls /run | grep filing");
  EXPECT_EQ("137\n0\n", result.out) << result.err;
}

// A store of a file without settings would have no room for any, and stand in the way of who loads some.
TEST(ImportToFile, IsWhatAGatewayWithoutSettingsIsToldOf) {
  const TestFolder folder;
  write_file(folder / "empty.dat", "Default\n");
  const auto steps =
      run_steps({kMore + "wlanctl import more.json; echo $?; wlanctl set 2.4g Channel=6; echo $?; ipcs -m | "
                         "grep -c 0x00012345"},
                {"--dat24", folder / "empty.dat"});
  EXPECT_EQ("3\n3\n0\n", steps[0].out);
  EXPECT_THAT(steps[0].err, HasSubstr("has no settings; wlanctl import FILE --to-file writes some"));
}

TEST(ImportToFile, LeavesALinkALink) {
  const auto steps = run_live(
      {"mv " + kFile + " real.dat; ln -s $PWD/real.dat " + kFile + "; " + kMore + "wlanctl import more.json --to-file",
       "test -L " + kFile + " && grep ^Channel= real.dat"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("Channel=11\n", steps[1].out);
}

TEST(ImportToFile, WaitsForADecision) {
  const auto steps =
      run_live({kMore + "wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; "
                        "wlanctl import more.json --to-file; echo $?; wlanctl confirm 2.4g"});
  EXPECT_THAT(steps[0].out, HasSubstr("1\n"));
  EXPECT_THAT(steps[0].err, HasSubstr("wlanctl confirm 2.4g"));
}

TEST(ImportToFile, SaysInJsonWhatTheFileGot) {
  const TestFolder folder;
  const auto steps = run_live({kMore + "wlanctl import more.json --to-file --json"}, few_lines(folder));
  const Json data = document_in(steps[0].out)["data"];
  EXPECT_EQ(true, data["in_file"]);
  EXPECT_EQ(Json::parse(R"(["TxPower","SSID1"])"), data["bands"][0]["added_records"]);
  EXPECT_EQ(3u, data["bands"][0]["changes"].size());
}

// The live store does not have it yet.
TEST(ImportToFile, BuildsOnWhatTheFileHas) {
  const auto steps =
      run_live({"wlanctl export 2.4g >a.json; sed s/Gateway-Home/Shed/ a.json >b.json; wlanctl import b.json "
                "--to-file >/dev/null; echo TxPower=50 >d.dat; wlanctl import d.dat 2.4g --to-file >/dev/null; "
                "grep -e ^SSID1= -e ^TxPower= " +
                    kFile,
                "wlanctl import a.json --to-file"});
  EXPECT_EQ("SSID1=Shed\nTxPower=50\n", steps[0].out);
  EXPECT_THAT(steps[1].out, HasSubstr("2.4g SSID:1 = Gateway-Home  (was Shed)\n"));
}

TEST(ImportToFile, SaysWhereThereIsNothingToDo) {
  const auto steps = run_live({"wlanctl export 2.4g >f.json; cp " + kFile + " before; wlanctl import f.json --to-file",
                               "cmp before " + kFile + " && echo same"});
  EXPECT_EQ("2.4g: nothing changes; " + kFile + " would have no more\n", steps[0].out);
  EXPECT_EQ("same\n", steps[1].out);
}

}  // namespace
}  // namespace wlanctl_test

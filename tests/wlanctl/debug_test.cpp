// wlanctl dump and trace.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST(Dump, ShowsTheLiveStoresRecordsWithTheirFields) {
  const TestFolder folder;
  write_file(folder / "dat", "Default\nBssidNum=2\nHideSSID=0;1\nSSID1=One\nNobodyKnows=x\nEmpty=\n");
  const Json document = json_of("dump 2.4g", "wlanctl set 2.4g SSID:1=Two", {"--dat24", folder / "dat"});
  EXPECT_EQ(0, document["exit_code"]);
  EXPECT_EQ(Json::parse(R"([{"band": "2.4g", "records": [
                            {"key": "BssidNum", "values": ["2"]}, {"key": "HideSSID", "values": ["0", "1"]},
                            {"key": "SSID1", "values": ["Two"]}, {"key": "NobodyKnows", "values": ["x"]},
                            {"key": "Empty", "values": []}]}])"),
            document["data"]["bands"]);
}

TEST(Dump, IsTextForPeople) {
  const TestFolder folder;
  write_file(folder / "dat", "Default\nBssidNum=2\nHideSSID=0;1\n");
  const Result result = run("wlanctl dump 2.4g", {"--dat24", folder / "dat"});
  EXPECT_EQ("2.4g\n  BssidNum=2\n  HideSSID=0;1\n", result.out);
  EXPECT_EQ("wlanctl: note: there is no live store of 2.4g yet; this is what its dat file says\n", result.err);
}

TEST(Dump, ShowsBothBandsWithoutAName) {
  EXPECT_EQ(2u, json_of("dump")["data"]["bands"].size());
}

TEST(Dump, MasksSecretsOfKnownAndUnknownKeysUnlessAsked) {
  const TestFolder folder;
  std::string dat = "Default\nBssidNum=1\n";
  for (const char* const key : {"WPAPSK1", "Key1Str1", "RADIUS_Key1", "Wds0Key", "ApCliWPAPSK", "WPAPSK",
                                "ApCliKey1Str", "WscVendorPinCode", "AdminPassword"}) {
    dat += std::string(key) + "=hidden-thing\n";
  }
  write_file(folder / "dat", dat + "DefaultKeyID=2\nKey1Type=0\n");
  const std::vector<Result> results = run_steps(
      {"wlanctl dump 2.4g --json", "wlanctl dump 2.4g", "wlanctl dump 2.4g --secrets"}, {"--dat24", folder / "dat"});
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_THAT(results[i].out, AllOf(Not(HasSubstr("hidden-thing")), HasSubstr("********")));
  }
  EXPECT_THAT(results[1].out, AllOf(HasSubstr("DefaultKeyID=2"), HasSubstr("Key1Type=0")));
  EXPECT_THAT(results[2].out, AllOf(HasSubstr("WPAPSK1=hidden-thing"), HasSubstr("AdminPassword=hidden-thing")));
}

TEST(Dump, NoStoreIsItsOwnExitCode) {
  EXPECT_EQ(3, json_of("dump 5g", "rm /etc/Wireless/RT2860AP_AC/RT2860AP.dat")["exit_code"]);
}

TEST(Trace, OnIsEverything) {
  const std::vector<Result> results =
      run_steps({"wlanctl trace on --json", "cat /tmp/vexalib_dbg; head -c1 /tmp/wifi_lib_dbg_enable"});
  const Json document = document_in(results[0].out);
  EXPECT_EQ("trace on", document["verb"]);
  EXPECT_EQ(Json({{"trace", "on"}, {"level", 8}}), document["data"]);
  EXPECT_EQ("81", results[1].out);
}

TEST(Trace, LevelIsOnUpToALevel) {
  const std::vector<Result> results =
      run_steps({"wlanctl trace level 3", "cat /tmp/vexalib_dbg; head -c1 /tmp/wifi_lib_dbg_enable"});
  EXPECT_EQ("trace: on, level 3\n", results[0].out);
  EXPECT_EQ("31", results[1].out);
}

TEST(Trace, OffEndsIt) {
  const std::vector<Result> results = run_steps({"wlanctl trace on; wlanctl trace off --json >document; cat document",
                                                 "test -e /tmp/wifi_lib_dbg_enable", "wlanctl trace off"});
  const Json document = document_in(results[0].out.substr(results[0].out.find('{')));
  EXPECT_EQ(Json({{"trace", "off"}, {"level", nullptr}}), document["data"]);
  EXPECT_EQ(1, results[1].status);
  EXPECT_EQ(0, results[2].status) << "a second time too";
}

TEST(Trace, OtherProcessesFollowTheSwitch) {
  const std::string probe = library_probe_program() + " init 0 2>&1 | grep -c wifimgr_lib_init; true";
  const std::vector<Result> results = run_steps({probe, "wlanctl trace on; " + probe, "wlanctl trace off; " + probe});
  EXPECT_EQ("0\n", results[0].out);
  EXPECT_NE("trace: on, level 8\n0\n", results[1].out);
  EXPECT_EQ("trace: off\n0\n", results[2].out);
}

TEST(Trace, AFileThatCannotBeWrittenIsRefused) {
  const std::vector<Result> results =
      run_steps({"mkdir -p /tmp/wifi_lib_dbg_enable/x; wlanctl trace on --json", "wlanctl trace off --json"});
  for (const Result& result : results) EXPECT_EQ(1, result.status);
}

TEST(Trace, WrongWordsAreUsage) {
  for (const Result& result : run_steps({"wlanctl trace", "wlanctl trace level", "wlanctl trace level 0",
                                         "wlanctl trace level 9", "wlanctl trace maybe"})) {
    EXPECT_EQ(2, result.status);
  }
}

}  // namespace
}  // namespace wlanctl_test

// export: the settings as text that an import takes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(Export, IsTheStoreOfBothBandsAsJson) {
  const auto steps = run_live({"wlanctl set 2.4g Channel=11 >/dev/null; wlanctl export"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_EQ("", steps[0].err);
  const Json settings = document_in(steps[0].out);
  EXPECT_EQ(1, settings["wlanctl_settings"]);
  EXPECT_EQ(11, settings["bands"]["2.4g"]["settings"]["Channel"]);
  EXPECT_EQ(36, settings["bands"]["5g"]["settings"]["Channel"]);
  EXPECT_EQ("Gateway-Home", settings["bands"]["2.4g"]["settings"]["SSID:1"]);
  EXPECT_EQ("sample-passphrase-1", settings["bands"]["2.4g"]["settings"]["WPAPSK:1"]);
  EXPECT_EQ("300", settings["bands"]["2.4g"]["other"]["IdleTimeout"]);
}

TEST(Export, HasTheSsidsThatAreServedOnly) {
  const auto steps = run_live({"wlanctl export 2.4g", "wlanctl set 2.4g BssidNum=3 >/dev/null; wlanctl export 2.4g"});
  EXPECT_THAT(steps[0].out, HasSubstr("\"SSID:2\""));
  EXPECT_FALSE(document_in(steps[0].out)["bands"]["2.4g"]["settings"].contains("SSID:3"));
  EXPECT_FALSE(document_in(steps[0].out)["bands"]["2.4g"]["settings"].contains("HideSSID:3"));
  EXPECT_EQ("Gateway-3", document_in(steps[1].out)["bands"]["2.4g"]["settings"]["SSID:3"]);
}

TEST(Export, OfOneBandHasNothingOfTheOther) {
  const auto steps = run_live({"wlanctl export 5g"});
  EXPECT_FALSE(document_in(steps[0].out)["bands"].contains("2.4g"));
}

TEST(Export, SaysTheSameInADocument) {
  const auto steps = run_live({"wlanctl export", "wlanctl export --json", "wlanctl export 5g --format dat",
                               "wlanctl export 5g --format dat --json"});
  const Json document = document_in(steps[1].out);
  EXPECT_EQ(document_in(steps[0].out), document["data"]["settings"]);
  EXPECT_EQ("json", document["data"]["format"]);
  EXPECT_EQ(steps[2].out, document_in(steps[3].out)["data"]["settings"]);
}

TEST(Export, AsADatFileIsWhatTheBandServes) {
  const auto steps =
      run_live({"wlanctl set 5g Channel=40 >/dev/null; wlanctl export 5g --format dat >radio.dat; cat radio.dat",
                "wlanctl check --band 5g radio.dat", "wlanctl export --format dat"});
  EXPECT_THAT(steps[0].out, testing::StartsWith("Default\n"));
  EXPECT_THAT(steps[0].out, HasSubstr("\nChannel=40\n"));
  EXPECT_THAT(steps[0].out, HasSubstr("\nHideSSID=0;0\n"));
  EXPECT_THAT(steps[0].out, HasSubstr("\nAutoChannelSkipList=52;56;60;64\n"));
  EXPECT_THAT(steps[0].out, Not(HasSubstr("\nSSID3=")));
  EXPECT_EQ(0, steps[1].status) << steps[1].out;
  EXPECT_EQ(2, steps[2].status);
  EXPECT_EQ("wlanctl: a dat file is of one band; say export 2.4g or export 5g\n", steps[2].err);
}

TEST(Export, WithoutAStoreIsOfTheDatFileAndSaysSo) {
  const auto steps = run_steps({"wlanctl export 2.4g", "ipcs -m | grep -c 0x0001234"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_EQ(6, document_in(steps[0].out)["bands"]["2.4g"]["settings"]["Channel"]);
  EXPECT_THAT(steps[0].err, HasSubstr("there is no live store of 2.4g yet; this is what its dat file says"));
  EXPECT_EQ("0\n", steps[1].out);
}

TEST(Export, IntoAFileThatMayNotGrowSoLargeIsRefused) {
  const auto steps = run_steps({"ulimit -f 1; wlanctl export --output all.json", "ls all.json"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("cannot write all.json: File too large"));
  EXPECT_NE(0, steps[1].status);
}

TEST(Export, OfABandThatCannotBeReadIsTheOtherOneAndNoFile) {
  const auto steps = run_steps({"rm /etc/Wireless/RT2860AP_AC/RT2860AP.dat; wlanctl export --output all.json; ls",
                                "rm -f /etc/Wireless/RT2860AP_AC/RT2860AP.dat; wlanctl export --json"});
  EXPECT_THAT(steps[0].out, Not(HasSubstr("all.json")));
  EXPECT_THAT(steps[0].err, HasSubstr("all.json is not written, as not all of it can be had; wlanctl export 2.4g"));
  EXPECT_EQ(3, steps[1].status);
  const Json settings = document_in(steps[1].out)["data"]["settings"]["bands"];
  EXPECT_EQ(6, settings["2.4g"]["settings"]["Channel"]);
  EXPECT_FALSE(settings.contains("5g"));
}

TEST(Export, OfAStoreThatSomebodyWroteOverIsRefusedAndTheOldOneStays) {
  const auto steps = run_live({"wlanctl export 2.4g --output b.json; cp b.json good; damage_store overwrite 0x12345",
                               "wlanctl export 2.4g --output b.json", "cmp b.json good",
                               "wlanctl export 2.4g --format dat", "wlanctl export --json",
                               "wlanctl revert 2.4g --force >/dev/null && wlanctl export 2.4g --output b.json"});
  EXPECT_EQ(3, steps[1].status);
  EXPECT_EQ(
      "wlanctl: the store of 2.4g has no BssidNum, and nothing is exported; wlanctl doctor 2.4g tells what is wrong "
      "with it; wlanctl revert 2.4g --force fills it anew\n",
      steps[1].err);
  EXPECT_EQ(0, steps[2].status);
  EXPECT_EQ(3, steps[3].status);
  EXPECT_EQ("", steps[3].out);
  EXPECT_EQ(3, document_in(steps[4].out)["exit_code"]);
  EXPECT_EQ(0, steps[5].status) << steps[5].err;
}

TEST(Export, OfADatFileWithoutACountIsRefused) {
  const Result result = run("sed -i /^BssidNum/d " + std::string(kDat) + "; wlanctl export 2.4g --output b.json");
  EXPECT_EQ(3, result.status);
  EXPECT_THAT(result.err, testing::EndsWith(
                              "wlanctl: the dat file of 2.4g has no BssidNum, and nothing is exported; wlanctl check " +
                              std::string(kDat) + " tells what is wrong with it\n"));
}

TEST(Export, LeavesOutSecretsWhenTold) {
  const auto steps = run_live({"wlanctl export 2.4g --no-secrets", "wlanctl export 2.4g --no-secrets --format dat"});
  const Json settings = document_in(steps[0].out)["bands"]["2.4g"]["settings"];
  EXPECT_TRUE(settings["WPAPSK:1"].is_null());
  EXPECT_TRUE(settings["RADIUS_Key:2"].is_null());
  EXPECT_TRUE(settings["WdsKey:4"].is_null());
  EXPECT_EQ("Gateway-Home", settings["SSID:1"]);
  EXPECT_THAT(steps[1].out, HasSubstr("\nWPAPSK1=***\n"));
  for (const Result& step : steps) {
    EXPECT_THAT(step.out, Not(HasSubstr("sample-")));
  }
}

TEST(Export, KeepsEveryByte) {
  const auto steps =
      run_live({"wlanctl set 2.4g SSID:1=\"$(printf 'caf\\303\\251 \\342\\230\\225')\" "
                "SSID:2=\"$(printf '\\377\\376a')\" >/dev/null; wlanctl export 2.4g",
                "wlanctl set 2.4g SSID:1=\"$(printf '\\355\\240\\200')\" SSID:2=\"$(printf 'a\\177b')\" "
                ">/dev/null; wlanctl export 2.4g",
                "wlanctl set 2.4g Channel=06 >/dev/null; wlanctl export 2.4g"});
  EXPECT_EQ("caf\xc3\xa9 \xe2\x98\x95", document_in(steps[0].out)["bands"]["2.4g"]["settings"]["SSID:1"]);
  EXPECT_EQ(Json::parse(R"({"hex":"fffe61"})"), document_in(steps[0].out)["bands"]["2.4g"]["settings"]["SSID:2"]);
  EXPECT_EQ(Json::parse(R"({"hex":"eda080"})"), document_in(steps[1].out)["bands"]["2.4g"]["settings"]["SSID:1"]);
  EXPECT_EQ(
      "a\x7f"
      "b",
      document_in(steps[1].out)["bands"]["2.4g"]["settings"]["SSID:2"]);
  EXPECT_EQ("06", document_in(steps[2].out)["bands"]["2.4g"]["settings"]["Channel"]);
}

TEST(Export, RefusesADatFileThatNoImportWouldTake) {
  const auto steps = run_live({"wlanctl export 2.4g --format dat"}, {}, "echo Channel=7 >>" + std::string(kDat) + "; ");
  EXPECT_EQ(1, steps[0].status) << steps[0].out;
  EXPECT_THAT(steps[0].err, HasSubstr("Channel: line 6 has it already"));
}

TEST(Export, LeavesOutAKeyThatIsNoText) {
  const Result result =
      run("printf '\\377x=1\\n\\342\\230\\225=2\\n' >>/etc/Wireless/RT2860AP/RT2860AP.dat; wlanctl export 2.4g");
  EXPECT_EQ(0, result.status);
  const Json others = document_in(result.out)["bands"]["2.4g"]["other"];
  EXPECT_EQ("2", others["\xe2\x98\x95"]);
  EXPECT_THAT(result.out, Not(HasSubstr("\xef\xbf\xbd")));
  EXPECT_THAT(result.err, HasSubstr("1 key of the dat file of 2.4g is no text (UTF-8), and left out"));
}

TEST(Export, RefusesADatFileThatCannotHoldAValue) {
  const auto steps =
      run_live({"wlanctl set 2.4g --force SSID:1='a;b' SSID:2=a=b >/dev/null; wlanctl export 2.4g --format dat",
                "wlanctl export 2.4g"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ("", steps[0].out);
  EXPECT_THAT(steps[0].err, HasSubstr("a dat file cannot hold SSID:2 as it is in the store; export it as JSON"));
  EXPECT_EQ(0, steps[1].status);
}

TEST(Export, WritesAFileForItsOwnerAlone) {
  const auto steps =
      run_live({"echo old >all.json; chmod 644 all.json; wlanctl export --output all.json",
                "stat -c %a all.json; ls -A | grep -c all.json", "wlanctl export | cmp - all.json && echo same",
                "wlanctl export 5g --output all.json --json"});
  EXPECT_EQ("the settings of both bands are in all.json\n", steps[0].out);
  EXPECT_EQ("600\n1\n", steps[1].out);
  EXPECT_EQ("same\n", steps[2].out);
  const Json document = document_in(steps[3].out);
  EXPECT_EQ("all.json", document["data"]["output"]);
  EXPECT_TRUE(document["data"]["settings"].is_null());
}

TEST(Export, WritesThroughALink) {
  const auto steps = run_live({"echo old >real.json; ln -s real.json link.json; wlanctl export --output link.json",
                               "test -L link.json && head -n 1 real.json"});
  EXPECT_EQ("{\n", steps[1].out);
}

TEST(Export, DoesNotReplaceWhatIsNoFile) {
  const auto steps =
      run_live({"mkfifo pipe; wlanctl export --output pipe", "test -p pipe; echo $?",
                "mkdir folder; wlanctl export --output folder", "wlanctl export --output nowhere/all.json"});
  for (const size_t refused : {0u, 2u, 3u}) EXPECT_EQ(1, steps[refused].status);
  EXPECT_THAT(steps[0].err, HasSubstr("cannot write pipe: it is no file"));
  EXPECT_EQ("0\n", steps[1].out);
  EXPECT_THAT(steps[3].err, HasSubstr("cannot write nowhere/all.json: No such file or directory"));
}

TEST(Export, ReplacesNoDatFileByWhicheverName) {
  const std::string dat_5g = "/etc/Wireless/RT2860AP_AC/RT2860AP.dat";
  const auto steps =
      run_live({"cat " + std::string(kDat) + " " + dat_5g + " | md5sum >before; ln " + dat_5g +
                    " /etc/Wireless/hard; ln -s " + kDat + " soft; ln -s /etc/Wireless/RT2860AP folder",
                "wlanctl export --output " + std::string(kDat), "wlanctl export 5g --format dat --output " + dat_5g,
                "wlanctl export --output /etc/Wireless/hard", "wlanctl export --output soft --json",
                "cd /etc/Wireless/RT2860AP; wlanctl export --output RT2860AP.dat",
                "cat " + std::string(kDat) + " " + dat_5g + " | md5sum | cmp - before",
                "rm " + std::string(kDat) + "; wlanctl export 5g --output folder/RT2860AP.dat; test -e " + kDat +
                    " || echo none"});
  EXPECT_EQ("wlanctl: cannot write " + std::string(kDat) +
                ": it is the dat file of 2.4g; name another file; wlanctl save 2.4g writes the store into it, and "
                "wlanctl import FILE --to-file what an export has\n",
            steps[1].err);
  for (const size_t of_5g : {2u, 3u}) EXPECT_THAT(steps[of_5g].err, HasSubstr("it is the dat file of 5g; "));
  for (size_t i = 1; i <= 5; ++i) EXPECT_EQ(1, steps[i].status) << i;
  EXPECT_EQ("soft", document_in(steps[4].out)["problems"][0]["file"]);
  EXPECT_EQ(0, steps[6].status) << steps[6].out;
  EXPECT_EQ("none\n", steps[7].out);
}

TEST(Export, ReplacesNoFileOfTheToolsOwn) {
  const auto steps = run_live(
      {"wlanctl apply 2.4g >/dev/null; ls -d /var/run/wlanctl-applied-2.4g",
       "wlanctl export --output /var/run/wlanctl-applied-2.4g", "wlanctl export --output /var/run/wlanctl-pending-5g",
       "wlanctl export --output /etc/Wireless/wlanctl-before-5g",
       "mkdir entries; WLANCTL_HISTORY=$PWD/entries wlanctl export --output entries/entry-1",
       "wlanctl export --output /var/run/gateway.json && wlanctl export --output /etc/Wireless/gateway.json",
       "wlanctl diff 2.4g --in-force >/dev/null"});
  EXPECT_EQ("/var/run/wlanctl-applied-2.4g\n", steps[0].out);
  EXPECT_EQ(
      "wlanctl: cannot write /var/run/wlanctl-applied-2.4g: wlanctl keeps files of its own there; name another file\n",
      steps[1].err);
  for (size_t i = 1; i <= 4; ++i) EXPECT_EQ(1, steps[i].status) << i;
  EXPECT_EQ(0, steps[5].status) << steps[5].err;
  EXPECT_EQ(0, steps[6].status) << steps[6].err;
}

TEST(Export, SaysTwoForWrongWords) {
  for (const Result& step : run_live({"wlanctl export 6g --json", "wlanctl export --format xml --json"})) {
    EXPECT_EQ(2, step.status);
  }
}

}  // namespace
}  // namespace wlanctl_test

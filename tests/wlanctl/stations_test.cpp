// wlanctl stations.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

TEST(Stations, ListsThoseOfBothBandsByInterface) {
  const Json document = json_of("stations", "simctl station add rai1 02:aa:bb:cc:dd:02 rrm=7300000000000000 btm=05");
  EXPECT_EQ(0, document["exit_code"]);
  const Json bands = document["data"]["bands"];
  EXPECT_EQ(2u, bands[0]["ssids"][0]["stations"].size());
  EXPECT_EQ(Json::array(), bands[0]["ssids"][1]["stations"]);
  EXPECT_EQ(Json::parse(R"({"ssid": 2, "interface": "rai1", "name": "Gateway-Guest-5G", "stations":
                            [{"mac": "02:aa:bb:cc:dd:02", "can_11k": true, "features_11v": 5}]})"),
            bands[1]["ssids"][1]);
}

TEST(Stations, ABandOrAnSsidCanBeNamed) {
  const std::vector<Result> results = run_steps({"wlanctl stations 5g --json", "wlanctl stations 2.4g 2 --json"});
  const Json of_band = document_in(results[0].out)["data"]["bands"];
  ASSERT_EQ(1u, of_band.size());
  EXPECT_EQ("5g", of_band[0]["band"]);
  const Json of_ssid = document_in(results[1].out)["data"]["bands"];
  ASSERT_EQ(1u, of_ssid[0]["ssids"].size());
  EXPECT_EQ(2, of_ssid[0]["ssids"][0]["ssid"]);
}

TEST(Stations, OneThatTheDriverListsTwiceIsShownOnce) {
  const Json document = json_of("stations 2.4g 1",
                                "simctl station remove ra0 all;"
                                "simctl station add ra0 02:aa:bb:cc:dd:01 marker=0x0100");
  EXPECT_EQ(1u, document["data"]["bands"][0]["ssids"][0]["stations"].size());
}

TEST(Stations, NobodyIsAnEmptyList) {
  const std::vector<Result> results =
      run_steps({"simctl station remove ra0 all; library_probe init 0 >/dev/null; wlanctl stations 2.4g --json",
                 "wlanctl stations 2.4g"});
  EXPECT_EQ(Json::array(), document_in(results[0].out)["data"]["bands"][0]["ssids"][0]["stations"]);
  EXPECT_EQ(0, results[0].status);
  EXPECT_EQ("no stations\n", results[1].out);
  EXPECT_EQ("", results[1].err);
}

TEST(Stations, AListThatTheDriverRefusesIsNull) {
  const Json document = json_of("stations 2.4g", "simctl fail stations EIO ra1");
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_EQ(2u, document["data"]["bands"][0]["ssids"][0]["stations"].size());
  EXPECT_TRUE(document["data"]["bands"][0]["ssids"][1]["stations"].is_null());
}

// One station is associated: the count takes 8 bytes, and each station 40.
TEST(Stations, AListThatTheDriverCutsOffIsNoEmptyOne) {
  const std::string cut = "wlanctl: 5g: rai0 did not tell its stations (its table is cut off: it has ";
  const struct {
    int bytes;
    std::string said;
  } kRows[] = {{0, cut + "0 bytes, and the count alone takes 8); "},
               {4, cut + "4 bytes, and the count alone takes 8); "},
               {5, cut + "5 bytes, and the count alone takes 8); "},
               {8, "wlanctl: 5g: rai0 did not tell its stations (its table counts 1 station, and has none); "},
               {47, cut + "47 bytes, and counts 1 station, for which it takes 48); "}};
  Words steps;
  for (const auto& row : kRows) {
    const std::string fault = "simctl fail none; simctl fail stations cut=" + std::to_string(row.bytes) + " rai0";
    steps.push_back(fault + "; wlanctl stations 5g 1");
    steps.push_back(fault + "; wlanctl stations 5g 1 --json");
  }
  steps.push_back(
      "simctl fail none; simctl fail stations cut=48 rai0; wlanctl stations 5g 1 | tail -n 1 | cut -c 1-17");
  steps.push_back("wlanctl stations 2.4g --json");
  const std::vector<Result> results = run_steps(steps);
  for (size_t i = 0; i < std::size(kRows); ++i) {
    EXPECT_EQ(5, results[2 * i].status) << kRows[i].bytes;
    EXPECT_EQ("", results[2 * i].out) << kRows[i].bytes;
    EXPECT_THAT(results[2 * i].err, testing::HasSubstr(kRows[i].said));
    const Json document = document_in(results[2 * i + 1].out);
    EXPECT_EQ(5, document["exit_code"]);
    EXPECT_TRUE(document["data"]["bands"][0]["ssids"][0]["stations"].is_null()) << kRows[i].bytes;
  }
  EXPECT_EQ("02:5a:10:50:00:21\n", results[results.size() - 2].out);
  EXPECT_EQ(0, results.back().status);
}

TEST(Stations, WhatTheDriverDoesNotTellOfAStationIsNull) {
  const Json document = json_of("stations 5g 1", "simctl fail 11k EIO");
  EXPECT_EQ(5, document["exit_code"]);
  const Json station = document["data"]["bands"][0]["ssids"][0]["stations"][0];
  EXPECT_TRUE(station["can_11k"].is_null());
  EXPECT_EQ(1, station["features_11v"]);
}

TEST(Stations, FeaturesAreAskedOfTheFirstFourSsidsOnly) {
  const TestFolder folder;
  write_file(folder / "dat", sim_test::dat_text(5, "1;1;1;1;1", "SSID5=Five\n"));
  const Json document =
      json_of("stations 2.4g 5", "simctl station add ra4 02:aa:bb:cc:dd:01", {"--dat24", folder / "dat"});
  EXPECT_EQ(0, document["exit_code"]);
  const Json station = document["data"]["bands"][0]["ssids"][0]["stations"][0];
  EXPECT_TRUE(station["can_11k"].is_null());
  EXPECT_TRUE(station["features_11v"].is_null());
}

TEST(Stations, AnSsidThatTheBandLacksIsRefused) {
  const Json document = json_of("stations 2.4g 3");
  EXPECT_EQ(1, document["exit_code"]);
  EXPECT_EQ(3, document["problems"][0]["ssid"]);
}

TEST(Stations, AnSsidThatWaitsForAnApplyIsNotedAndNull) {
  const Json document = json_of("stations 2.4g", "wlanctl set 2.4g BssidNum=3");
  EXPECT_EQ(0, document["exit_code"]);
  EXPECT_TRUE(document["data"]["bands"][0]["ssids"][2]["stations"].is_null());
  EXPECT_EQ(1u, document["notes"].size());
}

TEST(Stations, ABandWithoutDriverIsAProblem) {
  const Json document = json_of("stations 5g", "rmmod mt7662e_ap", {"--chips", "7603,7612"});
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_EQ(1u, document["problems"].size());
  EXPECT_TRUE(document["data"]["bands"][0]["ssids"][0]["stations"].is_null());
}

TEST(Stations, ListFitsATerminalOfEightyColumns) {
  const Result result =
      run("wlanctl set 2.4g SSID:1=abcdefghijklmnopqrstuvwxyz012345 >&2; wlanctl stations 2.4g; wlanctl status");
  EXPECT_THAT(result.out, testing::HasSubstr("0x01  abcdefghijklmnopqrstuvwxyz012345\n"));
  for (const std::string& line : lines_of(result.out)) EXPECT_LE(line.size(), 80u) << line;
}

TEST(Stations, WrongWordsAreUsage) {
  const std::vector<Result> results = run_steps({"wlanctl stations 3g", "wlanctl stations 2.4g 9"});
  EXPECT_EQ(2, results[0].status);
  EXPECT_EQ(2, results[1].status);
}

}  // namespace
}  // namespace wlanctl_test

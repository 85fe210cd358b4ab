// wlanctl status: what driver and board say is on the page, as it is.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

Json band_of(const Json& document, size_t band) {
  return document["data"]["bands"][band];
}

TEST(Status, ShowsTheNumbersThatTheDriverGives) {
  const Json document = json_of("status",
                                "simctl channel 2.4G 11; simctl noise 2.4G -80; simctl load 2.4G 55; "
                                "simctl temperature 2.4G 61; simctl noise 5G -99; simctl load 5G 7");
  EXPECT_EQ(0, document["exit_code"]);
  const Json radio = band_of(document, 0);
  EXPECT_EQ("2.4g", radio["band"]);
  EXPECT_EQ("ra0", radio["interface"]);
  EXPECT_EQ("02:28:10:24:00:00", radio["address"]);
  EXPECT_EQ(11, radio["channel"]);
  EXPECT_EQ(-80, radio["noise_dbm"]);
  EXPECT_EQ(55, radio["load_percent"]);
  EXPECT_EQ(61, radio["temperature_celsius"]);
  EXPECT_EQ("5g", band_of(document, 1)["band"]);
  EXPECT_EQ(-99, band_of(document, 1)["noise_dbm"]);
  EXPECT_EQ(7, band_of(document, 1)["load_percent"]);
}

TEST(Status, ShowsTheBoard) {
  const Json board = json_of("status",
                             "simctl chip-id -3; simctl process remove all; simctl process add helper 77;"
                             "simctl process add sleeper 0 running=0")["data"]["board"];
  EXPECT_EQ("02:28:10:00:00:02", board["bridge_address"]);
  EXPECT_EQ(-3, board["chip_package"]);
  EXPECT_EQ(Json::parse(R"([{"name": "helper", "pid": 77, "running": true},
                            {"name": "sleeper", "pid": 0, "running": false}])"),
            board["processes"]);
}

TEST(Status, ShowsSsidsWithStationsWpsAndState) {
  const Json document = json_of("status",
                                "simctl station remove ra0 all; simctl station add ra1 02:aa:bb:cc:dd:01 btm=02;"
                                "simctl wps ra1 state 3 peer 02:aa:bb:cc:dd:0f; ifconfig ra0 down");
  EXPECT_EQ(0, document["exit_code"]);
  const Json ssids = band_of(document, 0)["ssids"];
  ASSERT_EQ(2u, ssids.size());
  EXPECT_EQ("down", ssids[0]["state"]);
  EXPECT_EQ(Json::array(), ssids[0]["stations"]);
  EXPECT_EQ(Json::parse(R"({"ssid": 2, "interface": "ra1", "name": "Gateway-Guest", "enabled": true, "state": "up",
                            "stations": [{"mac": "02:aa:bb:cc:dd:01", "can_11k": false, "features_11v": 2}],
                            "wps": {"state": 3, "state_name": "enrolling", "peer": "02:aa:bb:cc:dd:0f"}})"),
            ssids[1]);
}

TEST(Status, ShowsNeighbours) {
  const Json document = json_of("status", "simctl neighbour remove 5G all");
  EXPECT_EQ(3u, band_of(document, 0)["neighbours"].size());
  EXPECT_EQ(Json::array(), band_of(document, 1)["neighbours"]);
}

TEST(Status, OneRefusedRequestLeavesItsPlaceEmptyAndShowsTheRest) {
  const Json document = json_of("status", "simctl noise 2.4G -80; simctl channel 2.4G 11; simctl fail noise EIO ra0");
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_TRUE(band_of(document, 0)["noise_dbm"].is_null());
  EXPECT_EQ(11, band_of(document, 0)["channel"]);
  ASSERT_EQ(1u, document["problems"].size());
  const Json problem = document["problems"][0];
  EXPECT_EQ("2.4g", problem["band"]);
  EXPECT_EQ("ra0", problem["interface"]);
  EXPECT_EQ("its noise", problem["question"]);
  EXPECT_THAT(problem["reason"].get<std::string>(), HasSubstr("ioctl open fail"));
  EXPECT_NE("", problem["next"]);
}

TEST(Status, EachRequestThatFailsIsAProblem) {
  const std::pair<const char*, const char*> faults[] = {{"channel EIO ra0", "its channel"},
                                                        {"load EIO ra0", "its channel's load"},
                                                        {"temperature EIO ra0", "its temperature"},
                                                        {"stations EIO ra0", "its stations"},
                                                        {"wps-state EIO ra0", "the state of its WPS"},
                                                        {"neighbours EIO ra0", "its neighbours"},
                                                        {"processes EIO", "the driver's processes"}};
  Words steps;
  for (const auto& fault : faults) {
    steps.push_back(std::string("simctl fail none; simctl fail ") + fault.first + "; wlanctl status --json");
  }
  const std::vector<Result> results = run_steps(steps);
  for (size_t i = 0; i < std::size(faults); ++i) {
    SCOPED_TRACE(faults[i].first);
    EXPECT_EQ(5, results[i].status);
    const Json document = document_in(results[i].out);
    ASSERT_EQ(1u, document["problems"].size());
    EXPECT_EQ(faults[i].second, document["problems"][0]["question"]);
  }
}

TEST(Status, ASlowDriverIsNotWaitedForAgainAndAgain) {
  const std::vector<Result> results = run_steps(
      {"simctl fail noise slow=60 ra0; wlanctl status --json",
       "simctl fail none; simctl fail stations slow=60 ra0; wlanctl stations --json; echo; wlanctl stations >/dev/null",
       "simctl fail none; simctl fail channel slow=60 ra0; wlanctl doctor 2.4g --json"});
  const Json status = document_in(results[0].out);
  EXPECT_EQ(5, status["exit_code"]);
  ASSERT_EQ(1u, status["problems"].size());
  EXPECT_EQ("its noise", status["problems"][0]["question"]);
  EXPECT_EQ("2.4g", status["problems"][0]["band"]);
  EXPECT_EQ(6, band_of(status, 0)["channel"]);
  EXPECT_TRUE(band_of(status, 0)["load_percent"].is_null());
  EXPECT_TRUE(band_of(status, 0)["ssids"][1]["stations"].is_null());
  EXPECT_TRUE(band_of(status, 0)["neighbours"].is_null());
  EXPECT_EQ(1u, band_of(status, 1)["ssids"][0]["stations"].size());
  const Json stations = document_in(results[1].out.substr(0, results[1].out.find("\n\n")));
  ASSERT_EQ(1u, stations["problems"].size());
  EXPECT_TRUE(stations["data"]["bands"][0]["ssids"][1]["stations"].is_null());
  EXPECT_EQ(1u, stations["data"]["bands"][1]["ssids"][0]["stations"].size());
  EXPECT_THAT(results[1].err, HasSubstr("wlanctl: 2.4g: ra0 did not tell its stations in time: the driver got 3 s, and "
                                        "the rest of the band was not asked; try again; the kernel's log may tell "
                                        "more\n"));
  EXPECT_THAT(results[2].out, HasSubstr("\"looked_at\": \"ra0: it takes longer than 3 s\""));
}

TEST(Status, WhatTheLibraryPrintsIsNoOutputOfTheTool) {
  const std::vector<Result> results =
      run_steps({"simctl fail channel EIO; simctl fail stations EIO; wlanctl status", "wlanctl status --json"});
  EXPECT_THAT(results[0].out, Not(HasSubstr("==>")));
  EXPECT_THAT(lines_of(results[0].err), Each(testing::StartsWith("wlanctl: ")));
  EXPECT_EQ(5, document_in(results[1].out)["exit_code"]);
  EXPECT_EQ("", results[1].err);
}

TEST(Status, ABandWithoutDriverIsOneProblemAndTheOtherIsShown) {
  const Json document = json_of("status", "rmmod mt7662e_ap", {"--chips", "7603,7612"});
  EXPECT_EQ(5, document["exit_code"]);
  ASSERT_EQ(1u, document["problems"].size());
  EXPECT_EQ("5g: there is no rai0", document["problems"][0]["message"]);
  EXPECT_EQ(6, band_of(document, 0)["channel"]);
  const Json missing = band_of(document, 1);
  EXPECT_TRUE(missing["channel"].is_null());
  EXPECT_TRUE(missing["neighbours"].is_null());
  EXPECT_EQ("absent", missing["ssids"][0]["state"]);
  EXPECT_TRUE(missing["ssids"][0]["stations"].is_null());
}

TEST(Status, AnSsidThatWaitsForAnApplyIsAbsentAndNoProblem) {
  const Json document = json_of("status", "wlanctl set 2.4g BssidNum=3");
  EXPECT_EQ(0, document["exit_code"]);
  EXPECT_EQ("absent", band_of(document, 0)["ssids"][2]["state"]);
  EXPECT_TRUE(band_of(document, 0)["ssids"][2]["wps"]["state"].is_null());
}

TEST(Status, PageFitsATerminalOfEightyColumnsAndHasNoControlCharacters) {
  const Result result = run(
      "simctl neighbour add 2.4G 02:11:22:33:44:01 signal=-20 ssid=\"$(printf "
      "'a\\033[2Jb\\302\\233c\\377\\303\\274')\";"
      "simctl process add a-name-of-16-let 4294967295; simctl process add another-name-16l 4294967295; wlanctl status");
  EXPECT_EQ(0, result.status) << result.err;
  EXPECT_THAT(result.out, AllOf(Not(HasSubstr("\033")), Not(HasSubstr("\302\233")), HasSubstr("a?[2Jb??c?\303\274")));
  for (const std::string& line : lines_of(result.out)) EXPECT_LE(line.size(), 80u) << line;
}

TEST(Status, StateWithoutANameIsShownAsItsNumber) {
  const Result result = run("simctl wps ra0 state 77; wlanctl status");
  EXPECT_THAT(result.out, HasSubstr("up     77 "));
}

TEST(Status, NoStoreIsItsOwnExitCode) {
  const Json document = json_of("status", "rm /etc/Wireless/RT2860AP/RT2860AP.dat");
  EXPECT_EQ(3, document["exit_code"]);
  EXPECT_EQ(1U, document["data"]["bands"].size());
}

TEST(Status, SaysWhichRightIsMissing) {
  const Result result =
      run("library_probe init 0 >/dev/null; simctl fail channel EPERM ra0;"
          "setpriv --bounding-set -net_admin --inh-caps -net_admin wlanctl status 2.4g >/dev/null");
  EXPECT_EQ(5, result.status) << result.err;
  EXPECT_THAT(result.err, HasSubstr("its channel"));
  EXPECT_THAT(result.err, HasSubstr("run as root: the driver answers who has CAP_NET_ADMIN"));
}

// Runs a watch until it has shown two pages, then ends it by a signal.
Result watched(const std::string& words, const std::string& signal) {
  return run("library_probe init 0 init 1 >/dev/null; : >pages; wlanctl status " + words +
             " >pages 2>complaints & watch=$!\n"
             "while [ $(grep -c Gateway-Home-5G pages) -lt 2 ]; do sleep 0.05; done\n"
             "kill -" +
             signal + " $watch; wait $watch; echo $?; cat complaints >&2; cat pages");
}

TEST(Watch, RefreshesUntilItIsInterruptedAndEndsWithZero) {
  for (const char* const signal : {"INT", "TERM", "HUP"}) {
    const Result result = watched("--watch 1", signal);
    EXPECT_EQ("0", lines_of(result.out).at(0));
    EXPECT_EQ("", result.err);
    EXPECT_THAT(result.out, Not(HasSubstr("\033"))) << "clears a terminal only";
  }
}

TEST(Watch, EachPageIsADocumentOnALineOfItsOwn) {
  const Result result = watched("--watch 1 --json", "INT");
  const Words lines = lines_of(result.out);
  ASSERT_GE(lines.size(), 3u);
  for (size_t i = 1; i < lines.size(); ++i) {
    EXPECT_EQ("status", document_in(lines[i])["verb"]);
    validate_text(lines[i]);
  }
}

TEST(Watch, ShowsWhatChangesAndGoesOnAfterAFailure) {
  const Result result = run(
      ": >pages; simctl noise 2.4G -80; simctl fail noise EIO ra0; wlanctl status --watch 1 --json >pages & watch=$!\n"
      "while [ $(wc -l <pages) -lt 1 ]; do sleep 0.05; done; simctl fail none\n"
      "while ! grep -q 'noise_dbm\":-80' pages; do sleep 0.05; done; kill $watch; wait $watch; echo $? >>pages\n"
      "sed -n '1p;$p' pages");
  const Words lines = lines_of(result.out);
  ASSERT_EQ(2u, lines.size());
  EXPECT_EQ(5, document_in(lines[0])["exit_code"]);
  EXPECT_EQ("0", lines[1]);
}

TEST(Watch, ClearsATerminalBeforeEachPage) {
  const Result result =
      run(": >pages; script -qfc 'wlanctl status --watch 1' pages >/dev/null 2>&1 & recorder=$!\n"
          "while [ $(grep -c Gateway-Home-5G pages) -lt 2 ]; do sleep 0.05; done\n"
          "kill $recorder; wait $recorder; cat pages");
  EXPECT_THAT(result.out, HasSubstr("\033[H\033[2Jgateway"));
}

TEST(Watch, TakesTheBandBehindItsSeconds) {
  const Result result = watched("--watch 1 5g --json", "INT");
  EXPECT_EQ("0", lines_of(result.out).at(0));
  EXPECT_EQ("5g", band_of(document_in(lines_of(result.out).at(1)), 0)["band"]);
}

TEST(Watch, TakesOneToThreeThousandSixHundredSeconds) {
  const std::vector<Result> results =
      run_steps({"wlanctl status --watch 0", "wlanctl status --watch 3601", "wlanctl status --watch x"});
  for (const Result& result : results) {
    EXPECT_EQ(2, result.status);
    EXPECT_THAT(result.out, IsEmpty());
  }
}

}  // namespace
}  // namespace wlanctl_test

// wlanctl calibration.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

constexpr char kImage[] = "/etc/RT30xxEEPROM.bin";

std::string with_image(const std::string& chip) {
  return "simctl calibration 2.4G chip=" + chip + "; ";
}

TEST(CalibrationRead, TakesAnImageOfTheBandsChips) {
  for (const char* const chip : {"7915", "7916", "7615", "7592", "3390", "339f", "7603"}) {
    SCOPED_TRACE(chip);
    const Json document = json_of("calibration read 2.4g", with_image(chip));
    EXPECT_EQ(0, document["exit_code"]);
    EXPECT_EQ("calibration read", document["verb"]);
    EXPECT_EQ(Json({{"band", "2.4g"}, {"file", kImage}, {"taken", true}, {"chip", chip}}), document["data"]);
  }
}

TEST(CalibrationRead, KeepsTheDriversFileWhenTheImageIsForAnotherChip) {
  const std::vector<Result> results = run_steps({with_image("7915") + "wlanctl calibration read 2.4g",
                                                 with_image("7663") + "wlanctl calibration read 2.4g --json"});
  EXPECT_EQ("2.4g: /etc/RT30xxEEPROM.bin is as in flash, for chip 7915\n", results[0].out);
  const Json document = document_in(results[1].out);
  EXPECT_EQ(1, document["exit_code"]);
  EXPECT_EQ(false, document["data"]["taken"]);
  EXPECT_EQ("7915", document["data"]["chip"]) << "that of the file";
  EXPECT_THAT(document["problems"][0]["message"].get<std::string>(), HasSubstr("another chip"));
}

TEST(CalibrationRead, EachBandHasItsOwnImageAndFile) {
  const Result result =
      run("simctl calibration 5G chip=7663; wlanctl calibration read 5g --json; ls /etc/RT30xxEEPROM.bin >&2");
  EXPECT_EQ("7663", document_in(result.out)["data"]["chip"]);
  EXPECT_THAT(result.err, HasSubstr("No such file")) << "the other band's file";
}

TEST(CalibrationRead, FlashThatGivesNothingIsAProblem) {
  const std::vector<Result> results =
      run_steps({"rm /userfs/bin/mtd; wlanctl calibration read 2.4g --json",
                 "printf '#!/bin/sh\\n: >$2\\n' >/userfs/bin/mtd; chmod +x /userfs/bin/mtd;"
                 "wlanctl calibration read 2.4g --json"});
  for (const Result& result : results) {
    EXPECT_EQ(5, result.status);
    const Json document = document_in(result.out);
    EXPECT_EQ(false, document["data"]["taken"]);
    EXPECT_TRUE(document["data"]["chip"].is_null());
  }
}

TEST(CalibrationRead, FlashThatIsNotReadInTimeIsToldWithItsCommand) {
  const Result result = run("simctl fail mtd hang >/dev/null; wlanctl calibration read 2.4g --command-timeout 1");
  EXPECT_THAT(result.err, HasSubstr("flash gave no image: \"/userfs/bin/mtd readflash"));
  EXPECT_THAT(result.err, HasSubstr("did not end in time, and was ended"));
}

TEST(CalibrationWrite, AsksForYesAndWritesNothingBefore) {
  const Result result =
      run(with_image("7915") +
          "wlanctl calibration read 2.4g >/dev/null; n=$(grep -c writeflash /run/gateway-sim/journal);"
          "wlanctl calibration write 2.4g --json; status=$?;"
          "[ $(grep -c writeflash /run/gateway-sim/journal) = $n ] && exit $status");
  EXPECT_EQ(1, result.status);
  const Json document = document_in(result.out);
  EXPECT_EQ(false, document["data"]["written"]);
  EXPECT_THAT(document["problems"][0]["next"].get<std::string>(), HasSubstr("--yes"));
}

TEST(CalibrationWrite, PutsTheDriversFileIntoFlash) {
  const std::vector<Result> results =
      run_steps({with_image("7915") + "wlanctl calibration read 2.4g; simctl calibration 2.4G chip=7615;"
                                      "wlanctl calibration write 2.4g --yes --json >document; cat document",
                 std::string("rm ") + kImage + "; wlanctl calibration read 2.4g"});
  const Json document = document_in(results[0].out.substr(results[0].out.find('{')));
  EXPECT_EQ(Json({{"band", "2.4g"}, {"file", kImage}, {"written", true}, {"chip", "7915"}}), document["data"]);
  EXPECT_THAT(results[1].out, HasSubstr("chip 7915"));
}

TEST(CalibrationWrite, WithoutAnImageThereIsNothingToWrite) {
  const Json document = json_of("calibration write 5g --yes");
  EXPECT_EQ(2, document["exit_code"]);
  EXPECT_EQ(false, document["data"]["written"]);
}

TEST(CalibrationWrite, AToolThatFailsIsAProblem) {
  const Json document =
      json_of("calibration write 2.4g --yes", with_image("7915") + "wlanctl calibration read 2.4g; rm /userfs/bin/mtd");
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_EQ(false, document["data"]["written"]);
}

TEST(Calibration, WaitsForAnotherWlanctl) {
  const Json document = json_of("calibration read 2.4g --wait 0",
                                "flock /var/run/wlanctl.lock sleep 60 & while flock -n /var/run/wlanctl.lock true; do "
                                "sleep 0.05; done");
  EXPECT_EQ(4, document["exit_code"]);
}

TEST(Calibration, WrongWordsAreUsage) {
  for (const Result& result : run_steps({"wlanctl calibration", "wlanctl calibration read",
                                         "wlanctl calibration read 7g", "wlanctl calibration read 5g --yes"})) {
    EXPECT_EQ(2, result.status);
  }
}

TEST(CalibrationWrite, ThatFlashDoesNotHaveAfterwardsIsNone) {
  const std::vector<Result> steps =
      run_steps({with_image("7915") + "wlanctl calibration read 2.4g; printf x | dd of=" + kImage +
                     " bs=1 seek=9 conv=notrunc 2>/dev/null; simctl fail mtd exit=0 writeflash",
                 "wlanctl calibration write 2.4g --yes --json",
                 "simctl fail none; wlanctl calibration write 2.4g --yes", "ls /tmp | grep -v ^sim_test"});
  const Json document = document_in(steps[1].out);
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_EQ(false, document["data"]["written"]);
  EXPECT_THAT(document["problems"][0]["message"].dump(), HasSubstr("was written, but flash does not have it"));
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_EQ("", steps[3].out);
}

TEST(CalibrationRead, OfWhatAnotherCallHasLeftIsNotTaken) {
  const std::vector<Result> steps = run_steps({with_image("7915") + "wlanctl calibration read 2.4g; head -c 100 " +
                                                   kImage + " >/tmp/RT30xxEEPROM.bin; simctl fail mtd exit=1",
                                               "wlanctl calibration read 2.4g"});
  EXPECT_EQ(5, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("flash gave no image"));
}

}  // namespace
}  // namespace wlanctl_test

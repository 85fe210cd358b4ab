// The demo, as a newcomer starts it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::HasSubstr;

class Demo : public testing::Test {
 protected:
  Result result_ = shell(std::string(DEMO_SCRIPT) + " " + BUILD_FOLDER);
};

TEST_F(Demo, RunsToItsEnd) {
  EXPECT_EQ(0, result_.status);
  EXPECT_THAT(result_.out, HasSubstr("\n== Done\n"));
}

TEST_F(Demo, HasNoColourOffATerminal) {
  EXPECT_THAT(result_.out, testing::Not(HasSubstr("\033[")));
}

TEST_F(Demo, ShowsRefusalsWithTheirReasons) {
  EXPECT_THAT(result_.out, HasSubstr("The input channel is invalid.Please input from 0 to 180\n"));
  EXPECT_THAT(result_.out, HasSubstr("The WirelessMode value for 5G is invalid.\n"));
}

TEST_F(Demo, ShowsEachAnswerOfTheComparison) {
  EXPECT_THAT(result_.out, HasSubstr("before: 0:"));
  EXPECT_THAT(result_.out, HasSubstr("the answer is now 1:"));
  EXPECT_THAT(result_.out, HasSubstr("the answer is now 2:"));
}

TEST_F(Demo, ShowsTheModuleBeingReloadedAndTheNewInterfaceUp) {
  EXPECT_THAT(result_.out, HasSubstr("insmod /lib/modules/4.4.115/mt7603eap.ko"));
  EXPECT_THAT(result_.out, HasSubstr("ra2: joined br-lan"));
}

TEST_F(Demo, ShowsWhatASecondProcessSees) {
  EXPECT_THAT(result_.out, HasSubstr("2.4G  SSID 1 \"Living Room\", channel 11, beacon period 250\n"));
  EXPECT_THAT(result_.out, HasSubstr("the 2.4G dat file says BeaconPeriod=100\n"));
}

TEST_F(Demo, ShowsTheExecuteScriptAndWhatTheDriverTookUp) {
  EXPECT_THAT(result_.out, HasSubstr("  /userfs/bin/iwpriv ra2 set SSID=\"Guests\"\n"));
  EXPECT_THAT(result_.out, HasSubstr("  SSID=Guests\n"));
}

TEST_F(Demo, ShowsANarrowRestartAndTheRadioOffAndOn) {
  EXPECT_THAT(result_.out, HasSubstr("== A narrow restart of 5G"));
  EXPECT_THAT(result_.out, HasSubstr("off:\n  ra0    down"));
  EXPECT_THAT(result_.out, HasSubstr("on:\n  ra0    up"));
}

}  // namespace
}  // namespace sim_test

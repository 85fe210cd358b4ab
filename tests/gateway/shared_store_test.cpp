// One store for all processes of the simulated gateway.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation.h"

namespace sim_test {
namespace {

std::string probe(const std::string& steps) {
  return library_probe_program() + " " + steps + "; ";
}

TEST(SharedStore, AnAttachingProcessSeesWhatIsNotSaved) {
  const Result result = run_script(probe("init 0 init 1 set wifimgr_lib_set_ssid 0 1 Unsaved") +
                                   built("bin/attach_store") + "; grep ^SSID1= /etc/Wireless/RT2860AP/RT2860AP.dat");
  EXPECT_THAT(result.out, testing::HasSubstr("2.4G  SSID 1 \"Unsaved\", channel 6, beacon period 100\n"));
  EXPECT_THAT(result.out, testing::HasSubstr("\nSSID1=Gateway-Home\n"));
  EXPECT_EQ(0, result.status) << result.err;
}

TEST(SharedStore, AnInitialisingProcessDropsWhatIsNotSaved) {
  const Result result =
      run_script(probe("init 0 set wifimgr_lib_set_ssid 0 1 Unsaved") + probe("init 0 get SSID1 0 1"));
  EXPECT_EQ("init 0\nwifimgr_lib_set_ssid 0\ninit 0\nSSID1 0 Gateway-Home\n", result.out);
}

TEST(SharedStore, ASavedChangeOutlivesTheStore) {
  const Result result = run_script(probe("init 0 set wifimgr_lib_set_ssid 0 1 Saved save 0") + "reboot; " +
                                   probe("init 0 get SSID1 0 1"));
  EXPECT_EQ("init 0\nwifimgr_lib_set_ssid 0\nsave 0\ninit 0\nSSID1 0 Saved\n", result.out);
}

TEST(SharedStore, AnAttachingProcessSaysWhenThereIsNothingToAttachTo) {
  const Result result = run_script(built("bin/attach_store"));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("no store to attach to: no process has initialised the bands yet\n", result.err);
}

TEST(SharedStore, LeavesNoIpcObjectOutsideTheSimulation) {
  constexpr char kOurs[] = "ipcs | grep -c -e 0x00012345 -e 0x00012346 -e 0x00012348 -e 0x00012349";
  const std::string before = shell(kOurs).out;
  EXPECT_EQ(0, run_script(probe("init 0 init 1")).status);
  EXPECT_EQ(before, shell(kOurs).out);
}

}  // namespace
}  // namespace sim_test

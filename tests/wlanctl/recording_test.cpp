// The recording that the README shows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

TEST(Recording, IsWhatTheProgramDoes) {
  const std::string folder = source_folder() + "/wlanctl";
  const Result now = sim_test::shell("'" + folder + "/recording.sh' '" + build_folder() + "' 2>&1");
  EXPECT_EQ(read_file(folder + "/recording.txt"), now.out) << "bring it up to date: wlanctl/recording.sh built("
                                                              ") >wlanctl/recording.txt";
}

TEST(Recording, StandsInTheReadme) {
  const std::string folder = source_folder();
  EXPECT_THAT(read_file(folder + "/README.md"),
              testing::HasSubstr("```\n" + read_file(folder + "/wlanctl/recording.txt") + "```\n"));
}

}  // namespace
}  // namespace wlanctl_test

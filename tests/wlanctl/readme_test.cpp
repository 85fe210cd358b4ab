// The commands of the README that no recording shows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

TEST(Readme, HasCommandsThatWorkAsTheyStand) {
  const std::string begin = "<!-- run by readme_test -->\n```sh\n";
  const std::string text = read_file(source_folder() + "/README.md");
  const size_t first = text.find(begin);
  ASSERT_NE(std::string::npos, first);
  const size_t commands = first + begin.size();
  const std::string script = text.substr(commands, text.find("```\n", commands) - commands);
  EXPECT_THAT(script,
              testing::AllOf(testing::HasSubstr("undo"), testing::HasSubstr("import"), testing::HasSubstr("ssid add")));
  const Result result = run("set -e\n" + script + "wlanctl get 2.4g SSID:1 BssidNum\n", {"--chips", "7603,7612"});
  EXPECT_EQ(0, result.status) << result.err;
  EXPECT_THAT(result.out, testing::EndsWith("SSID:1    Gateway-Home\nBssidNum  2\n"));
}

}  // namespace
}  // namespace wlanctl_test

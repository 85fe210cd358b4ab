// The commands of the README that no recording shows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

Words commands_of_readme() {
  const std::string begin = "<!-- run by readme_test -->\n```sh\n";
  const std::string text = read_file(source_folder() + "/README.md");
  const size_t first = text.find(begin);
  if (first == std::string::npos) return {};
  const size_t commands = first + begin.size();
  return lines_of(text.substr(commands, text.find("```\n", commands) - commands));
}

// Whatever of its folder is there when one gateway has ended, the next one there finds.
Result gateway_in(const TestFolder& folder, const std::string& script) {
  Result result = sim_test::run_in(folder.path(),
                                   {"--chips", "7603,7612", "--", "sh", "-c", prelude(folder) + "set -e\n" + script});
  validate_documents(folder);
  return result;
}

TEST(Readme, HasCommandsThatTakeTheSettingsToAnotherGateway) {
  std::string in_first;
  std::string in_second;
  for (const std::string& line : commands_of_readme()) {
    const bool is_second = !in_second.empty() || line.starts_with("wlanctl import ");
    (is_second ? in_second : in_first) += line + "\n";
  }
  ASSERT_THAT(in_first, testing::AllOf(HasSubstr("undo"), HasSubstr("--output gateway.json")));
  ASSERT_THAT(in_second, testing::AllOf(HasSubstr("import gateway.json"), HasSubstr("ssid add")));

  const TestFolder folder;
  const std::string asked = "wlanctl get 2.4g SSID:1 BssidNum\n";
  const Result first = gateway_in(folder, in_first + asked);
  EXPECT_EQ(0, first.status) << first.err;
  EXPECT_THAT(first.out, testing::EndsWith("SSID:1    Gateway-Home\nBssidNum  2\n")) << "the undo";
  const Result second = gateway_in(folder, asked + in_second + asked);
  EXPECT_EQ(0, second.status) << second.err;
  EXPECT_THAT(second.out, testing::StartsWith("SSID:1    Gateway-Home\nBssidNum  2\n"));
  EXPECT_THAT(second.out, HasSubstr("Guest"));
  EXPECT_THAT(second.out, testing::EndsWith("SSID:1    Kitchen\nBssidNum  2\n"));
}

}  // namespace
}  // namespace wlanctl_test

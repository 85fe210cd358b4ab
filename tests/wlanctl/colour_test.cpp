// Colours: on a terminal, unless somebody says otherwise; never where they would be read as text.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "terminal.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr char kInit[] = "library_probe init 0 init 1 >/dev/null; wlanctl set 2.4g Channel=11 >/dev/null\n";
constexpr char kRed[] = "\033[31m";
constexpr char kGreen[] = "\033[32m";
constexpr char kYellow[] = "\033[33m";
constexpr char kOff[] = "\033[0m";

std::string without_colours(const std::string& text) {
  return std::regex_replace(text, std::regex("\033\\[[0-9]*m"), "");
}

std::string red(const std::string& text) {
  return kRed + text + kOff;
}
std::string green(const std::string& text) {
  return kGreen + text + kOff;
}

TEST(Colour, IsForATerminalThatHasThem) {
  const struct {
    const char* call;
    bool has_colours;
  } kRows[] = {
      {"wlanctl check file", true},
      {"NO_COLOR= wlanctl check file", true},
      {"NO_COLOR=1 wlanctl check file", false},
      {"TERM=dumb wlanctl check file", false},
      {"wlanctl check file | cat", false},
      {"wlanctl check file --color never", false},
      {"NO_COLOR=1 wlanctl check file --color always", true},
      {"wlanctl check file --color always | cat", true},
      {"wlanctl check file --color auto | cat", false},
      {"wlanctl check file --json --color always", false},
  };
  const TestFolder folder;
  write_file(folder / "file", "this is no setting\n");
  for (const auto& row : kRows) {
    const Result result = run_on_terminal("cd '" + folder.path() + "'; " + row.call, 1000);
    EXPECT_EQ(row.has_colours, result.out.find('\033') != std::string::npos) << row.call;
    EXPECT_THAT(result.out, HasSubstr("error")) << row.call;
  }
}

TEST(Colour, IsNoneOfThree) {
  EXPECT_EQ(2, run("wlanctl keys --color blue").status);
}

TEST(Colour, TellsOldFromNew) {
  const std::vector<Result> steps =
      run_steps({kInit, "wlanctl diff 2.4g --color always", "wlanctl apply 2.4g --dry-run --color always"});
  EXPECT_THAT(steps[1].out, HasSubstr(red("6") + " -> " + green("11")));
  EXPECT_THAT(steps[2].out,
              AllOf(HasSubstr("    " + red("-Channel=6") + "\n"), HasSubstr("    " + green("+Channel=11") + "\n")));
}

TEST(Colour, TellsHowBadAFindingIs) {
  const std::vector<Result> steps =
      run_steps({kInit + std::string("printf 'this is no setting\\nNoSuchKey=1\\n' >file; ifconfig ra1 down"),
                 "wlanctl check --band 5g file --color always", "wlanctl doctor --all --color always"});
  EXPECT_THAT(steps[1].out, AllOf(HasSubstr(": " + red("error") + ": "),
                                  HasSubstr(": " + (kYellow + std::string("warning") + kOff) + ": ")));
  EXPECT_THAT(steps[2].out, AllOf(HasSubstr(green("ok") + "       2.4g driver"),
                                  HasSubstr(kYellow + std::string("warning") + kOff + "  2.4g interface")));
}

TEST(Colour, TellsWhatIsUp) {
  const std::vector<Result> steps =
      run_steps({kInit + std::string("ifconfig ra1 down; wlanctl set 2.4g BssidNum=3 >/dev/null"),
                 "wlanctl status 2.4g --color always"});
  EXPECT_THAT(steps[1].out,
              AllOf(HasSubstr(green("up")), HasSubstr(red("down")), HasSubstr(kYellow + std::string("absent"))));
}

TEST(Colour, MovesNothing) {
  const std::vector<Result> steps = run_steps(
      {kInit + std::string("ifconfig ra1 down; simctl noise 2.4g -80; simctl load 2.4g 50; simctl temperature 2.4g 50"),
       "wlanctl diff 2.4g", "wlanctl diff 2.4g --color always", "wlanctl doctor --all",
       "wlanctl doctor --all --color always", "wlanctl status 2.4g", "wlanctl status 2.4g --color always"});
  for (size_t i = 1; i < steps.size(); i += 2) {
    EXPECT_THAT(steps[i + 1].out, HasSubstr("\033"));
    const std::regex free("[0-9]+ KB free");
    EXPECT_EQ(std::regex_replace(steps[i].out, free, ""),
              std::regex_replace(without_colours(steps[i + 1].out), free, ""));
  }
}

TEST(Colour, OfTheUsersOwnIsNotLetThrough) {
  const Result result = run(std::string(kInit) +
                            "wlanctl set 2.4g SSID:1=\"$(printf 'a\\033[31mb')\" --force >/dev/null 2>&1; wlanctl diff "
                            "2.4g --color always; wlanctl diff 2.4g");
  EXPECT_THAT(result.out, Not(HasSubstr("a\033")));
}

}  // namespace
}  // namespace wlanctl_test

// What does not fit the screen goes through a pager, on a terminal alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "terminal.h"

namespace wlanctl_test {
namespace {

using testing::Each;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// Marks what came through it.
constexpr char kMark[] = "export WLANCTL_PAGER='sed s/^/PAGED:/'; ";

TEST(Pager, ShowsWhatIsLongerThanTheScreen) {
  for (const char* const call : {"keys", "help", "--help", "apply --help", "check /nowhere/none keys; wlanctl keys"}) {
    if (std::string(call).starts_with("check")) continue;
    const Result result = run_on_terminal(std::string(kMark) + "wlanctl " + call);
    EXPECT_EQ(0, result.status);
    EXPECT_THAT(lines_of(result.out), Each(StartsWith("PAGED:"))) << call;
  }
}

TEST(Pager, IsLeftOutWhereAllIsOnTheScreen) {
  const Result result = run_on_terminal(std::string(kMark) + "wlanctl keys", 5000);
  EXPECT_THAT(result.out, testing::AllOf(HasSubstr("Channel"), Not(HasSubstr("PAGED"))));
}

TEST(Pager, CountsTheRowsThatLongLinesTake) {
  // As many lines as rows, and some of them too long for one: a path is one word.
  const TestFolder folder;
  const std::string path = folder / std::string(90, 'x');
  write_file(path, "NoSuchKey1=1\nNoSuchKey2=1\nNoSuchKey3=1\n");
  const std::string call = "wlanctl check --band 5g '" + path + "'";
  const size_t lines =
      lines_of(sim_test::shell("'" + wlanctl_program() + "' check --band 5g '" + path + "' 2>/dev/null").out).size();
  EXPECT_THAT(run_on_terminal(kMark + call, static_cast<int>(lines) + 2).out, HasSubstr("PAGED:"));
  EXPECT_THAT(run_on_terminal(kMark + call, static_cast<int>(lines) * 4).out, Not(HasSubstr("PAGED:")));
}

TEST(Pager, IsForATerminalAlone) {
  const Result result = run_on_terminal(std::string(kMark) + "wlanctl keys | cat");
  EXPECT_THAT(result.out, testing::AllOf(HasSubstr("Channel"), Not(HasSubstr("PAGED"))));
}

TEST(Pager, IsLeftOutWhenAskedAndForDocuments) {
  for (const char* const call : {"wlanctl keys --no-pager", "wlanctl keys --json", "WLANCTL_PAGER= wlanctl keys",
                                 "WLANCTL_PAGER=cat wlanctl keys"}) {
    const Result result = run_on_terminal(std::string(kMark) + call);
    EXPECT_THAT(result.out, testing::AllOf(HasSubstr("Channel"), Not(HasSubstr("PAGED")))) << call;
  }
}

TEST(Pager, IsTheToolsOwnThenTheOperatorsThenLess) {
  const TestFolder folder;
  write_file(folder / "less", "#!/bin/sh\necho less with $LESS; cat >/dev/null\n");
  const std::string path = "chmod +x '" + (folder / "less") + "'; PATH='" + folder.path() + "':$PATH; ";
  EXPECT_EQ("own\n", run_on_terminal(path + "PAGER='echo operator' WLANCTL_PAGER='echo own' wlanctl keys").out);
  EXPECT_EQ("operator\n", run_on_terminal(path + "PAGER='echo operator' wlanctl keys").out);
  EXPECT_EQ("less with FRX\n", run_on_terminal(path + "wlanctl keys").out);
  EXPECT_EQ("less with M\n", run_on_terminal(path + "LESS=M wlanctl keys").out);
}

TEST(Pager, ThatIsNotThereIsDoneWithout) {
  const Result result = run_on_terminal("WLANCTL_PAGER=/no/such/pager wlanctl keys 2>/dev/null");
  EXPECT_EQ(0, result.status);
  EXPECT_THAT(result.out, HasSubstr("Channel"));
}

TEST(Pager, LeavesTheExitCodeAlone) {
  const TestFolder folder;
  write_file(folder / "file", std::string(200, 'x') + "\nthis is no setting\nnor this\nnor this\nnor\nnor\n");
  const std::string check = "wlanctl check --band 5g '" + (folder / "file") + "'";
  EXPECT_EQ(1, run_on_terminal("WLANCTL_PAGER='cat; exit 3' " + check, 3).status);
  EXPECT_EQ(0, run_on_terminal("WLANCTL_PAGER='cat; exit 3' wlanctl keys").status);
}

TEST(Pager, ThatHasSeenEnoughIsNoFailure) {
  const Result result = run_on_terminal("WLANCTL_PAGER='head -n 1' wlanctl keys");
  EXPECT_EQ(0, result.status);
  EXPECT_EQ(1u, lines_of(result.out).size());
}

TEST(Pager, IsForVerbsThatShowMuchAndNotForThoseThatAct) {
  const Result result =
      run(std::string(kMark) + "library_probe init 0 init 1 >/dev/null\n" +
          on_terminal(std::string(kMark) + "for call in 'show 2.4g' diff dump export 'export --output f.json' doctor "
                                           "'doctor --all' 'explain AuthMode' 'set 2.4g "
                                           "Channel=11' 'save' 'log' 'status' 'apply 2.4g --dry-run'; do\n"
                                           "wlanctl $call 2>/dev/null | cat >/dev/null; echo \"== $call\"\n"
                                           "\"$WLANCTL_PROGRAM\" $call 2>/dev/null; done",
                      2));
  const std::string out = without_carriage_returns(result.out);
  for (const char* const call : {"show 2.4g", "dump", "export", "doctor", "doctor --all", "explain AuthMode", "log"}) {
    EXPECT_THAT(out, HasSubstr(std::string("== ") + call + "\nPAGED:")) << call;
  }
  for (const char* const call : {"set 2.4g Channel=11", "export --output f.json", "status", "apply 2.4g --dry-run"}) {
    EXPECT_THAT(out, Not(HasSubstr(std::string("== ") + call + "\nPAGED:"))) << call;
  }
}

}  // namespace
}  // namespace wlanctl_test

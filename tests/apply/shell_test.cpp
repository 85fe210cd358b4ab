// Command lines of the shell: compiled in, as no exported function can be made to ask for a line that is too long.
#include "store/shell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

std::string words(size_t length) {
  return std::string(length, 'w');
}

TEST(Shell, RunsTheFormattedLine) {
  seams::on_command = [](const std::string&) { return 42; };
  EXPECT_EQ(42, store::run_shell("ifconfig %s%d down", "ra", 3));
  EXPECT_THAT(seams::commands, ElementsAre("ifconfig ra3 down"));
}

TEST(Shell, RunsALineOf159Characters) {
  store::run_shell("%s %s", words(100).c_str(), words(58).c_str());
  EXPECT_THAT(seams::commands, ElementsAre(words(100) + " " + words(58)));
}

TEST(Shell, AbortsAtALineOf160CharactersAndRunsNothing) {
  seams::on_command = [](const std::string& line) {
    sandbox::write_file("/tmp/ran", line);
    return 0;
  };
  EXPECT_EXIT(store::run_shell("%s %s", words(100).c_str(), words(59).c_str()), testing::KilledBySignal(SIGABRT), "");
  EXPECT_EXIT(store::run_shell("%s", words(5000).c_str()), testing::KilledBySignal(SIGABRT), "");
  EXPECT_FALSE(sandbox::exists("/tmp/ran"));
}

}  // namespace

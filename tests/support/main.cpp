// Runs every test in a process and a sandbox of its own: the library's state is per process, and a test must find it
// fresh, whether the program is started for one of them or for all.
#include <fnmatch.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "support/sandbox.h"

namespace {

bool matches_any(const std::string& name, const std::string& patterns) {
  std::istringstream split(patterns);
  for (std::string pattern; std::getline(split, pattern, ':');) {
    if (fnmatch(pattern.c_str(), name.c_str(), 0) == 0) return true;
  }
  return false;
}

// As GoogleTest has it: patterns, and behind the first dash those of what is left out.
bool is_selected(const std::string& name, const std::string& filter) {
  const size_t dash = filter.find('-');
  const std::string wanted = filter.substr(0, dash);
  if (!wanted.empty() && !matches_any(name, wanted)) return false;
  return dash == std::string::npos || !matches_any(name, filter.substr(dash + 1));
}

std::vector<std::string> selected_tests() {
  std::vector<std::string> names;
  const testing::UnitTest& all = *testing::UnitTest::GetInstance();
  for (int i = 0; i < all.total_test_suite_count(); ++i) {
    const testing::TestSuite& suite = *all.GetTestSuite(i);
    for (int j = 0; j < suite.total_test_count(); ++j) {
      const std::string name = std::string(suite.name()) + "." + suite.GetTestInfo(j)->name();
      if (is_selected(name, GTEST_FLAG_GET(filter))) names.push_back(name);
    }
  }
  return names;
}

int run_here(const std::string& name) {
  GTEST_FLAG_SET(filter, name);
  sandbox::enter();
  return RUN_ALL_TESTS();
}

int run_each_in_a_child(const std::vector<std::string>& names) {
  std::vector<std::string> failed;
  for (const std::string& name : names) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      std::exit(run_here(name));
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) < 0 || status != 0) failed.push_back(name);
    if (!failed.empty() && GTEST_FLAG_GET(fail_fast)) break;
  }
  if (names.empty()) std::printf("no test has such a name\n");
  std::printf("==== all of them\n[  PASSED  ] %zu tests.\n", names.size() - failed.size());
  for (const std::string& name : failed) std::printf("[  FAILED  ] %s\n", name.c_str());
  return failed.empty() && !names.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  const std::vector<std::string> names = selected_tests();
  return names.size() == 1 ? run_here(names[0]) : run_each_in_a_child(names);
}

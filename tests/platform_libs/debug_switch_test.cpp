// The stand-in for the platform's debug library. This program has its own clock, so that a second passes when it says so.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "support/sandbox.h"
#include "vexa_lib_dbg.h"

namespace {

bool g_stopped = false;
timespec g_now{1000, 0};

}  // namespace

extern "C" int clock_gettime(clockid_t clock, timespec* now) noexcept {
  if (g_stopped && clock == CLOCK_MONOTONIC) {
    *now = g_now;
    return 0;
  }
  return static_cast<int>(syscall(SYS_clock_gettime, clock, now));
}

namespace {

constexpr char kEnableFile[] = "/tmp/wifi_lib_dbg_enable";
constexpr char kLevelFile[] = "/tmp/vexalib_dbg";

// The clock stands still while this lives, and the first look at the files is still to come.
class StoppedClock : public testing::Test {
 protected:
  StoppedClock() { g_stopped = true; }
  ~StoppedClock() override { g_stopped = false; }
  static void pass_a_second() { g_now.tv_sec += 1; }
};

using DebugSwitch = StoppedClock;

bool is_on(int level) {
  return get_itf_dbg_switch(level, 6) != 0;
}

// What is written on standard error while `run` runs, one text for each write.
template <typename Run>
std::vector<std::string> writes_of(Run run) {
  int ends[2];
  EXPECT_EQ(0, socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends));
  const int saved = dup(STDERR_FILENO);
  dup2(ends[1], STDERR_FILENO);
  run();
  dup2(saved, STDERR_FILENO);
  close(saved);
  close(ends[1]);
  std::vector<std::string> writes;
  char text[8192];
  for (ssize_t n; (n = read(ends[0], text, sizeof text)) > 0;) writes.emplace_back(text, static_cast<size_t>(n));
  close(ends[0]);
  return writes;
}

TEST_F(DebugSwitch, IsOffWithoutItsFile) {
  for (int level : {0, 1, 8}) EXPECT_FALSE(is_on(level)) << level;
}

TEST_F(DebugSwitch, IsOnForErrorsWithoutALevel) {
  sandbox::write_file(kEnableFile, "1\n");
  EXPECT_TRUE(is_on(1));
  EXPECT_FALSE(is_on(2));
  EXPECT_FALSE(is_on(8));
}

TEST_F(DebugSwitch, IsOnUpToTheLevel) {
  sandbox::write_file(kEnableFile, "1\n");
  const struct {
    const char* text;
    int highest;
  } rows[] = {{"8", 8}, {"8\n", 8}, {"1", 1}, {"5", 5}, {"12", 12}, {"0", 0}, {"", 0}, {"none", 0}, {"-3", 0}};
  for (const auto& row : rows) {
    sandbox::write_file(kLevelFile, row.text);
    pass_a_second();
    for (int level = 1; level <= 12; ++level) EXPECT_EQ(level <= row.highest, is_on(level)) << row.text << " " << level;
  }
}

TEST_F(DebugSwitch, WantsItsFileToBeginWithOne) {
  sandbox::write_file(kLevelFile, "8");
  const struct {
    std::string text;
    bool on;
  } rows[] = {{"1", true},    {std::string("1\n\0\0\0", 5), true},
              {"1x", true},   {"0", false},
              {"", false},    {" 1", false},
              {"\n1", false}, {"2", false}};
  for (const auto& row : rows) {
    sandbox::write_file(kEnableFile, row.text);
    pass_a_second();
    EXPECT_EQ(row.on, is_on(1)) << row.text;
  }
}

TEST_F(DebugSwitch, IsTheSameForEveryModule) {
  sandbox::write_file(kEnableFile, "1");
  for (int module : {0, 6, 99, -1}) EXPECT_NE(0, get_itf_dbg_switch(1, module)) << module;
}

TEST_F(DebugSwitch, UnderstandsWhatTheLibraryWrites) {
  writes_of([] { EXPECT_EQ(0, wifimgr_lib_set_dbg_level("8")); });
  pass_a_second();
  EXPECT_TRUE(is_on(8));
  writes_of([] { EXPECT_EQ(0, wifimgr_lib_set_dbg_level("1")); });
  pass_a_second();
  EXPECT_TRUE(is_on(1));
  EXPECT_FALSE(is_on(8));
}

TEST_F(DebugSwitch, LooksAtItsFilesOnceASecond) {
  EXPECT_FALSE(is_on(1));
  sandbox::write_file(kEnableFile, "1");
  EXPECT_FALSE(is_on(1));
  g_now.tv_nsec += 999999999;
  EXPECT_FALSE(is_on(1));
  g_now.tv_nsec = 0;
  pass_a_second();
  EXPECT_TRUE(is_on(1));
  unlink(kEnableFile);
  EXPECT_TRUE(is_on(1));
  pass_a_second();
  EXPECT_FALSE(is_on(1));
}

TEST_F(DebugSwitch, IsOffWhenItsFileIsADirectory) {
  ASSERT_EQ(0, mkdir(kEnableFile, 0755));
  EXPECT_FALSE(is_on(1));
}

TEST(DebugPrint, IsOneWriteOnStandardError) {
  int printed = 0;
  const std::vector<std::string> writes =
      writes_of([&] { printed = vexa_itf_printf("[%s]:===%s===%d\n", "read_attr", "Enter", 7); });
  EXPECT_EQ(std::vector<std::string>{"[read_attr]:===Enter===7\n"}, writes);
  EXPECT_EQ(static_cast<int>(writes[0].size()), printed);
}

TEST(DebugPrint, OfSeveralLinesIsAWriteEach) {
  EXPECT_EQ((std::vector<std::string>{"one\n", "two"}), writes_of([] {
              vexa_itf_printf("one\n");
              vexa_itf_printf("two");
            }));
}

TEST(DebugPrint, CutsAnEndlessLineAndEndsIt) {
  for (size_t length : {4094U, 4095U}) {
    const std::string text(length, 'x');
    EXPECT_EQ(std::vector<std::string>{text}, writes_of([&] { vexa_itf_printf("%s", text.c_str()); })) << length;
  }
  for (size_t length : {4096U, 100000U}) {
    const std::string text(length, 'x');
    EXPECT_EQ(std::vector<std::string>{std::string(4094, 'x') + "\n"},
              writes_of([&] { vexa_itf_printf("%s", text.c_str()); }))
        << length;
  }
}

TEST(DebugPrint, LeavesStandardOutputAlone) {
  std::string printed;
  writes_of([&] { printed = sandbox::stdout_of([] { vexa_itf_printf("message\n"); }); });
  EXPECT_EQ("", printed);
}

TEST(DebugPrint, SaysWhenStandardErrorIsClosed) {
  const int saved = dup(STDERR_FILENO);
  close(STDERR_FILENO);
  const int result = vexa_itf_printf("message\n");
  dup2(saved, STDERR_FILENO);
  close(saved);
  EXPECT_LT(result, 0);
}

}  // namespace

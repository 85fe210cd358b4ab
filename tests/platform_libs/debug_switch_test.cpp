// The stand-in for the platform's debug library. This program has its own clock, so that a second passes when it says so.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include "support/sandbox.h"
#include "vexa_lib_dbg.h"

namespace {

bool g_stopped = false;
timespec g_now{1000, 0};

}  // namespace

extern "C" int clock_gettime(clockid_t clock, timespec* now) noexcept {
  if (g_stopped && (clock == CLOCK_MONOTONIC || clock == CLOCK_MONOTONIC_COARSE)) {
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

TEST_F(DebugSwitch, WaitsForNoPipeThatSomebodyPlanted) {
  ASSERT_EQ(0, mkfifo(kEnableFile, 0666));
  EXPECT_FALSE(is_on(1));
  ASSERT_EQ(0, unlink(kEnableFile));
  sandbox::write_file(kEnableFile, "1");
  ASSERT_EQ(0, mkfifo(kLevelFile, 0666));
  pass_a_second();
  is_on(1);
}

TEST_F(DebugSwitch, FollowsNoLinkThatSomebodyPlanted) {
  sandbox::write_file("/tmp/elsewhere", "1");
  ASSERT_EQ(0, symlink("/tmp/elsewhere", kEnableFile));
  EXPECT_FALSE(is_on(1));
}

// Standard error while this lives: the descriptor, which it takes over.
class StandardError {
 public:
  explicit StandardError(int descriptor) : saved_(dup(STDERR_FILENO)) {
    dup2(descriptor, STDERR_FILENO);
    close(descriptor);
  }
  StandardError(const StandardError&) = delete;
  StandardError& operator=(const StandardError&) = delete;
  ~StandardError() {
    dup2(saved_, STDERR_FILENO);
    close(saved_);
  }

 private:
  int saved_;
};

size_t fill(int pipe_end) {
  const int own = open(("/proc/self/fd/" + std::to_string(pipe_end)).c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  const std::string block(4096, 'x');
  size_t filled = 0;
  for (ssize_t n; (n = write(own, block.data(), block.size())) > 0;) filled += static_cast<size_t>(n);
  close(own);
  return filled;
}

TEST(DebugPrint, DropsALineWhenThePipeIsFull) {
  int ends[2];
  ASSERT_EQ(0, pipe(ends));
  const size_t filled = fill(ends[1]);
  {
    const StandardError standard_error(ends[1]);
    EXPECT_LT(vexa_itf_printf("lost\n"), 0);
    EXPECT_EQ(0, fcntl(STDERR_FILENO, F_GETFL) & O_NONBLOCK) << "others share the flag";
    std::string drained(filled, '\0');
    for (size_t at = 0; at < filled;) at += static_cast<size_t>(read(ends[0], drained.data() + at, filled - at));
    EXPECT_EQ(5, vexa_itf_printf("kept\n"));
  }
  char text[16] = "";
  EXPECT_EQ(5, read(ends[0], text, sizeof text));
  EXPECT_STREQ("kept\n", text);
  close(ends[0]);
}

TEST(DebugPrint, DropsALineWhenTheSocketIsFull) {
  for (const int type : {SOCK_STREAM, SOCK_DGRAM, SOCK_SEQPACKET}) {
    int ends[2];
    ASSERT_EQ(0, socketpair(AF_UNIX, type, 0, ends));
    while (send(ends[1], "xxxxxxxx", 8, MSG_DONTWAIT) > 0) continue;
    const StandardError standard_error(ends[1]);
    EXPECT_LT(vexa_itf_printf("lost\n"), 0);
    close(ends[0]);
  }
}

TEST(DebugPrint, RaisesNoSignalWhenNobodyReads) {
  int ends[2];
  ASSERT_EQ(0, pipe(ends));
  close(ends[0]);
  {
    const StandardError standard_error(ends[1]);
    EXPECT_LT(vexa_itf_printf("lost\n"), 0);
  }
  ASSERT_EQ(0, socketpair(AF_UNIX, SOCK_STREAM, 0, ends));
  close(ends[0]);
  {
    const StandardError standard_error(ends[1]);
    EXPECT_LT(vexa_itf_printf("lost\n"), 0);
  }
  sigset_t pending;
  ASSERT_EQ(0, sigpending(&pending));
  EXPECT_EQ(0, sigismember(&pending, SIGPIPE));
}

TEST(DebugPrint, RaisesNoSignalAtTheLimitOfItsFile) {
  const rlimit limit{4, RLIM_INFINITY};
  const int file = open("/tmp/log", O_WRONLY | O_CREAT, 0644);
  ASSERT_GE(file, 0);
  const StandardError standard_error(file);
  ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &limit));
  EXPECT_EQ(4, vexa_itf_printf("12345\n"));
  EXPECT_LT(vexa_itf_printf("lost\n"), 0);
}

TEST(DebugPrint, KeepsASignalThatWaitedBefore) {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGPIPE);
  ASSERT_EQ(0, pthread_sigmask(SIG_BLOCK, &set, nullptr));
  ASSERT_EQ(0, raise(SIGPIPE));
  writes_of([] { vexa_itf_printf("message\n"); });
  sigset_t pending;
  ASSERT_EQ(0, sigpending(&pending));
  EXPECT_EQ(1, sigismember(&pending, SIGPIPE));
  ASSERT_EQ(0, pthread_sigmask(SIG_BLOCK, nullptr, &set));
  EXPECT_EQ(1, sigismember(&set, SIGPIPE));
  EXPECT_EQ(0, sigismember(&set, SIGXFSZ));
}

TEST_F(DebugSwitch, WritesIntoNoDatFileThatHasTheNumberOfStandardError) {
  sandbox::load(0, "Default\nBssidNum=1\nChannel=6\n");
  sandbox::write_file(kEnableFile, "1");
  sandbox::write_file(kLevelFile, "8");
  pass_a_second();
  const int saved = dup(STDERR_FILENO);
  close(STDERR_FILENO);
  const int saved_result = wifimgr_lib_save_dataFile(0);
  const int loaded_result = creat_shm_from_datafile(0);
  dup2(saved, STDERR_FILENO);
  close(saved);
  EXPECT_EQ(0, saved_result);
  EXPECT_EQ(0, loaded_result);
  EXPECT_EQ("Default\nBssidNum=1\nChannel=6\n", sandbox::read_file(sandbox::dat_path(0)));
}

TEST(DebugPrint, LeavesTheErrorNumberAlone) {
  const int saved = dup(STDERR_FILENO);
  close(STDERR_FILENO);
  errno = EXDEV;
  vexa_itf_printf("message\n");
  const int after = errno;
  dup2(saved, STDERR_FILENO);
  close(saved);
  EXPECT_EQ(EXDEV, after);
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

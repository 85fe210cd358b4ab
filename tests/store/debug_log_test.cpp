// The debug switches and the kernel's debug log.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

constexpr char kEnableFile[] = "/tmp/wifi_lib_dbg_enable";
constexpr char kLevelFile[] = "/tmp/vexalib_dbg";
constexpr char kKernelLog[] = "/proc/zq2810/dbg_msg";
const std::string kEnabled("1\n\0\0\0", 5);

// The gateway's folder under /proc, for as long as this lives.
class GatewayProc {
 public:
  GatewayProc() {
    EXPECT_EQ(0, mount("tmpfs", "/proc", "tmpfs", 0, nullptr));
    EXPECT_EQ(0, mkdir("/proc/zq2810", 0755));
  }
  ~GatewayProc() { umount("/proc"); }
};

TEST(DebugLevel, WritesBothFiles) {
  for (const char* level : {"8", "1", "anything at all\n", ""}) {
    EXPECT_EQ(0, wifimgr_lib_set_dbg_level(level));
    EXPECT_EQ(kEnabled, sandbox::read_file(kEnableFile));
    EXPECT_EQ(level, sandbox::read_file(kLevelFile));
  }
}

TEST(DebugLevel, MakesFilesThatTheUmaskNarrows) {
  const mode_t before = umask(0);
  EXPECT_EQ(0, wifimgr_lib_set_dbg_level("8"));
  (void)umask(before);
  for (const char* path : {kEnableFile, kLevelFile}) {
    struct stat status;
    ASSERT_EQ(0, stat(path, &status));
    EXPECT_EQ(0666U, status.st_mode & 0777U) << path;
  }
}

TEST(DebugLevel, ReplacesWhatTheFilesHeld) {
  sandbox::write_file(kEnableFile, std::string(100, 'x'));
  sandbox::write_file(kLevelFile, std::string(100, 'x'));
  EXPECT_EQ(0, wifimgr_lib_set_dbg_level("8"));
  EXPECT_EQ(kEnabled, sandbox::read_file(kEnableFile));
  EXPECT_EQ("8", sandbox::read_file(kLevelFile));
}

TEST(DebugLevel, OfNullEnablesAndFails) {
  EXPECT_THAT(
      seams::trace_of([] { EXPECT_EQ(1, wifimgr_lib_set_dbg_level(nullptr)); }),
      ElementsAre("[wifimgr_lib_set_dbg_level]:===Enter===\n", "[wifimgr_lib_set_dbg_level]:===Fail Exit===\n"));
  EXPECT_EQ(kEnabled, sandbox::read_file(kEnableFile));
  EXPECT_FALSE(sandbox::exists(kLevelFile));
}

TEST(DebugLevel, FailsAtOnceWhenTheEnableFileCannotBeOpened) {
  ASSERT_EQ(0, mkdir(kEnableFile, 0755));
  EXPECT_EQ(1, wifimgr_lib_set_dbg_level("8"));
  EXPECT_FALSE(sandbox::exists(kLevelFile));
}

TEST(DebugLevel, IgnoresALevelFileThatCannotBeOpened) {
  ASSERT_EQ(0, mkdir(kLevelFile, 0755));
  EXPECT_THAT(
      seams::trace_of([] { EXPECT_EQ(0, wifimgr_lib_set_dbg_level("8")); }),
      ElementsAre("[wifimgr_lib_set_dbg_level]:===Enter===\n", "[wifimgr_lib_set_dbg_level]:===Success Exit===\n"));
  EXPECT_EQ(kEnabled, sandbox::read_file(kEnableFile));
}

TEST(DebugLevel, FollowsNoLinkThatSomebodyPlanted) {
  sandbox::write_file("/tmp/victim", "kept");
  ASSERT_EQ(0, symlink("/tmp/victim", kLevelFile));
  EXPECT_EQ(0, wifimgr_lib_set_dbg_level("8"));
  EXPECT_EQ("kept", sandbox::read_file("/tmp/victim"));
  ASSERT_EQ(0, unlink(kEnableFile));
  for (const char* target : {"/tmp/victim", "/tmp/none"}) {
    ASSERT_EQ(0, symlink(target, kEnableFile));
    EXPECT_EQ(1, wifimgr_lib_set_dbg_level("8"));
    ASSERT_EQ(0, unlink(kEnableFile));
  }
  EXPECT_EQ("kept", sandbox::read_file("/tmp/victim"));
  EXPECT_FALSE(sandbox::exists("/tmp/none"));
}

TEST(DebugLevel, IsWrittenInAProcessWithoutStandardInput) {
  close(STDIN_FILENO);
  EXPECT_EQ(0, wifimgr_lib_set_dbg_level("8"));
  EXPECT_EQ(kEnabled, sandbox::read_file(kEnableFile));
  EXPECT_EQ("8", sandbox::read_file(kLevelFile));
}

TEST(DebugLevel, FailsWhenAFileCannotBeWrittenToItsEnd) {
  seams::limit_file_size(4);
  EXPECT_EQ(1, wifimgr_lib_set_dbg_level("8"));
  EXPECT_FALSE(sandbox::exists(kLevelFile));
  seams::limit_file_size(5);
  EXPECT_EQ(0, wifimgr_lib_set_dbg_level("12345"));
  EXPECT_EQ(1, wifimgr_lib_set_dbg_level("123456"));
}

TEST(KernelLog, TakesTheFormattedMessage) {
  std::string text;
  {
    GatewayProc proc;
    zqdbg_blapi_printf("%s %d%%\n", "channel", 36);
    text = sandbox::read_file(kKernelLog);
  }
  EXPECT_EQ("channel 36%\n", text);
}

TEST(KernelLog, IsOpenedAnewForEachMessage) {
  std::string text;
  {
    GatewayProc proc;
    zqdbg_blapi_printf("a longer first message");
    zqdbg_blapi_printf("second");
    text = sandbox::read_file(kKernelLog);
  }
  EXPECT_EQ("second", text);
}

TEST(KernelLog, CutsAMessageTo255Characters) {
  for (size_t length : {254U, 255U, 256U, 1000U}) {
    std::string text;
    {
      GatewayProc proc;
      zqdbg_blapi_printf("%s", std::string(length, 'm').c_str());
      text = sandbox::read_file(kKernelLog);
    }
    EXPECT_EQ(std::string(std::min<size_t>(length, 255), 'm'), text);
  }
}

TEST(KernelLog, SaysOnStandardOutputThatItCannotBeOpened) {
  EXPECT_EQ("open /proc/zq2810/dbg_msg fail\n", sandbox::stdout_of([] { zqdbg_blapi_printf("message %d", 1); }));
}

TEST(KernelLog, TakesAnEmptyMessageToo) {
  const char* const empty = "";
  EXPECT_EQ("open /proc/zq2810/dbg_msg fail\n", sandbox::stdout_of([=] { zqdbg_blapi_printf(empty); }));
}

TEST(KernelLog, PrintsNothingElse) {
  std::string printed;
  {
    GatewayProc proc;
    printed = sandbox::stdout_of([] { zqdbg_blapi_printf("message"); });
  }
  EXPECT_EQ("", printed);
}

TEST(KernelLog, IgnoresANullFormat) {
  const char* const none = nullptr;
  EXPECT_EQ("", sandbox::stdout_of([=] { zqdbg_blapi_printf(none); }));
}

TEST(CommandFile, TakesTheTextInPlaceOfWhatItHeld) {
  const std::string path = "/tmp/command";
  for (const char* text : {"a long text\n", "short", ""}) {
    EXPECT_EQ(0, doCmdWrite(path.c_str(), text));
    EXPECT_EQ(text, sandbox::read_file(path));
  }
}

TEST(CommandFile, ThatCannotBeOpenedGivesMinusOne) {
  EXPECT_EQ(-1, doCmdWrite("/tmp/none/command", "text"));
  EXPECT_EQ(-1, doCmdWrite("/tmp", "text"));
}

TEST(KernelLog, SaysNothingOfAMessageThatTheKernelRefuses) {
  std::string printed;
  {
    GatewayProc proc;
    seams::limit_file_size(3);
    printed = sandbox::stdout_of([] { zqdbg_blapi_printf("message"); });
    seams::limit_file_size(RLIM_INFINITY);
  }
  EXPECT_EQ("", printed);
}

TEST(CommandFile, ThatCannotBeWrittenToItsEndGivesMinusOne) {
  seams::limit_file_size(4);
  EXPECT_EQ(0, doCmdWrite("/tmp/command", "1234"));
  EXPECT_EQ(-1, doCmdWrite("/tmp/command", "12345"));
  EXPECT_EQ(-1, doCmdWrite("/tmp/command", std::string(100000, 'x').c_str()));
}

TEST(CommandFile, NullIsAFailureThatTouchesNothing) {
  sandbox::write_file("/tmp/command", "old");
  EXPECT_EQ(-1, doCmdWrite("/tmp/command", nullptr));
  EXPECT_EQ(-1, doCmdWrite(nullptr, "text"));
  EXPECT_EQ("old", sandbox::read_file("/tmp/command"));
}

}  // namespace

// The board's files, written as they are.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <string>

#include "platform/board.h"
#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Writer {
  const char* function;
  int (*set)(const char* text);
  const char* file;
};

const Writer kWriters[] = {
    {"wifimgr_lib_set_WPS_BUTTON", wifimgr_lib_set_WPS_BUTTON, "wps_button"},
    {"wifimgr_lib_set_WPS_5G_BUTTON", wifimgr_lib_set_WPS_5G_BUTTON, "wps_5g_button"},
    {"wifimgr_lib_set_AHB_STATUS", wifimgr_lib_set_AHB_STATUS, "ahb_status"},
    {"wifimgr_lib_set_WLAN_WPS_BUTTON", wifimgr_lib_set_WLAN_WPS_BUTTON, "wlan_wps_button"},
};

std::string entered(const std::string& function) {
  return "[" + function + "]:===Enter===\n";
}
std::string succeeded(const std::string& function) {
  return "[" + function + "]:===Success Exit===\n";
}
void for_each_writer(const std::function<void(const Writer&)>& check) {
  board::use_own_proc();
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.function);
    check(writer);
  }
}

TEST(BoardWriter, WritesTheTextAsItIs) {
  for_each_writer([](const Writer& writer) {
    for (const std::string text : {"1", "1\n", "\n", "", "on off", "%s%n%d", "\xff\x01", "$(x) `y` \"z\" > '"}) {
      SCOPED_TRACE(text);
      board::put_all();
      EXPECT_EQ(0, writer.set(text.c_str()));
      EXPECT_EQ(text, sandbox::read_file(board::path(writer.file)));
    }
  });
}

TEST(BoardWriter, WritesATextOfAnyLength) {
  for_each_writer([](const Writer& writer) {
    const std::string text(20000, 'w');
    EXPECT_EQ(0, writer.set(text.c_str()));
    EXPECT_EQ(text, sandbox::read_file(board::path(writer.file)));
  });
}

TEST(BoardWriter, LeavesNothingOfWhatWasThere) {
  for_each_writer([](const Writer& writer) {
    board::put(writer.file, "a long old text\n");
    EXPECT_EQ(0, writer.set("1"));
    EXPECT_EQ("1", sandbox::read_file(board::path(writer.file)));
  });
}

TEST(BoardWriter, ChangesNoOtherFile) {
  for_each_writer([](const Writer& writer) {
    board::put_all();
    auto expected = board::all_files();
    for (std::string& file : expected) {
      if (file == std::string(writer.file) + "=" + writer.file) file = std::string(writer.file) + "=new";
    }
    EXPECT_EQ(0, writer.set("new"));
    EXPECT_EQ(expected, board::all_files());
    EXPECT_THAT(seams::commands, IsEmpty());
  });
}

TEST(BoardWriter, SucceedsWhenTheFileCannotBeOpened) {
  for_each_writer([](const Writer& writer) {
    ASSERT_EQ(0, mkdir(board::path(writer.file).c_str(), 0755));
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(0, writer.set("1")); }),
                ElementsAre(entered(writer.function), succeeded(writer.function)));
    ASSERT_EQ(0, rmdir(board::path(writer.file).c_str()));
  });
  ASSERT_EQ(0, rmdir("/proc/zq2810"));
  for (const Writer& writer : kWriters) EXPECT_EQ(0, writer.set("1"));
  EXPECT_FALSE(sandbox::exists("/proc/zq2810"));
}

TEST(BoardWriter, LeavesTheFileAloneForANullText) {
  for_each_writer([](const Writer& writer) {
    board::put(writer.file, "old");
    EXPECT_EQ(0, writer.set(nullptr));
    EXPECT_EQ("old", sandbox::read_file(board::path(writer.file)));
  });
}

TEST(BoardWriter, TracesEntryAndSuccess) {
  for_each_writer([](const Writer& writer) {
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(0, writer.set("1")); }),
                ElementsAre(entered(writer.function), succeeded(writer.function)));
  });
}

TEST(BoardWriter, LeavesNoDescriptorOpen) {
  for_each_writer([](const Writer& writer) {
    const int open = requests::open_descriptors();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(0, writer.set("1"));
    EXPECT_EQ(open, requests::open_descriptors());
  });
}

}  // namespace

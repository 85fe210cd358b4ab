// The state of a button, in the two ways of asking for it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <string>

#include "platform/board.h"
#include "platform/caller_buffer.h"
#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using board::Buffer;
using board::read_into;
using testing::ElementsAre;

constexpr char kData[] = "/tmp/data";
constexpr char kEmpty[] = "/tmp/empty";
constexpr char kFolder[] = "/tmp/folder";
constexpr char kPipe[] = "/tmp/pipe";
constexpr char kMissing[] = "/tmp/missing";

constexpr int kSize = 10;

void put_paths() {
  sandbox::write_file(kData, "down\n");
  sandbox::write_file(kEmpty, "");
  ASSERT_EQ(0, mkdir(kFolder, 0755));
  board::put_silent_pipe(kPipe);
}

struct Row {
  int mode;
  const char* path;
  int result;
  const char* read;  // null when the buffer stays untouched
};

const Row kRows[] = {
    {0, kData, 2, "down\n"}, {0, kEmpty, 0, ""}, {0, kFolder, 2, ""},  {0, kPipe, 2, ""},  {0, kMissing, -2, nullptr},
    {1, kData, 5, "down\n"}, {1, kEmpty, 0, ""}, {1, kFolder, -1, ""}, {1, kPipe, -1, ""}, {1, kMissing, -1, nullptr},
};

const int kOtherModes[] = {-1, 2, 3, 256, INT_MAX, INT_MIN};

TEST(ButtonState, ThatCannotBeReadIsAFailureInModeOneAlone) {
  put_paths();
  Buffer buffer;
  EXPECT_THAT(
      seams::trace_of([&] { wifimgr_lib_get_button_state(1, kFolder, buffer.bytes, kSize); }),
      ElementsAre("[wifimgr_lib_get_button_state]:===Enter===\n", "[wifimgr_lib_get_button_state]:===Fail Exit===\n"));
  EXPECT_THAT(seams::trace_of([&] { wifimgr_lib_get_button_state(0, kFolder, buffer.bytes, kSize); }),
              ElementsAre("[wifimgr_lib_get_button_state]:===Enter===\n",
                          "[wifimgr_lib_get_button_state]:===Success Exit===\n"));
}

TEST(ButtonState, TellsWhatTheFileHolds) {
  put_paths();
  for (const Row& row : kRows) {
    SCOPED_TRACE(std::string(row.path) + " in mode " + std::to_string(row.mode));
    Buffer buffer;
    EXPECT_EQ(row.result, wifimgr_lib_get_button_state(row.mode, row.path, buffer.bytes, kSize));
    EXPECT_EQ(row.read == nullptr ? Buffer::with("") : read_into(kSize, row.read), buffer.all());
  }
}

TEST(ButtonState, RefusesAnyOtherModeWithoutReading) {
  put_paths();
  for (const int mode : kOtherModes) {
    for (const char* const path : {kData, kEmpty, kFolder, kPipe, kMissing}) {
      SCOPED_TRACE(std::string(path) + " in mode " + std::to_string(mode));
      Buffer buffer;
      EXPECT_EQ(-2, wifimgr_lib_get_button_state(mode, path, buffer.bytes, kSize));
      EXPECT_TRUE(buffer.is_untouched());
    }
  }
}

TEST(ButtonState, ReadsUpToTheSizeAndEndsTheBufferInItsLastByte) {
  put_paths();
  for (const int size : {1, 2, 4, 5, 6, 64}) {
    SCOPED_TRACE(size);
    for (const int mode : {0, 1}) {
      Buffer buffer;
      EXPECT_EQ(mode == 0 ? 2 : std::min(size, 5), wifimgr_lib_get_button_state(mode, kData, buffer.bytes, size));
      EXPECT_EQ(read_into(static_cast<size_t>(size), "down\n"), buffer.all());
    }
  }
}

TEST(ButtonState, ReadsNothingForASizeOf0OrLess) {
  put_paths();
  for (const int size : {0, -1, INT_MIN}) {
    SCOPED_TRACE(size);
    for (const int mode : {0, 1}) {
      Buffer buffer;
      EXPECT_EQ(0, wifimgr_lib_get_button_state(mode, kData, buffer.bytes + 1, size));
      EXPECT_TRUE(buffer.is_untouched());
    }
  }
}

TEST(ButtonState, TakesANullPointerForAMissingFile) {
  put_paths();
  Buffer buffer;
  EXPECT_EQ(-2, wifimgr_lib_get_button_state(0, nullptr, buffer.bytes, kSize));
  EXPECT_EQ(-1, wifimgr_lib_get_button_state(1, nullptr, buffer.bytes, kSize));
  EXPECT_EQ(-2, wifimgr_lib_get_button_state(0, kData, nullptr, kSize));
  EXPECT_EQ(-1, wifimgr_lib_get_button_state(1, kData, nullptr, kSize));
  EXPECT_EQ(-2, wifimgr_lib_get_button_state(2, nullptr, nullptr, kSize));
  EXPECT_TRUE(buffer.is_untouched());
}

TEST(ButtonState, TracesEntryAndExit) {
  put_paths();
  const std::string entered = "[wifimgr_lib_get_button_state]:===Enter===\n";
  const std::string succeeded = "[wifimgr_lib_get_button_state]:===Success Exit===\n";
  const std::string failed = "[wifimgr_lib_get_button_state]:===Fail Exit===\n";
  char buffer[kSize];
  for (const int mode : {0, 1}) {
    EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_button_state(mode, kData, buffer, kSize); }),
                ElementsAre(entered, succeeded));
    EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_button_state(mode, kMissing, buffer, kSize); }),
                ElementsAre(entered, failed));
  }
  EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_button_state(2, kData, buffer, kSize); }),
              ElementsAre(entered, failed));
}

TEST(ButtonState, LeavesNoDescriptorOpen) {
  put_paths();
  const int open = requests::open_descriptors();
  char buffer[kSize];
  for (const Row& row : kRows) (void)wifimgr_lib_get_button_state(row.mode, row.path, buffer, kSize);
  EXPECT_EQ(open, requests::open_descriptors());
}

TEST(ButtonState, IsReadInAProcessWithoutStandardInput) {
  sandbox::write_file(kData, "on");
  close(STDIN_FILENO);
  char text[8] = "";
  EXPECT_EQ(2, wifimgr_lib_get_button_state(1, kData, text, sizeof text));
  EXPECT_STREQ("on", text);
}

}  // namespace

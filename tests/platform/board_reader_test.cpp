// The board's files, read as they are.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <climits>
#include <functional>
#include <string>

#include "platform/board.h"
#include "platform/caller_buffer.h"
#include "support/requests.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using board::Buffer;
using board::read_into;
using testing::ElementsAre;

constexpr uint32_t kUntouched = 0x5a5a5a5aU;

struct Reader {
  const char* function;
  int (*get)(char* buffer, int size, uint32_t* count);
  const char* file;
};

const Reader kReaders[] = {
    {"wifimgr_lib_get_WPS_BUTTON", wifimgr_lib_get_WPS_BUTTON, "wps_button"},
    {"wifimgr_lib_get_AHB_STATUS", wifimgr_lib_get_AHB_STATUS, "ahb_status"},
    {"wifimgr_lib_get_WLAN11AC_BUTTON", wifimgr_lib_get_WLAN11AC_BUTTON, "wlan11ac_button"},
};

std::string entered(const std::string& function) {
  return "[" + function + "]:===Enter===\n";
}
std::string succeeded(const std::string& function) {
  return "[" + function + "]:===Success Exit===\n";
}
std::string failed(const std::string& function) {
  return "[" + function + "]:===Fail Exit===\n";
}

void for_each_reader(const std::function<void(const Reader&)>& check) {
  board::use_own_proc();
  for (const Reader& reader : kReaders) {
    SCOPED_TRACE(reader.function);
    check(reader);
  }
}

TEST(BoardReader, ReadsTheFileOfItsName) {
  for_each_reader([](const Reader& reader) {
    board::put_all();
    Buffer buffer;
    uint32_t count = kUntouched;
    EXPECT_EQ(0, reader.get(buffer.bytes, 40, &count));
    EXPECT_EQ(read_into(40, reader.file), buffer.all());
    EXPECT_EQ(std::string(reader.file).size(), count);
  });
}

TEST(BoardReader, ReadsUpToTheSizeAndEndsTheBufferInItsLastByte) {
  for_each_reader([](const Reader& reader) {
    board::put(reader.file, "1234567\n");
    for (const int size : {1, 2, 3, 7, 8, 9, 64}) {
      SCOPED_TRACE(size);
      Buffer buffer;
      uint32_t count = kUntouched;
      EXPECT_EQ(0, reader.get(buffer.bytes, size, &count));
      EXPECT_EQ(read_into(static_cast<size_t>(size), "1234567\n"), buffer.all());
      EXPECT_EQ(size < 8 ? static_cast<uint32_t>(size) : 8U, count);
    }
  });
}

TEST(BoardReader, GivesAnEmptyTextForASizeOf1) {
  for_each_reader([](const Reader& reader) {
    board::put(reader.file, "1");
    Buffer buffer;
    uint32_t count = kUntouched;
    EXPECT_EQ(0, reader.get(buffer.bytes, 1, &count));
    EXPECT_EQ(Buffer::with(std::string(1, '\0')), buffer.all());
    EXPECT_EQ(1U, count);
  });
}

TEST(BoardReader, WritesNothingToTheBufferForASizeOf0OrLess) {
  for_each_reader([](const Reader& reader) {
    board::put(reader.file, "1");
    for (const int size : {0, -1, INT_MIN}) {
      SCOPED_TRACE(size);
      Buffer buffer;
      uint32_t count = kUntouched;
      EXPECT_EQ(0, reader.get(buffer.bytes + 1, size, &count));
      EXPECT_TRUE(buffer.is_untouched());
      EXPECT_EQ(0U, count);
    }
  });
}

TEST(BoardReader, TakesABufferOfTheLargestSize) {
  for_each_reader([](const Reader& reader) {
    board::put(reader.file, "12");
    void* const memory =
        mmap(nullptr, INT_MAX, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(MAP_FAILED, memory);
    char* const buffer = static_cast<char*>(memory);
    buffer[INT_MAX - 1] = 'Z';
    uint32_t count = kUntouched;
    EXPECT_EQ(0, reader.get(buffer, INT_MAX, &count));
    EXPECT_STREQ("12", buffer);
    EXPECT_EQ('\0', buffer[INT_MAX - 1]);
    EXPECT_EQ(2U, count);
    munmap(memory, INT_MAX);
  });
}

TEST(BoardReader, ReadsBytesOfAnyValue) {
  for_each_reader([](const Reader& reader) {
    const std::string bytes("a\0\xff\n\0b", 6);
    board::put(reader.file, bytes);
    Buffer buffer;
    uint32_t count = kUntouched;
    EXPECT_EQ(0, reader.get(buffer.bytes, 10, &count));
    EXPECT_EQ(read_into(10, bytes), buffer.all());
    EXPECT_EQ(6U, count);
  });
}

TEST(BoardReader, CountsNothingInAnEmptyFile) {
  for_each_reader([](const Reader& reader) {
    board::put(reader.file, "");
    Buffer buffer;
    uint32_t count = kUntouched;
    EXPECT_EQ(0, reader.get(buffer.bytes, 10, &count));
    EXPECT_EQ(read_into(10, ""), buffer.all());
    EXPECT_EQ(0U, count);
  });
}

TEST(BoardReader, CountsAFailedReadAsAllOnes) {
  for_each_reader([](const Reader& reader) {
    ASSERT_EQ(0, mkdir(board::path(reader.file).c_str(), 0755));
    Buffer buffer;
    uint32_t count = kUntouched;
    EXPECT_EQ(0, reader.get(buffer.bytes, 10, &count));
    EXPECT_EQ(read_into(10, ""), buffer.all());
    EXPECT_EQ(0xffffffffU, count);
  });
}

TEST(BoardReader, DoesNotWaitForAnythingToRead) {
  for_each_reader([](const Reader& reader) {
    board::put_silent_pipe(board::path(reader.file));
    Buffer buffer;
    uint32_t count = kUntouched;
    EXPECT_EQ(0, reader.get(buffer.bytes, 10, &count));
    EXPECT_EQ(read_into(10, ""), buffer.all());
    EXPECT_EQ(0xffffffffU, count);
  });
}

TEST(BoardReader, LeavesTheOutputsUntouchedWhenTheFileIsMissing) {
  for_each_reader([](const Reader& reader) {
    Buffer buffer;
    uint32_t count = kUntouched;
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(-1, reader.get(buffer.bytes, 10, &count)); }),
                ElementsAre(entered(reader.function), failed(reader.function)));
    EXPECT_TRUE(buffer.is_untouched());
    EXPECT_EQ(kUntouched, count);
  });
}

TEST(BoardReader, FailsForANullPointer) {
  for_each_reader([](const Reader& reader) {
    board::put(reader.file, "1");
    Buffer buffer;
    uint32_t count = kUntouched;
    EXPECT_EQ(-1, reader.get(nullptr, 10, &count));
    EXPECT_EQ(-1, reader.get(buffer.bytes, 10, nullptr));
    EXPECT_EQ(-1, reader.get(nullptr, 10, nullptr));
    EXPECT_TRUE(buffer.is_untouched());
    EXPECT_EQ(kUntouched, count);
  });
}

TEST(BoardReader, TracesEntryAndSuccess) {
  for_each_reader([](const Reader& reader) {
    board::put(reader.file, "1");
    char buffer[10];
    uint32_t count = 0;
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(0, reader.get(buffer, sizeof buffer, &count)); }),
                ElementsAre(entered(reader.function), succeeded(reader.function)));
  });
}

TEST(BoardReader, LeavesNoDescriptorOpenAndTheFilesAsTheyWere) {
  for_each_reader([](const Reader& reader) {
    board::put_all();
    const auto files = board::all_files();
    const int open = requests::open_descriptors();
    char buffer[4];
    uint32_t count = 0;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(0, reader.get(buffer, sizeof buffer, &count));
    EXPECT_EQ(open, requests::open_descriptors());
    EXPECT_EQ(files, board::all_files());
  });
}

}  // namespace

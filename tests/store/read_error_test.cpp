// A dat file that cannot be read to its end. This program opens the files itself.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

constexpr char kText[] = "Default\nBssidNum=2\nChannel=6\nSSID1=a\n";

// While one of these lives, reading the band's dat file fails behind so many of its bytes.
class ReadError {
 public:
  explicit ReadError(size_t bytes) : left_(bytes) { current = this; }
  ReadError(const ReadError&) = delete;
  ReadError& operator=(const ReadError&) = delete;
  ~ReadError() { current = nullptr; }

  static ReadError* current;

  std::FILE* open() {
    text_ = std::string(kText).substr(0, left_);
    const cookie_io_functions_t functions = {read, nullptr, nullptr, nullptr};
    return fopencookie(&text_, "r", functions);
  }

 private:
  static ssize_t read(void* cookie, char* buffer, size_t size) {
    std::string& text = *static_cast<std::string*>(cookie);
    if (text.empty()) {
      errno = EIO;
      return -1;
    }
    const size_t length = std::min(size, text.size());
    std::memcpy(buffer, text.data(), length);
    text.erase(0, length);
    return static_cast<ssize_t>(length);
  }

  size_t left_;
  std::string text_;
};

ReadError* ReadError::current = nullptr;

TEST(ReadError, MakesAFailedLoad) {
  sandbox::load(0, kText);
  for (const size_t bytes : {size_t{0}, size_t{8}, size_t{25}, sizeof kText - 1}) {
    SCOPED_TRACE(bytes);
    const ReadError error(bytes);
    const auto trace = seams::trace_of([] { EXPECT_EQ(1, creat_shm_from_datafile(0)); });
    EXPECT_EQ("[creat_shm_from_datafile]:===Fail Exit===\n", trace.back());
    EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, wifimgr_lib_init(0)); }),
                ElementsAre("[wifimgr_lib_init]:===Fail Exit===Initialize the share memory failed!\n"));
  }
  EXPECT_EQ(0, creat_shm_from_datafile(0));
}

TEST(ReadError, MakesNoRecordCount) {
  sandbox::load(0, kText);
  ASSERT_EQ(9, get_dat_para_num(0));
  for (const size_t bytes : {size_t{0}, size_t{8}, size_t{25}, sizeof kText - 1}) {
    const ReadError error(bytes);
    EXPECT_EQ(0, get_dat_para_num(0)) << bytes;
  }
}

TEST(ReadError, IsWhatAFolderGives) {
  ASSERT_EQ(0, mkdir(sandbox::dat_path(0).c_str(), 0755));
  EXPECT_EQ(0, get_dat_para_num(0));
}

}  // namespace

extern "C" std::FILE* fopen(const char* path, const char* mode) {
  if (ReadError::current != nullptr && path == sandbox::dat_path(0)) return ReadError::current->open();
  using Open = std::FILE* (*)(const char*, const char*);
  static const auto real = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "fopen"));
  return real(path, mode);
}

// Zeroed memory for callers that count on it.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "support/sandbox.h"

// Under the address sanitizer too, memory that cannot be had is null.
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}

namespace {

TEST(ZeroedMemory, IsZeroedAndTheCallers) {
  for (size_t size : {1U, 1236U, 1U << 20}) {
    char* const memory = static_cast<char*>(os_zalloc(size));
    ASSERT_NE(nullptr, memory);
    EXPECT_EQ(std::string(size, '\0'), std::string(memory, size));
    std::memset(memory, 'x', size);
    std::free(memory);
  }
}

TEST(ZeroedMemory, IsZeroedWhenItWasUsedBefore) {
  void* const used = std::malloc(64);
  std::memset(used, 'x', 64);
  std::free(used);
  char* const memory = static_cast<char*>(os_zalloc(64));
  EXPECT_EQ(std::string(64, '\0'), std::string(memory, 64));
  std::free(memory);
}

TEST(ZeroedMemory, ThatCannotBeHadIsNull) {
  EXPECT_EQ(nullptr, os_zalloc(SIZE_MAX / 2));
}

}  // namespace

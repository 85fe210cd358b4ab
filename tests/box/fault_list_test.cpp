// Requests that are told to fail, in the kernel's driver.
#include <gtest/gtest.h>

#include "kept_texts.h"

namespace box_test {
namespace {

constexpr char kFaults[] = "8b05 -1 5 ra0 2\n8be1 1692 22 * -1\n8be1 -1 19 rai0 1";

std::string meet(unsigned long request, uint16_t oid, const char* interface) {
  char* left = nullptr;
  const int error = meet_fault(kFaults, request, oid, interface, &left);
  return std::to_string(error) + " " + taken(left);
}

TEST(FaultList, CountsDown) {
  EXPECT_EQ("5 8b05 -1 5 ra0 1\n8be1 1692 22 * -1\n8be1 -1 19 rai0 1", meet(0x8b05, 0, "ra0"));
}

TEST(FaultList, LosesTheLastOfACountedFault) {
  EXPECT_EQ("19 8b05 -1 5 ra0 2\n8be1 1692 22 * -1\n", meet(0x8be1, 0x0751, "rai0"));
}

TEST(FaultList, KeepsOneWithoutACount) {
  EXPECT_EQ("22 (none)", meet(0x8be1, 0x069c, "rai0"));
}

TEST(FaultList, MeetsTheSameRequestOidAndInterfaceAlone) {
  EXPECT_EQ("0 (none)", meet(0x8b05, 0, "ra1"));
  EXPECT_EQ("0 (none)", meet(0x8be1, 0x0751, "ra0"));
  EXPECT_EQ("0 (none)", meet(0x8be9, 0x069c, "ra0"));
}

TEST(FaultList, PassesOverWhatIsNoFault) {
  const std::string list = std::string(600, 'x') + "\n\nnonsense\n8b05 -1 5 * 1\n";
  char* left = nullptr;
  EXPECT_EQ(5, meet_fault(list.c_str(), 0x8b05, 0, "ra0", &left));
  EXPECT_EQ(std::string(600, 'x') + "\n\nnonsense\n", taken(left));
}

}  // namespace
}  // namespace box_test

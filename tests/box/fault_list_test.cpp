// Requests that are told to go wrong, in the kernel's driver.
#include <gtest/gtest.h>

#include "kept_texts.h"

namespace box_test {
namespace {

constexpr char kFaults[] = "8b05 -1 5 ra0 2 0 -1\n8be1 1692 22 * -1 0 -1\n8be1 -1 0 rai0 1 250 12";

std::string text_of(const Fault& fault) {
  char line[kMostListLine];
  format_fault(&fault, line);
  return line;
}

std::string meet(unsigned long request, uint16_t oid, const char* interface, const char* faults = kFaults) {
  char* left = nullptr;
  Fault fault = {};
  const bool is_met = find_fault(faults, request, oid, interface, &fault, &left);
  return (is_met ? text_of(fault) : "none") + "; left: " + taken(left);
}

TEST(FaultList, CountsDown) {
  EXPECT_EQ("8b05 -1 5 ra0 2 0 -1; left: 8b05 -1 5 ra0 1 0 -1\n8be1 1692 22 * -1 0 -1\n8be1 -1 0 rai0 1 250 12",
            meet(0x8b05, 0, "ra0"));
}

TEST(FaultList, LosesTheLastOfACountedFault) {
  EXPECT_EQ("8be1 -1 0 rai0 1 250 12; left: 8b05 -1 5 ra0 2 0 -1\n8be1 1692 22 * -1 0 -1\n",
            meet(0x8be1, 0x0751, "rai0"));
}

TEST(FaultList, KeepsOneWithoutACount) {
  EXPECT_EQ("8be1 1692 22 * -1 0 -1; left: (none)", meet(0x8be1, 0x069c, "rai0"));
}

TEST(FaultList, KeepsDelayAndCutOfAFaultThatIsLeft) {
  EXPECT_EQ("8bef -1 0 * 3 1000 48; left: 8bef -1 0 * 2 1000 48\n", meet(0x8bef, 0, "ra0", "8bef -1 0 * 3 1000 48\n"));
}

TEST(FaultList, MeetsTheSameRequestOidAndInterfaceAlone) {
  EXPECT_EQ("none; left: (none)", meet(0x8b05, 0, "ra1"));
  EXPECT_EQ("none; left: (none)", meet(0x8be1, 0x0751, "ra0"));
  EXPECT_EQ("none; left: (none)", meet(0x8be9, 0x069c, "ra0"));
}

TEST(FaultList, PassesOverWhatIsNoFault) {
  // A line of old, and a wait that is longer than any may be.
  const std::string list =
      std::string(600, 'x') + "\n\nnonsense\n8b05 -1 5 * 1\n8b05 -1 5 * 1 60001 -1\n8b05 -1 5 * 1 60000 -1\n";
  const std::string kept = list.substr(0, list.find("8b05 -1 5 * 1 60000"));
  EXPECT_EQ("8b05 -1 5 * 1 60000 -1; left: " + kept, meet(0x8b05, 0, "ra0", list.c_str()));
}

}  // namespace
}  // namespace box_test

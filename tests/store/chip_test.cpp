// Which WLAN chips are on the PCI bus.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>

#include <string>

#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

void put_on_the_bus(const std::string& text) {
  seams::on_command = [text](const std::string&) {
    sandbox::write_file("/tmp/devices", text);
    return 0;
  };
}

std::string flags_of(const std::string& bus, std::string flags = "0000000") {
  put_on_the_bus(bus);
  EXPECT_EQ(0, parse_driver(flags.data(), 7));
  return flags;
}

TEST(Chips, AreFoundByNumberAtTheirPosition) {
  const struct {
    const char* bus;
    const char* flags;
  } rows[] = {{"", "0000000"},
              {"0100\t14c37603\t1a\n", "1000000"},
              {"0100\t14c37612\t1a\n", "0100000"},
              {"0100\t14c37615\t1a\n", "0010000"},
              {"0100\t14c37663\t1a\n", "0001000"},
              {"0100\t14c37915\t1a\n", "0000100"},
              {"0100\t14c37916\t1a\n", "0000010"},
              {"0100\t14c37905\t1a\n", "0000001"},
              {"7604 7619 7669 7906 7919 791", "0000000"},
              {"0100\t14c37915\t1a\n0200\t14c37916\t1b\n", "0000110"},
              {"7603 7612 7615 7663 7915 7916 7905", "1111111"}};
  for (const auto& row : rows) EXPECT_EQ(row.flags, flags_of(row.bus)) << row.bus;
}

TEST(Chips, AreFoundAnywhereInALine) {
  EXPECT_EQ("0000100", flags_of("0100\t10ec8168\t1a\t00000000e7915000\n"));
  EXPECT_EQ("0000100", flags_of("7915"));
  EXPECT_EQ("0000000", flags_of("79 15\n791\n5\n"));
}

TEST(Chips, AreFoundInLongLinesReadInParts) {
  EXPECT_EQ("0000100", flags_of(std::string(1019, 'x') + "7915\n"));
  EXPECT_EQ("0000000", flags_of(std::string(1020, 'x') + "7915\n"));
  EXPECT_EQ("0000000", flags_of(std::string(1022, 'x') + "7915\n"));
  EXPECT_EQ("0000100", flags_of(std::string(1023, 'x') + "7915\n"));
  EXPECT_EQ("0000100", flags_of(std::string(5000, 'x') + "7915\n"));
}

TEST(Chips, AreOnlyEverAdded) {
  EXPECT_EQ("1011100", flags_of("7915\n", "1011000"));
  EXPECT_EQ("xxxx1xx", flags_of("7915\n", "xxxxxxx"));
}

TEST(Chips, DoNotDependOnTheCount) {
  put_on_the_bus("7603 7612 7615 7663 7915 7916 7905\n");
  for (int count : {0, 1, -1, 100}) {
    std::string flags = "0000000x";
    EXPECT_EQ(0, parse_driver(flags.data(), count));
    EXPECT_EQ("1111111x", flags);
  }
}

TEST(Chips, AreAskedForWithOneCommand) {
  flags_of("");
  EXPECT_THAT(seams::commands, ElementsAre("cat /proc/bus/pci/devices > /tmp/devices"));
}

TEST(Chips, DoNotDependOnTheStatusOfTheCommand) {
  seams::on_command = [](const std::string&) {
    sandbox::write_file("/tmp/devices", "7915\n");
    return 256;
  };
  std::string flags = "0000000";
  EXPECT_EQ(0, parse_driver(flags.data(), 7));
  EXPECT_EQ("0000100", flags);
}

TEST(Chips, WithoutTheListAreAFailure) {
  std::string flags = "0000000";
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, parse_driver(flags.data(), 7)); }),
              ElementsAre("[parse_driver]:===Fail Exit===Open the file /tmp/devices failed.\n"));
  EXPECT_EQ("0000000", flags);
}

TEST(Chips, WithAListThatCannotBeUpdatedAreAFailure) {
  const char* const path = "/tmp/devices";
  sandbox::write_file(path, "7915\n");
  ASSERT_EQ(0, mount(path, path, nullptr, MS_BIND, nullptr));
  ASSERT_EQ(0, mount(nullptr, path, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr));
  std::string flags = "0000000";
  EXPECT_EQ(1, parse_driver(flags.data(), 7));
  EXPECT_EQ("0000000", flags);
}

TEST(Chips, ForNullRunNothing) {
  EXPECT_EQ(1, parse_driver(nullptr, 7));
  EXPECT_THAT(seams::commands, ElementsAre());
}

TEST(Chips, AreTraced) {
  put_on_the_bus("");
  std::string flags = "0000000";
  EXPECT_THAT(seams::trace_of([&] { parse_driver(flags.data(), 7); }),
              ElementsAre("[parse_driver]:===Enter===\n", "[parse_driver]:===Success Exit===\n"));
}

}  // namespace

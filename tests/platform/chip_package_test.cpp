// The chip's package, and the routing of the 5G radio that depends on it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <climits>
#include <string>
#include <vector>

#include "platform/board.h"
#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kUntouched = 7777;

TEST(ChipPackage, IsTheNumberInItsFile) {
  board::use_own_proc();
  const struct {
    const char* file;
    int id;
    const char* printed;
  } rows[] = {
      {"24\n", 24, ""},
      {"24", 24, ""},
      {"  24", 24, ""},
      {"\n\t24\n", 24, ""},
      {"+24\n", 24, ""},
      {"024\n", 24, ""},
      {"0x18\n", 0, ""},
      {"-5", -5, ""},
      {"24 25", 24, ""},
      {"24abc", 24, ""},
      {"2147483647", INT_MAX, ""},
      {"-2147483648", INT_MIN, ""},
      {"abc", kUntouched, ""},
      {"id 24", kUntouched, ""},
      {"", kUntouched, "fscanf error!"},
      {" \n\t", kUntouched, "fscanf error!"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    board::put("chip_id", row.file);
    int ids[] = {kUntouched, kUntouched, kUntouched};
    EXPECT_EQ(row.printed, sandbox::stdout_of([&] { EXPECT_EQ(0, wifimgr_lib_get_CHIP_ID(&ids[1])); }));
    EXPECT_THAT(ids, ElementsAre(kUntouched, row.id, kUntouched));
  }
}

TEST(ChipPackage, CannotBeReadFromAFolder) {
  board::use_own_proc();
  ASSERT_EQ(0, mkdir(board::path("chip_id").c_str(), 0755));
  int id = kUntouched;
  EXPECT_EQ("fscanf error!", sandbox::stdout_of([&] { EXPECT_EQ(0, wifimgr_lib_get_CHIP_ID(&id)); }));
  EXPECT_EQ(kUntouched, id);
}

TEST(ChipPackage, IsLeftUntouchedWithoutItsFile) {
  board::use_own_proc();
  int id = kUntouched;
  EXPECT_EQ("Critical Bugs, Can't get package id!\n",
            sandbox::stdout_of([&] { EXPECT_EQ(-1, wifimgr_lib_get_CHIP_ID(&id)); }));
  EXPECT_EQ(kUntouched, id);
}

TEST(ChipPackage, IsNotReadToANullPointer) {
  board::use_own_proc();
  board::put("chip_id", "24");
  EXPECT_EQ("", sandbox::stdout_of([] { EXPECT_EQ(1, wifimgr_lib_get_CHIP_ID(nullptr)); }));
}

TEST(ChipPackage, IsTracedOnEntryAndSuccess) {
  board::use_own_proc();
  int id = 0;
  (void)sandbox::stdout_of([&] {
    EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_CHIP_ID(&id); }),
                ElementsAre("[wifimgr_lib_get_CHIP_ID]:===Enter===\n"));
  });
  board::put("chip_id", "24");
  EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_CHIP_ID(&id); }),
              ElementsAre("[wifimgr_lib_get_CHIP_ID]:===Enter===\n", "[wifimgr_lib_get_CHIP_ID]:===Success Exit===\n"));
}

TEST(ChipPackage, LeavesNoDescriptorOpen) {
  board::use_own_proc();
  const int open = requests::open_descriptors();
  for (const char* const text : {"24", "abc", ""}) {
    board::put("chip_id", text);
    int id = 0;
    (void)sandbox::stdout_of([&] { (void)wifimgr_lib_get_CHIP_ID(&id); });
    EXPECT_EQ(open, requests::open_descriptors());
  }
}

constexpr char kEntered[] = "[wifimgr_lib_set_5G_PCIE]:===Enter===\n";
constexpr char kSucceeded[] = "[wifimgr_lib_set_5G_PCIE]:===Success Exit===\n";
constexpr char kFlagRefused[] = "[wifimgr_lib_set_5G_PCIE]:===Fail Exit===The flag value is invalid.\n";
constexpr char kIdEntered[] = "[wifimgr_lib_get_CHIP_ID]:===Enter===\n";
constexpr char kIdSucceeded[] = "[wifimgr_lib_get_CHIP_ID]:===Success Exit===\n";
constexpr char kNoId[] = "Critical Bugs, Can't get package id!\n";
constexpr char kUnknown[] = "2810\nunknow package\n";

const int kOtherFlags[] = {2, -1, 256, INT_MAX, INT_MIN};

struct Package {
  int id;
  const char* on_0;
  const char* on_1;
};

const Package kPackages[] = {
    {23, "sys memwl bfac030c 80000000", "sys memwl bfac030c 0"},
    {24, "sys memwl bfac030c 80000000", "sys memwl bfac030c 0"},
    {25, "sys memwl bfac030c 80000000", "sys memwl bfac030c 0"},
    {28, "sys memwl bfac080c c0000000", "sys memwl bfac080c 40000000"},
    {29, "sys memwl bfac080c c0000000", "sys memwl bfac080c 40000000"},
    {30, "sys memwl bfac080c c0000000", "sys memwl bfac080c 40000000"},
    {43, "sys memwl bfac030c 80000000", "sys memwl bfac030c 0"},
    {45, "sys memwl bfac030c 80000000", "sys memwl bfac030c 0"},
};

struct Call {
  int result;
  std::string printed;
  std::vector<std::string> errors;
  std::vector<std::string> commands;
};

Call route(int flag) {
  Call call;
  seams::commands.clear();
  call.printed =
      sandbox::stdout_of([&] { call.errors = seams::errors_of([&] { call.result = wifimgr_lib_set_5G_PCIE(flag); }); });
  call.commands = seams::commands;
  return call;
}

bool is_known(int id) {
  for (const Package& package : kPackages) {
    if (package.id == id) return true;
  }
  return false;
}

TEST(PcieRouting, WritesTheRegisterOfThePackage) {
  board::use_own_proc();
  for (const Package& package : kPackages) {
    board::put("chip_id", std::to_string(package.id) + "\n");
    for (const int flag : {0, 1}) {
      SCOPED_TRACE(std::to_string(package.id) + " with flag " + std::to_string(flag));
      const Call call = route(flag);
      EXPECT_EQ(0, call.result);
      EXPECT_THAT(call.commands, ElementsAre(flag == 0 ? package.on_0 : package.on_1));
      EXPECT_EQ("", call.printed);
      EXPECT_THAT(call.errors, IsEmpty());
    }
  }
}

TEST(PcieRouting, FailsForEveryOtherPackage) {
  board::use_own_proc();
  std::vector<int> ids = {INT_MIN, -24, 256 + 24, 2423, INT_MAX};
  for (int id = -60; id <= 100; ++id) ids.push_back(id);
  for (const int id : ids) {
    if (is_known(id)) continue;
    board::put("chip_id", std::to_string(id) + "\n");
    for (const int flag : {0, 1}) {
      SCOPED_TRACE(std::to_string(id) + " with flag " + std::to_string(flag));
      const Call call = route(flag);
      EXPECT_EQ(1, call.result);
      EXPECT_THAT(call.commands, IsEmpty());
      EXPECT_EQ(kUnknown, call.printed);
      EXPECT_THAT(call.errors, IsEmpty());
    }
  }
}

TEST(PcieRouting, RefusesAnyOtherFlagWhateverThePackage) {
  board::use_own_proc();
  for (const char* const id : {"24", "26"}) {
    board::put("chip_id", id);
    for (const int flag : kOtherFlags) {
      SCOPED_TRACE(std::string(id) + " with flag " + std::to_string(flag));
      const Call call = route(flag);
      EXPECT_EQ(1, call.result);
      EXPECT_THAT(call.commands, IsEmpty());
      EXPECT_EQ("", call.printed);
      EXPECT_THAT(call.errors, ElementsAre(kFlagRefused));
    }
  }
}

TEST(PcieRouting, TakesAMissingPackageForAnUnknownOne) {
  board::use_own_proc();
  for (const int flag : {0, 1}) {
    const Call call = route(flag);
    EXPECT_EQ(1, call.result);
    EXPECT_THAT(call.commands, IsEmpty());
    EXPECT_EQ(std::string(kNoId) + kUnknown, call.printed);
  }
}

TEST(PcieRouting, TakesAPackageWithoutANumberForAnUnknownOne) {
  board::use_own_proc();
  board::put("chip_id", "");
  EXPECT_EQ(std::string("fscanf error!") + kUnknown, route(1).printed);
  board::put("chip_id", "abc");
  EXPECT_EQ(kUnknown, route(1).printed);
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(PcieRouting, ReadsThePackageBeforeItLooksAtTheFlag) {
  board::use_own_proc();
  const Call call = route(2);
  EXPECT_EQ(1, call.result);
  EXPECT_EQ(kNoId, call.printed);
  EXPECT_THAT(call.errors, ElementsAre(kFlagRefused));
}

TEST(PcieRouting, DoesNotLookAtTheShellsResult) {
  board::use_own_proc();
  board::put("chip_id", "24");
  for (const int result : {-1, 1, 256}) {
    seams::on_command = [result](const std::string&) { return result; };
    EXPECT_EQ(0, route(0).result);
  }
}

TEST(PcieRouting, TracesItsStepsInOrder) {
  board::use_own_proc();
  board::put("chip_id", "24");
  EXPECT_THAT(seams::trace_of([] { (void)wifimgr_lib_set_5G_PCIE(0); }),
              ElementsAre(kEntered, kIdEntered, kIdSucceeded, kSucceeded));
  EXPECT_THAT(seams::trace_of([] { (void)wifimgr_lib_set_5G_PCIE(2); }),
              ElementsAre(kEntered, kIdEntered, kIdSucceeded, kFlagRefused));
  board::put("chip_id", "26");
  (void)sandbox::stdout_of([] {
    EXPECT_THAT(seams::trace_of([] { (void)wifimgr_lib_set_5G_PCIE(0); }),
                ElementsAre(kEntered, kIdEntered, kIdSucceeded));
  });
}

}  // namespace

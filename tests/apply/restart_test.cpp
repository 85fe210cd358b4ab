// The restart of a band's interfaces on br-lan: whole command lists, the reload flag, and what is printed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>

#include "apply/command_list.h"
#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using commands::bss;
using commands::down;
using commands::joined;
using commands::Lines;
using commands::up_into;
using commands::wds;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr char kChipSearch[] = "cat /proc/bus/pci/devices > /tmp/devices";

struct Outcome {
  uint64_t result;
  Lines commands;
  std::string printed;
};

Outcome restart(const wifimgr_restart_request& request) {
  Outcome outcome{};
  seams::commands.clear();
  outcome.printed = sandbox::stdout_of([&] { outcome.result = wifimgr_lib_restartInterface(&request); });
  outcome.commands = seams::commands;
  return outcome;
}

std::vector<int> bits_of(uint32_t mask) {
  std::vector<int> bits;
  for (int i = 0; i < 8; ++i) {
    if ((mask & (1U << i)) != 0) bits.push_back(i);
  }
  return bits;
}

TEST(Restart, SameCountOn2_4GTakesTheBssesDownBeforeTheWdsLinks) {
  const Outcome outcome = restart({0, 2, 2, 0b101, 0, 0});
  EXPECT_EQ(0U, outcome.result);
  EXPECT_THAT(outcome.commands, ElementsAreArray({
                                    "ifconfig ra0 down",
                                    "brctl delif br-lan ra0",
                                    "ifconfig ra1 down",
                                    "brctl delif br-lan ra1",
                                    "ifconfig wds0 down",
                                    "brctl delif br-lan wds0",
                                    "ifconfig wds1 down",
                                    "brctl delif br-lan wds1",
                                    "ifconfig wds2 down",
                                    "brctl delif br-lan wds2",
                                    "ifconfig wds3 down",
                                    "brctl delif br-lan wds3",
                                    "ifconfig ra0 up",
                                    "brctl addif br-lan ra0",
                                    "ifconfig ra2 up",
                                    "brctl addif br-lan ra2",
                                }));
  EXPECT_EQ("", outcome.printed);
}

TEST(Restart, SameCountOn5GLeavesTheWdsLinksAlone) {
  const Outcome outcome = restart({1, 2, 2, 0b101, 0, 0});
  EXPECT_EQ(0U, outcome.result);
  EXPECT_THAT(outcome.commands, ElementsAreArray({
                                    "ifconfig rai0 down",
                                    "brctl delif br-lan rai0",
                                    "ifconfig rai1 down",
                                    "brctl delif br-lan rai1",
                                    "ifconfig rai0 up",
                                    "brctl addif br-lan rai0",
                                    "ifconfig rai2 up",
                                    "brctl addif br-lan rai2",
                                }));
  EXPECT_EQ("", outcome.printed);
}

TEST(Restart, AnotherCountOn2_4GTakesTheWdsLinksDownFirstAndLooksForChips) {
  const Outcome outcome = restart({0, 1, 2, 0b11, 1, 0});
  EXPECT_EQ(0U, outcome.result);
  EXPECT_THAT(outcome.commands, ElementsAreArray({
                                    "ifconfig wds0 down",
                                    "brctl delif br-lan wds0",
                                    "ifconfig wds1 down",
                                    "brctl delif br-lan wds1",
                                    "ifconfig wds2 down",
                                    "brctl delif br-lan wds2",
                                    "ifconfig wds3 down",
                                    "brctl delif br-lan wds3",
                                    "ifconfig ra0 down",
                                    "brctl delif br-lan ra0",
                                    kChipSearch,
                                    "ifconfig ra0 up",
                                    "brctl addif br-lan ra0",
                                    "ifconfig ra1 up",
                                    "brctl addif br-lan ra1",
                                    "ifconfig wds0 up",
                                    "brctl addif br-lan wds0",
                                    "ifconfig wds1 up",
                                    "brctl addif br-lan wds1",
                                    "ifconfig wds2 up",
                                    "brctl addif br-lan wds2",
                                    "ifconfig wds3 up",
                                    "brctl addif br-lan wds3",
                                }));
  EXPECT_EQ("addif wds0 to br0\naddif wds1 to br0\naddif wds2 to br0\naddif wds3 to br0\n", outcome.printed);
}

TEST(Restart, AnotherCountOn5GTakesTheWdsLinksDownFirstAndLooksForChips) {
  const Outcome outcome = restart({1, 2, 1, 0b10, -1, 0});
  EXPECT_EQ(0U, outcome.result);
  EXPECT_THAT(outcome.commands, ElementsAreArray({
                                    "ifconfig wdsi0 down",
                                    "brctl delif br-lan wdsi0",
                                    "ifconfig wdsi1 down",
                                    "brctl delif br-lan wdsi1",
                                    "ifconfig wdsi2 down",
                                    "brctl delif br-lan wdsi2",
                                    "ifconfig wdsi3 down",
                                    "brctl delif br-lan wdsi3",
                                    "ifconfig rai0 down",
                                    "brctl delif br-lan rai0",
                                    "ifconfig rai1 down",
                                    "brctl delif br-lan rai1",
                                    kChipSearch,
                                    "ifconfig rai1 up",
                                    "brctl addif br-lan rai1",
                                    "ifconfig wdsi0 up",
                                    "brctl addif br-lan wdsi0",
                                    "ifconfig wdsi1 up",
                                    "brctl addif br-lan wdsi1",
                                    "ifconfig wdsi2 up",
                                    "brctl addif br-lan wdsi2",
                                    "ifconfig wdsi3 up",
                                    "brctl addif br-lan wdsi3",
                                }));
  EXPECT_EQ("addif wdsi0 to br0\naddif wdsi1 to br0\naddif wdsi2 to br0\naddif wdsi3 to br0\n", outcome.printed);
}

TEST(Restart, EveryMaskCountAndWdsFlagOnBothBands) {
  for (const uint32_t band : {0U, 1U}) {
    for (const uint32_t mask : {0U, 1U, 0b101U, 0x80U, 0xffU, 0x100U, 0x1ffU, 0xffffff00U, 0xffffffffU}) {
      for (const int32_t wds_flag : {0, 1, 2, -1, INT32_MIN}) {
        for (const bool equal : {true, false}) {
          SCOPED_TRACE(testing::PrintToString(mask) + " on band " + std::to_string(band) + ", flag " +
                       std::to_string(wds_flag) + (equal ? ", same count" : ", another count"));
          const Outcome outcome = restart({band, 2, equal ? 2U : 3U, mask, wds_flag, 0});
          const Lines both_down = band == 0 ? joined({down("ra", 2), down("wds", 4)}) : down("rai", 2);
          const Lines changed = joined({down(wds(band), 4), down(bss(band), 2), {kChipSearch}});
          const Lines links = wds_flag != 0 ? up_into("br-lan", wds(band), {0, 1, 2, 3}) : Lines();
          EXPECT_THAT(outcome.commands, ElementsAreArray(joined({equal ? both_down : changed,
                                                                 up_into("br-lan", bss(band), bits_of(mask)), links})));
          EXPECT_EQ(0U, outcome.result);
          EXPECT_EQ(wds_flag == 0, outcome.printed.empty());
        }
      }
    }
  }
}

TEST(Restart, TakesDownAsManyBssesAsWereUp) {
  for (const uint32_t band : {0U, 1U}) {
    for (const int32_t count : {INT32_MIN, -1, 0, 1, 3, 8, 11}) {
      SCOPED_TRACE(count);
      const Lines wds_down = down(wds(band), 4);
      EXPECT_THAT(restart({band, count, static_cast<uint32_t>(count), 0, 0, 0}).commands,
                  ElementsAreArray(joined({down(bss(band), count), band == 0 ? wds_down : Lines()})));
      EXPECT_THAT(restart({band, count, static_cast<uint32_t>(count) ^ 0x80000000U, 0, 0, 0}).commands,
                  ElementsAreArray(joined({wds_down, down(bss(band), count), {kChipSearch}})));
    }
  }
}

TEST(Restart, SpareWordChangesNothing) {
  EXPECT_EQ(restart({0, 1, 1, 1, 1, 0}).commands, restart({0, 1, 1, 1, 1, 0xffffffff}).commands);
}

TEST(Restart, LooksAtNoCommandsStatus) {
  for (const int status : {-1, 256, 127 << 8}) {
    for (const uint32_t band : {0U, 1U}) {
      const Lines expected = restart({band, 2, 2, 3, 1, 0}).commands;
      seams::on_command = [status](const std::string&) { return status; };
      const Outcome outcome = restart({band, 2, 2, 3, 1, 0});
      EXPECT_EQ(0U, outcome.result);
      EXPECT_EQ(expected, outcome.commands);
      seams::on_command = nullptr;
    }
  }
}

TEST(RestartFlag, IsClearedWhenTheCountChangesAndNoModuleIsReloaded) {
  for (const int band : {0, 1}) {
    for (const char* chip : {"7603", "7612", "7615", "7663", "7915", ""}) {
      SCOPED_TRACE(std::string(chip) + " on band " + std::to_string(band));
      dat::load(0, {{"ReloadFlag", "1"}});
      dat::load(1, {{"ReloadFlag", "1"}});
      seams::put_chips_on_the_bus({chip});
      const std::string other = sandbox::segment_bytes(1 - band);
      const uint32_t number = static_cast<uint32_t>(band);
      const Outcome outcome = restart({number, 1, 2, 1, 0, 0});
      EXPECT_EQ(0U, outcome.result);
      EXPECT_EQ("0", sandbox::field(band, "ReloadFlag", 1));
      EXPECT_EQ(other, sandbox::segment_bytes(1 - band));
      EXPECT_THAT(
          outcome.commands,
          ElementsAreArray(joined(
              {down(wds(number), 4), down(bss(number), 1), {kChipSearch}, up_into("br-lan", bss(number), {0})})));
    }
  }
}

TEST(RestartFlag, IsClearedAfterTheInterfacesWentDownAndBeforeTheyComeUp) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"ReloadFlag", "1"}});
    std::ofstream("/tmp/devices") << "7603\n";
    std::vector<std::pair<std::string, std::string>> flags;
    seams::on_command = [&](const std::string& line) {
      flags.emplace_back(line, sandbox::field(band, "ReloadFlag", 1));
      return 0;
    };
    restart({static_cast<uint32_t>(band), 1, 2, 1, 0, 0});
    ASSERT_EQ(13U, flags.size());
    for (size_t i = 0; i < flags.size(); ++i) EXPECT_EQ(i < 11 ? "1\n" : "0", flags[i].second) << flags[i].first;
    seams::on_command = nullptr;
  }
}

TEST(RestartFlag, StaysWhenTheChipSearchFails) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"ReloadFlag", "1"}});
    const std::string before = sandbox::segment_bytes(band);
    EXPECT_THAT(seams::errors_of([band] {
                  EXPECT_EQ(0U, restart({static_cast<uint32_t>(band), 1, 2, 1, 0, 0}).result);
                }),
                ElementsAre("[parse_driver]:===Fail Exit===Open the file /tmp/devices failed.\n"));
    EXPECT_EQ(before, sandbox::segment_bytes(band));
    EXPECT_EQ(12U + 1U, seams::commands.size());
  }
}

TEST(RestartFlag, StaysWithTheSameCount) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"ReloadFlag", "1"}});
    seams::put_chips_on_the_bus({"7603"});
    const std::string before = sandbox::segment_bytes(band);
    EXPECT_EQ(0U, restart({static_cast<uint32_t>(band), 2, 2, 1, 1, 0}).result);
    EXPECT_EQ(before, sandbox::segment_bytes(band));
  }
}

TEST(RestartFlag, FailureLeavesTheInterfacesDown) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    sandbox::load(band, sandbox::full_dat_without(band, "ReloadFlag"));
    seams::put_chips_on_the_bus({"7603"});
    const std::string before = sandbox::segment_bytes(band);
    const uint32_t number = static_cast<uint32_t>(band);
    Outcome outcome{};
    const Lines errors = seams::errors_of([&] { outcome = restart({number, 2, 1, 0xff, 1, 0}); });
    EXPECT_EQ(1U, outcome.result);
    EXPECT_EQ("[wifimgr_lib_restartInterface]:===Fail Exit===Set the ReloadFlag failed.\n", errors.back());
    EXPECT_THAT(outcome.commands,
                ElementsAreArray(joined({down(wds(number), 4), down(bss(number), 2), {kChipSearch}})));
    EXPECT_EQ("", outcome.printed);
    EXPECT_EQ(before, sandbox::segment_bytes(band));
  }
}

TEST(RestartTrace, TellsEntryAndSuccess) {
  for (const uint32_t band : {0U, 1U}) {
    EXPECT_THAT(seams::trace_of([band] {
                  restart({band, 2, 2, 3, 1, 0});
                }),
                ElementsAre("[wifimgr_lib_restartInterface]:===Enter===\n",
                            "[wifimgr_lib_restartInterface]:===Success Exit===\n"));
    EXPECT_THAT(seams::trace_of([band] { restart({band, 2, 2, 3, 1, 0}); }, 7), IsEmpty());
  }
}

TEST(RestartRefusal, UnknownBandRunsNothingAndHasNoReason) {
  for (const uint32_t band : {2U, 0x80000000U, 0xffffffffU}) {
    Outcome outcome{};
    EXPECT_THAT(seams::trace_of([&] {
                  outcome = restart({band, 2, 1, 3, 1, 0});
                }),
                ElementsAre("[wifimgr_lib_restartInterface]:===Enter===\n",
                            "[wifimgr_lib_restartInterface]:===Fail Exit===\n"));
    EXPECT_EQ(1U, outcome.result);
    EXPECT_THAT(outcome.commands, IsEmpty());
    EXPECT_EQ("", outcome.printed);
    EXPECT_THAT(seams::errors_of([band] { restart({band, 2, 2, 3, 1, 0}); }), IsEmpty());
  }
}

TEST(RestartRefusal, NullRequestRunsNothing) {
  EXPECT_THAT(
      seams::trace_of([] { EXPECT_EQ(1U, wifimgr_lib_restartInterface(nullptr)); }),
      ElementsAre("[wifimgr_lib_restartInterface]:===Enter===\n", "[wifimgr_lib_restartInterface]:===Fail Exit===\n"));
  const std::vector<std::string> trace =
      seams::trace_of([] { EXPECT_EQ(1U, wifimgr_lib_do_restartInterface(nullptr)); });
  EXPECT_THAT(trace, testing::ElementsAre("[wifimgr_lib_do_restartInterface]:===Enter===\n",
                                          "[wifimgr_lib_do_restartInterface]:===Fail Exit===\n"));
  EXPECT_THAT(seams::commands, IsEmpty());
}

}  // namespace

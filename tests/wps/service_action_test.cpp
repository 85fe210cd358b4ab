// The WPS service actions: when they write a script, and the scripts of one line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>

#include "support/requests.h"
#include "support/seams.h"
#include "wps/wps_script.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using wps::Action;
using wps::kActions;
using wps::kScript;

class WpsAction : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_THAT(seams::commands, IsEmpty());
    EXPECT_THAT(requests::sent, IsEmpty());
  }
};

// Whether the action leaves the script as it is, and says that all went well.
bool writes_nothing(const Action& action, int band, int ssid_index) {
  sandbox::write_file(kScript, "kept");
  EXPECT_EQ(0, action.run(kScript, band, ssid_index)) << action.function;
  const bool kept = sandbox::read_file(kScript) == "kept";
  EXPECT_EQ(0, unlink(kScript));
  EXPECT_EQ(0, action.run(kScript, band, ssid_index)) << action.function;
  return kept && !sandbox::exists(kScript);
}

TEST_F(WpsAction, OfOneLineWritesItForEverySsidOfBothBands) {
  struct Row {
    Action action;
    const char* line;
  };
  for (const int band : {0, 1}) {
    sandbox::load(band, "BssidNum=8\nWscConfMode=1;2;7;1;2;7;1;2\nWscConfStatus=0\n");
    wifimgr_lib_wifi_config_oper(static_cast<uint32_t>(band), 0);
    for (int number = 0; number < 8; ++number) {
      for (const auto& [action, line] : {Row{kActions[0], " set WscStop\n"}, Row{kActions[1], " set WscGenPinCode=1\n"},
                                         Row{kActions[2], " set WscOOB=1\n"}}) {
        EXPECT_EQ(0, action.run(kScript, band, number));
        EXPECT_EQ("/userfs/bin/iwpriv " + wps::interface(band, number) + line, sandbox::read_file(kScript));
      }
    }
  }
}

TEST_F(WpsAction, WritesOnlyInModesOneTwoAndSeven) {
  for (const int band : {0, 1}) {
    wps::load(band, "7;7", "2;2");
    for (const auto& [mode, is_on] : std::initializer_list<std::pair<const char*, bool>>{
             {"0", false},   {"1", true},    {"2", true},      {"3", false},  {"4", false},  {"5", false},
             {"6", false},   {"7", true},    {"8", false},     {"9", false},  {"", false},   {"x", false},
             {"x1", false},  {"-1", false},  {"-7", false},    {"17", false}, {"71", false}, {"257", false},
             {"258", false}, {"263", false}, {"65537", false}, {"07", true},  {" 1", true},  {"\n2", true},
             {"+7", true},   {"1\n", true},  {"7x", true},     {"2;0", true}, {"0x7", false}}) {
      SCOPED_TRACE(std::string("mode ") + mode + " on band " + std::to_string(band));
      wps::put(band, 2, "WscConfMode", mode);
      for (const Action& action : kActions) EXPECT_EQ(is_on, !writes_nothing(action, band, 1)) << action.function;
    }
  }
}

TEST_F(WpsAction, GoesByTheModeOfItsOwnSsidAndBand) {
  wps::load(0, "1;0", "2;2");
  wps::load(1, "0;1", "2;2");
  for (const Action& action : kActions) {
    EXPECT_FALSE(writes_nothing(action, 0, 0));
    EXPECT_TRUE(writes_nothing(action, 0, 1));
    EXPECT_TRUE(writes_nothing(action, 1, 0));
    EXPECT_FALSE(writes_nothing(action, 1, 1));
  }
}

TEST_F(WpsAction, OfAnSsidThatTheBandLacksWritesNothing) {
  for (const int band : {0, 1}) {
    sandbox::load(band, "BssidNum=2\nWscConfMode=7;7;7;7;7;7;7;7\nWscConfStatus=2\n");
    for (const Action& action : kActions) {
      for (const int number : {-1, -2, 2, 7, 8, 65536, 65537, INT32_MAX, INT32_MIN}) {
        EXPECT_TRUE(writes_nothing(action, band, number)) << action.function << " " << number;
      }
    }
  }
}

TEST_F(WpsAction, OfAnotherBandWritesNothing) {
  for (const int band : {0, 1}) wps::load(band, "7;7", "2;2");
  for (const Action& action : kActions) {
    for (const int band : {2, -1, 65536, 65537, INT32_MAX, INT32_MIN}) {
      EXPECT_TRUE(writes_nothing(action, band, 0)) << action.function << " " << band;
    }
  }
}

TEST_F(WpsAction, WithoutAModeInTheStoreWritesNothing) {
  for (const int band : {0, 1}) {
    for (const Action& action : kActions) EXPECT_TRUE(writes_nothing(action, band, 0)) << "nothing loaded";
    sandbox::load(band, "BssidNum=2\nWscConfStatus=2;2\n");
    for (const Action& action : kActions) EXPECT_TRUE(writes_nothing(action, band, 0)) << action.function;
  }
}

TEST_F(WpsAction, NamesTheInterfaceAsTheBandsSnapshotDoes) {
  for (const int band : {0, 1}) wps::load(band, "7;7", "2;2");
  for (const int band : {0, 1}) {
    for (const auto& [prefix, name] : std::initializer_list<std::pair<const char*, const char*>>{
             {"", "1"}, {"wlan", "wlan1"}, {"0123456789abcdef", "0123456789abcdef1"}}) {
      store_global[band].bss_count = 0x7a7a7a7a;
      std::strncpy(store_global[band].prefix, prefix, sizeof store_global[band].prefix);
      for (const Action& action : kActions) {
        EXPECT_EQ(0, action.run(kScript, band, 1));
        EXPECT_EQ(0u, sandbox::read_file(kScript).find("/userfs/bin/iwpriv " + std::string(name) + " set Wsc"));
      }
    }
  }
}

TEST_F(WpsAction, BeforeAnySnapshotNamesNoInterface) {
  for (const int band : {0, 1}) {
    sandbox::load(band, "BssidNum=2\nWscConfMode=7;7\nWscConfStatus=2;2\n");
    EXPECT_EQ(0, wifimgr_lib_service_stop_wps(kScript, band, 1));
    EXPECT_EQ("/userfs/bin/iwpriv 1 set WscStop\n", sandbox::read_file(kScript));
  }
}

TEST_F(WpsAction, OfOneLineReplacesTheFilesTextAndKeepsItsMode) {
  wps::load(0, "7;7", "2;2");
  for (const mode_t mode : {0600U, 0644U, 0755U}) {
    for (const Action& action : {kActions[0], kActions[1], kActions[2]}) {
      sandbox::write_file(kScript, std::string(5000, 'x'));
      ASSERT_EQ(0, chmod(kScript, mode));
      EXPECT_EQ(0, action.run(kScript, 0, 0));
      EXPECT_LT(sandbox::read_file(kScript).size(), 60u);
      struct stat status {};
      ASSERT_EQ(0, stat(kScript, &status));
      EXPECT_EQ(mode, status.st_mode & 07777U);
    }
  }
}

TEST_F(WpsAction, OfOneLineFailsWhenTheFileCannotBeOpened) {
  for (const int band : {0, 1}) {
    wps::load(band, "7;7", "2;2");
    for (const Action& action : {kActions[0], kActions[1], kActions[2]}) {
      for (const char* path : {"", "/tmp", "/tmp/none/wps.sh"}) {
        EXPECT_EQ(1, action.run(path, band, 0)) << action.function << " " << path;
        const auto trace = seams::trace_of([&, p = path] { action.run(p, band, 0); });
        EXPECT_EQ(std::string("[") + action.function + "]:===Fail Exit===\n", trace.back());
      }
    }
  }
}

TEST_F(WpsAction, WithoutAPathFails) {
  for (const char* mode : {"7;7", "0;0"}) {
    wps::load(0, mode, "2;2");
    for (const Action& action : kActions) {
      for (const int band : {0, 2}) EXPECT_EQ(1, action.run(nullptr, band, 0)) << action.function;
      const std::string name = std::string("[") + action.function + "]:===";
      EXPECT_THAT(seams::trace_of([&] { action.run(nullptr, 0, 0); }),
                  ElementsAre(name + "Enter===\n", name + "Fail Exit===\n"));
    }
  }
}

TEST_F(WpsAction, TracesEntryAndSuccessWhetherItWritesOrNot) {
  for (const char* mode : {"7;7", "0;0"}) {
    wps::load(0, mode, "2;2");
    for (const Action& action : kActions) {
      const auto trace = seams::trace_of([&] { EXPECT_EQ(0, action.run(kScript, 0, 0)); });
      EXPECT_EQ(std::string("[") + action.function + "]:===Enter===\n", trace.front());
      EXPECT_EQ(std::string("[") + action.function + "]:===Success Exit===\n", trace.back());
      EXPECT_THAT(seams::errors_of([&] { action.run(kScript, 0, 0); }), IsEmpty());
    }
  }
}

TEST_F(WpsAction, ChangesNoStoreAndPrintsNothing) {
  for (const int band : {0, 1}) wps::load(band, "7;7", "2;2");
  const std::string before = sandbox::segment_bytes(0) + sandbox::segment_bytes(1);
  EXPECT_EQ("", sandbox::stdout_of([] {
              for (const Action& action : kActions) {
                for (const int band : {0, 1, 2}) action.run(kScript, band, 0);
              }
            }));
  EXPECT_TRUE(before == sandbox::segment_bytes(0) + sandbox::segment_bytes(1));
}

TEST_F(WpsAction, LeavesNoDescriptorOpen) {
  wps::load(0, "7;7", "2;0");
  const int before = requests::open_descriptors();
  for (const Action& action : kActions) {
    for (const int number : {0, 1}) action.run(kScript, 0, number);
    action.run("/tmp", 0, 0);
  }
  EXPECT_EQ(before, requests::open_descriptors());
}

TEST_F(WpsAction, FailsWhenItsLineCannotBeWritten) {
  wps::load(0, "7;7", "2;2");
  seams::limit_file_size(10);
  for (const Action& action : kActions) EXPECT_EQ(1, action.run(kScript, 0, 0)) << action.function;
}

TEST(WpsInfo, IsNothingWhateverIsAsked) {
  const auto ask = reinterpret_cast<int (*)(...)>(wifimgr_lib_get_wps_info);
  EXPECT_THAT(seams::trace_of([ask] {
                EXPECT_EQ(0, ask());
                EXPECT_EQ(0, ask(2, -1, nullptr));
                EXPECT_EQ(0, ask(0, 1, kScript, 1.5));
              }),
              IsEmpty());
}

}  // namespace

// What a commit writes and traces, and how it fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

// The trace of a commit itself and of the chip search, without what the getters say.
std::vector<std::string> trace_of_commit(uint32_t band) {
  std::vector<std::string> lines;
  for (const std::string& line : seams::trace_of([band] { EXPECT_EQ(0, wifimgr_lib_commit(band, 1)); })) {
    if (line.rfind("[wifimgr_lib_commit]", 0) == 0 || line.rfind("[parse_driver]", 0) == 0) lines.push_back(line);
  }
  return lines;
}

TEST(CommitTrace, TellsThatEachWdsLinkIsDown) {
  dat::load(0, {});
  EXPECT_THAT(
      trace_of_commit(0),
      ElementsAre("[wifimgr_lib_commit]:===Enter===\n", "[wifimgr_lib_commit]:\n=== wds0 has been down ===\n",
                  "[wifimgr_lib_commit]:\n=== wds1 has been down ===\n",
                  "[wifimgr_lib_commit]:\n=== wds2 has been down ===\n",
                  "[wifimgr_lib_commit]:\n=== wds3 has been down ===\n", "[wifimgr_lib_commit]:===Success Exit===\n"));
  dat::load(1, {});
  EXPECT_THAT(
      trace_of_commit(1),
      ElementsAre("[wifimgr_lib_commit]:===Enter===\n", "[wifimgr_lib_commit]:\n=== wdsi0 has been down ===\n",
                  "[wifimgr_lib_commit]:\n=== wdsi1 has been down ===\n",
                  "[wifimgr_lib_commit]:\n=== wdsi2 has been down ===\n",
                  "[wifimgr_lib_commit]:\n=== wdsi3 has been down ===\n", "[wifimgr_lib_commit]:===Success Exit===\n"));
}

TEST(CommitTrace, ComesAfterTheLinkIsOutOfTheBridge) {
  dat::load(0, {});
  std::vector<std::string> traced_before;
  seams::on_command = [&](const std::string& line) {
    if (line.find("wds1") != std::string::npos) traced_before = seams::trace;
    return 0;
  };
  trace_of_commit(0);
  EXPECT_EQ("[wifimgr_lib_commit]:\n=== wds0 has been down ===\n", traced_before.back());
}

TEST(CommitTrace, OfAReloadIsTheChipSearchAloneOn2_4G) {
  dat::load(0, {{"ReloadFlag", "1"}});
  seams::put_chips_on_the_bus({"7603"});
  const auto lines = trace_of_commit(0);
  ASSERT_EQ(8U, lines.size());
  EXPECT_EQ("[wifimgr_lib_commit]:\n=== wds3 has been down ===\n", lines[4]);
  EXPECT_EQ("[parse_driver]:===Enter===\n", lines[5]);
  EXPECT_EQ("[parse_driver]:===Success Exit===\n", lines[6]);
  EXPECT_EQ("[wifimgr_lib_commit]:===Success Exit===\n", lines[7]);
}

TEST(CommitTrace, OfAReloadOn5GTellsItsStartAndItsEnd) {
  for (const char* chip : {"7612", "7663", "7615", "7603"}) {  // the last serves 2.4G alone
    SCOPED_TRACE(chip);
    dat::load(1, {{"ReloadFlag", "1"}});
    seams::put_chips_on_the_bus({chip});
    const auto lines = trace_of_commit(1);
    ASSERT_EQ(10U, lines.size());
    EXPECT_EQ("[wifimgr_lib_commit]:\n=== wdsi3 has been down ===\n", lines[4]);
    EXPECT_EQ("[wifimgr_lib_commit]:\n===  reloadFlag ==1 ===\n", lines[5]);
    EXPECT_EQ("[parse_driver]:===Enter===\n", lines[6]);
    EXPECT_EQ("[parse_driver]:===Success Exit===\n", lines[7]);
    EXPECT_EQ("[wifimgr_lib_commit]:\n\n\n===  reload ko success  ===\n\n\n", lines[8]);
    EXPECT_EQ("[wifimgr_lib_commit]:===Success Exit===\n", lines[9]);
  }
}

TEST(CommitTrace, OfAReloadOn5GWithoutChipsTellsNoSuccess) {
  dat::load(1, {{"ReloadFlag", "1"}});
  const auto lines = trace_of_commit(1);
  ASSERT_EQ(9U, lines.size());
  EXPECT_EQ("[wifimgr_lib_commit]:\n===  reloadFlag ==1 ===\n", lines[5]);
  EXPECT_EQ("[parse_driver]:===Fail Exit===Open the file /tmp/devices failed.\n", lines[7]);
  EXPECT_EQ("[wifimgr_lib_commit]:===Success Exit===\n", lines[8]);
}

TEST(CommitTrace, SaysNothingAtTheErrorLevelWhenAllGoesWell) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"ReloadFlag", "1"}, {"WdsEnable", "1"}});
    seams::put_chips_on_the_bus({"7615"});
    EXPECT_THAT(seams::errors_of([band] { wifimgr_lib_commit(static_cast<uint32_t>(band), 1); }), IsEmpty());
    EXPECT_THAT(seams::trace_of([band] { wifimgr_lib_commit(static_cast<uint32_t>(band), 1); }, 7), IsEmpty());
  }
}

TEST(CommitFile, IsWrittenWithTheNewValuesBeforeTheFirstCommand) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {{"ReloadFlag", "1"}});
    ASSERT_EQ(0U, wifimgr_lib_set_ssid(static_cast<uint32_t>(band), 2, "Second"));
    std::string at_first;
    seams::on_command = [&](const std::string&) {
      if (at_first.empty()) at_first = sandbox::read_file(sandbox::dat_path(band));
      return 0;
    };
    ASSERT_EQ(0, wifimgr_lib_commit(static_cast<uint32_t>(band), 1));
    EXPECT_THAT(at_first, HasSubstr("\nSSID2=Second\n"));
    EXPECT_THAT(at_first, HasSubstr("\nReloadFlag=0\n"));
    EXPECT_EQ(at_first, sandbox::read_file(sandbox::dat_path(band)));
  }
}

TEST(CommitFile, HoldsAsManyFieldsAsThereAreSsids) {
  dat::load(0, {{"BssidNum", "3"}, {"HideSSID", "1;0;1;0;1"}});
  ASSERT_EQ(0, wifimgr_lib_commit(0, 1));
  const std::string text = sandbox::read_file(sandbox::dat_path(0));
  EXPECT_THAT(text, HasSubstr("\nHideSSID=1;0;1\n"));
  EXPECT_THAT(text, HasSubstr("\nSSID3=Net0-3\n"));
  EXPECT_THAT(text, testing::Not(HasSubstr("\nSSID4=")));
}

TEST(CommitState, ChangesNothingOfTheStoreButTheFlag) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {{"ReloadFlag", "1"}});
    dat::put(band, -1, "ReloadFlag", "0");
    const std::string expected = sandbox::segment_bytes(band);
    dat::put(band, -1, "ReloadFlag", "1");
    ASSERT_EQ(0, wifimgr_lib_commit(static_cast<uint32_t>(band), 1));
    EXPECT_EQ(expected, sandbox::segment_bytes(band));
  }
}

TEST(CommitState, LeavesTheOtherBandAlone) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    for (const int each : {0, 1}) dat::load(each, {{"ReloadFlag", "1"}});
    const std::string store = sandbox::segment_bytes(1 - band);
    const std::string file = sandbox::read_file(sandbox::dat_path(1 - band));
    ASSERT_EQ(0, wifimgr_lib_commit(static_cast<uint32_t>(band), 1));
    EXPECT_EQ(store, sandbox::segment_bytes(1 - band));
    EXPECT_EQ(file, sandbox::read_file(sandbox::dat_path(1 - band)));
  }
}

TEST(CommitState, NeitherUsesNorTakesTheSnapshot) {
  dat::load(0, {});
  const std::string before(reinterpret_cast<const char*>(store_global), sizeof store_global);
  ASSERT_EQ(0, wifimgr_lib_commit(0, 1));
  EXPECT_EQ(before, std::string(reinterpret_cast<const char*>(store_global), sizeof store_global));
}

// A commit that must fail: the errors of the trace, no command, and the reload flag it leaves.
void expect_refusal(uint32_t band, int32_t ssid_index, const std::vector<std::string>& errors) {
  EXPECT_THAT(seams::errors_of([=] { EXPECT_EQ(1, wifimgr_lib_commit(band, ssid_index)); }), ElementsAreArray(errors));
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(CommitRefusal, OfAnSsidIndexOutsideTheCountLeavesEverything) {
  for (const int band : {0, 1}) {
    for (const char* count : {"2", "1", "0", "-3", "none"}) {
      dat::load(band, {{"BssidNum", count}, {"ReloadFlag", "1"}});
      const std::string store = sandbox::segment_bytes(band);
      const std::string file = sandbox::read_file(sandbox::dat_path(band));
      for (const int32_t index : {0, -1, INT32_MIN, count[0] == '2' ? 3 : 2, INT32_MAX}) {
        SCOPED_TRACE(std::string(count) + " SSIDs, index " + std::to_string(index));
        expect_refusal(static_cast<uint32_t>(band), index,
                       {"[wifimgr_lib_commit]:===Fail Exit===The ssid index parameter is invalid.\n "});
        EXPECT_EQ(store, sandbox::segment_bytes(band));
        EXPECT_EQ(file, sandbox::read_file(sandbox::dat_path(band)));
      }
    }
  }
}

TEST(CommitRefusal, OfAnUnreadableSsidCountIsThePlainFailExitAndLeavesTheFlag) {
  dat::load_text(0, dat::with(sandbox::full_dat_without(0, "BssidNum"), "ReloadFlag", "1"));
  const std::string store = sandbox::segment_bytes(0);
  expect_refusal(0, 1, {"[read_attr]:===Fail Exit===The attr_name do not exist.\n"});
  const auto trace = seams::trace_of([] { wifimgr_lib_commit(0, 0); });
  EXPECT_EQ("[wifimgr_lib_commit]:===Enter===\n", trace.front());
  EXPECT_EQ("[wifimgr_lib_commit]:===Fail Exit===\n", trace.back());
  EXPECT_EQ(store, sandbox::segment_bytes(0));
}

TEST(CommitRefusal, OfAnUnknownBandIsThePlainFailExit) {
  for (const int band : {0, 1}) dat::load(band, {{"ReloadFlag", "1"}});
  const std::string stores = sandbox::segment_bytes(0) + sandbox::segment_bytes(1);
  for (const uint32_t band : {2U, UINT32_MAX, 0x80000000U}) {
    SCOPED_TRACE(band);
    expect_refusal(band, 1, {"[read_attr]:===Fail Exit===The wifi_type is wrong.\n"});
    EXPECT_EQ("[wifimgr_lib_commit]:===Fail Exit===\n", seams::trace_of([=] { wifimgr_lib_commit(band, 1); }).back());
  }
  EXPECT_EQ(stores, sandbox::segment_bytes(0) + sandbox::segment_bytes(1));
}

TEST(CommitRefusal, WhenTheFlagCannotBeClearedLeavesItSet) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {{"ReloadFlag", "1"}});
    const std::string file = sandbox::read_file(sandbox::dat_path(band));
    // The SSID count, WdsEnable and the flag are read under two operations each; the seventh is the flag's change.
    seams::fail(seams::semop_fault, 7, EINTR);
    expect_refusal(
        static_cast<uint32_t>(band), 1,
        {"[semaphore_p]:===Fail Exit===seamphore_p failed.\n", "[update_attr]:===Fail Exit===p operation is wrong.\n",
         "[wifimgr_lib_commit]:===Fail Exit===Set the ReloadFlag failed.\n"});
    EXPECT_EQ("1\n", sandbox::field(band, "ReloadFlag", 1));
    EXPECT_EQ(file, sandbox::read_file(sandbox::dat_path(band)));
  }
}

TEST(CommitRefusal, WhenTheFileCannotBeWrittenHasClearedTheFlag) {
  constexpr const char* kMessages[] = {
      "[wifimgr_lib_commit]:===Fail Exit===WIFI_2_4G updtate datefile from shm failed.\n ",
      "[wifimgr_lib_commit]:===Fail Exit===WIFI_5G updtate datefile from shm failed.\n "};
  char nowhere[WIFIMGR_DAT_PATH_SIZE] = "/tmp/none/wlan.dat";
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {{"ReloadFlag", "1"}});
    ASSERT_EQ(0, wifimgr_lib_set_wifi_path(band, nowhere));
    expect_refusal(
        static_cast<uint32_t>(band), 1,
        {"[update_datafile_from_shm]:===Fail Exit===Open the file /tmp/none/wlan.dat failed.\n", kMessages[band]});
    EXPECT_EQ("0", sandbox::field(band, "ReloadFlag", 1));
  }
}

TEST(CommitRefusal, OfALineThatDoesNotFitTheFileLeavesTheFile) {
  dat::load(0, {{"ReloadFlag", "1"}, {"BssidNum", "2"}});
  dat::put(0, 1, "AuthMode", std::string(149, 'a'));
  dat::put(0, 2, "AuthMode", std::string(149, 'b'));
  const std::string file = sandbox::read_file(sandbox::dat_path(0));
  expect_refusal(0, 1, {"[wifimgr_lib_commit]:===Fail Exit===WIFI_2_4G updtate datefile from shm failed.\n "});
  EXPECT_EQ("0", sandbox::field(0, "ReloadFlag", 1));
  EXPECT_EQ(file, sandbox::read_file(sandbox::dat_path(0)));
}

TEST(CommitRefusal, ChecksTheIndexBeforeItReadsTheFlag) {
  dat::load(1, {{"ReloadFlag", "1"}});
  const auto trace = seams::trace_of([] { wifimgr_lib_commit(1, 3); });
  EXPECT_THAT(trace, testing::Each(testing::Not(HasSubstr("reloadFlag"))));
  EXPECT_THAT(trace, testing::Each(testing::Not(HasSubstr("wdsenable"))));
}

TEST(ReloadFlag, IsReadAndWrittenWithoutAnyCheck) {
  for (const int band : {0, 1}) {
    const uint32_t number = static_cast<uint32_t>(band);
    dat::load(band, {{"ReloadFlag", "1"}});
    char text[WIFIMGR_VALUE_SIZE] = "";
    EXPECT_EQ(0, wifimgr_lib_get_reloadFlag(number, text, sizeof text));
    EXPECT_STREQ("1\n", text);
    for (const char* value : {"0", "1", "2", "", "yes"}) {
      EXPECT_EQ(0, wifimgr_lib_set_reloadFlag(number, value));
      EXPECT_EQ(value, sandbox::field(band, "ReloadFlag", 1));
    }
  }
}

TEST(ReloadFlag, OfOneBandLeavesTheOtherAlone) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const int band : {0, 1}) {
    const std::string other = sandbox::segment_bytes(1 - band);
    EXPECT_EQ(0, wifimgr_lib_set_reloadFlag(static_cast<uint32_t>(band), "1"));
    EXPECT_EQ(other, sandbox::segment_bytes(1 - band));
  }
}

TEST(ReloadFlag, RefusesNullUnknownBandsAndAMissingKey) {
  sandbox::load(0, sandbox::full_dat_without(0, "ReloadFlag"));
  char text[WIFIMGR_VALUE_SIZE] = "untouched";
  EXPECT_THAT(
      seams::trace_of([] { EXPECT_EQ(1, wifimgr_lib_get_reloadFlag(0, nullptr, 160)); }),
      ElementsAre("[wifimgr_lib_get_reloadFlag]:===Enter===\n", "[wifimgr_lib_get_reloadFlag]:===Fail Exit===\n"));
  EXPECT_THAT(
      seams::trace_of([] { EXPECT_EQ(1, wifimgr_lib_set_reloadFlag(0, nullptr)); }),
      ElementsAre("[wifimgr_lib_set_reloadFlag]:===Enter===\n", "[wifimgr_lib_set_reloadFlag]:===Fail Exit===\n"));
  for (const uint32_t band : {0U, 2U, UINT32_MAX}) {
    const std::string why = band == 0 ? "The attr_name do not exist.\n" : "The wifi_type is wrong.\n";
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_reloadFlag(band, text, sizeof text)); }),
                ElementsAre("[read_attr]:===Fail Exit===" + why));
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_set_reloadFlag(band, "1")); }),
                ElementsAre("[update_attr]:===Fail Exit===" + why));
  }
  EXPECT_STREQ("untouched", text);
}

TEST(ReloadFlag, NeedsABufferOfAFieldAndOne) {
  dat::load(0, {});
  char text[WIFIMGR_VALUE_SIZE] = "";
  EXPECT_EQ(0, wifimgr_lib_get_reloadFlag(0, text, 151));
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_reloadFlag(0, text, 150)); }),
              ElementsAre("[read_attr]:===Fail Exit===The size of buffer is too small!\n"));
}

}  // namespace

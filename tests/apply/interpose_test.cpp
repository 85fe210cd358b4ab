// A program may stand in for any exported function: the library's calls of it arrive there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "apply/command_list.h"
#include "apply/dat_text.h"
#include "apply/interposed.h"
#include "support/seams.h"

namespace {

using commands::down;
using commands::joined;
using commands::up;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// Past the library's own functions, so that no call of them is counted.
void put_auth_mode(int band, const char* mode) {
  auto* record = reinterpret_cast<wifimgr_attr_record*>(band == 0 ? shm_addr_2_4g : shm_addr_5g);
  for (; record->key[0] != '\0'; ++record) {
    if (std::strcmp(record->key, "AuthMode") == 0) std::strcpy(record->field[0], mode);
  }
}

// Calls only functions that no other function of the library calls, and through them all the others.
void use_everything() {
  seams::put_chips_on_the_bus({"7615"});
  for (const int band : {0, 1}) {
    const uint32_t number = static_cast<uint32_t>(band);
    dat::load(band, {{"WdsEnable", "1"}, {"TxPower", "3"}});
    sandbox::stdout_of([band] { wifimgr_lib_dump(band); });
    wifimgr_lib_wifi_config_oper(number, 0);
    wifimgr_lib_wifi_config_oper(number, 1);
    wifimgr_lib_set_bssidNum(number, -1, "1");
    for (const char* mode : {"0", "1", "2", "3", "9", "14"}) {
      for (const char* auth : {"WEP", "WPA2", "OPEN"}) {
        wifimgr_lib_set_wirelessMode(number, -1, mode);
        wifimgr_lib_set_key1Str(number, 1, "12345");
        put_auth_mode(band, auth);
        wifimgr_lib_wifi_config_oper(number, 0);
        wifimgr_lib_check_wifi_value_befor_write_dat(number);
      }
    }
    wifimgr_lib_commit(number, 1);
    wifimgr_lib_save_dataFile(band);
    wifimgr_lib_set_wdsencryptype(number, -1, "WEP;AES;AES;AES");
    wifimgr_lib_set_wdslist(number, -1, "00:00:00:00:00:01;00:00:00:00:00:02;00:00:00:00:00:03;00:00:00:00:00:04");
    wifimgr_lib_set_wdskey(number, 1, "12345");
    wifimgr_lib_set_wdskey(number, 2, "12345678");
    wifimgr_lib_set_MacAddress(number, -1, "02:00:00:00:00:01");
    wifimgr_lib_set_ownip(number, -1, "192.168.1.1");
    wifimgr_lib_set_radiuskey(number, 1, std::string(64, 'a').c_str());
    char text[WIFIMGR_VALUE_SIZE] = "";
    wifimgr_lib_get_key1Type(number, 1, text, sizeof text);
    wifimgr_lib_get_key1Str(number, 1, text, sizeof text);
    wifimgr_lib_set_key1Type(number, 1, "0");
    wifimgr_lib_set_hideSSID(number, 1, "1");
  }
  zqdbg_blapi_printf("message");
  char a[WIFIMGR_FIELD_SIZE], b[WIFIMGR_FIELD_SIZE], c[WIFIMGR_FIELD_SIZE], d[WIFIMGR_FIELD_SIZE];
  check_para_valid("1;2;3;4", a, b, c, d);
}

TEST(Interpose, EveryFunctionThatTheLibraryCallsCanBeStoodInFor) {
  sandbox::stdout_of([] { use_everything(); });
  const std::vector<std::string> names = interposed::names();
  EXPECT_GT(names.size(), 100U);
  for (const std::string& name : names) EXPECT_GT(interposed::calls[name], 0) << name;
}

TEST(Interpose, GetterGivesWhatTheStandInForTheStoreGives) {
  interposed::read_attr_answer = [](int wifi_type, int index, const char* name, char* buf, unsigned len) {
    EXPECT_EQ(7, wifi_type);
    EXPECT_EQ(-1, index);
    EXPECT_STREQ("RTSThreshold", name);
    EXPECT_EQ(33U, len);
    std::strcpy(buf, "from the stand-in");
    return 0;
  };
  char text[33] = "";
  EXPECT_EQ(0, wifimgr_lib_get_rtsThreshold(7, -1, text, sizeof text));
  EXPECT_STREQ("from the stand-in", text);
}

TEST(Interpose, SetterGivesItsValueToTheStandInForTheStore) {
  std::vector<std::string> written;
  interposed::update_attr_answer = [&](int wifi_type, int index, const char* name, const char* value) {
    written.push_back(std::to_string(wifi_type) + " " + std::to_string(index) + " " + name + "=" + value);
    return 0;
  };
  EXPECT_EQ(0U, wifimgr_lib_set_beaconPeriod(1, -1, "100"));
  EXPECT_EQ(0U, wifimgr_lib_set_wdsenable(0, -1, "1"));
  EXPECT_THAT(written, ElementsAre("1 -1 BeaconPeriod=100", "0 -1 WdsEnable=1"));
}

TEST(Interpose, SetterBelievesTheStandInForACheck) {
  dat::load(0, {});
  interposed::answers["MacCheck"] = 1;
  EXPECT_EQ(0U, wifimgr_lib_set_MacAddress(0, -1, "anything"));
  EXPECT_EQ("anything", sandbox::field(0, "MacAddress", 1));
}

// A group's name without its ending, for both operations.
const char* const kGroups[] = {"systemreboot", "commoncap", "entrycap", "htcap",
                               "vhtcap",       "hecap",     "wds",      "chipspecial"};

TEST(Interpose, TakingASnapshotRunsTheGroupsInOrderWhateverTheyAnswer) {
  for (const uint32_t band : {0U, 1U}) {
    for (const char* group : kGroups) interposed::answers[std::string(group) + "_store"] = 5;
    interposed::group_calls.clear();
    EXPECT_EQ(0U, wifimgr_lib_wifi_config_oper(band, 0));
    ASSERT_EQ(8U, interposed::group_calls.size());
    for (size_t i = 0; i < 8; ++i) {
      EXPECT_EQ(std::string(kGroups[i]) + "_store", interposed::group_calls[i].function);
      EXPECT_EQ(&store_global[band], interposed::group_calls[i].record);
      EXPECT_EQ(band, interposed::group_calls[i].wifi_type);
    }
  }
}

TEST(Interpose, ComparingEndsWithTheFirstGroupThatAnswersAndGivesItsAnswer) {
  for (const uint32_t band : {0U, 1U}) {
    for (size_t first = 0; first <= 8; ++first) {
      SCOPED_TRACE(first);
      for (size_t i = 0; i < 8; ++i) interposed::answers[std::string(kGroups[i]) + "_compare"] = i < first ? 0 : 10 + i;
      interposed::group_calls.clear();
      EXPECT_EQ(first < 8 ? 10 + first : 0, wifimgr_lib_wifi_config_oper(band, 1));
      ASSERT_EQ(first < 8 ? first + 1 : 8, interposed::group_calls.size());
      for (size_t i = 0; i < interposed::group_calls.size(); ++i) {
        EXPECT_EQ(std::string(kGroups[i]) + "_compare", interposed::group_calls[i].function);
        EXPECT_EQ(&store_global[band], interposed::group_calls[i].record);
        EXPECT_EQ(band, interposed::group_calls[i].wifi_type);
      }
    }
  }
}

TEST(Interpose, CommitSavesTheBandWithItsSsidCount) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"BssidNum", "3"}});
    std::vector<std::pair<int, int>> saved;
    interposed::update_datafile_answer = [&](int wifi_type, int bssid_num) {
      EXPECT_THAT(seams::commands, IsEmpty());
      saved.emplace_back(wifi_type, bssid_num);
      return 0;
    };
    EXPECT_EQ(0, wifimgr_lib_commit(static_cast<uint32_t>(band), 3));
    EXPECT_THAT(saved, ElementsAre(std::pair(band, 3)));
    interposed::update_datafile_answer = nullptr;
    seams::commands.clear();
  }
}

TEST(Interpose, CommitGivesTheChipSearchSevenClearedFlags) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"ReloadFlag", "1"}});
    int searches = 0;
    interposed::parse_driver_answer = [&](char* flags, int count) {
      EXPECT_STREQ("0000000", flags);
      EXPECT_EQ(7, count);
      ++searches;
      std::memset(flags, '1', 7);
      return 1;
    };
    seams::commands.clear();
    EXPECT_EQ(0, wifimgr_lib_commit(static_cast<uint32_t>(band), 1));
    EXPECT_EQ(1, searches);
    // A search that fails reloads nothing, whatever it has put into the flags.
    EXPECT_THAT(seams::commands,
                ElementsAreArray(band == 0 ? joined({down("wds", 4), down("ra", 2), up("ra", {0, 1})})
                                           : joined({down("wdsi", 4), down("rai", 2), up("rai", {0, 1})})));
  }
}

TEST(Interpose, CommitTakesOnlyAOneForAChip) {
  dat::load(0, {{"ReloadFlag", "1"}});
  interposed::parse_driver_answer = [](char* flags, int) {
    std::memcpy(flags, "2x1yyyy", 7);
    return 0;
  };
  EXPECT_EQ(0, wifimgr_lib_commit(0, 1));
  EXPECT_THAT(seams::commands, ElementsAreArray(joined({down("wds", 4),
                                                        down("ra", 2),
                                                        {"rmmod mt7615_ap", "insmod /lib/modules/4.4.115/mt7615_ap.ko"},
                                                        up("ra", {0, 1})})));
}

TEST(Interpose, ValueThatComesWithAFailureIsNotKept) {
  interposed::read_attr_answer = [](int, int, const char* name, char* buf, unsigned) {
    const bool readable = std::strcmp(name, "BssidNum") == 0;
    std::strcpy(buf, readable ? "2" : "9");
    return readable ? 0 : 1;
  };
  wifimgr_lib_wifi_config_oper(1, 0);
  EXPECT_EQ(2, store_global[1].bss_count);
  for (const int32_t number : {store_global[1].whnat, store_global[1].channel, store_global[1].vht_bw,
                               store_global[1].vht_sgi, store_global[1].ht_gi, store_global[1].sr_mode}) {
    EXPECT_EQ(0, number);
  }
}

// An unknown band has neither SSID count nor flag in a real store; a stand-in shows what comes behind.
void answer_for_unknown_band(const char* reload_flag) {
  interposed::read_attr_answer = [reload_flag](int, int, const char* name, char* buf, unsigned) {
    if (std::strcmp(name, "BssidNum") == 0) std::strcpy(buf, "2");
    if (std::strcmp(name, "ReloadFlag") == 0) std::strcpy(buf, reload_flag);
    return 0;
  };
}

TEST(Interpose, CommitOfAnUnknownBandWithASsidCountIsRefused) {
  for (const uint32_t band : {2U, 0xffffffffU}) {
    answer_for_unknown_band("0");
    EXPECT_THAT(seams::errors_of([band] { EXPECT_EQ(1, wifimgr_lib_commit(band, 1)); }),
                ElementsAre("[wifimgr_lib_commit]:===Fail Exit===type should be 2.4G or 5G .\n "));
    EXPECT_THAT(seams::commands, IsEmpty());
  }
}

TEST(Interpose, CommitOfAnUnknownBandFailsFirstToClearItsFlag) {
  answer_for_unknown_band("1");
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, wifimgr_lib_commit(2, 1)); }),
              ElementsAre("[update_attr]:===Fail Exit===The wifi_type is wrong.\n",
                          "[wifimgr_lib_commit]:===Fail Exit===Set the ReloadFlag failed.\n"));
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(Interpose, CommitOfAnUnknownBandChecksTheIndexBeforeItsFlag) {
  answer_for_unknown_band("1");
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, wifimgr_lib_commit(2, 3)); }),
              ElementsAre("[wifimgr_lib_commit]:===Fail Exit===The ssid index parameter is invalid.\n "));
}

}  // namespace

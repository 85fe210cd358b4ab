// The snapshot's layout, and taking and comparing it as a whole.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using testing::IsEmpty;
using Snapshot = wifimgr_band_snapshot;

std::string bytes_of(const Snapshot& record) {
  return std::string(reinterpret_cast<const char*>(&record), sizeof record);
}

std::string both_records() {
  return bytes_of(store_global[0]) + bytes_of(store_global[1]);
}

uint64_t take(uint32_t band) {
  return wifimgr_lib_wifi_config_oper(band, 0);
}
uint64_t compare(uint32_t band) {
  return wifimgr_lib_wifi_config_oper(band, 1);
}

// The record of a band as it must lie in memory, written piece by piece.
class Image {
 public:
  Image& text(size_t width, const std::string& value) {
    bytes_ += value;
    bytes_.append(width - value.size(), '\0');
    return *this;
  }
  Image& number(int32_t value) {
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
    return *this;
  }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

const char kDistinctValues[] =
    "Default\n"
    "BssidNum=2\nWHNAT=102\nChannel=103\nCountryRegion=104\nCountryRegionABand=105\nBeaconPeriod=106\n"
    "DtimPeriod=107\nHT_TxStream=108\nHT_RxStream=109\nHT_BSSCoexistence=110\nWirelessMode=111\nHT_EXTCHA=112\n"
    "HT_BW=113\nHT_GI=114\nVHT_BW=115\nVHT_SGI=116\nTxPower=117\nMuOfdmaDlEnable=118\nMuOfdmaUlEnable=119\n"
    "MuMimoDlEnable=120\nMuMimoUlEnable=121\nTWTSupport=122\nSREnable=123\nSRMode=124\nSRSDEnable=125\n"
    "FragThreshold=70000\nWdsEnable=3\nWdsEncrypType=AES;TKIP;WEP;NONE\nWds0Key=key-of-link-1\n"
    "WdsList=02:00:00:00:00:01;02:00:00:00:00:02;02:00:00:00:00:03;02:00:00:00:00:04\nAuthMode=WEPAUTO;OPEN\n"
    "Key1Str1=first\nKey2Str1=second\nKey3Str1=third\nKey4Str1=fourth\n"
    "APSDCapable=127;128\nWscV2Support=129;130\nEnableSSID=131;132\n";

std::string image_of(const char* prefix, int32_t region, int32_t region_a_band, int32_t vht_bw, int32_t vht_sgi) {
  Image image;
  image.text(16, prefix).number(2).number(102).number(103).number(region).number(region_a_band);
  image.number(106).number(107).number(108).number(109).number(110).number(111).number(112).number(113).number(114);
  image.number(vht_bw).number(vht_sgi).number(117).number(118).number(119).number(120).number(121).number(122);
  image.number(123).number(124).number(125).number(70000).text(1, "\3");
  image.text(32, "AES;TKIP;WEP;NONE").text(65, "key-of-link-1");
  image.text(80, "02:00:00:00:00:01;02:00:00:00:00:02;02:00:00:00:00:03;02:00:00:00:00:04");
  image.text(27, "first").text(27, "second").text(27, "third").text(27, "fourth");
  image.number(127).number(0).number(129).number(0).number(131).text(6, "");
  return image.bytes();
}

TEST(SnapshotLayout, IsTheSameForCallersThatUseTheStruct) {
  static_assert(sizeof(Snapshot) == 432 && alignof(Snapshot) == 1 && sizeof store_global == 864);
#define AT(field, offset, size)                         \
  EXPECT_EQ(size_t{offset}, offsetof(Snapshot, field)); \
  EXPECT_EQ(size_t{size}, sizeof(Snapshot::field))
  AT(prefix, 0, 16);
  AT(bss_count, 16, 4);
  AT(whnat, 20, 4);
  AT(channel, 24, 4);
  AT(country_region, 28, 4);
  AT(country_region_a_band, 32, 4);
  AT(beacon_period, 36, 4);
  AT(dtim_period, 40, 4);
  AT(ht_tx_stream, 44, 4);
  AT(ht_rx_stream, 48, 4);
  AT(ht_bss_coexistence, 52, 4);
  AT(wireless_mode, 56, 4);
  AT(ht_extcha, 60, 4);
  AT(ht_bw, 64, 4);
  AT(ht_gi, 68, 4);
  AT(vht_bw, 72, 4);
  AT(vht_sgi, 76, 4);
  AT(tx_power, 80, 4);
  AT(mu_ofdma_dl_enable, 84, 4);
  AT(mu_ofdma_ul_enable, 88, 4);
  AT(mu_mimo_dl_enable, 92, 4);
  AT(mu_mimo_ul_enable, 96, 4);
  AT(twt_support, 100, 4);
  AT(sr_enable, 104, 4);
  AT(sr_mode, 108, 4);
  AT(srsd_enable, 112, 4);
  AT(frag_threshold, 116, 4);
  AT(wds_enable, 120, 1);
  AT(wds_encryp_type, 121, 32);
  AT(wds_key, 153, 65);
  AT(wds_list, 218, 80);
  AT(wep_key, 298, 108);
  AT(apsd_capable, 406, 8);
  AT(wsc_v2_support, 414, 8);
  AT(ssid_enable, 422, 4);
  AT(filling, 426, 6);
#undef AT
}

TEST(SnapshotLayout, HoldsEveryValueOf2_4GInItsPlace) {
  sandbox::load(0, kDistinctValues);
  EXPECT_EQ(0U, take(0));
  EXPECT_EQ(image_of("ra", 104, 0, 0, 0), bytes_of(store_global[0]));
}

TEST(SnapshotLayout, HoldsEveryValueOf5GInItsPlace) {
  sandbox::load(1, kDistinctValues);
  EXPECT_EQ(0U, take(1));
  EXPECT_EQ(image_of("rai", 0, 105, 115, 116), bytes_of(store_global[1]));
}

TEST(Snapshot, IsAllZeroBeforeTheFirstOne) {
  EXPECT_EQ(std::string(864, '\0'), both_records());
}

TEST(Snapshot, OfOneBandLeavesTheOthersAlone) {
  for (const uint32_t band : {0U, 1U}) {
    SCOPED_TRACE(band);
    std::memset(store_global, 0x5a, sizeof store_global);
    sandbox::load(static_cast<int>(band), kDistinctValues);
    take(band);
    EXPECT_EQ(std::string(432, 0x5a), bytes_of(store_global[1 - band]));
  }
}

TEST(Snapshot, ForgetsEverythingOfTheOneBefore) {
  dat::load_text(0, "Default\nBssidNum=1\n");
  std::memset(store_global, 0x5a, sizeof store_global);
  EXPECT_EQ(0U, take(0));
  std::string expected(432, '\0');
  expected.replace(0, 2, "ra");
  expected[16] = 1;
  EXPECT_EQ(expected, bytes_of(store_global[0]));
}

TEST(Snapshot, DoesNotChangeTheStore) {
  for (const uint32_t band : {0U, 1U}) {
    SCOPED_TRACE(band);
    sandbox::load(static_cast<int>(band), kDistinctValues);
    const std::string before = sandbox::segment_bytes(static_cast<int>(band));
    take(band);
    compare(band);
    EXPECT_EQ(before, sandbox::segment_bytes(static_cast<int>(band)));
  }
}

TEST(Snapshot, ComparesEqualRightAfterItWasTaken) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    for (const std::string& text : {sandbox::full_dat(band), std::string(kDistinctValues)}) {
      sandbox::load(band, text);
      take(static_cast<uint32_t>(band));
      EXPECT_EQ(0U, compare(static_cast<uint32_t>(band)));
    }
  }
}

TEST(Snapshot, ComparingDoesNotChangeIt) {
  sandbox::load(1, kDistinctValues);
  take(1);
  const std::string before = both_records();
  dat::put(1, -1, "Channel", "7");
  EXPECT_EQ(1U, compare(1));
  EXPECT_EQ(1U, compare(1));
  EXPECT_EQ(before, both_records());
}

TEST(Snapshot, ComparedBeforeTheFirstOneNeedsARebootForTheSsidCount) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    sandbox::load(band, "Default\nBssidNum=1\nWHNAT=0\n");
    EXPECT_EQ(2U, compare(static_cast<uint32_t>(band)));
  }
}

TEST(Snapshot, ComparedBeforeTheFirstOneIsEqualToAStoreOfZeros) {
  sandbox::load(1, "Default\nBssidNum=0\nWHNAT=0\nChannel=0\nWdsEnable=0\n");
  EXPECT_EQ(0U, compare(1));
}

TEST(Snapshot, TakenAgainEndsTheDifference) {
  dat::load(0, {});
  take(0);
  dat::put(0, -1, "BssidNum", "1");
  EXPECT_EQ(2U, compare(0));
  take(0);
  EXPECT_EQ(0U, compare(0));
}

TEST(Snapshot, RebootChangeWinsOverARadioChange) {
  for (const char* key : {"BssidNum", "WHNAT"}) {
    SCOPED_TRACE(key);
    dat::load(0, {});
    take(0);
    dat::put(0, -1, "TxPower", "50");
    EXPECT_EQ(1U, compare(0));
    dat::put(0, -1, key, "3");
    EXPECT_EQ(2U, compare(0));
  }
}

TEST(Snapshot, UnknownOperationDoesNothing) {
  dat::load(0, {});
  std::memset(store_global, 0x5a, sizeof store_global);
  for (const int32_t operation : {2, 3, -1, INT32_MAX, INT32_MIN}) {
    SCOPED_TRACE(operation);
    EXPECT_THAT(seams::trace_of([operation] { EXPECT_EQ(0U, wifimgr_lib_wifi_config_oper(0, operation)); }), IsEmpty());
    EXPECT_EQ(std::string(864, 0x5a), both_records());
  }
}

TEST(Snapshot, UnknownBandDoesNothing) {
  dat::load(0, {});
  std::memset(store_global, 0x5a, sizeof store_global);
  for (const uint32_t band : {2U, 3U, UINT32_MAX, 0x80000000U}) {
    for (const int32_t operation : {0, 1}) {
      SCOPED_TRACE(band);
      EXPECT_THAT(seams::trace_of([=] { EXPECT_EQ(0U, wifimgr_lib_wifi_config_oper(band, operation)); }), IsEmpty());
      EXPECT_EQ(std::string(864, 0x5a), both_records());
    }
  }
}

TEST(Snapshot, OfABandThatIsNotLoadedHoldsItsPrefixAlone) {
  std::memset(store_global, 0x5a, sizeof store_global);
  EXPECT_EQ(0U, take(1));
  std::string expected(432, '\0');
  expected.replace(0, 3, "rai");
  EXPECT_EQ(expected, bytes_of(store_global[1]));
}

TEST(Snapshot, ChipGroupHoldsItsPlace) {
  Snapshot record;
  std::memset(&record, 0x5a, sizeof record);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(&record), chipspecial_store(&record, 0));
  EXPECT_EQ(0U, chipspecial_store(nullptr, 1));
  EXPECT_EQ(0U, chipspecial_compare(&record, 0));
  EXPECT_EQ(0U, chipspecial_compare(nullptr, 1));
  EXPECT_EQ(std::string(432, 0x5a), bytes_of(record));
}

TEST(Snapshot, GroupsDoNothingWithoutARecord) {
  dat::load(1, {{"WdsEnable", "1"}});
  for (const auto group : {systemreboot_store, commoncap_store, entrycap_store, htcap_store, vhtcap_store, hecap_store,
                           wds_store, systemreboot_compare, commoncap_compare, entrycap_compare, htcap_compare,
                           vhtcap_compare, hecap_compare, wds_compare}) {
    EXPECT_EQ(0U, group(nullptr, 1));
  }
}

}  // namespace

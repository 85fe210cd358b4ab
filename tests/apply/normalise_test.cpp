// The values that follow the wireless mode, channel and TX power, call by call.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply/calls.h"
#include "apply/dat_text.h"
#include "support/seams.h"

// The parts for one SSID are calls of their own here.
extern "C" {

void update_auth_mode(uint32_t wifi_type, uint32_t ssid_index) {
  const calls::Call call("update_auth_mode", {std::to_string(wifi_type), std::to_string(ssid_index)});
  calls::real<decltype(update_auth_mode)>("update_auth_mode")(wifi_type, ssid_index);
}

void update_fixedTxMode(uint32_t wifi_type, uint32_t ssid_index, uint32_t wireless_mode) {
  const calls::Call call("update_fixedTxMode",
                         {std::to_string(wifi_type), std::to_string(ssid_index), std::to_string(wireless_mode)});
  calls::real<decltype(update_fixedTxMode)>("update_fixedTxMode")(wifi_type, ssid_index, wireless_mode);
}

}  // extern "C"

namespace {

using testing::Contains;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using Lines = std::vector<std::string>;

void normalise(uint32_t band) {
  EXPECT_EQ(0, wifimgr_lib_check_wifi_value_befor_write_dat(band));
}

Lines calls_of(uint32_t band) {
  return calls::made_by([band] { normalise(band); });
}

// What a wireless mode of 2.4G asks for; null for what is left alone.
struct Mode2_4G {
  int mode;
  const char* wmm;
  const char* ht_bw;
  const char* basic_rate;
  const char* ht_op_mode;
};

constexpr Mode2_4G kModes2_4G[] = {
    {0, nullptr, "0", "15", "1"},     {1, nullptr, "0", "3", "1"},       {2, nullptr, "0", nullptr, "0"},
    {3, nullptr, "0", nullptr, "0"},  {4, nullptr, "0", "351", "0"},     {5, nullptr, "0", nullptr, "0"},
    {6, "0", nullptr, "15", "0"},     {7, nullptr, nullptr, "351", "1"}, {8, nullptr, "0", nullptr, "0"},
    {9, "0", nullptr, "15", "1"},     {10, nullptr, "0", nullptr, "0"},  {11, nullptr, "0", nullptr, "0"},
    {12, nullptr, "0", nullptr, "0"}, {13, nullptr, "0", nullptr, "0"},  {14, nullptr, "0", nullptr, "0"},
    {15, nullptr, "0", nullptr, "0"}, {16, "0", nullptr, "15", "1"},     {17, nullptr, "0", nullptr, "0"},
    {18, nullptr, "0", nullptr, "0"}, {-1, nullptr, "0", nullptr, "0"},
};

TEST(Normalise, DoesForEveryWirelessModeOf2_4GWhatItAsksFor) {
  dat::load(0, {});
  for (const Mode2_4G& m : kModes2_4G) {
    SCOPED_TRACE(m.mode);
    dat::put(0, -1, "WirelessMode", std::to_string(m.mode));
    Lines expected = {"get_wirelessMode(0,-1)", "get_bssidnum(0,-1)"};
    for (const char* ssid : {"1", "2"}) {
      const std::string target = std::string("(0,") + ssid;
      expected.push_back("update_auth_mode" + target + ")");
      if (m.wmm != nullptr) expected.push_back("set_wmmCapable" + target + "," + m.wmm + ")");
      expected.push_back("update_fixedTxMode" + target + "," + std::to_string(static_cast<uint32_t>(m.mode)) + ")");
    }
    expected.insert(expected.end(), {"get_wmmCapable(0,1)", "get_wmmCapable(0,2)", "set_txBurst(0,-1,1)"});
    if (m.ht_bw != nullptr) expected.push_back(std::string("set_HT_BW(0,-1,") + m.ht_bw + ")");
    expected.insert(expected.end(), {"get_channel(0,-1)", "set_autoChannelSelect(0,-1,0)"});
    if (m.basic_rate != nullptr) expected.push_back(std::string("set_basicRate(0,-1,") + m.basic_rate + ")");
    expected.push_back(std::string("set_HT_OpMode(0,-1,") + m.ht_op_mode + ")");
    expected.push_back("get_txPower(0,-1)");
    EXPECT_THAT(calls_of(0), ElementsAreArray(expected));
  }
}

// What a wireless mode of 5G asks for; VHT_BW and VHT_SGI in a VHT mode with HT_BW 1.
struct Mode5G {
  int mode;
  bool wmm;
  bool ht_bw;
  bool vht;
};

constexpr Mode5G kModes5G[] = {
    {0, false, false, false},  {1, false, false, false},  {2, false, true, false},   {3, false, false, false},
    {4, false, false, false},  {5, false, false, false},  {6, false, false, false},  {7, false, false, false},
    {8, true, false, false},   {9, false, false, false},  {10, false, false, false}, {11, false, false, false},
    {12, false, false, false}, {13, false, false, false}, {14, true, false, true},   {15, true, false, true},
    {16, false, false, false}, {17, true, false, true},   {18, false, false, false}, {-1, false, false, false},
};

Lines expected_5g(const Mode5G& m, bool ht_bw_is_one) {
  Lines expected = {"get_wirelessMode(1,-1)", "get_bssidnum(1,-1)"};
  for (const char* ssid : {"1", "2"}) {
    const std::string target = std::string("(1,") + ssid;
    expected.push_back("update_auth_mode" + target + ")");
    if (m.wmm) expected.push_back("set_wmmCapable" + target + ",1)");
    expected.push_back("set_fixedTxMode" + target + ",0)");
  }
  expected.insert(expected.end(), {"get_wmmCapable(1,1)", "get_wmmCapable(1,2)", "set_txBurst(1,-1,1)"});
  if (m.ht_bw) expected.push_back("set_HT_BW(1,-1,0)");
  if (m.vht) {
    expected.push_back("get_HT_BW(1,-1)");
    if (!ht_bw_is_one) expected.push_back("set_VHT_SGI(1,-1,1)");
  } else {
    expected.insert(expected.end(), {"set_VHT_BW(1,-1,0)", "set_VHT_SGI(1,-1,1)"});
  }
  expected.insert(expected.end(), {"set_HT_OpMode(1,-1,0)", "get_channel(1,-1)", "set_autoChannelSelect(1,-1,0)",
                                   "set_HT_OpMode(1,-1,0)"});
  return expected;
}

TEST(Normalise, DoesForEveryWirelessModeOf5GWhatItAsksFor) {
  dat::load(1, {});
  for (const Mode5G& m : kModes5G) {
    SCOPED_TRACE(m.mode);
    dat::put(1, -1, "WirelessMode", std::to_string(m.mode));
    dat::put(1, -1, "HT_BW", "1");
    EXPECT_THAT(calls_of(1), ElementsAreArray(expected_5g(m, true)));
    for (const char* ht_bw : {"0", "2", "", "10"}) {
      SCOPED_TRACE(ht_bw);
      dat::put(1, -1, "HT_BW", ht_bw);
      EXPECT_THAT(calls_of(1), ElementsAreArray(expected_5g(m, false)));
    }
  }
}

TEST(Normalise, VhtGuardIntervalFollowsAnUnreadableHtBandwidth) {
  sandbox::load(1, dat::with(sandbox::full_dat_without(1, "HT_BW"), "VHT_SGI", "0;0"));
  for (const char* mode : {"14", "15", "17"}) {
    SCOPED_TRACE(mode);
    dat::put(1, -1, "WirelessMode", mode);
    dat::put(1, -1, "VHT_SGI", "0");
    normalise(1);
    EXPECT_EQ("1;1", sandbox::field(1, "VHT_SGI", 1));
  }
}

TEST(Normalise, HtBandwidthStaysInAModeThatRefusesIt) {
  // The setter's own set of modes, which has 2 and 5 but none of 0, 1, 3, 4, 12 and 13.
  struct Case {
    const char* mode;
    const char* ht_bw;
  };
  dat::load(0, {});
  for (const Case& c : std::initializer_list<Case>{{"0", "1"},
                                                   {"1", "1"},
                                                   {"2", "0"},
                                                   {"3", "1"},
                                                   {"4", "1"},
                                                   {"5", "0"},
                                                   {"6", "1"},
                                                   {"7", "1"},
                                                   {"8", "0"},
                                                   {"9", "1"},
                                                   {"12", "1"},
                                                   {"16", "1"},
                                                   {"17", "0"}}) {
    SCOPED_TRACE(c.mode);
    dat::put(0, -1, "WirelessMode", c.mode);
    dat::put(0, -1, "HT_BW", "1");
    EXPECT_THAT(sandbox::stdout_of([] { normalise(0); }), IsEmpty());
    EXPECT_EQ(c.ht_bw, sandbox::field(0, "HT_BW", 1));
  }
}

TEST(Normalise, ChannelZeroIsSelectedAutomatically) {
  struct Case {
    const char* channel;
    const char* select;
  };
  for (const int band : {0, 1}) {
    dat::load(band, {});
    for (const Case& c : std::initializer_list<Case>{
             {"0", "3"}, {"0\n", "3"}, {"", "3"}, {"auto", "3"}, {"1", "0"}, {"36", "0"}, {"36\n", "0"}, {"-1", "0"}}) {
      SCOPED_TRACE(testing::PrintToString(c.channel));
      dat::put(band, -1, "Channel", c.channel);
      dat::put(band, -1, "AutoChannelSelect", "2");
      normalise(static_cast<uint32_t>(band));
      EXPECT_EQ(c.select, sandbox::field(band, "AutoChannelSelect", 1));
      EXPECT_EQ(c.channel, sandbox::field(band, "Channel", 1));
    }
  }
}

TEST(Normalise, UnreadableChannelCountsAsZero) {
  for (const int band : {0, 1}) {
    sandbox::load(band, sandbox::full_dat_without(band, "Channel"));
    EXPECT_THAT(sandbox::stdout_of([band] { normalise(static_cast<uint32_t>(band)); }), IsEmpty());
    EXPECT_EQ("3", sandbox::field(band, "AutoChannelSelect", 1));
  }
}

TEST(Normalise, TxPowerLevelsOf2_4GBecomePercentages) {
  struct Case {
    const char* level;
    const char* percentage;
  };
  dat::load(0, {});
  for (const Case& c : std::initializer_list<Case>{
           {"1", "75"},  {"2", "50"},  {"3", "25"}, {"4", "15"},  {"5", "9"},   {"6", "100"},      {"0", "0"},
           {"7", "7"},   {"8", "8"},   {"9", "9"},  {"15", "15"}, {"25", "25"}, {"100", "100"},    {"3\n", "25"},
           {"03", "25"}, {"3x", "25"}, {"", ""},    {"x", "x"},   {"-3", "-3"}, {"100\n", "100\n"}}) {
    SCOPED_TRACE(testing::PrintToString(c.level));
    dat::put(0, -1, "TxPower", c.level);
    normalise(0);
    EXPECT_EQ(c.percentage, sandbox::field(0, "TxPower", 1));
  }
}

TEST(Normalise, TxPowerIsWrittenLastAndOnlyWhenItIsALevel) {
  dat::load(0, {{"TxPower", "3"}});
  const Lines made = calls_of(0);
  EXPECT_EQ("set_txPower(0,-1,25)", made.back());
  EXPECT_EQ("get_txPower(0,-1)", made[made.size() - 2]);
  EXPECT_EQ("get_txPower(0,-1)", calls_of(0).back());
}

TEST(Normalise, TxPowerOf5GIsLeftAlone) {
  dat::load(1, {});
  for (const char* level : {"1", "3", "6"}) {
    dat::put(1, -1, "TxPower", level);
    EXPECT_THAT(calls_of(1), Not(Contains(testing::HasSubstr("txPower"))));
    EXPECT_EQ(level, sandbox::field(1, "TxPower", 1));
  }
}

TEST(Normalise, UnknownBandIsLeftAtOnce) {
  for (const int band : {0, 1}) dat::load(band, {});
  const std::string stores = sandbox::segment_bytes(0) + sandbox::segment_bytes(1);
  for (const uint32_t band : {2U, 0xffffffffU, 0x80000000U}) {
    EXPECT_THAT(sandbox::stdout_of([=] { EXPECT_THAT(calls_of(band), IsEmpty()); }), IsEmpty());
  }
  EXPECT_EQ(stores, sandbox::segment_bytes(0) + sandbox::segment_bytes(1));
}

TEST(Normalise, OfOneBandLeavesTheOtherAlone) {
  for (const int band : {0, 1}) dat::load(band, {{"Channel", "0"}, {"TxPower", "3"}});
  for (const int band : {0, 1}) {
    const std::string other = sandbox::segment_bytes(1 - band);
    normalise(static_cast<uint32_t>(band));
    EXPECT_EQ(other, sandbox::segment_bytes(1 - band));
  }
}

TEST(Normalise, ServesAsManySsidsAsTheCountSays) {
  for (const int band : {0, 1}) {
    for (const int count : {0, 1, 3, 8}) {
      SCOPED_TRACE(count);
      dat::load(band, {});
      dat::put(band, -1, "BssidNum", std::to_string(count));
      int served = 0;
      int read = 0;
      for (const std::string& call : calls_of(static_cast<uint32_t>(band))) {
        served += call.rfind("update_auth_mode(", 0) == 0 ? 1 : 0;
        read += call.rfind("get_wmmCapable(", 0) == 0 ? 1 : 0;
      }
      EXPECT_EQ(count, served);
      EXPECT_EQ(count, read);
    }
  }
}

TEST(Normalise, TracesEntryAndExit) {
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(0U, wifimgr_lib_check_wifi_value_befor_write_dat(2)); }),
              testing::ElementsAre("[wifimgr_lib_check_wifi_value_befor_write_dat]:===Enter===\n",
                                   "[wifimgr_lib_check_wifi_value_befor_write_dat]:===Success Exit===\n"));
}

}  // namespace

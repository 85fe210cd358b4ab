// The setters of the band-wide settings, all of one template.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iterator>

#include "params/rule_values.h"
#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "support/settings_table.h"

namespace {

using settings::address;
using settings::any_text;
using settings::digits;
using settings::entered;
using settings::failed;
using settings::Image;
using settings::no_text;
using settings::number;
using settings::own_lines;
using settings::session_timeout;
using settings::streams;
using settings::succeeded;
using settings::Values;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct Setter {
  const char* name;
  wifimgr_setter_t call;
  const char* key;
  Values values;
  const char* refusal;
  const char* index_refusal;
};

constexpr char kMinusOne[] = "The ssid index here should be -1.";
constexpr char kInvalid[] = "The ssid index is invalid.";

#define SETTER(suffix, key, values, refusal) \
  { "wifimgr_lib_set_" #suffix, wifimgr_lib_set_##suffix, key, values, refusal, kMinusOne }
#define HT_GROUP(suffix, key, values, refusal) \
  { "wifimgr_lib_set_" #suffix, wifimgr_lib_set_##suffix, key, values, refusal, kInvalid }

// clang-format off
const Setter kSetters[] = {
    SETTER(beaconPeriod, "BeaconPeriod", number(20, 1024), "The BeaconPeriod value is invalid."),
    SETTER(rtsThreshold, "RTSThreshold", number(1, 2347), "The RTSThreshold value is invalid."),
    SETTER(fragThreshold, "FragThreshold", number(256, 2346), "The FragThreshold value is invalid."),
    SETTER(dtimPeriod, "DtimPeriod", number(1, 255), "The DtimPeriod value is invalid."),
    SETTER(txPower, "TxPower", number(0, 100), "The TxPower value is invalid."),
    SETTER(PERCENTAGEenable, "PERCENTAGEenable", number(0, 1), "The PERCENTAGEenable value is invalid."),
    SETTER(bgProtection, "BGProtection", number(0, 2), "The BGProtection value is invalid."),
    SETTER(disableOLBC, "DisableOLBC", number(0, 1), "The DisableOLBC value is invalid."),
    SETTER(txPreamble, "TxPreamble", number(0, 1), "The TxPreamble value is invalid."),
    SETTER(txBurst, "TxBurst", number(0, 1), "The TxBurst value is invalid."),
    SETTER(pktAggregate, "PktAggregate", number(0, 1), "The PktAggregate value is invalid."),
    SETTER(noForwardingBTNBSSID, "NoForwardingBTNBSSID", number(0, 1), "The NoForwardingBTNBSSID value is invalid."),
    SETTER(shortSlot, "ShortSlot", number(0, 1), "The ShortSlot value is invalid."),
    SETTER(wirelessEvent, "WirelessEvent", number(0, 1), "The WirelessEvent value is invalid."),
    SETTER(pmkCachePeriod, "PMKCachePeriod", number(0, 65535), "The PMKCachePeriod value is invalid."),
    SETTER(basicRate, "BasicRate", number(0, 4095), "The BasicRate value is invalid."),
    SETTER(MuOfdmaDlEnable, "MuOfdmaDlEnable", number(0, 1), "The muofdmadl value should be between 0 to 1."),
    SETTER(MuOfdmaUlEnable, "MuOfdmaUlEnable", number(0, 1), "The muofdma value should be between 0 to 1."),
    SETTER(MuMimoDlEnable, "MuMimoDlEnable", number(0, 1), "The mumimodl value should be between 0 to 1."),
    SETTER(MuMimoUlEnable, "MuMimoUlEnable", number(0, 1), "The mumimoul value should be between 0 to 1."),
    SETTER(SREnable, "SREnable", number(0, 1), "The SREnable value should be between 0 to 1."),
    SETTER(SRMode, "SRMode", number(0, 1), "The SRMode value should be between 0 to 1."),
    SETTER(SRSDEnable, "SRSDEnable", number(0, 1), "The SRSDEnable value should be between 0 to 1."),
    SETTER(PPEnable, "PPEnable", number(0, 1), "The PPEnable value should be between 0 to 1."),
    SETTER(TWTSupport, "TWTSupport", number(0, 2), "The twtsupport value should be between 0 ~2."),
    SETTER(HeraStbcPriority, "HeraStbcPriority", digits(), "The HeraStbcPriority value should be number."),
    SETTER(MaxRuOfdma, "MaxRuOfdma", digits(), "The MaxRuOfdma value should be number."),
    SETTER(MaxDLMuMimo, "MaxDLMuMimo", digits(), "The MaxDLMuMimo value should be number."),
    SETTER(MaxULMuMimo, "MaxULMuMimo", digits(), "The MaxULMuMimo value should be number."),
    SETTER(Disable160RuMu, "Disable160RuMu", digits(), "The Disable160RuMu value should be number."),
    SETTER(Vht1024QamSupport, "Vht1024QamSupport", digits(), "The Vht1024QamSupport value should be number."),
    SETTER(DscpPriMapEnable, "DscpPriMapEnable", digits(), "The DscpPriMapEnable value should be number."),
    SETTER(AMSDU_NUM, "AMSDU_NUM", digits(), "The AMSDU_NUM value should be Digital."),
    SETTER(HT_LDPC, "HT_LDPC", number(0, 1), "The VHT_LDPC value should be between 0 to 1."),
    SETTER(VHT_LDPC, "VHT_LDPC", number(0, 1), "The VHT_LDPC value should be between 0 to 1."),
    SETTER(VHT_STBC, "VHT_STBC", number(0, 1), "The VHT_STBC value should be between 0 to 1."),
    SETTER(VHT_BW_SIGNAL, "VHT_BW_SIGNAL", number(0, 1), "The VHT_BW_SIGNAL value is invalid."),
    SETTER(dlsCapable, "DLSCapable", number(0, 1), "The DLSCapable value should be 0 or 1."),
    SETTER(EfuseBufferMode, "EfuseBufferMode", number(0, 1), "The EfuseBufferMode value should be 0 or 1."),
    HT_GROUP(HT_EXTCHA, "HT_EXTCHA", number(0, 1), "The HT_EXTCHA value is invalid."),
    HT_GROUP(HT_BSSCoexistence, "HT_BSSCoexistence", number(0, 1), "The HT_BSSCoexistence value is invalid."),
    HT_GROUP(HT_AutoBA, "HT_AutoBA", number(0, 1), "The HT_AutoBA value is invalid."),
    HT_GROUP(HT_RDG, "HT_RDG", number(0, 1), "The HT_RDG value is invalid."),
    HT_GROUP(HT_MpduDensity, "HT_MpduDensity", number(0, 1), "The HT_MpduDensity value is invalid."),
    HT_GROUP(HT_HTC, "HT_HTC", number(0, 1), "The HT_HTC value is invalid."),
    HT_GROUP(HT_LinkAdapt, "HT_LinkAdapt", number(0, 1), "The HT_LinkAdapt value is invalid."),
    HT_GROUP(HT_AMSDU, "HT_AMSDU", number(0, 1), "The HT_AMSDU value is invalid."),
    HT_GROUP(HT_STBC, "HT_STBC", number(0, 1), "The HT_STBC value is invalid."),
    HT_GROUP(IEEE80211H, "IEEE80211H", number(0, 1), "The IEEE80211H value is invalid."),
    HT_GROUP(G_BAND_256QAM, "G_BAND_256QAM", number(0, 1), "The G_BAND_256QAM value is invalid."),
    HT_GROUP(WHNAT, "WHNAT", number(0, 1), "The WHNAT value is invalid."),
    HT_GROUP(WOEOFF, "WOEOFF", number(0, 1), "The WOEOFF value is invalid."),
    HT_GROUP(ProbeHideSSID, "ProbeHideSSID", number(0, 1), "The ProbeHideSSID value is invalid."),
    HT_GROUP(SHORTGIFLAG, "SHORTGIFLAG", number(0, 1), "The SHORTGIFLAG value is invalid."),
    HT_GROUP(ITxBfEn, "ITxBfEn", number(0, 1), "The ITxBfEn value is invalid."),
    HT_GROUP(ETxBfEnCond, "ETxBfEnCond", number(0, 1), "The ETxBfEnCond value is invalid."),
    HT_GROUP(ETxBfIncapable, "ETxBfIncapable", number(0, 1), "The ETxBfIncapable value is invalid."),
    HT_GROUP(MUTxRxEnable, "MUTxRxEnable", number(0, 1), "The MUTxRxEnable value is invalid."),
    HT_GROUP(HT_BAWinSize, "HT_BAWinSize", number(0, 256), "The HT_BAWinSize value is invalid."),
    HT_GROUP(StaNumDetect, "StaNumDetect", number(0, INT_MAX), "The StaNumDetect value is invalid."),
    SETTER(HT_OpMode, "HT_OpMode", number(0, 1), "The HT_OpMode value is invalid."),
    HT_GROUP(HT_TxStream, "HT_TxStream", streams(), "The HT_TxStream value is invalid."),
    HT_GROUP(HT_RxStream, "HT_RxStream", streams(), "The HT_RxStream value is invalid."),
    SETTER(channel, "Channel", number(0, 180), "The input channel is invalid.Please input from 0 to 180"),
    SETTER(autoChannelSelect, "AutoChannelSelect", number(0, 3), "The input channel is invalid.Please input from 0 to 3"),
    SETTER(turboRate, "TurboRate", number(0, INT_MAX), "The TurboRate value is invalid."),
    SETTER(countryCode, "CountryCode", any_text(), nullptr),
    HT_GROUP(AutoChannelSkipList, "AutoChannelSkipList", any_text(), nullptr),
    SETTER(MacAddress, "MacAddress", no_text(), "Please input correct MacAddress, such as 00:1a:22:aa:dc:a1."),
    SETTER(ownip, "own_ip_addr", address(), "The own IP is invalid.\nPlease input from 0.0.0.0 to 255.255.255.255"),
    SETTER(session_timeout_interval, "session_timeout_interval", session_timeout(), "The timeout value is invalid.\nPlease input from 0 to 2147483647."),
    SETTER(EAPifname, "EAPifname", any_text(), nullptr),
    SETTER(PreAuthifname, "PreAuthifname", any_text(), nullptr),
};
// clang-format on

const char* good_value(const Setter& set) {
  return set.values.accepted.empty() ? nullptr : set.values.accepted.front().c_str();
}

// A value that is at least not null.
const char* some_value(const Setter& set) {
  return set.values.accepted.empty() ? "x" : good_value(set);
}

// Runs `check` with each setter and band.
template <typename Check>
void for_each_setter(Check check) {
  for (const Setter& setter : kSetters) {
    for (const uint32_t band : {0U, 1U}) {
      SCOPED_TRACE(std::string(setter.name) + " of band " + std::to_string(band));
      check(setter, band);
    }
  }
}

TEST(BandSetter, IsExpectedHereForEveryRowOfTheTable) {
  for (const sandbox::SettingRow& row : sandbox::kSettings) {
    if (row.writes != "BAND" && row.writes != "HT_GROUP") continue;
    EXPECT_TRUE(std::any_of(std::begin(kSetters), std::end(kSetters),
                            [&](const Setter& it) { return std::string_view(it.name) == row.setter; }))
        << "write " << row.setter << " into the list above";
  }
}

TEST(BandSetter, WritesAnAcceptedValueToField1OfItsKeyInItsBandAlone) {
  settings::load_distinct();
  Image image;
  for_each_setter([&](const Setter& set, uint32_t band) {
    for (const std::string& value : set.values.accepted) {
      SCOPED_TRACE("value " + value);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(0U, set.call(band, -1, value.c_str())); }), IsEmpty());
      image.set(static_cast<int>(band), set.key, 1, value);
      ASSERT_EQ("", image.difference());
    }
  });
}

TEST(BandSetter, KeepsTheOldValueWhenTheNewOneIsRefused) {
  settings::load_distinct();
  const Image image;
  for_each_setter([&](const Setter& set, uint32_t band) {
    for (const std::string& value : set.values.refused) {
      SCOPED_TRACE("value " + value);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, -1, value.c_str())); }),
                  ElementsAre(failed(set.name, set.refusal)));
    }
    ASSERT_EQ("", image.difference());
  });
}

TEST(BandSetter, RefusesAnyIndexButMinusOne) {
  settings::load_distinct();
  const Image image;
  for_each_setter([&](const Setter& set, uint32_t band) {
    for (const int32_t index : {0, 1, 2, 8, -2, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(index);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, index, some_value(set))); }),
                  ElementsAre(failed(set.name, set.index_refusal)));
    }
    ASSERT_EQ("", image.difference());
  });
}

TEST(BandSetter, RefusesANullValueFirst) {
  settings::load_distinct();
  const Image image;
  for_each_setter([](const Setter& set, uint32_t band) {
    for (const int32_t index : {-1, 0}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, set.call(band, index, nullptr)); }),
                  ElementsAre(entered(set.name), failed(set.name)));
    }
  });
  EXPECT_EQ("", image.difference());
}

TEST(BandSetter, LooksAtTheIndexBeforeTheValue) {
  settings::load_distinct();
  for_each_setter([](const Setter& set, uint32_t band) {
    if (set.values.refused.empty()) return;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, 1, set.values.refused[0].c_str())); }),
                ElementsAre(failed(set.name, set.index_refusal)));
  });
}

TEST(BandSetter, LooksAtTheValueBeforeTheBand) {
  settings::load_distinct();
  for (const Setter& set : kSetters) {
    if (set.values.refused.empty()) continue;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(2, -1, set.values.refused[0].c_str())); }),
                ElementsAre(failed(set.name, set.refusal)));
  }
}

TEST(BandSetter, RefusesAnUnknownBand) {
  settings::load_distinct();
  const Image image;
  for (const Setter& set : kSetters) {
    if (good_value(set) == nullptr) continue;
    SCOPED_TRACE(set.name);
    for (const uint32_t band : {2U, 0xffffffffU, 0x80000000U}) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, -1, good_value(set))); }),
                  ElementsAre(failed("update_attr", "The wifi_type is wrong.")));
    }
  }
  EXPECT_EQ("", image.difference());
}

TEST(BandSetter, AddsNoMissingKey) {
  for (const int band : {0, 1}) {
    sandbox::write_file(sandbox::dat_path(band), "Default\nOther=1\n");
    ASSERT_EQ(0, creat_shm_from_datafile(band));
  }
  const Image image;
  for_each_setter([](const Setter& set, uint32_t band) {
    if (good_value(set) == nullptr) return;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, -1, good_value(set))); }),
                ElementsAre(failed("update_attr", "The attr_name do not exist.")));
  });
  EXPECT_EQ("", image.difference());
}

TEST(BandSetter, TracesItsEntryAndItsSuccess) {
  settings::load_distinct();
  for_each_setter([](const Setter& set, uint32_t band) {
    if (good_value(set) == nullptr) return;
    EXPECT_THAT(own_lines(set.name, seams::trace_of([&] { (void)set.call(band, -1, good_value(set)); })),
                ElementsAre(entered(set.name), succeeded(set.name)));
  });
}

TEST(BandSetter, AsksTheStoreForTheBandWideValue) {
  settings::load_distinct();
  for_each_setter([](const Setter& set, uint32_t band) {
    if (good_value(set) == nullptr) return;
    const auto lines = seams::trace_of([&] { (void)set.call(band, -1, good_value(set)); });
    EXPECT_THAT(own_lines("update_common_attr", lines), SizeIs(2));
    EXPECT_THAT(own_lines("update_attr_by_ssid", lines), IsEmpty());
  });
}

TEST(BandSetter, TracesAPlainExitWhenTheStoreRefuses) {
  settings::load_distinct();
  for (const Setter& set : kSetters) {
    if (good_value(set) == nullptr) continue;
    EXPECT_THAT(own_lines(set.name, seams::trace_of([&] { (void)set.call(2, -1, good_value(set)); })),
                ElementsAre(entered(set.name), failed(set.name)));
  }
}

TEST(BandSetter, TracesNothingOfItsOwnBelowLevel8ButReasons) {
  settings::load_distinct();
  for (const Setter& set : kSetters) {
    EXPECT_THAT(own_lines(set.name, seams::trace_of(
                                        [&] {
                                          if (good_value(set) != nullptr) (void)set.call(0, -1, good_value(set));
                                          if (good_value(set) != nullptr) (void)set.call(2, -1, good_value(set));
                                          (void)set.call(0, -1, nullptr);
                                        },
                                        7)),
                IsEmpty());
  }
}

TEST(BandSetter, ActsTheSameWithoutTracing) {
  settings::load_distinct();
  for_each_setter([](const Setter& set, uint32_t band) {
    if (good_value(set) != nullptr) {
      EXPECT_EQ(0U, set.call(band, -1, good_value(set)));
      EXPECT_EQ(1U, set.call(band, 0, good_value(set)));
    }
    for (const std::string& value : set.values.refused) EXPECT_EQ(1U, set.call(band, -1, value.c_str()));
  });
  EXPECT_THAT(seams::trace, IsEmpty());
}

}  // namespace

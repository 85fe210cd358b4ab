// The getters of the band-wide settings, all of one template.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iterator>

#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "support/settings_table.h"

namespace {

using settings::Buffer;
using settings::entered;
using settings::failed;
using settings::Image;
using settings::own_lines;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

struct Getter {
  const char* name;
  int (*call)(int wifi_type, int index, char* buf, unsigned len);
  const char* key;

  uint64_t operator()(int band, int index, Buffer& buffer, unsigned len = sizeof Buffer::bytes) const {
    return static_cast<uint64_t>(call(band, index, buffer.bytes, len));
  }
};

#define GETTER(suffix, key) \
  { "wifimgr_lib_get_" #suffix, wifimgr_lib_get_##suffix, key }

const Getter kGetters[] = {
    GETTER(bssidnum, "BssidNum"),
    GETTER(channel, "Channel"),
    GETTER(beaconPeriod, "BeaconPeriod"),
    GETTER(rtsThreshold, "RTSThreshold"),
    GETTER(fragThreshold, "FragThreshold"),
    GETTER(dtimPeriod, "DtimPeriod"),
    GETTER(txPower, "TxPower"),
    GETTER(bgProtection, "BGProtection"),
    GETTER(disableOLBC, "DisableOLBC"),
    GETTER(txPreamble, "TxPreamble"),
    GETTER(txBurst, "TxBurst"),
    GETTER(pktAggregate, "PktAggregate"),
    GETTER(noForwardingBTNBSSID, "NoForwardingBTNBSSID"),
    GETTER(shortSlot, "ShortSlot"),
    GETTER(wirelessEvent, "WirelessEvent"),
    GETTER(pmkCachePeriod, "PMKCachePeriod"),
    GETTER(basicRate, "BasicRate"),
    GETTER(MuOfdmaDlEnable, "MuOfdmaDlEnable"),
    GETTER(MuOfdmaUlEnable, "MuOfdmaUlEnable"),
    GETTER(MuMimoDlEnable, "MuMimoDlEnable"),
    GETTER(MuMimoUlEnable, "MuMimoUlEnable"),
    GETTER(SREnable, "SREnable"),
    GETTER(SRMode, "SRMode"),
    GETTER(SRSDEnable, "SRSDEnable"),
    GETTER(PPEnable, "PPEnable"),
    GETTER(TWTSupport, "TWTSupport"),
    GETTER(HeraStbcPriority, "HeraStbcPriority"),
    GETTER(MaxRuOfdma, "MaxRuOfdma"),
    GETTER(MaxDLMuMimo, "MaxDLMuMimo"),
    GETTER(MaxULMuMimo, "MaxULMuMimo"),
    GETTER(Disable160RuMu, "Disable160RuMu"),
    GETTER(Vht1024QamSupport, "Vht1024QamSupport"),
    GETTER(DscpPriMapEnable, "DscpPriMapEnable"),
    GETTER(AMSDU_NUM, "AMSDU_NUM"),
    GETTER(HT_LDPC, "HT_LDPC"),
    GETTER(VHT_BW_SIGNAL, "VHT_BW_SIGNAL"),
    GETTER(dlsCapable, "DLSCapable"),
    GETTER(EfuseBufferMode, "EfuseBufferMode"),
    GETTER(HT_EXTCHA, "HT_EXTCHA"),
    GETTER(HT_BSSCoexistence, "HT_BSSCoexistence"),
    GETTER(HT_AutoBA, "HT_AutoBA"),
    GETTER(HT_RDG, "HT_RDG"),
    GETTER(HT_MpduDensity, "HT_MpduDensity"),
    GETTER(HT_BAWinSize, "HT_BAWinSize"),
    GETTER(HT_HTC, "HT_HTC"),
    GETTER(HT_LinkAdapt, "HT_LinkAdapt"),
    GETTER(HT_AMSDU, "HT_AMSDU"),
    GETTER(WHNAT, "WHNAT"),
    GETTER(wirelessMode, "WirelessMode"),
    GETTER(HT_BW, "HT_BW"),
    GETTER(HT_TxStream, "HT_TxStream"),
    GETTER(HT_RxStream, "HT_RxStream"),
    GETTER(HT_GI, "HT_GI"),
    GETTER(countryCode, "CountryCode"),
    GETTER(autoChannelSelect, "AutoChannelSelect"),
    GETTER(turboRate, "TurboRate"),
    GETTER(VHT_BW, "VHT_BW"),
    GETTER(VHT_SGI, "VHT_SGI"),
    GETTER(HT_OpMode, "HT_OpMode"),
    GETTER(macAddress, "MacAddress"),
    GETTER(session_timeout_interval, "session_timeout_interval"),
    GETTER(ownip, "own_ip_addr"),
};

// Runs `check` with each getter and band.
template <typename Check>
void for_each_getter(Check check) {
  for (const Getter& getter : kGetters) {
    for (const int band : {0, 1}) {
      SCOPED_TRACE(std::string(getter.name) + " of band " + std::to_string(band));
      check(getter, band);
    }
  }
}

TEST(BandGetter, IsExpectedHereForEveryRowOfTheTable) {
  for (const sandbox::SettingRow& row : sandbox::kSettings) {
    if (row.reads != "BAND") continue;
    EXPECT_TRUE(std::any_of(std::begin(kGetters), std::end(kGetters),
                            [&](const Getter& it) { return std::string_view(it.name) == row.getter; }))
        << "write " << row.getter << " into the list above";
  }
}

TEST(BandGetter, ReadsField1OfItsKeyInItsBand) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, int band) {
    const std::string stored = sandbox::field(band, get.key, 1);
    ASSERT_NE("", stored);
    Buffer buffer;
    EXPECT_EQ(0U, get(band, -1, buffer));
    EXPECT_EQ(stored, buffer.text());
  });
}

TEST(BandGetter, CopiesTheWholeFieldAndNothingBehindIt) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, int band) {
    Buffer buffer;
    EXPECT_EQ(0U, get(band, -1, buffer, WIFIMGR_FIELD_SIZE + 1));
    std::string slot = sandbox::field(band, get.key, 1);
    slot.resize(WIFIMGR_FIELD_SIZE, '\0');
    EXPECT_EQ(slot, std::string(buffer.bytes, WIFIMGR_FIELD_SIZE));
    EXPECT_EQ("ZZZZZZZZZZ", buffer.rest(WIFIMGR_FIELD_SIZE));
  });
}

TEST(BandGetter, KeepsTheLineEndOfTheFile) {
  settings::load_with("Channel", "100");
  Buffer buffer;
  EXPECT_EQ(0, wifimgr_lib_get_channel(1, -1, buffer.bytes, sizeof buffer.bytes));
  EXPECT_EQ("100\n", buffer.text());
}

TEST(BandGetter, GivesWhatItsSetterStored) {
  settings::load_distinct();
  EXPECT_EQ(0U, wifimgr_lib_set_channel(0, -1, "11"));
  Buffer buffer;
  EXPECT_EQ(0, wifimgr_lib_get_channel(0, -1, buffer.bytes, sizeof buffer.bytes));
  EXPECT_EQ("11", buffer.text());
}

TEST(BandGetter, RefusesAnyIndexButMinusOne) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, int band) {
    for (const int index : {0, 1, 8, -2, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(index);
      Buffer buffer;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, get(band, index, buffer)); }),
                  ElementsAre(failed(get.name, "The index should be -1.")));
      EXPECT_TRUE(buffer.is_untouched());
    }
  });
}

TEST(BandGetter, RefusesAnUnknownBand) {
  settings::load_distinct();
  for (const Getter& get : kGetters) {
    for (const int band : {2, -1, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(get.name);
      Buffer buffer;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, get(band, -1, buffer)); }),
                  ElementsAre(failed("read_attr", "The wifi_type is wrong.")));
      EXPECT_TRUE(buffer.is_untouched());
    }
  }
}

TEST(BandGetter, LooksAtTheIndexBeforeTheBand) {
  settings::load_distinct();
  for (const Getter& get : kGetters) {
    Buffer buffer;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, get(2, 0, buffer)); }),
                ElementsAre(failed(get.name, "The index should be -1.")));
  }
}

TEST(BandGetter, RefusesABufferBelow151Bytes) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, int band) {
    Buffer buffer;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, get(band, -1, buffer, WIFIMGR_FIELD_SIZE)); }),
                ElementsAre(failed("read_attr", "The size of buffer is too small!")));
    EXPECT_TRUE(buffer.is_untouched());
  });
}

TEST(BandGetter, RefusesAMissingKey) {
  for (const int band : {0, 1}) {
    sandbox::write_file(sandbox::dat_path(band), "Default\nOther=1\n");
    ASSERT_EQ(0, creat_shm_from_datafile(band));
  }
  for_each_getter([](const Getter& get, int band) {
    Buffer buffer;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, get(band, -1, buffer)); }),
                ElementsAre(failed("read_attr", "The attr_name do not exist.")));
    EXPECT_TRUE(buffer.is_untouched());
  });
}

TEST(BandGetter, RefusesABandThatWasNeverLoaded) {
  for_each_getter([](const Getter& get, int band) {
    Buffer buffer;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, get(band, -1, buffer)); }),
                ElementsAre(failed("read_attr", "The attr_name do not exist.")));
    EXPECT_TRUE(buffer.is_untouched());
  });
}

TEST(BandGetter, RefusesANullBufferFirst) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, int band) {
    for (const int index : {-1, 0}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1, get.call(band, index, nullptr, WIFIMGR_VALUE_SIZE)); }),
                  ElementsAre(entered(get.name), failed(get.name)));
    }
  });
}

TEST(BandGetter, TracesItsEntryAndItsSuccess) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, int band) {
    Buffer buffer;
    EXPECT_THAT(own_lines(get.name, seams::trace_of([&] { (void)get(band, -1, buffer); })),
                ElementsAre(entered(get.name), succeeded(get.name)));
  });
}

TEST(BandGetter, TracesAPlainExitWhenTheStoreRefuses) {
  settings::load_distinct();
  for (const Getter& get : kGetters) {
    Buffer buffer;
    EXPECT_THAT(own_lines(get.name, seams::trace_of([&] { (void)get(2, -1, buffer); })),
                ElementsAre(entered(get.name), failed(get.name)));
  }
}

TEST(BandGetter, TracesNothingOfItsOwnBelowLevel8ButReasons) {
  settings::load_distinct();
  for (const Getter& get : kGetters) {
    Buffer buffer;
    EXPECT_THAT(seams::trace_of(
                    [&] {
                      (void)get(0, -1, buffer);
                      (void)get.call(0, -1, nullptr, 0);
                    },
                    7),
                IsEmpty());
  }
}

TEST(BandGetter, ChangesNothing) {
  settings::load_distinct();
  const Image image;
  for_each_getter([](const Getter& get, int band) {
    Buffer buffer;
    (void)get(band, -1, buffer);
    (void)get(band, 1, buffer);
  });
  EXPECT_EQ("", image.difference());
}

}  // namespace

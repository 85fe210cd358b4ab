// What the WPS setters check, store and send, one after the other.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

#include "api_lib_utility.h"
#include "apply/calls.h"
#include "support/seams.h"
#include "wps/wps_setting.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

constexpr char kWrongValue[] = "The input parameter is invalid.";
constexpr char kWrongIndex[] = "The ssid index is invalid.";
constexpr char kWrongBand[] = "The wifi type is invalid.";

constexpr int32_t kWrongIndexes[] = {0, -1, 9, 10, 256, 257, INT32_MAX, INT32_MIN};
constexpr uint32_t kWrongBands[] = {2, 256, 0x7fffffff, 0x80000000, 0xffffffff};

// What the two answer, when not what they really do.
std::function<int(int, int, const char*, const char*)> on_update;
std::function<int(const char*, char*, int)> on_escape;

std::string store_refusal(const wps::Setting& setting) {
  return wps::refusal(setting.function, (std::string("Set the ") + setting.key + " failed.").c_str());
}

TEST(WpsSettingSteps, StoreTheValueOfTheOneSsidAndNothingElse) {
  wps::load();
  for (const wps::Setting& setting : wps::kStored) {
    for (const int band : {0, 1}) {
      for (int ssid_index = 1; ssid_index <= 8; ++ssid_index) {
        SCOPED_TRACE(std::string(setting.key) + " of SSID " + std::to_string(ssid_index));
        Texts expected = wps::both_segments();
        std::string& changed = expected[static_cast<size_t>(band)];
        changed = wps::with_field(changed, setting.key, ssid_index, setting.good);
        EXPECT_EQ(0u, setting.set(static_cast<uint32_t>(band), ssid_index, setting.good));
        EXPECT_TRUE(expected == wps::both_segments());
      }
    }
  }
}

TEST(WpsSettingSteps, SendTheValueToTheSsidsInterface) {
  wps::load();
  for (const wps::Setting& setting : wps::all_settings()) {
    for (const int band : {0, 1}) {
      for (int ssid_index = 1; ssid_index <= 8; ++ssid_index) {
        seams::commands.clear();
        EXPECT_EQ(0u, setting.set(static_cast<uint32_t>(band), ssid_index, setting.good));
        EXPECT_THAT(seams::commands, ElementsAre(wps::command(band, ssid_index, setting.key, setting.good)));
      }
    }
  }
}

TEST(WpsSettingSteps, OrdersSendOne) {
  for (const wps::OrderSetting& setting : wps::kOrders) {
    for (const int band : {0, 1}) {
      for (int ssid_index = 1; ssid_index <= 8; ++ssid_index) {
        seams::commands.clear();
        EXPECT_EQ(0u, setting.order(static_cast<uint32_t>(band), ssid_index));
        EXPECT_THAT(seams::commands, ElementsAre(wps::command(band, ssid_index, setting.key, "1")));
      }
    }
  }
}

TEST(WpsSettingSteps, OfWhatIsOnlySentTouchNoStore) {
  wps::load();
  const Texts before = wps::both_segments();
  for (const wps::Setting& setting : wps::kDirect) EXPECT_EQ(0u, setting.set(0, 1, setting.good));
  for (const wps::OrderSetting& setting : wps::kOrders) EXPECT_EQ(0u, setting.order(0, 1));
  EXPECT_TRUE(before == wps::both_segments());
}

TEST(WpsSettingSteps, NeedNoStoreForWhatIsOnlySent) {
  for (const wps::Setting& setting : wps::kDirect) EXPECT_EQ(0u, setting.set(1, 8, setting.good));
  for (const wps::OrderSetting& setting : wps::kOrders) EXPECT_EQ(0u, setting.order(1, 8));
  EXPECT_EQ(6u, seams::commands.size());
}

TEST(WpsSettingSteps, AnotherIndexIsRefusedAheadOfStoreAndBand) {
  wps::load();
  const Texts before = wps::both_segments();
  for (const int32_t index : kWrongIndexes) {
    for (const uint32_t band : {0U, 1U, 2U}) {
      for (const wps::Setting& setting : wps::all_settings()) {
        EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.set(band, index, setting.good)); }),
                    ElementsAre(wps::refusal(setting.function, kWrongIndex)));
      }
      for (const wps::OrderSetting& setting : wps::kOrders) {
        EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.order(band, index)); }),
                    ElementsAre(wps::refusal(setting.function, kWrongIndex)));
      }
    }
  }
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_TRUE(before == wps::both_segments());
}

TEST(WpsSettingSteps, AWrongValueIsRefusedAheadOfIndexStoreAndBand) {
  for (const wps::Setting& setting : wps::all_settings()) {
    for (const int32_t index : {1, 0, 9}) {
      for (const uint32_t band : {0U, 2U}) {
        EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.set(band, index, "x")); }),
                    ElementsAre(wps::refusal(setting.function, kWrongValue)));
      }
    }
  }
}

TEST(WpsSettingSteps, AMissingValueIsRefusedAheadOfIndexStoreAndBand) {
  for (const wps::Setting& setting : wps::all_settings()) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.set(2, 9, nullptr)); }), IsEmpty());
  }
}

TEST(WpsSettingSteps, AKeyThatTheStoreLacksIsRefusedAndNotSent) {
  for (const wps::Setting& setting : wps::kStored) {
    for (const int band : {0, 1}) {
      SCOPED_TRACE(setting.key);
      sandbox::load(band, wps::dat_text_without(setting.key));
      const std::string before = sandbox::segment_bytes(band);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.set(static_cast<uint32_t>(band), 1, setting.good)); }),
                  ElementsAre(wps::refusal("update_attr", "The attr_name do not exist."), store_refusal(setting)));
      EXPECT_TRUE(before == sandbox::segment_bytes(band));
    }
  }
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(WpsSettingSteps, AnotherBandIsRefusedByTheStoreFirst) {
  wps::load();
  const Texts before = wps::both_segments();
  for (const wps::Setting& setting : wps::kStored) {
    for (const uint32_t band : kWrongBands) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.set(band, 1, setting.good)); }),
                  ElementsAre(wps::refusal("update_attr", "The wifi_type is wrong."), store_refusal(setting)));
    }
  }
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_TRUE(before == wps::both_segments());
}

TEST(WpsSettingSteps, AnotherBandIsRefusedWhereNothingIsStored) {
  for (const uint32_t band : kWrongBands) {
    for (const wps::Setting& setting : wps::kDirect) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.set(band, 1, setting.good)); }),
                  ElementsAre(wps::refusal(setting.function, kWrongBand)));
    }
    for (const wps::OrderSetting& setting : wps::kOrders) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.order(band, 1)); }),
                  ElementsAre(wps::refusal(setting.function, kWrongBand)));
    }
  }
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(WpsSettingSteps, CheckTheBandOnceTheStoreHasTheValue) {
  for (const wps::Setting& setting : wps::kStored) {
    Texts stored;
    on_update = [&stored](int band, int index, const char* key, const char* value) {
      stored = {std::to_string(band), std::to_string(index), key, value};
      return 0;
    };
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.set(2, 3, setting.good)); }),
                ElementsAre(wps::refusal(setting.function, kWrongBand)));
    EXPECT_THAT(stored, ElementsAre("2", "3", setting.key, setting.good));
  }
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(WpsSettingSteps, StoreBeforeTheySend) {
  wps::load();
  for (const wps::Setting& setting : wps::kStored) {
    std::string seen;
    seams::on_command = [&](const std::string&) {
      seen = sandbox::field(0, setting.key, 1);
      return 0;
    };
    EXPECT_EQ(0u, setting.set(0, 1, setting.good));
    EXPECT_EQ(setting.good, seen);
  }
}

TEST(WpsSettingSteps, IgnoreHowTheCommandEnds) {
  wps::load();
  for (const int status : {-1, 1, 0x7f00}) {
    seams::on_command = [status](const std::string&) { return status; };
    for (const wps::Setting& setting : wps::all_settings()) EXPECT_EQ(0u, setting.set(0, 1, setting.good));
    for (const wps::OrderSetting& setting : wps::kOrders) EXPECT_EQ(0u, setting.order(0, 1));
  }
}

TEST(WpsSettingSteps, EscapeTheValueInto160Bytes) {
  wps::load();
  for (const wps::Setting& setting : wps::all_settings()) {
    on_escape = [&](const char* in, char* out, int out_size) {
      EXPECT_STREQ(setting.good, in);
      EXPECT_EQ(160, out_size);
      std::strcpy(out, "escaped");
      return 0;
    };
    seams::commands.clear();
    EXPECT_EQ(0u, setting.set(0, 1, setting.good));
    EXPECT_THAT(seams::commands, ElementsAre(wps::command(0, 1, setting.key, "escaped")));
  }
}

TEST(WpsSettingSteps, RunNothingWhenTheEscapeFails) {
  wps::load();
  for (const int answer : {-1, 1}) {
    on_escape = [answer](const char*, char*, int) { return answer; };
    for (const wps::Setting& setting : wps::all_settings()) {
      const auto trace = seams::trace_of([&] { EXPECT_EQ(1u, setting.set(0, 1, setting.good)); });
      EXPECT_EQ(wps::refusal(setting.function, ""), trace.back());
    }
  }
  EXPECT_THAT(seams::commands, IsEmpty());
  for (const wps::Setting& setting : wps::kStored) EXPECT_EQ(setting.good, sandbox::field(0, setting.key, 1));
}

TEST(WpsSettingSteps, CheckTheBandBeforeTheyEscape) {
  on_escape = [](const char*, char*, int) { return -1; };
  for (const wps::Setting& setting : wps::kDirect) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, setting.set(2, 1, setting.good)); }),
                ElementsAre(wps::refusal(setting.function, kWrongBand)));
  }
}

TEST(WpsSettingSteps, TraceEntryAndSuccess) {
  wps::load();
  for (const wps::Setting& setting : wps::all_settings()) {
    const auto trace = seams::trace_of([&] { EXPECT_EQ(0u, setting.set(0, 1, setting.good)); });
    EXPECT_EQ(std::string("[") + setting.function + "]:===Enter===\n", trace.front());
    EXPECT_EQ(std::string("[") + setting.function + "]:===Success Exit===\n", trace.back());
  }
  for (const wps::OrderSetting& setting : wps::kOrders) {
    const std::string name = std::string("[") + setting.function + "]:===";
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(0u, setting.order(0, 1)); }),
                ElementsAre(name + "Enter===\n", name + "Success Exit===\n"));
  }
}

TEST(WpsSettingSteps, PrintNothing) {
  wps::load();
  EXPECT_EQ("", sandbox::stdout_of([] {
              for (const wps::Setting& setting : wps::all_settings()) {
                setting.set(0, 1, setting.good);
                setting.set(2, 1, setting.good);
              }
            }));
}

}  // namespace

extern "C" int update_attr(int wifi_type, int index, const char* name, const char* value) {
  if (on_update) return on_update(wifi_type, index, name, value);
  return calls::real<decltype(update_attr)>("update_attr")(wifi_type, index, name, value);
}

extern "C" int api_escape_parameter(const char* in, char* out, int out_size) {
  if (on_escape) return on_escape(in, out, out_size);
  return calls::real<decltype(api_escape_parameter)>("api_escape_parameter")(in, out, out_size);
}

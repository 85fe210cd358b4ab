// The settings' table against the library: what each row says of ranges, refusals, defaults and effects is what its
// setter and the library's judgement do, for those with a function by themselves too.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <sstream>
#include <vector>

#include "support/sandbox.h"
#include "support/seams.h"
#include "support/settings_table.h"

namespace {

using sandbox::kSettings;
using sandbox::SettingRow;
using testing::HasSubstr;

std::string default_dat(int band) {
  std::string text = "Default\nReloadFlag=0\n";
  for (const SettingRow& row : kSettings) {
    if (row.defaults[band] != nullptr) text += default_lines(row, band);
  }
  return text;
}

void load_defaults() {
  for (const int band : {0, 1}) sandbox::load(band, default_dat(band));
}

uint64_t set(const SettingRow& row, int band, const std::string& value) {
  return row.set(static_cast<uint32_t>(band), row.first_index(), value.c_str());
}

// Runs `check` with each row on each of its bands.
template <typename Check>
void for_each_row(Check check) {
  for (const SettingRow& row : kSettings) {
    for (const int band : {0, 1}) {
      if (!row.is_on(band)) continue;
      SCOPED_TRACE(std::string(row.key) + " of band " + std::to_string(band));
      check(row, band);
    }
  }
}

std::vector<std::string> words_of(const SettingRow& row) {
  std::istringstream stream(row.words);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

struct Values {
  std::vector<std::string> good;
  std::vector<std::string> bad;
};

// Both sides of what a row says. Rules and lists have their own tests; of them only one side is here.
Values values_of(const SettingRow& row) {
  const std::string low = std::to_string(row.low);
  const std::string high = std::to_string(row.high);
  const std::string above = std::to_string(row.high + 1);
  const std::string below = std::to_string(row.low - 1);
  const auto text_of = [](long length) { return std::string(static_cast<size_t>(length), 'x'); };
  if (row.accepts == "TEXT") return {{"", "any text"}, {}};
  if (row.accepts == "DIGITS") return {{"0", "4294967296"}, {"x", "-1"}};
  if (row.accepts == "NUMBER") return {{low, high, "00" + high}, {below, above, "x"}};
  if (row.accepts == "TEN_DIGITS") return {{low, high}, {above, "x", "00000000001"}};
  if (row.accepts == "ONE_DIGIT") return {{low, high}, {above, "x", "0" + high, ""}};
  if (row.accepts == "LEADING_NUMBER") return {{low, high, "x", high + "x"}, {below, above}};
  if (row.accepts == "LENGTH") return {{"", text_of(row.high)}, {text_of(row.high + 1)}};
  if (row.accepts == "WORDS") return {words_of(row), {"", "NEITHER", words_of(row)[0] + " " + words_of(row)[1]}};
  if (row.accepts == "ADDRESS") return {{"192.0.2.1"}, {"192.0.2.256", "192.0.2"}};
  if (row.accepts == "PASSPHRASE") return {{text_of(8), text_of(63)}, {text_of(7), text_of(64)}};
  if (row.accepts == "KEY_FORMAT") return {{"0", "1", "8", "63"}, {"2", "7", "64"}};
  if (row.accepts == "LIST") return {{"1;2;3;4"}, {}};
  if (row.accepts == "RULE") return {{}, {"99"}};
  if (row.accepts == "NOTHING") return {{}, {"02:00:00:00:00:01", ""}};
  ADD_FAILURE() << "no values for " << row.accepts;
  return {};
}

// How the message to a value ends, of whichever function a setter has it said: "%d" prints the number, and 5G its own
// name.
std::string refusal_of(const SettingRow& row, int band, const std::string& value) {
  std::string text = row.refusal;
  const auto replace = [&text](const std::string& what, const std::string& with) {
    const size_t at = text.find(what);
    if (at != std::string::npos) text.replace(at, what.size(), with);
  };
  replace("%d", std::to_string(std::atoi(value.c_str())));
  if (band == 1) replace("2.4G", "5G");
  return "]:===Fail Exit===" + text + "\n";
}

TEST(SettingsTable, SaysWhatTheSettersTake) {
  load_defaults();
  for_each_row([](const SettingRow& row, int band) {
    for (const std::string& value : values_of(row).good) EXPECT_EQ(0U, set(row, band, value)) << value;
    // The count of SSIDs takes any text, and the other settings want one.
    if (std::strcmp(row.key, "BssidNum") == 0) {
      EXPECT_EQ(0U, set(row, band, row.defaults[band]));
    }
    // So do those that the wireless mode must allow.
    if (std::strcmp(row.key, "WirelessMode") == 0) {
      EXPECT_EQ(0U, set(row, band, row.defaults[band]));
    }
  });
}

TEST(SettingsTable, SaysWhatTheSettersRefuseAndInWhichWords) {
  load_defaults();
  for_each_row([](const SettingRow& row, int band) {
    for (const std::string& value : values_of(row).bad) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set(row, band, value)) << value; }),
                  testing::ElementsAre(testing::EndsWith(refusal_of(row, band, value))));
    }
  });
}

TEST(SettingsTable, HasDefaultsThatTheSettersTake) {
  load_defaults();
  for_each_row([](const SettingRow& row, int band) {
    ASSERT_NE(nullptr, row.defaults[band]);
    if (row.accepts == "NOTHING") return;
    EXPECT_EQ(0U, set(row, band, sandbox::default_of(row, band, 1)));
  });
}

TEST(SettingsTable, NamesTheBandsOfTheSetters) {
  load_defaults();
  for (const SettingRow& row : kSettings) {
    for (const int band : {0, 1}) {
      if (!row.is_on(band)) {
        EXPECT_EQ(1U, set(row, band, sandbox::default_of(row, 1 - band, 1))) << row.key;
      }
    }
  }
}

TEST(SettingsTable, HasTheNameOfEachGetterAndSetterAfterItsKey) {
  for (const SettingRow& row : kSettings) {
    EXPECT_EQ(0U, std::string(row.setter).rfind("wifimgr_lib_set_", 0)) << row.key;
    EXPECT_EQ(row.reads == "NONE", std::strcmp(row.getter, "NULL") == 0) << row.key;
    if (row.reads != "NONE") {
      EXPECT_EQ(0U, std::string(row.getter).rfind("wifimgr_lib_get_", 0)) << row.key;
    }
  }
}

TEST(SettingsTable, KeepsKeysAndPassphrasesSecret) {
  for (const SettingRow& row : kSettings) {
    const std::string key = row.key;
    const bool is_secret = key == "WPAPSK%d" || key == "RADIUS_Key%d" || key == "Wds%dKey" ||
                           (key.rfind("Key", 0) == 0 && key.find("Str") != std::string::npos);
    EXPECT_EQ(is_secret ? "SECRET" : "OPEN", row.secrecy) << key;
  }
}

// A value that differs from the default, for keys whose rule is their own.
const std::map<std::string, std::string> kOtherValues = {
    {"CountryRegion", "1"},
    {"WirelessMode", "8"},
    {"HT_MCS", "7"},
    {"WdsList", "00:11:22:33:44:55;00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00"},
    {"WdsEncrypType", "TKIP;TKIP;TKIP;TKIP"},
    {"WdsPhyMode", "CCK;CCK;CCK;CCK"},
    {"Wds%dKey", "another-link-key"},
};

std::string other_value(const SettingRow& row, const std::string& stored) {
  if (row.accepts == "RULE") return kOtherValues.at(row.key);
  if (row.accepts == "WORDS") return words_of(row)[words_of(row)[0] == stored ? 1 : 0];
  if (row.accepts == "ADDRESS") return "192.0.2.99";
  if (row.accepts == "PASSPHRASE") return "another-secret";
  if (row.accepts == "LIST") return "9;9;9;9";
  if (row.accepts == "KEY_FORMAT" || row.accepts == "DIGITS") return stored == "0" ? "1" : "0";
  if (row.accepts == "TEXT" || row.accepts == "LENGTH") return stored == "0" ? "1" : "0";
  return std::to_string(stored == std::to_string(row.high) ? row.low : row.high);
}

// What the library answers after a change of the setting; the old value is back then.
uint64_t answer_to_a_change(const SettingRow& row, int band, int index) {
  const auto number = static_cast<uint32_t>(band);
  const std::string key = sandbox::dat_key_of(row, index < 1 ? 1 : index);
  const int field = row.numbering == "SHARED" && index > 1 ? index : 1;
  const std::string stored = sandbox::field(band, key, field);
  const std::string value = other_value(row, stored.substr(0, stored.find('\n')));
  EXPECT_EQ(0U, wifimgr_lib_wifi_config_oper(number, 0));
  // What no setter changes is changed behind its back.
  if (row.accepts == "NOTHING") {
    EXPECT_EQ(0, update_attr(band, index, key.c_str(), "02:00:00:00:00:01"));
  } else {
    EXPECT_EQ(0U, row.set(number, index, value.c_str())) << value;
  }
  const uint64_t answer = wifimgr_lib_wifi_config_oper(number, 1);
  EXPECT_EQ(0, update_attr(band, index, key.c_str(), stored.c_str()));
  return answer;
}

uint64_t answer_said(const SettingRow& row, int band, bool with_wds) {
  if (row.effect == "REBOOT") return 2;
  if (row.effect == "RADIO") return 1;
  if (row.effect == "RADIO_ON_5G") return band == 1 ? 1 : 0;
  if (row.effect == "RADIO_WITH_WDS") return with_wds ? 1 : 0;
  EXPECT_TRUE(row.effect == "SAVED" || row.effect == "AT_ONCE") << row.effect;
  return 0;
}

TEST(SettingsTable, SaysWhatAChangeAsksFor) {
  load_defaults();
  for_each_row([](const SettingRow& row, int band) {
    EXPECT_EQ(answer_said(row, band, false), answer_to_a_change(row, band, row.first_index()));
  });
}

TEST(SettingsTable, SaysWhatAChangeAsksForWhileWdsIsOn) {
  load_defaults();
  for (const uint32_t band : {0U, 1U}) {
    ASSERT_EQ(0U, wifimgr_lib_set_wdsenable(band, -1, "1"));
    ASSERT_EQ(0U, wifimgr_lib_set_authMode(band, 1, "WEPAUTO"));
  }
  for_each_row([](const SettingRow& row, int band) {
    EXPECT_EQ(answer_said(row, band, true), answer_to_a_change(row, band, row.first_index()));
  });
}

TEST(SettingsTable, HasNoEffectOfTheSecondSsidOrLink) {
  load_defaults();
  for (const uint32_t band : {0U, 1U}) ASSERT_EQ(0U, wifimgr_lib_set_wdsenable(band, -1, "1"));
  for_each_row([](const SettingRow& row, int band) {
    if (row.scope != "BAND") {
      EXPECT_EQ(0U, answer_to_a_change(row, band, 2));
    }
  });
}

// What goes to the driver at once does so by a command with the key and the value.
TEST(SettingsTable, SaysWhatIsSentAtOnce) {
  load_defaults();
  for_each_row([](const SettingRow& row, int band) {
    if (row.accepts == "NOTHING") return;
    seams::commands.clear();
    const std::string value = sandbox::default_of(row, band, 1);
    EXPECT_EQ(0U, set(row, band, value));
    if (row.effect != "AT_ONCE" && std::strcmp(row.key, "WscV2Support") != 0) {
      EXPECT_THAT(seams::commands, testing::IsEmpty());
    } else {
      EXPECT_THAT(seams::commands, testing::ElementsAre(HasSubstr(" set " + std::string(row.key) + "=" + value)));
    }
  });
}

}  // namespace

#include "wlanctl/exchange/writer.h"

#include <algorithm>

#include "wlanctl/base/hex.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/utf8.h"
#include "wlanctl/exchange/dat_reader.h"
#include "wlanctl/exchange/json_reader.h"
#include "wlanctl/exchange/stored_settings.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

bool is_secret(const FileSetting& setting) {
  return setting.is_setting() ? setting.target.key->secret : is_secret_dat_key(setting.dat_key);
}

// A number only where it is written as this one is: "007" stays a text.
Json json_of_value(const FileSetting& setting, Secrets secrets) {
  const std::string& value = setting.value;
  if (secrets == Secrets::kLeftOut && is_secret(setting) && !value.empty()) return {};
  if (!is_utf8(value)) return {{settings_json::kHex, hex_of(value)}};
  if (setting.is_setting() && setting.target.key->holds_numbers()) {
    const std::optional<int64_t> number = number_in(value);
    if (number && std::to_string(*number) == value) return *number;
  }
  return value;
}

// What a record has for the SSIDs that the band serves.
std::string served_value(Band band, const StoreRecord& record) {
  if (record.key == kReloadFlag) return "0";
  std::vector<std::string> fields = record.fields;
  int index = 0;
  const Key* const key = find_dat_key(record.key, &index);
  const bool is_shared = key != nullptr && key->numbering == Numbering::kShared;
  if (is_shared && key->scope == Scope::kSsid) {
    fields.resize(std::min(fields.size(), static_cast<size_t>(ssid_count(band))));
  }
  // The value is the first one, unless the loader has split a list.
  const bool is_one = key != nullptr && key->is_on(band) && (key->scope == Scope::kBand || !is_shared);
  if (is_one && !(is_shared && is_split_list(*key))) fields.resize(std::min<size_t>(fields.size(), 1));
  const std::string value = joined(fields, ";");
  return key != nullptr && is_repeated_for_ssids(*key) ? without_repetition(value) : value;
}

std::string dat_text_of(Band band, Secrets secrets) {
  std::string text = "Default\n";
  for (const StoreRecord& record : records_of(table_of_store(band))) {
    if (is_left_out(record.key, ssid_count(band))) continue;
    const std::string value = served_value(band, record);
    const bool is_masked = secrets == Secrets::kLeftOut && !value.empty() && is_secret_dat_key(record.key);
    text += record.key + "=" + (is_masked ? kSecretLeftOut : value) + "\n";
  }
  return text;
}

const FileSetting* same_in(const std::vector<FileSetting>& settings, const FileSetting& wanted) {
  const auto found = std::find_if(settings.begin(), settings.end(), [&](const FileSetting& one) {
    return one.target == wanted.target && one.dat_key == wanted.dat_key;
  });
  return found == settings.end() ? nullptr : &*found;
}

constexpr char kKeepsAll[] = "export it as JSON, which keeps every byte";

// What is read back is what the store has.
void compare(Band band, Secrets secrets, const SettingsText& text, Report& report) {
  for (const FileSetting& setting : settings_of_store(band)) {
    const FileSetting* const read = same_in(text.settings, setting);
    const bool is_whole = read != nullptr && !read->is_left_out && read->value == setting.value;
    const bool is_masked = secrets == Secrets::kLeftOut && is_secret(setting);
    if (is_whole || is_masked || (read == nullptr && setting.value.empty())) continue;
    report.problem({"a dat file cannot hold " + setting.name() + " as it is in the store", kKeepsAll,
                    about_key(setting.name(), band)});
  }
  if (report.has_problems()) return;
  // What nobody looks at can make a file that no import takes.
  for (const TextProblem& problem : text.problems) report.problem({problem.message, kKeepsAll, problem.details});
}

}  // namespace

Json json_of_settings(const std::vector<Band>& bands, Secrets secrets, Report& report) {
  Json parts = Json::object();
  for (const Band band : bands) {
    Json settings = Json::object();
    Json others = Json::object();
    size_t nameless = 0;
    for (const FileSetting& setting : settings_of_store(band)) {
      if (!is_utf8(setting.name())) {
        ++nameless;
        continue;
      }
      (setting.is_setting() ? settings : others)[setting.name()] = json_of_value(setting, secrets);
    }
    if (nameless > 0) {
      report.note(count_of(nameless, "key") + " of the dat file of " + label_of(band) +
                  (nameless == 1 ? " is" : " are") + " no text (UTF-8), and left out: no setting is called so");
    }
    parts[label_of(band)] = {{settings_json::kSettings, std::move(settings)},
                             {settings_json::kOther, std::move(others)}};
  }
  return {{settings_json::kVersion, kSettingsVersion}, {settings_json::kBands, std::move(parts)}};
}

std::string dat_of_settings(Band band, Secrets secrets, Report& report) {
  std::string text = dat_text_of(band, secrets);
  compare(band, secrets, read_dat_settings(text, band), report);
  return report.has_problems() ? "" : text;
}

}  // namespace wlanctl

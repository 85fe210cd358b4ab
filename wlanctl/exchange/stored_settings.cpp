#include "wlanctl/exchange/stored_settings.h"

#include <algorithm>

#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

void add_key(Band band, const Key& key, std::vector<FileSetting>* settings) {
  const int first = key.scope == Scope::kBand ? -1 : 1;
  const int last = key.scope == Scope::kSsid ? ssid_count(band) : key.scope == Scope::kLink ? kLinks : -1;
  for (int index = first; index <= last; ++index) {
    const std::optional<std::string> value = exact_value(band, {&key, index});
    const bool is_field = key.scope == Scope::kSsid && key.numbering == Numbering::kShared;
    if (!value || (is_field && value->empty())) continue;
    FileSetting setting;
    setting.band = band;
    setting.target = {&key, index};
    setting.value = *value;
    settings->push_back(std::move(setting));
  }
}

void add_others(Band band, std::vector<FileSetting>* settings) {
  std::vector<FileSetting> others;
  for (const StoreRecord& record : records_of(table_of_store(band))) {
    int index = 0;
    const Key* const key = find_dat_key(record.key, &index);
    const bool is_setting = key != nullptr && key->is_on(band);
    if (is_setting || record.key == kReloadFlag || is_left_out(record.key, ssid_count(band))) continue;
    FileSetting setting;
    setting.band = band;
    setting.dat_key = record.key;
    setting.value = joined(record.fields, ";");
    others.push_back(std::move(setting));
  }
  // The same text whatever the order of the records.
  std::stable_sort(others.begin(), others.end(),
                   [](const FileSetting& left, const FileSetting& right) { return left.dat_key < right.dat_key; });
  // What the library finds is the first one.
  const auto same = [](const FileSetting& left, const FileSetting& right) { return left.dat_key == right.dat_key; };
  others.erase(std::unique(others.begin(), others.end(), same), others.end());
  settings->insert(settings->end(), others.begin(), others.end());
}

}  // namespace

std::optional<std::string> exact_value(Band band, const Target& target) {
  const Key& key = *target.key;
  if (is_split_list(key) && key.numbering == Numbering::kShared) return read_value(band, key, target.index);
  const std::optional<std::string> value = read_raw_value(band, key, target.index);
  return value && is_repeated_for_ssids(key) ? without_repetition(*value) : value;
}

std::vector<FileSetting> settings_of_store(Band band) {
  std::vector<FileSetting> settings;
  for (const Key& key : all_keys()) {
    if (key.is_on(band)) add_key(band, key, &settings);
  }
  add_others(band, &settings);
  return settings;
}

}  // namespace wlanctl

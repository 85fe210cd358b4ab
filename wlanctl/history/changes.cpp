#include "wlanctl/history/changes.h"

#include <algorithm>
#include <utility>

#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/secret_mask.h"

namespace wlanctl {
namespace {

const StoreRecord* record_in(const std::vector<StoreRecord>& records, const std::string& dat_key) {
  for (const StoreRecord& record : records) {
    if (record.key == dat_key) return &record;
  }
  return nullptr;
}

std::string list_in(const std::vector<StoreRecord>& records, const std::string& dat_key) {
  const StoreRecord* const record = record_in(records, dat_key);
  return record == nullptr ? "" : joined(record->fields, ";");
}

// The key, where its value is a text of the whole band, which the loader may have spread over the fields.
const Key* text_of_band(const std::string& dat_key) {
  int index = 0;
  const Key* const key = find_dat_key(dat_key, &index);
  return key != nullptr && key->scope == Scope::kBand && !key->holds_numbers() ? key : nullptr;
}

}  // namespace

std::string SettingChange::key() const {
  return name.substr(0, name.find(':'));
}

int SettingChange::index() const {
  const size_t colon = name.find(':');
  const int64_t number = colon == std::string::npos ? 0 : number_in(name.substr(colon + 1)).value_or(0);
  return number >= 1 && number <= WIFIMGR_FIELDS ? static_cast<int>(number) : -1;
}

bool SettingChange::is_secret() const {
  const Key* const known = find_key(key());
  return known != nullptr ? known->secret : is_secret_dat_key(key());
}

std::optional<Target> SettingChange::target(Band band) const {
  Report unheard;
  return parse_target(name, band, unheard);
}

std::vector<SettingChange> changes_between(const std::vector<wifimgr_attr_record>& before,
                                           const std::vector<wifimgr_attr_record>& after, DatFile dat_file) {
  const std::vector<StoreRecord> left = records_of(before);
  std::vector<StoreRecord> right = records_of(after);
  const size_t served_before = ssids_in(left);
  const size_t served_after = ssids_in(right);
  // What is left of an SSID that goes, goes with the next load of the dat file: the history keeps it.
  if (served_after < served_before) right = served_part(std::move(right));
  std::vector<SettingChange> changes;
  for (const Difference& one : differences(left, right, std::max(served_before, served_after), dat_file)) {
    if (one.dat_key == kReloadFlag) continue;
    // What a table without the SSID has no value for was not changed.
    const size_t ssid = ssid_of(one.dat_key, one.field);
    if (ssid > std::min(served_before, served_after) && one.left.empty()) continue;
    SettingChange change = {one.name(), one.left, one.right};
    if (const Key* const key = text_of_band(one.dat_key)) {
      change = {key->name, list_in(left, one.dat_key), list_in(right, one.dat_key)};
      if (!changes.empty() && changes.back() == change) continue;
    }
    changes.push_back(std::move(change));
  }
  return changes;
}

}  // namespace wlanctl

#include "wlanctl/store/difference.h"

#include <algorithm>
#include <map>

#include "wlanctl/base/text.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/dat_key.h"

namespace wlanctl {
namespace {

using Fields = std::vector<std::string>;
using Values = std::map<std::string, Fields>;

// What a setter has stored once for each SSID, a load of the file splits.
Fields once(const StoreRecord& record) {
  const bool is_list = record.fields.size() > 1 || joined(record.fields, "").find(';') != std::string::npos;
  int index = 0;
  const Key* const key = is_list ? find_dat_key(record.key, &index) : nullptr;
  if (key == nullptr || !is_repeated_for_ssids(*key)) return record.fields;
  const std::string list = joined(record.fields, ";");
  const std::string value = without_repetition(list);
  return value == list ? record.fields : Fields{value};
}

Values values_of(const std::vector<StoreRecord>& records) {
  Values values;
  for (const StoreRecord& record : records) values[record.key] = once(record);
  return values;
}

std::string list_in(const Fields& fields, size_t most) {
  return joined({fields.begin(), fields.begin() + std::min(std::ssize(fields), static_cast<ptrdiff_t>(most))}, ";");
}

std::string field_of(const Fields& fields, size_t index) {
  return index < fields.size() ? fields[index] : std::string();
}

}  // namespace

std::string Difference::name() const {
  if (const std::optional<Target> target = target_of_field(dat_key, field)) return target->name();
  return fields > 1 ? dat_key + ":" + std::to_string(field + 1) : dat_key;
}

size_t ssid_of(const std::string& dat_key, size_t field) {
  int index = 0;
  const Key* const key = find_dat_key(dat_key, &index);
  if (key != nullptr && key->scope == Scope::kLink) return 0;
  return std::max(field + 1, static_cast<size_t>(std::max(index, 0)));
}

size_t ssids_in(const std::vector<StoreRecord>& records) {
  for (const StoreRecord& record : records) {
    if (record.key != kSsidCount || record.fields.empty()) continue;
    const int64_t count = number_in(record.fields.front()).value_or(1);
    return static_cast<size_t>(std::clamp<int64_t>(count, 1, WIFIMGR_FIELDS));
  }
  return 1;
}

std::vector<StoreRecord> served_part(std::vector<StoreRecord> records) {
  const size_t ssids = ssids_in(records);
  for (StoreRecord& record : records) {
    const auto is_behind = [&] {
      return !record.fields.empty() && ssid_of(record.key, record.fields.size() - 1) > ssids;
    };
    int index = 0;
    const Key* const key = find_dat_key(record.key, &index);
    if (!is_behind() || (key != nullptr && key->scope == Scope::kBand)) continue;
    while (is_behind()) record.fields.pop_back();
  }
  return records;
}

std::vector<Difference> served_differences(const std::vector<StoreRecord>& left, const std::vector<StoreRecord>& right,
                                           DatFile dat_file) {
  return differences(left, served_part(right), ssids_in(left), dat_file);
}

std::vector<Difference> differences(const std::vector<StoreRecord>& left, const std::vector<StoreRecord>& right,
                                    size_t ssids, DatFile dat_file) {
  std::vector<Difference> found;
  const auto compare = [&](const std::string& key, const Fields& on_left, const Fields& on_right) {
    if (on_left == on_right) return;
    if (is_list_of_band(key)) {
      std::string one = list_in(on_left, on_left.size());
      std::string other = list_in(on_right, on_right.size());
      const bool is_saved = (dat_file == DatFile::kRight && other == list_in(on_left, ssids)) ||
                            (dat_file == DatFile::kLeft && one == list_in(on_right, ssids));
      if (one != other && !is_saved) found.push_back({key, 0, 1, std::move(one), std::move(other)});
      return;
    }
    const size_t fields = std::max(on_left.size(), on_right.size());
    for (size_t i = 0; i < fields; ++i) {
      std::string one = field_of(on_left, i);
      std::string other = field_of(on_right, i);
      if (one == other) continue;
      if (ssid_of(key, i) > ssids) break;
      found.push_back({key, i, fields, std::move(one), std::move(other)});
    }
  };
  static const Fields kNone;
  const Values values = values_of(left);
  const Values others = values_of(right);
  for (const auto& [key, fields] : values) {
    const auto other = others.find(key);
    compare(key, fields, other == others.end() ? kNone : other->second);
  }
  for (const auto& [key, fields] : others) {
    if (!values.contains(key)) compare(key, kNone, fields);
  }
  return found;
}

}  // namespace wlanctl

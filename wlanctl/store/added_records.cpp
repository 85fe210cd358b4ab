#include "wlanctl/store/added_records.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <set>

#include "wlanctl/base/signal_hold.h"
#include "wlanctl/base/text.h"
#include "wlanctl/keys/key.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

std::set<std::string> keys_in(const std::vector<wifimgr_attr_record>& table) {
  std::set<std::string> keys;
  for (const wifimgr_attr_record& record : table) keys.insert(key_of(record));
  return keys;
}

// As the library finds it, which takes the lock itself.
bool is_found(Band band, const wifimgr_attr_record& record) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  return read_attr(number_of(band), 1, key_of(record).c_str(), text, sizeof text) == 0;
}

}  // namespace

std::string key_of(const wifimgr_attr_record& record) {
  return without_line_end(std::string(record.key, strnlen(record.key, sizeof record.key)));
}

std::vector<wifimgr_attr_record> missing_records(Band band, int ssid) {
  const std::set<std::string> there = keys_in(StoreLock(band).table());
  std::vector<wifimgr_attr_record> missing;
  for (const Key& key : all_keys()) {
    if (key.scope != Scope::kSsid || key.numbering == Numbering::kShared || !key.is_on(band)) continue;
    if (!there.contains(dat_key_of(key, 1)) || there.contains(dat_key_of(key, ssid))) continue;
    wifimgr_attr_record& record = missing.emplace_back();
    (void)std::snprintf(record.key, sizeof record.key, "%s", dat_key_of(key, ssid).c_str());
  }
  return missing;
}

Adding add_records(Band band, const std::vector<wifimgr_attr_record>& records) {
  const SignalHold hold;
  {
    const StoreLock lock(band);
    if (!lock) return Adding::kNoLock;
    const std::set<std::string> there = keys_in(lock.table());
    std::vector<wifimgr_attr_record> added = records;
    std::erase_if(added, [&](const wifimgr_attr_record& record) { return there.contains(key_of(record)); });
    if (!lock.append(added)) return Adding::kNoRoom;
  }
  const auto is_there = [&](const wifimgr_attr_record& record) { return is_found(band, record); };
  return std::all_of(records.begin(), records.end(), is_there) ? Adding::kDone : Adding::kNotThere;
}

size_t free_records(Band band) {
  return StoreLock(band).free_records();
}

}  // namespace wlanctl

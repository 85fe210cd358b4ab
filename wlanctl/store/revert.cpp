#include "wlanctl/store/revert.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string_view>
#include <utility>

#include "wlanctl/files/bytes.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/storing_note.h"

namespace wlanctl {
namespace {

int ssid_count_in(const std::vector<wifimgr_attr_record>& table) {
  for (const wifimgr_attr_record& record : table) {
    if (std::strcmp(record.key, kSsidCount) == 0) return static_cast<int>(std::strtol(record.field[0], nullptr, 10));
  }
  return 0;
}

Reverted try_to_revert(Band band, bool even_if_wrong, bool (*is_sound)(const std::string& bytes)) {
  Reverted reverted;
  const StoreLock lock(band);
  const std::optional<std::string> bytes = read_bytes(dat_path_of(band));
  if (!bytes) {
    reverted.how = Reverting::kUnreadable;
    return reverted;
  }
  const std::vector<wifimgr_attr_record> file = parse_dat_text(*bytes);
  reverted.before = lock.table();
  reverted.bytes = *bytes;
  reverted.missing = missing_keys(reverted.before, file);
  if (!reverted.missing.empty() && !even_if_wrong) {
    reverted.how = Reverting::kIncomplete;
  } else if (!even_if_wrong && !is_sound(*bytes)) {
    reverted.how = Reverting::kUnsound;
  } else if (!lock.replace(file)) {
    reverted.how = Reverting::kNoRoom;
  } else {
    drop_storing(band);
  }
  return reverted;
}

}  // namespace

std::vector<std::string> missing_keys(const std::vector<wifimgr_attr_record>& records,
                                      const std::vector<wifimgr_attr_record>& file) {
  std::set<std::string> there;
  for (const wifimgr_attr_record& record : file) there.insert(key_of(record));
  const int count = std::min(ssid_count_in(records), ssid_count_in(file));
  std::vector<std::string> missing;
  if (!there.contains(kSsidCount)) missing.emplace_back(kSsidCount);
  for (const wifimgr_attr_record& record : records) {
    const std::string key = key_of(record);
    // A line without = is a key to the loader, and has its line end.
    const std::string_view name(record.key, strnlen(record.key, sizeof record.key));
    if (key.empty() || name.find_first_of("\r\n") != std::string_view::npos) continue;
    if (key != kSsidCount && !there.contains(key) && !is_left_out(key, count)) missing.push_back(key);
  }
  return missing;
}

bool is_complete(Band band, const std::vector<wifimgr_attr_record>& file) {
  return missing_keys(table_of_store(band), file).empty();
}

Reverted revert_store(Band band, bool even_if_wrong, bool (*is_sound)(const std::string& bytes)) {
  for (int look = 1;; ++look) {
    Reverted reverted = try_to_revert(band, even_if_wrong && look == kMostLooks, is_sound);
    const bool may_be_half_written = reverted.how == Reverting::kIncomplete || reverted.how == Reverting::kUnsound;
    if (!may_be_half_written || look == kMostLooks) return reverted;
    pause_between_looks();
  }
}

}  // namespace wlanctl

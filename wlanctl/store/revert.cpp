#include "wlanctl/store/revert.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <set>
#include <utility>

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

// What a save of that store would have written to the file, and is not in it.
std::vector<std::string> missing_keys(const std::vector<wifimgr_attr_record>& live,
                                      const std::vector<wifimgr_attr_record>& file) {
  std::set<std::string> there;
  for (const wifimgr_attr_record& record : file) there.insert(key_of(record));
  const int count = std::min(ssid_count_in(live), ssid_count_in(file));
  std::vector<std::string> missing;
  if (!there.contains(kSsidCount)) missing.emplace_back(kSsidCount);
  for (const wifimgr_attr_record& record : live) {
    const std::string key = key_of(record);
    if (key != kSsidCount && !there.contains(key) && !is_left_out(key, count)) missing.push_back(key);
  }
  return missing;
}

Reverted try_to_revert(Band band, bool even_if_incomplete) {
  Reverted reverted;
  const StoreLock lock(band);
  auto file = look_at_dat_file(band, lock);
  if (!file) {
    reverted.how = Reverting::kUnreadable;
    return reverted;
  }
  reverted.before = lock.table();
  reverted.file = std::move(*file);
  reverted.missing = missing_keys(reverted.before, reverted.file);
  if (!reverted.missing.empty() && !even_if_incomplete) {
    reverted.how = Reverting::kIncomplete;
  } else if (!lock.replace(reverted.file)) {
    reverted.how = Reverting::kNoRoom;
  } else {
    drop_storing(band);
  }
  return reverted;
}

}  // namespace

bool is_complete(Band band, const std::vector<wifimgr_attr_record>& file) {
  return missing_keys(table_of_store(band), file).empty();
}

Reverted revert_store(Band band, bool even_if_incomplete) {
  for (int look = 1;; ++look) {
    Reverted reverted = try_to_revert(band, even_if_incomplete && look == kMostLooks);
    if (reverted.how != Reverting::kIncomplete || look == kMostLooks) return reverted;
    pause_between_looks();
  }
}

}  // namespace wlanctl

#include "wlanctl/watch/store_watch.h"

#include <poll.h>
#include <sys/sem.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

// Looks at a store that is being written, until two of them agree.
constexpr int kMostTries = 10;
constexpr int kBetweenTriesMs = 3;

// A store that is locked is looked at the next time, but not for ever: its holder may be stuck.
constexpr unsigned kMostPutOff = 3;

using Fields = std::vector<std::string>;

std::map<std::string, Fields> values_of(const std::vector<wifimgr_attr_record>& table) {
  std::map<std::string, Fields> values;
  for (StoreRecord& record : records_of(table)) values[record.key] = std::move(record.fields);
  return values;
}

std::string field_of(const Fields& fields, size_t index) {
  return index < fields.size() ? fields[index] : std::string();
}

Event change_of(Band band, const std::string& dat_key, size_t field, std::string from, std::string to) {
  const std::optional<Target> target = target_of_field(dat_key, field);
  const std::string key = target ? target->key->name : dat_key;
  const int index = target ? target->index : field == 0 ? -1 : static_cast<int>(field) + 1;
  if (is_secret_dat_key(dat_key)) {
    if (!from.empty()) from = kMasked;
    if (!to.empty()) to = kMasked;
  }
  return {"value",
          band,
          key + (index < 0 ? "" : ":" + std::to_string(index)) + "  " + from + " -> " + to,
          {{"key", key}, {"index", index}, {"from", json_value(dat_key, from)}, {"to", json_value(dat_key, to)}}};
}

bool is_locked(Band band) {
  const int id = semaphore_of(band);
  return id >= 0 && semctl(id, 0, GETVAL) == 0;
}

bool is_same(const std::vector<wifimgr_attr_record>& left, const std::vector<wifimgr_attr_record>& right) {
  return left.size() == right.size() &&
         (left.empty() || std::memcmp(left.data(), right.data(), left.size() * sizeof left[0]) == 0);
}

}  // namespace

// False while it changes all the time.
bool StoreWatch::settled_table(Table* table) const {
  *table = view_.table();
  for (int i = 0; i < kMostTries; ++i) {
    (void)poll(nullptr, 0, kBetweenTriesMs);
    Table again = view_.table();
    if (is_same(again, *table)) return true;
    *table = std::move(again);
  }
  return false;
}

void StoreWatch::tell_store(const char* kind, const char* text, Events& events) const {
  events.push_back({kind, band_, text});
}

void StoreWatch::look(Events& events) {
  const bool is_first = std::exchange(is_first_, false);
  if (!view_.attach()) {
    if (!is_told_missing_) {
      tell_store("store-gone", is_first ? "there is no store to be read" : "the store is gone", events);
    }
    is_told_missing_ = true;
    return;
  }
  const size_t used = table_.size() * sizeof(wifimgr_attr_record);
  const bool is_back = std::exchange(is_told_missing_, false);
  // Nearly always nothing has changed: the table, and the empty key behind it.
  if (!is_first && !is_back && used > 0 && used < view_.size() &&
      std::memcmp(table_.data(), view_.bytes(), used) == 0 && view_.bytes()[used] == '\0') {
    return;
  }
  if (!is_first && is_locked(band_) && put_off_ < kMostPutOff) {
    ++put_off_;
    is_told_missing_ = is_back;
    return;
  }
  put_off_ = 0;
  Table now;
  if (!settled_table(&now) && !is_first) return;
  if (is_back) {
    tell_store("store-back", "there is a store", events);
  } else if (now.empty() && (is_first || !table_.empty())) {
    tell_store("store-empty", "the store is empty", events);
  } else if (table_.empty() && !is_first && !now.empty()) {
    tell_store("store-back", "the store is filled", events);
  } else if (!is_first && !now.empty()) {
    compare(now, events);
  }
  table_ = std::move(now);
}

void StoreWatch::compare(const Table& now, Events& events) const {
  const auto before = values_of(table_);
  const auto after = values_of(now);
  static const Fields kNone;
  const auto tell = [&](const std::string& key, const Fields& from, const Fields& to) {
    for (size_t i = 0; i < std::max(from.size(), to.size()); ++i) {
      if (field_of(from, i) == field_of(to, i)) continue;
      events.push_back(change_of(band_, key, i, field_of(from, i), field_of(to, i)));
    }
  };
  for (const auto& [key, fields] : after) {
    const auto found = before.find(key);
    tell(key, found == before.end() ? kNone : found->second, fields);
  }
  for (const auto& [key, fields] : before) {
    if (!after.contains(key)) tell(key, fields, kNone);
  }
}

std::string StoreWatch::ssid_name(int ssid) const {
  static const Key* const kName = find_key("SSID");
  const std::string dat_key = dat_key_of(*kName, ssid);
  for (const wifimgr_attr_record& record : table_) {
    if (strnlen(record.key, sizeof record.key) != dat_key.size() ||
        !std::string(record.key, dat_key.size()).starts_with(dat_key))
      continue;
    const std::vector<StoreRecord> one = records_of({record});
    return field_of(one.front().fields, kName->numbering == Numbering::kShared ? static_cast<size_t>(ssid) - 1 : 0);
  }
  return "";
}

}  // namespace wlanctl

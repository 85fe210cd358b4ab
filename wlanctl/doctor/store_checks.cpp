// The band's segment and its lock.
#include <poll.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <set>

#include "wlanctl/base/text.h"
#include "wlanctl/check/dat_text.h"
#include "wlanctl/doctor/checks.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/process.h"
#include "wlanctl/store/attached_processes.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/lock_holder.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/segment_view.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

constexpr char kStore[] = "store";
constexpr char kLock[] = "lock";

// The loader makes room for so many lines more than the file has.
constexpr size_t kSpareRecords = 5;

// Who works with the store holds its lock for as long as a file is written, at most.
constexpr int kLooks = 20;
constexpr int kBetweenLooksMs = 25;

size_t room_for(const std::string& bytes) {
  const size_t lines = lines_of(bytes).size();
  return (lines + kSpareRecords) * sizeof(wifimgr_attr_record);
}

bool has_end(const wifimgr_attr_record& record) {
  const auto ends = [](const char* text, size_t size) { return std::memchr(text, '\0', size) != nullptr; };
  if (!ends(record.key, sizeof record.key)) return false;
  return std::all_of(std::begin(record.field), std::end(record.field),
                     [&](const auto& field) { return ends(field, sizeof field); });
}

std::string size_text(size_t bytes) {
  return count_of(bytes, "byte");
}

void check_table(Band band, const SegmentView& view, Diagnosis& diagnosis) {
  const std::vector<wifimgr_attr_record> table = view.table();
  if (table.empty()) return diagnosis.ill(Ill::kStoreEmpty, kStore, band, "its first key");
  const bool is_full = (table.size() + 1) * sizeof table[0] > view.size();
  const bool are_ended = std::all_of(table.begin(), table.end(), has_end);
  diagnosis.add(is_full || !are_ended, Ill::kStoreUnended, kStore, band, count_of(table.size(), "record"));
  std::set<std::string> keys;
  std::string twice;
  for (const StoreRecord& record : records_of(table)) {
    if (!keys.insert(record.key).second) twice += (twice.empty() ? "" : ", ") + record.key;
  }
  diagnosis.add(!twice.empty(), Ill::kStoreDuplicate, kStore, band, twice.empty() ? "its keys" : twice);
  // What has no end is no value that anybody stored.
  if (!is_full && are_ended) check_values(band, table, diagnosis);
}

// The kernel's limits, by which it makes a segment of that size or none.
void check_limits(Band band, size_t needed, Diagnosis& diagnosis) {
  const struct {
    const char* name;
    unsigned long long unit;
  } limits[] = {{"shmmax", 1}, {"shmall", static_cast<unsigned long long>(sysconf(_SC_PAGESIZE))}};
  for (const auto& limit : limits) {
    const std::string text = without_line_end(read_bytes(std::string("/proc/sys/kernel/") + limit.name).value_or(""));
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) continue;
    const unsigned long long most = std::strtoull(text.c_str(), nullptr, 10);
    const bool is_small = most < (needed + limit.unit - 1) / limit.unit;
    diagnosis.add(is_small, Ill::kShmLimit, kStore, band,
                  "kernel." + std::string(limit.name) + " is " + text +
                      (is_small ? "; the file needs " + size_text(needed) : std::string()));
  }
}

// Those who attached one before it was removed write into it as ever, and read what they wrote.
void check_attached(Band band, Diagnosis& diagnosis) {
  std::vector<AttachedProcess> attached = attached_processes(band);
  std::erase_if(attached, [](const AttachedProcess& one) { return one.is_current; });
  diagnosis.add(!attached.empty(), Ill::kStoreRemoved, kStore, band,
                attached.empty() ? "who works on it" : names_of(attached));
}

std::string last_user(int semaphore) {
  const int process = semctl(semaphore, 0, GETPID);
  return process <= 0 ? "" : ", last used by " + text_of_process(process);
}

// Whether the same process has it all the time.
bool is_held_on(Band band, const LockHolder& holder) {
  for (int i = 0; i < kLooks; ++i) {
    (void)poll(nullptr, 0, kBetweenLooksMs);
    const LockHolder now = lock_holder(band);
    if (now.is == LockHolder::Is::kNone || now.process != holder.process) return false;
  }
  return true;
}

}  // namespace

void check_store(Band band, Diagnosis& diagnosis) {
  SegmentView view(band);
  const std::string segment = "segment " + segment_key_of(band);
  const std::optional<std::string> file = read_bytes(dat_path_of(band));
  const size_t needed = file ? room_for(*file) : 0;
  check_limits(band, needed, diagnosis);
  const bool is_attached = view.attach();
  const bool is_missing = !is_attached && errno == ENOENT;
  if (is_attached || is_missing) check_attached(band, diagnosis);
  if (!is_attached) return diagnosis.ill(is_missing ? Ill::kStoreMissing : Ill::kStoreRefused, kStore, band, segment);
  diagnosis.add(view.size() < needed, Ill::kStoreSmall, kStore, band,
                segment + ", " + size_text(view.size()) + (file ? "; the file needs " + std::to_string(needed) : ""));
  check_table(band, view, diagnosis);
}

void check_lock(Band band, Diagnosis& diagnosis) {
  const int id = semaphore_of(band);
  if (id < 0) {
    // Made with the store.
    if (segment_of(band) >= 0) diagnosis.ill(Ill::kLockMissing, kLock, band, "the semaphore of the store");
    return;
  }
  const int value = semctl(id, 0, GETVAL);
  const std::string at = "the semaphore is at " + std::to_string(value);
  const LockHolder holder = lock_holder(band);
  if (holder.is == LockHolder::Is::kNone) {
    const std::string last = value > 1 ? last_user(id) : "";
    return diagnosis.add(value > 1, Ill::kLockTwofold, kLock, band, at + last);
  }
  const std::string held = at + ", held by " + name_of(holder);
  if (holder.is == LockHolder::Is::kGone) {
    // The kernel may be about to give it back.
    return diagnosis.add(is_held_on(band, holder), Ill::kLockOrphaned, kLock, band, held);
  }
  if (!is_held_on(band, holder)) return diagnosis.well(kLock, band, held + ", for a moment");
  diagnosis.ill(is_stopped(holder.process) ? Ill::kLockStopped : Ill::kLockHeld, kLock, band, held);
}

Settings settings_of(Band band) {
  Settings settings;
  SegmentView view(band);
  if (view.attach()) {
    for (StoreRecord& record : records_of(view.table())) settings.try_emplace(record.key, std::move(record.fields));
  }
  if (!settings.empty()) return settings;
  for (DatLine& line : read_dat_text(read_bytes(dat_path_of(band)).value_or("")).lines) {
    settings.try_emplace(line.key, std::move(line.fields));
  }
  return settings;
}

}  // namespace wlanctl

#include "wlanctl/store/store.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <sstream>

#include "wlanctl/base/report.h"
#include "wlanctl/confirm/guardian.h"
#include "wlanctl/files/places.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/library/detached_store.h"
#include "wlanctl/library/messages.h"

namespace wlanctl {
namespace {

constexpr key_t kSegments[] = {0x12345, 0x12346};
constexpr key_t kSemaphores[] = {0x12348, 0x12349};
// A save empties the file before it takes the lock.
constexpr int kTriesBesideASave = 10;
constexpr int kPauseMs = 30;
constexpr char kSsidCount[] = "BssidNum";

char*& address_of(Band band) {
  return band == Band::k2_4G ? shm_addr_2_4g : shm_addr_5g;
}

int segment_of(Band band) {
  return shmget(kSegments[number_of(band)], 0, 0666);
}

// The segments that were opened. Others may have come in their place meanwhile.
int g_opened[kBands.size()] = {-1, -1};

size_t size_of_segment(Band band) {
  shmid_ds status = {};
  return shmctl(g_opened[number_of(band)], IPC_STAT, &status) == 0 ? status.shm_segsz : 0;
}

// The band's lock, taken for one step.
class StoreLock {
 public:
  explicit StoreLock(Band band) : id_(semget(kSemaphores[number_of(band)], 1, 0666)) {
    held_ = id_ >= 0 && semaphore_p(id_) == 0;
  }
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;
  ~StoreLock() {
    if (held_) (void)semaphore_v(id_);
  }
  explicit operator bool() const { return held_; }

 private:
  int id_;
  bool held_;
};

std::string without_line_end(const char* text, size_t most) {
  std::string value(text, strnlen(text, most));
  return value.substr(0, value.find_first_of("\r\n"));
}

std::vector<wifimgr_attr_record> table_of_segment(Band band) {
  std::vector<wifimgr_attr_record> records;
  const auto* const table = reinterpret_cast<const wifimgr_attr_record*>(address_of(band));
  const size_t room = size_of_segment(band) / sizeof *table;
  for (size_t i = 0; i < room && table[i].key[0] != '\0'; ++i) records.push_back(table[i]);
  return records;
}

// The loader takes the first address only of a list that has a record of its own. The library, and the file after a save,
// have all of it in the first field.
void keep_list_whole(const std::string& line, wifimgr_attr_record* record) {
  int index = 0;
  const Key* const key = find_dat_key(record->key, &index);
  if (key == nullptr || !is_split_list(*key) || key->numbering == Numbering::kShared) return;
  std::string value = line.substr(line.find('=') + 1);
  value.resize(std::min(value.find('='), value.size()));
  if (value.find(';') == std::string::npos) return;
  std::memset(record->field, 0, sizeof record->field);
  (void)std::snprintf(record->field[0], sizeof record->field[0], "%s", value.c_str());
}

std::optional<std::vector<wifimgr_attr_record>> parse_unlocked(Band band) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(dat_path_of(band).c_str(), "re"), std::fclose);
  if (!file) return std::nullopt;
  std::vector<wifimgr_attr_record> records;
  for (char line[WIFIMGR_DAT_LINE_SIZE]; std::fgets(line, sizeof line, file.get()) != nullptr;) {
    wifimgr_attr_record record = {};
    const std::string text = line;
    if (parse_data_from_line(line, &record) != 0) continue;
    keep_list_whole(text, &record);
    records.push_back(record);
  }
  return records;
}

bool replace_unlocked(Band band, const std::vector<wifimgr_attr_record>& content) {
  const size_t room = size_of_segment(band);
  const size_t used = content.size() * sizeof(wifimgr_attr_record);
  if (used + sizeof(wifimgr_attr_record) > room) return false;
  if (used != 0) std::memcpy(address_of(band), content.data(), used);
  std::memset(address_of(band) + used, 0, room - used);
  return true;
}

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
  for (const wifimgr_attr_record& record : file) there.insert(without_line_end(record.key, sizeof record.key));
  const int count = std::min(ssid_count_in(live), ssid_count_in(file));
  std::vector<std::string> missing;
  if (!there.contains(kSsidCount)) missing.emplace_back(kSsidCount);
  for (const wifimgr_attr_record& record : live) {
    const std::string key = without_line_end(record.key, sizeof record.key);
    if (key != kSsidCount && !there.contains(key) && !is_left_out(key, count)) missing.push_back(key);
  }
  return missing;
}

bool fail(Band band, Report& report, const std::string& message, const std::string& next) {
  address_of(band) = nullptr;
  report.problem({message, next, {{"band", label_of(band)}}});
  return false;
}

// Held while a store is looked for and made, so that nobody attaches one that is only half there.
class MakingLock {
 public:
  MakingLock() : file_(open(place::kMaking, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {
    while (file_ >= 0 && flock(file_, LOCK_EX) != 0 && errno == EINTR) continue;
  }
  MakingLock(const MakingLock&) = delete;
  MakingLock& operator=(const MakingLock&) = delete;
  ~MakingLock() {
    if (file_ >= 0) close(file_);
  }

 private:
  int file_;
};

bool attach_or_make(Band band, Report& report) {
  const MakingLock lock;
  const std::string store = std::string("the store of ") + label_of(band);
  constexpr int kTries = 3;
  for (int i = 0; i < kTries; ++i) {
    const int segment = segment_of(band);
    if (segment >= 0) {
      void* const address = shmat(segment, nullptr, 0);
      if (address == reinterpret_cast<void*>(-1)) break;
      address_of(band) = static_cast<char*>(address);
      g_opened[number_of(band)] = segment;
      return true;
    }
    if (errno != ENOENT) break;
    clear_messages();
    bool made = false;
    {
      const OnlyNewSegments no_other;
      made = wifimgr_lib_init(number_of(band)) == 0;
      if (!made && !no_other.was_there()) {
        return fail(band, report,
                    std::string("there is no store of ") + label_of(band) + ", and none can be made: " + first_reason(),
                    "is " + dat_path_of(band) + " there, and writable?");
      }
    }
    if (made) {
      g_opened[number_of(band)] = segment_of(band);
      return true;
    }
  }
  return fail(band, report, store + " cannot be attached: " + std::strerror(errno),
              "run as the user of the management processes");
}

bool can_be_locked(Band band, Report& report) {
  const int id = semget(kSemaphores[number_of(band)], 1, 0666);
  sembuf step = {0, -1, SEM_UNDO};
  if (id < 0) return true;
  if (semop(id, &step, 1) == 0) {
    step.sem_op = 1;
    (void)semop(id, &step, 1);
    return true;
  }
  if (errno != EAGAIN) {
    return fail(band, report,
                std::string("the store of ") + label_of(band) + " cannot be locked: " + std::strerror(errno),
                "run as the user of the management processes");
  }
  return fail(band, report,
              std::string("the store of ") + label_of(band) + " is held by process " +
                  std::to_string(semctl(id, 0, GETPID)) + ", which does not let go",
              "is it stopped? let it go on, or end it");
}

StoreRecord shown(const wifimgr_attr_record& record) {
  StoreRecord shown;
  shown.key = without_line_end(record.key, sizeof record.key);
  for (const auto& field : record.field) shown.fields.push_back(without_line_end(field, sizeof field));
  while (!shown.fields.empty() && shown.fields.back().empty()) shown.fields.pop_back();
  return shown;
}

}  // namespace

bool open_store(Band band, Report& report, Opening how) {
  if (address_of(band) != nullptr) return true;
  if (!attach_or_make(band, report) || !can_be_locked(band, report)) return false;
  if (how != Opening::kToFill && table_of_segment(band).empty()) {
    return fail(band, report, std::string("the store of ") + label_of(band) + " is empty",
                std::string("wlanctl revert ") + label_of(band) + " fills it from the dat file");
  }
  if (how == Opening::kUsual) recover_pending(band, report);
  return true;
}

bool reopen_if_replaced(Band band, Report& report) {
  if (address_of(band) != nullptr && segment_of(band) == g_opened[number_of(band)]) return true;
  address_of(band) = nullptr;
  return open_store(band, report, Opening::kLeavePending);
}

std::string dat_path_of(Band band) {
  return band == Band::k2_4G ? dat_path_2_4g : dat_path_5g;
}

std::vector<StoreRecord> records_of_store(Band band) {
  return records_of_file(table_of_store(band));
}

std::vector<wifimgr_attr_record> table_of_store(Band band) {
  const StoreLock lock(band);
  return table_of_segment(band);
}

std::optional<std::vector<wifimgr_attr_record>> parse_dat_file(Band band) {
  for (int i = 0;; ++i) {
    std::optional<std::vector<wifimgr_attr_record>> file;
    {
      const StoreLock lock(band);
      file = parse_unlocked(band);
    }
    if (!file || !file->empty() || i == kTriesBesideASave) return file;
    poll(nullptr, 0, kPauseMs);
  }
}

std::vector<StoreRecord> records_of_file(const std::vector<wifimgr_attr_record>& parsed) {
  std::vector<StoreRecord> records;
  for (const wifimgr_attr_record& record : parsed) records.push_back(shown(record));
  return records;
}

PrivateStore::PrivateStore(Band band) : band_(band), live_(address_of(band)), copy_(size_of_segment(band)) {
  {
    const StoreLock lock(band);
    std::memcpy(copy_.data(), live_, copy_.size());
  }
  address_of(band) = copy_.data();
}

// As large as the segment at least: the library asks the system how much room there is.
PrivateStore::PrivateStore(Band band, const std::vector<wifimgr_attr_record>& content)
    : band_(band),
      live_(address_of(band)),
      copy_(std::max(size_of_segment(band), (content.size() + 1) * sizeof(wifimgr_attr_record))) {
  if (!content.empty()) std::memcpy(copy_.data(), content.data(), content.size() * sizeof(wifimgr_attr_record));
  address_of(band) = copy_.data();
}

PrivateStore::~PrivateStore() {
  address_of(band_) = live_;
}

bool is_complete(Band band, const std::vector<wifimgr_attr_record>& file) {
  return missing_keys(table_of_store(band), file).empty();
}

bool replace_store(Band band, const std::vector<wifimgr_attr_record>& content) {
  const StoreLock lock(band);
  return lock && replace_unlocked(band, content);
}

namespace {

Reverted try_to_revert(Band band, bool even_if_incomplete) {
  Reverted reverted;
  const StoreLock lock(band);
  auto file = parse_unlocked(band);
  if (!file) {
    reverted.how = Reverting::kUnreadable;
    return reverted;
  }
  reverted.before = table_of_segment(band);
  reverted.file = std::move(*file);
  reverted.missing = missing_keys(reverted.before, reverted.file);
  if (!reverted.missing.empty() && !even_if_incomplete) {
    reverted.how = Reverting::kIncomplete;
  } else if (!lock || !replace_unlocked(band, reverted.file)) {
    reverted.how = Reverting::kNoRoom;
  }
  return reverted;
}

}  // namespace

Reverted revert_store(Band band, bool even_if_incomplete) {
  for (int i = 0;; ++i) {
    Reverted reverted = try_to_revert(band, even_if_incomplete && i == kTriesBesideASave);
    if (reverted.how != Reverting::kIncomplete || i == kTriesBesideASave) return reverted;
    poll(nullptr, 0, kPauseMs);
  }
}

void spread_list(Band band, const Key& key, const std::string& value) {
  if (!is_split_list(key) || key.numbering != Numbering::kShared) return;
  std::istringstream stream(value);
  std::vector<std::string> parts;
  for (std::string part; std::getline(stream, part, ';');) parts.push_back(part);
  if (parts.size() > WIFIMGR_FIELDS) parts = {value};
  parts.resize(WIFIMGR_FIELDS);
  for (int i = 0; i < WIFIMGR_FIELDS; ++i) {
    (void)update_attr(number_of(band), i + 1, key.dat_key, parts[static_cast<size_t>(i)].c_str());
  }
}

std::optional<std::string> read_value(Band band, const Key& key, int index) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  // A key of an index of its own has one value.
  const int field = key.numbering == Numbering::kShared ? index : -1;
  if (read_attr(number_of(band), field, dat_key_of(key, index).c_str(), text, sizeof text) != 0) return std::nullopt;
  std::string value = without_line_end(text, sizeof text);
  if (!is_split_list(key) || key.numbering != Numbering::kShared) return value;
  for (int i = 2; i <= WIFIMGR_FIELDS; ++i) {
    if (read_attr(number_of(band), i, key.dat_key, text, sizeof text) != 0 || text[0] == '\0') break;
    value += ';' + without_line_end(text, sizeof text);
  }
  return value;
}

int ssid_count(Band band) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  (void)wifimgr_lib_get_bssidnum(number_of(band), -1, text, sizeof text);
  const long count = std::strtol(text, nullptr, 10);
  return count < 0 ? 0 : static_cast<int>(std::min(count, static_cast<long>(WIFIMGR_FIELDS)));
}

}  // namespace wlanctl

#include "wlanctl/store/segment.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/plain_file.h"
#include "wlanctl/library/band_variables.h"
#include "wlanctl/library/file_redirect.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/lock_holder.h"

namespace wlanctl {
namespace {

// The library's; its header names them for those who attach a band themselves, as ipcs and this tool do.
constexpr key_t kSegments[] = {0x12345, 0x12346};
constexpr key_t kSemaphores[] = {0x12348, 0x12349};

// The segments that were opened. Others may have come in their place meanwhile.
int g_opened[kBandCount] = {-1, -1};

// Never taken down: the library would speak of it when the tool has ended already.
const DetachedStore* g_detached[kBandCount];

constexpr char kWritesSettings[] = "wlanctl import FILE --to-file writes some";

bool fail(Band band, Report& report, const std::string& message, const std::string& next) {
  address_of(band) = nullptr;
  report.problem({message, next, about(band)});
  return false;
}

// Held while a store is looked for and made, so that nobody attaches one that is only half there.
class MakingLock {
 public:
  // For who only looks: without making the file.
  struct IfThere {};

  MakingLock() : MakingLock(open_lock_file(place::kMaking)) {}
  explicit MakingLock(IfThere) : MakingLock(open(place::kMaking, O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK)) {}
  MakingLock(const MakingLock&) = delete;
  MakingLock& operator=(const MakingLock&) = delete;
  ~MakingLock() {
    if (file_ >= 0) close(file_);
  }

 private:
  explicit MakingLock(int file) : file_(file) {
    while (file_ >= 0 && flock(file_, LOCK_EX) != 0 && errno == EINTR) continue;
  }

  int file_;
};

enum class Attached { kDone, kNotThere, kFailed };

// With errno, where it is not done.
Attached attach(Band band) {
  const int segment = segment_of(band);
  if (segment < 0) return errno == ENOENT ? Attached::kNotThere : Attached::kFailed;
  void* const address = shmat(segment, nullptr, 0);
  if (address == reinterpret_cast<void*>(-1)) return Attached::kFailed;
  address_of(band) = static_cast<char*>(address);
  g_opened[number_of(band)] = segment;
  return Attached::kDone;
}

bool fail_to_attach(Band band, Report& report) {
  return fail(band, report,
              std::string("the store of ") + label_of(band) + " cannot be attached: " + std::strerror(errno),
              "run as the user of the management processes");
}

// Of what the file has at this moment: the library would count the lines of one that grows for ever. It refuses a file
// that cannot be written, and then does so itself.
bool load(Band band) {
  const std::optional<std::string> bytes = read_bytes(dat_path_of(band));
  if (!bytes || access(dat_path_of(band).c_str(), W_OK) != 0) return wifimgr_lib_init(number_of(band)) == 0;
  const MemoryFile copy(*bytes);
  const DatRedirect redirect(band, copy);
  return wifimgr_lib_init(number_of(band)) == 0;
}

bool attach_or_make(Band band, Report& report) {
  const MakingLock lock;
  const auto fail_to_make = [&](const std::string& reason) {
    // The library finds only behind its filling that a key is missing, and leaves what it has made.
    if (segment_of(band) >= 0) {
      const std::string label = label_of(band);
      return fail(
          band, report,
          "the store of " + label + " was made, and is there now, but the library was not content with it: " + reason,
          "wlanctl doctor " + label + " tells what it lacks; mend " + dat_path_of(band) + ", and wlanctl revert " +
              label);
    }
    return fail(band, report,
                std::string("there is no store of ") + label_of(band) + ", and none can be made: " + reason,
                "is " + dat_path_of(band) + " there, and writable?");
  };
  constexpr int kTries = 3;
  for (int i = 0; i < kTries; ++i) {
    const Attached attached = attach(band);
    if (attached == Attached::kDone) return true;
    if (attached == Attached::kFailed) break;
    clear_messages();
    bool made = false;
    if (const std::string reason = reason_against_file(dat_path_of(band)); !reason.empty()) {
      return fail_to_make(dat_path_of(band) + ": " + reason);
    }
    // It would be too small for the settings that are to come, and in the way of who loads them.
    if (const auto bytes = read_bytes(dat_path_of(band)); bytes && parse_dat_text(*bytes).empty()) {
      return fail(band, report,
                  std::string("there is no store of ") + label_of(band) + ", and none is made: " + dat_path_of(band) +
                      " has no settings",
                  kWritesSettings);
    }
    bool was_there = false;
    {
      const OnlyNewSegments no_other;
      made = load(band);
      was_there = no_other.was_there();
    }
    if (!made && !was_there) return fail_to_make(first_reason());
    if (made) {
      g_opened[number_of(band)] = segment_of(band);
      return true;
    }
  }
  return fail_to_attach(band, report);
}

bool can_be_locked(Band band, Report& report) {
  const int id = semaphore_of(band);
  sembuf step = {0, -1, SEM_UNDO};
  if (id >= 0 && semop(id, &step, 1) == 0) {
    step.sem_op = 1;
    (void)semop(id, &step, 1);
    return true;
  }
  // The library gives no value without it: the store would look empty.
  if (id < 0 && errno == ENOENT) {
    return fail(band, report,
                std::string("the store of ") + label_of(band) + " cannot be used: the semaphore that locks it is gone",
                "start the process that makes the store, by init_shm and init, anew");
  }
  if (errno != EAGAIN) {
    return fail(band, report,
                std::string("the store of ") + label_of(band) + " cannot be locked: " + std::strerror(errno),
                "run as the user of the management processes");
  }
  const LockHolder holder = lock_holder(band);
  const std::string label = label_of(band);
  if (holder.is == LockHolder::Is::kGone) {
    return fail(band, report,
                "the store of " + label + " is held, last by process " + std::to_string(holder.process) +
                    ", which is gone and cannot let go",
                "wlanctl unlock " + label + " frees it");
  }
  if (holder.is == LockHolder::Is::kNone) {
    return fail(band, report, "the store of " + label + " was held all the time, by one process after the other",
                "try again");
  }
  return fail(band, report, "the store of " + label + " is held by " + name_of(holder) + ", which does not let go",
              holder.is == LockHolder::Is::kUnknown ? "wlanctl unlock " + label + " --force frees it"
                                                    : "is it stopped? let it go on, or end it");
}

bool is_usable(Band band, Report& report, Content content) {
  if (!can_be_locked(band, report)) return false;
  if (content == Content::kNeeded && StoreLock(band).is_empty()) {
    return fail(band, report, std::string("the store of ") + label_of(band) + " is empty",
                std::string("wlanctl revert ") + label_of(band) + " fills it from the dat file");
  }
  return true;
}

}  // namespace

int segment_of(Band band) {
  return shmget(kSegments[number_of(band)], 0, 0666);
}

int semaphore_of(Band band) {
  return semget(kSemaphores[number_of(band)], 1, 0666);
}

size_t size_of_store(Band band) {
  shmid_ds status = {};
  return shmctl(g_opened[number_of(band)], IPC_STAT, &status) == 0 ? status.shm_segsz : 0;
}

time_t store_made_at(Band band) {
  shmid_ds status = {};
  return shmctl(g_opened[number_of(band)], IPC_STAT, &status) == 0 ? status.shm_ctime : 0;
}

StoreLock::StoreLock(Band band) : band_(band), id_(semaphore_of(band)) {
  held_ = id_ >= 0 && semaphore_p(id_) == 0;
}

StoreLock::~StoreLock() {
  if (held_) (void)semaphore_v(id_);
}

bool StoreLock::is_empty() const {
  return size_of_store(band_) < sizeof(wifimgr_attr_record) || *address_of(band_) == '\0';
}

std::vector<wifimgr_attr_record> StoreLock::table() const {
  const auto* const table = reinterpret_cast<const wifimgr_attr_record*>(address_of(band_));
  const size_t room = size_of_store(band_) / sizeof *table;
  size_t used = 0;
  while (used < room && table[used].key[0] != '\0') ++used;
  return {table, table + used};
}

bool StoreLock::replace(const std::vector<wifimgr_attr_record>& content) const {
  const size_t room = size_of_store(band_);
  const size_t used = content.size() * sizeof(wifimgr_attr_record);
  if (!held_ || used + sizeof(wifimgr_attr_record) > room) return false;
  // What stays is left alone: whoever is killed here has not come near it.
  auto* const table = reinterpret_cast<wifimgr_attr_record*>(address_of(band_));
  for (size_t i = 0; i < content.size(); ++i) {
    if (std::memcmp(&table[i], &content[i], sizeof table[i]) != 0) std::memcpy(&table[i], &content[i], sizeof table[i]);
  }
  std::memset(address_of(band_) + used, 0, room - used);
  return true;
}

size_t StoreLock::free_records() const {
  const size_t room = size_of_store(band_) / sizeof(wifimgr_attr_record);
  const size_t taken = table().size() + 1;  // the empty one behind them ends the table
  return room > taken ? room - taken : 0;
}

bool StoreLock::append(const std::vector<wifimgr_attr_record>& records) const {
  if (!held_ || records.size() > free_records()) return false;
  const size_t begin = table().size() * sizeof(wifimgr_attr_record);
  std::memset(address_of(band_) + begin, 0, size_of_store(band_) - begin);
  // The last one first, and each key behind its fields: what makes them part of the table is the first one's key.
  auto* const end = reinterpret_cast<wifimgr_attr_record*>(address_of(band_) + begin);
  for (size_t i = records.size(); i-- > 0;) {
    std::memcpy(end[i].field, records[i].field, sizeof end[i].field);
    std::atomic_thread_fence(std::memory_order_release);
    std::memcpy(end[i].key, records[i].key, sizeof end[i].key);
    std::atomic_thread_fence(std::memory_order_release);
  }
  return true;
}

bool open_store(Band band, Report& report, Content content) {
  if (is_store_open(band)) return true;
  return attach_or_make(band, report) && is_usable(band, report, content);
}

bool look_at_store(Band band, Report& report) {
  if (is_store_open(band)) return true;
  const std::string label = label_of(band);
  {
    const MakingLock lock(MakingLock::IfThere{});
    if (const Attached attached = attach(band); attached != Attached::kNotThere) {
      return attached == Attached::kDone ? is_usable(band, report, Content::kNeeded) : fail_to_attach(band, report);
    }
  }
  const auto content = parse_dat_file(band);
  if (!content || content->empty()) {
    return fail(band, report,
                "there is no store of " + label + ", and its dat file " +
                    (content ? "has no settings" : "cannot be read" + reason_against_dat_file(band)),
                content ? kWritesSettings : "is " + dat_path_of(band) + " there, readable and whole?");
  }
  g_detached[number_of(band)] = new DetachedStore(band, *content);
  g_opened[number_of(band)] = segment_of(band);
  report.note("there is no live store of " + label + " yet; this is what its dat file says");
  return true;
}

bool is_store_detached(Band band) {
  return g_detached[number_of(band)] != nullptr;
}

bool is_store_there(Band band) {
  return segment_of(band) >= 0 || errno != ENOENT;
}

bool is_store_open(Band band) {
  return address_of(band) != nullptr;
}

key_t segment_key(Band band) {
  return kSegments[number_of(band)];
}

std::string segment_key_of(Band band) {
  char text[16];
  (void)std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned>(segment_key(band)));
  return text;
}

bool has_store(Band band) {
  return segment_of(band) >= 0;
}

EnlargedStore::EnlargedStore(Band band, const std::vector<wifimgr_attr_record>& content)
    : band_(band), store_(band, content), opened_(g_opened[number_of(band)]) {
  g_opened[number_of(band)] = segment_of(band);
}

EnlargedStore::~EnlargedStore() {
  g_opened[number_of(band_)] = opened_;
}

bool reopen_if_replaced(Band band, Report& report) {
  if (is_store_open(band) && segment_of(band) == g_opened[number_of(band)]) return true;
  address_of(band) = nullptr;
  return open_store(band, report);
}

std::vector<wifimgr_attr_record> table_of_store(Band band) {
  return StoreLock(band).table();
}

bool replace_store(Band band, const std::vector<wifimgr_attr_record>& content) {
  return StoreLock(band).replace(content);
}

}  // namespace wlanctl

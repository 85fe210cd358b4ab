#include "wlanctl/store/segment.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/places.h"
#include "wlanctl/library/band_variables.h"
#include "wlanctl/library/detached_store.h"
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

bool attach_or_make(Band band, Report& report) {
  const MakingLock lock;
  constexpr int kTries = 3;
  for (int i = 0; i < kTries; ++i) {
    const Attached attached = attach(band);
    if (attached == Attached::kDone) return true;
    if (attached == Attached::kFailed) break;
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
  return fail_to_attach(band, report);
}

bool can_be_locked(Band band, Report& report) {
  const int id = semaphore_of(band);
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
  const LockHolder holder = lock_holder(band);
  const std::string label = label_of(band);
  if (holder.is == LockHolder::Is::kGone) {
    return fail(band, report,
                "the store of " + label + " is held, last by process " + std::to_string(holder.process) +
                    ", which is gone and cannot let go",
                "wlanctl unlock " + label + " frees it");
  }
  return fail(
      band, report,
      "the store of " + label + " is held by process " + std::to_string(holder.process) + ", which does not let go",
      "is it stopped? let it go on, or end it");
}

bool is_usable(Band band, Report& report, Content content) {
  if (!can_be_locked(band, report)) return false;
  if (content == Content::kNeeded && table_of_store(band).empty()) {
    return fail(band, report, std::string("the store of ") + label_of(band) + " is empty",
                std::string("wlanctl revert ") + label_of(band) + " fills it from the dat file");
  }
  return true;
}

}  // namespace

int segment_key_of(Band band) {
  return kSegments[number_of(band)];
}

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

StoreLock::StoreLock(Band band) : band_(band), id_(semaphore_of(band)) {
  held_ = id_ >= 0 && semaphore_p(id_) == 0;
}

StoreLock::~StoreLock() {
  if (held_) (void)semaphore_v(id_);
}

std::vector<wifimgr_attr_record> StoreLock::table() const {
  std::vector<wifimgr_attr_record> records;
  const auto* const table = reinterpret_cast<const wifimgr_attr_record*>(address_of(band_));
  const size_t room = size_of_store(band_) / sizeof *table;
  for (size_t i = 0; i < room && table[i].key[0] != '\0'; ++i) records.push_back(table[i]);
  return records;
}

bool StoreLock::replace(const std::vector<wifimgr_attr_record>& content) const {
  const size_t room = size_of_store(band_);
  const size_t used = content.size() * sizeof(wifimgr_attr_record);
  if (!held_ || used + sizeof(wifimgr_attr_record) > room) return false;
  if (used != 0) std::memcpy(address_of(band_), content.data(), used);
  std::memset(address_of(band_) + used, 0, room - used);
  return true;
}

bool open_store(Band band, Report& report, Content content) {
  if (is_store_open(band)) return true;
  return attach_or_make(band, report) && is_usable(band, report, content);
}

bool look_at_store(Band band, Report& report) {
  // Never taken down: the library would speak of it when the tool has ended already.
  [[maybe_unused]] static const DetachedStore* files[kBandCount];
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
    return fail(
        band, report,
        "there is no store of " + label + ", and its dat file " + (content ? "has no settings" : "cannot be read"),
        "is " + dat_path_of(band) + " there, readable and whole?");
  }
  files[number_of(band)] = new DetachedStore(band, *content);
  g_opened[number_of(band)] = segment_of(band);
  report.note("there is no live store of " + label + " yet; this is what its dat file says");
  return true;
}

bool is_store_open(Band band) {
  return address_of(band) != nullptr;
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

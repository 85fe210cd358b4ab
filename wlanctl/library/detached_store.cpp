#include "wlanctl/library/detached_store.h"

#include <dlfcn.h>
#include <sys/sem.h>
#include <sys/shm.h>

#include <cerrno>
#include <climits>
#include <ctime>
#include <optional>

#include "wlanctl/library/band_variables.h"

namespace wlanctl {
namespace {

// The library's keys; its header names them.
constexpr key_t kFirstSegment = 0x12345;
constexpr key_t kFirstSemaphore = 0x12348;

// What is answered for a detached band's segment and semaphore: no identifier of the kernel's.
constexpr int kFirstIdentifier = INT_MAX - static_cast<int>(kBandCount);

// By band, of the store that is answered for; 0 while there is none.
size_t g_sizes[kBandCount] = {};

// The detached band that a key or an identifier belongs to, by the first one's; none of others.
std::optional<size_t> detached_band(int number, int first) {
  const auto band = static_cast<size_t>(static_cast<unsigned>(number) - static_cast<unsigned>(first));
  return band < kBandCount && g_sizes[band] != 0 ? std::optional(band) : std::nullopt;
}

bool g_only_new = false;
bool g_was_there = false;

// A process that is stopped while it has a band's lock must not stop this one as well.
constexpr timespec kLongestHold = {.tv_sec = 5, .tv_nsec = 0};

// The library keeps the room of an address that it knows, and a later table may stand at the same one.
void forget_room(Band band) {
  address_of(band) = nullptr;
  char value[WIFIMGR_VALUE_SIZE];
  (void)read_attr(number_of(band), -1, "", value, sizeof value);
}

template <typename Function>
Function real(Function, const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

DetachedStore::DetachedStore(Band band, const std::vector<wifimgr_attr_record>& content)
    : band_(band), before_(address_of(band)), content_(content) {
  content_.emplace_back();
  table_ = content_;
  forget_room(band);
  address_of(band) = table_.front().key;
  g_sizes[number_of(band)] = table_.size() * sizeof table_.front();
}

DetachedStore::~DetachedStore() {
  forget_room(band_);
  address_of(band_) = before_;
  g_sizes[number_of(band_)] = 0;
}

OnlyNewSegments::OnlyNewSegments() {
  g_only_new = true;
  g_was_there = false;
}

OnlyNewSegments::~OnlyNewSegments() {
  g_only_new = false;
}

bool OnlyNewSegments::was_there() const {
  return g_was_there;
}

}  // namespace wlanctl

// What the library asks of the kernel. Those of the program come first.
extern "C" {

int semget(key_t key, int count, int flags) noexcept {
  if (const auto band = wlanctl::detached_band(key, wlanctl::kFirstSemaphore)) {
    return wlanctl::kFirstIdentifier + static_cast<int>(*band);
  }
  static const auto real = wlanctl::real(&semget, "semget");
  return real(key, count, flags);
}

int semop(int semaphore, sembuf* steps, size_t count) noexcept {
  if (wlanctl::detached_band(semaphore, wlanctl::kFirstIdentifier)) return 0;
  return semtimedop(semaphore, steps, count, &wlanctl::kLongestHold);
}

int shmget(key_t key, size_t size, int flags) noexcept {
  if (const auto band = wlanctl::detached_band(key, wlanctl::kFirstSegment)) {
    return wlanctl::kFirstIdentifier + static_cast<int>(*band);
  }
  static const auto real = wlanctl::real(&shmget, "shmget");
  if (!wlanctl::g_only_new) return real(key, size, flags);
  if ((flags & IPC_CREAT) == 0) {
    errno = ENOENT;
    return -1;
  }
  const int segment = real(key, size, flags | IPC_EXCL);
  wlanctl::g_was_there = segment < 0 && errno == EEXIST;
  return segment;
}

int shmctl(int segment, int command, shmid_ds* status) noexcept {
  if (const auto band = wlanctl::detached_band(segment, wlanctl::kFirstIdentifier); band && command == IPC_STAT) {
    *status = {};
    status->shm_segsz = wlanctl::g_sizes[*band];
    return 0;
  }
  static const auto real = wlanctl::real(&shmctl, "shmctl");
  return real(segment, command, status);
}

}  // extern "C"

#include "wlanctl/library/detached_store.h"

#include <dlfcn.h>
#include <sys/sem.h>
#include <sys/shm.h>

#include <cerrno>
#include <ctime>

#include "wlanctl/library/band_variables.h"

namespace wlanctl {
namespace {

// Of the store that is answered for; 0 while there is none.
size_t g_size = 0;

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
  g_size = table_.size() * sizeof table_.front();
}

DetachedStore::~DetachedStore() {
  forget_room(band_);
  address_of(band_) = before_;
  g_size = 0;
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
  if (wlanctl::g_size != 0) return 0;
  static const auto real = wlanctl::real(&semget, "semget");
  return real(key, count, flags);
}

int semop(int semaphore, sembuf* steps, size_t count) noexcept {
  if (wlanctl::g_size != 0) return 0;
  return semtimedop(semaphore, steps, count, &wlanctl::kLongestHold);
}

int shmget(key_t key, size_t size, int flags) noexcept {
  if (wlanctl::g_size != 0) return 0;
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
  if (wlanctl::g_size != 0 && command == IPC_STAT) {
    *status = {};
    status->shm_segsz = wlanctl::g_size;
    return 0;
  }
  static const auto real = wlanctl::real(&shmctl, "shmctl");
  return real(segment, command, status);
}

}  // extern "C"

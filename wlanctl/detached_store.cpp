#include "wlanctl/detached_store.h"

#include <dlfcn.h>
#include <sys/sem.h>
#include <sys/shm.h>

namespace wlanctl {
namespace {

// Of the store that is answered for; 0 while there is none.
size_t g_size = 0;

char*& address_of(Band band) {
  return band == Band::k2_4G ? shm_addr_2_4g : shm_addr_5g;
}

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
  static const auto real = wlanctl::real(&semop, "semop");
  return real(semaphore, steps, count);
}

int shmget(key_t key, size_t size, int flags) noexcept {
  if (wlanctl::g_size != 0) return 0;
  static const auto real = wlanctl::real(&shmget, "shmget");
  return real(key, size, flags);
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

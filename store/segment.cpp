#include "store/segment.h"

#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/shm.h>

#include <climits>
#include <cstring>

#include "store/band.h"
#include "store/lock.h"
#include "store/trace.h"

char* shm_addr_2_4g = nullptr;
char* shm_addr_5g = nullptr;

// Part of the exported surface; nothing in the library counts with it.
int cfg_in_shm_count = 0;

namespace store {
namespace {

struct Attachment {
  int segment_id = -1;
  unsigned capacity = 0;
  char* attached = nullptr;        // what this library attached, and may detach again
  const char* measured = nullptr;  // the address whose segment has room for `room` records
  unsigned room = 0;
};

constinit Attachment g_attachments[kBands];

char*& exported_address(int band) {
  return band == k2_4G ? shm_addr_2_4g : shm_addr_5g;
}

int& exported_semaphore(int band) {
  return band == k2_4G ? semid_2_4g : semid_5g;
}

void measure(Attachment& band, int segment_id, const char* address) {
  struct shmid_ds status;
  if (shmctl(segment_id, IPC_STAT, &status) != 0) return;
  const size_t fitting = status.shm_segsz / sizeof(Record);
  band.room = fitting < UINT_MAX ? static_cast<unsigned>(fitting) : UINT_MAX;
  band.measured = address;
}

}  // namespace

bool has_segment(int band) {
  return g_attachments[band].segment_id != -1;
}

unsigned capacity(int band) {
  return g_attachments[band].capacity;
}

Record* records(int band) {
  char* const address = exported_address(band);
  // A program that attaches anew may get the same address for a segment of another size.
  if (address == nullptr) g_attachments[band].measured = nullptr;
  return reinterpret_cast<Record*>(address);
}

unsigned room(int band) {
  Attachment& attachment = g_attachments[band];
  const char* const address = exported_address(band);
  if (address != attachment.measured) {
    measure(attachment, shmget(segment_key(band), 0, 0666), address);
    if (address != attachment.measured) return 0;
  }
  return attachment.room;
}

unsigned room_at(const char* segment) {
  if (segment == shm_addr_2_4g) return room(k2_4G);
  if (segment == shm_addr_5g) return room(k5G);
  return UINT_MAX;
}

}  // namespace store

namespace {

using store::Attachment;

// An existing segment that is too small fails both calls: the system refuses the size each time.
const char* find_or_create_segment(const char* function, int band, Attachment& attachment) {
  const size_t size = size_t{attachment.capacity} * sizeof(store::Record);
  int id = shmget(store::segment_key(band), size, 0666);
  if (id < 0) {
    WIFIMGR_TRACE(trace::kTraceLevel, "[%s]:Share memory do not exist.\n", function);
    id = shmget(store::segment_key(band), size, 0666 | IPC_CREAT);
    if (id < 0) return "Create share memory failed.";
  }
  attachment.segment_id = id;
  return nullptr;
}

const char* attach(int band, Attachment& attachment) {
  void* const address = shmat(attachment.segment_id, nullptr, 0);
  if (address == nullptr || address == reinterpret_cast<void*>(-1)) return "Attach share memory failed.";
  char* const old = attachment.attached;
  attachment.attached = static_cast<char*>(address);
  store::exported_address(band) = attachment.attached;
  store::measure(attachment, attachment.segment_id, attachment.attached);
  if (old != nullptr) (void)shmdt(old);
  return nullptr;
}

// The lock is set free even when another process holds it; deliberate, initialising is how a stuck lock is cured.
const char* find_or_create_semaphore(int band) {
  int id = store::look_up_semaphore(band);
  if (id < 0) id = semget(store::semaphore_key(band), 1, 0666 | IPC_CREAT);
  if (id < 0) return "semget failed.";
  store::exported_semaphore(band) = id;
  return set_semvalue(id, 1) == 0 ? nullptr : "Set sem value failed.";
}

const char* clear(int band) {
  const int semaphore = store::exported_semaphore(band);
  if (semaphore_p(semaphore) != 0) return store::kPFailed;
  std::memset(store::records(band), 0, size_t{store::capacity(band)} * sizeof(store::Record));
  return semaphore_v(semaphore) == 0 ? nullptr : store::kVFailed;
}

}  // namespace

extern "C" int init_shm(int wifi_type) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  Attachment& attachment = store::g_attachments[wifi_type];
  const int wanted = get_dat_para_num(wifi_type);
  if (wanted > 0 && static_cast<unsigned>(wanted) > attachment.capacity)
    attachment.capacity = static_cast<unsigned>(wanted);

  const char* refusal = find_or_create_segment(__func__, wifi_type, attachment);
  if (refusal == nullptr) refusal = attach(wifi_type, attachment);
  if (refusal == nullptr) refusal = find_or_create_semaphore(wifi_type);
  if (refusal == nullptr) refusal = clear(wifi_type);
  return refusal == nullptr ? trace::success(__func__) : trace::fail(__func__, refusal);
}

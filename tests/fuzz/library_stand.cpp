#include "fuzz/library_stand.h"

#include <sys/sem.h>
#include <sys/shm.h>

#include <cstdio>
#include <cstring>

#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace fuzz {
namespace {

constexpr key_t segment_key(int band) {
  return band == 0 ? 0x12345 : 0x12346;
}

constexpr key_t semaphore_key(int band) {
  return band == 0 ? 0x12348 : 0x12349;
}

}  // namespace

void forget() {
  for (const int band : {0, 1}) {
    const int segment = shmget(segment_key(band), 0, 0);
    if (segment >= 0) (void)shmctl(segment, IPC_RMID, nullptr);
    const int semaphore = semget(semaphore_key(band), 1, 0);
    if (semaphore >= 0) (void)semctl(semaphore, 0, IPC_RMID, 0);
    sandbox::use_dat_path(band);
  }
  seams::commands.clear();
  seams::trace.clear();
  requests::sent.clear();
  requests::sockets.clear();
  requests::queries.clear();
  seams::on_command = nullptr;
  requests::driver = nullptr;
  requests::kernel = [](int, unsigned long, void*) { return -1; };
}

int load(int band, std::string_view dat_text) {
  const std::string path = sandbox::dat_path(band);
  std::FILE* const file = std::fopen(path.c_str(), "w");
  require(file != nullptr, "the dat file can be written");
  (void)std::fwrite(dat_text.data(), 1, dat_text.size(), file);
  (void)std::fclose(file);
  // A process has a segment for good, which a longer file outgrows; init_shm makes another as a new process would.
  const int segment = shmget(segment_key(band), 0, 0);
  if (segment >= 0) (void)shmctl(segment, IPC_RMID, nullptr);
  if (init_shm(band) != 0) return 1;
  return wifimgr_lib_init(band);
}

void require_whole_store(int band) {
  const int semaphore = semget(semaphore_key(band), 1, 0);
  require(semaphore < 0 || semctl(semaphore, 0, GETVAL, 0) == 1, "the lock is free");
  const char* const table = band == 0 ? shm_addr_2_4g : shm_addr_5g;
  const int segment = shmget(segment_key(band), 0, 0);
  shmid_ds status;
  if (table == nullptr || segment < 0 || shmctl(segment, IPC_STAT, &status) != 0) return;
  const wifimgr_attr_record* const records = reinterpret_cast<const wifimgr_attr_record*>(table);
  for (size_t i = 0; i < status.shm_segsz / sizeof *records; ++i) {
    require(records[i].key[WIFIMGR_KEY_SIZE - 1] == '\0', "a key ends");
    for (const auto& field : records[i].field) require(field[WIFIMGR_FIELD_SIZE - 1] == '\0', "a field ends");
  }
}

std::string keys(int band) {
  const char* const table = band == 0 ? shm_addr_2_4g : shm_addr_5g;
  const int segment = shmget(segment_key(band), 0, 0);
  shmid_ds status;
  std::string all;
  if (table == nullptr || segment < 0 || shmctl(segment, IPC_STAT, &status) != 0) return all;
  const wifimgr_attr_record* const records = reinterpret_cast<const wifimgr_attr_record*>(table);
  for (size_t i = 0; i < status.shm_segsz / sizeof *records && records[i].key[0] != '\0'; ++i) {
    all.append(records[i].key, strnlen(records[i].key, WIFIMGR_KEY_SIZE));
    all += '\n';
  }
  return all;
}

}  // namespace fuzz

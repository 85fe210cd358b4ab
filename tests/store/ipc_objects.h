// The IPC objects of a band as the system has them, whatever the library believes.
#pragma once

#include <gtest/gtest.h>
#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/shm.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "wifimgr_lib.h"

namespace ipc {

inline constexpr key_t kSegmentKey[] = {0x12345, 0x12346};
inline constexpr key_t kSemaphoreKey[] = {0x12348, 0x12349};
inline constexpr size_t kRecordSize = 1236;

inline int segment(int band) {
  return shmget(kSegmentKey[band], 0, 0666);
}
inline int semaphore(int band) {
  return semget(kSemaphoreKey[band], 1, 0666);
}

inline shmid_ds segment_status(int band) {
  shmid_ds status{};
  EXPECT_EQ(0, shmctl(segment(band), IPC_STAT, &status));
  return status;
}

inline int semaphore_value(int band) {
  return semctl(semaphore(band), 0, GETVAL, 0);
}

// Makes the band's segment before the library does, filled with one byte; returns its address.
inline char* make_segment(int band, size_t size, char filling) {
  const int id = shmget(kSegmentKey[band], size, 0666 | IPC_CREAT | IPC_EXCL);
  EXPECT_GE(id, 0);
  char* const address = static_cast<char*>(shmat(id, nullptr, 0));
  std::memset(address, filling, size);
  return address;
}

// Makes the band's semaphore before the library does.
inline int make_semaphore(int band, int value) {
  const int id = semget(kSemaphoreKey[band], 1, 0666 | IPC_CREAT | IPC_EXCL);
  EXPECT_GE(id, 0);
  EXPECT_EQ(0, semctl(id, 0, SETVAL, value));
  return id;
}

inline char* attach(int band) {
  return static_cast<char*>(shmat(segment(band), nullptr, 0));
}

inline wifimgr_attr_record record(const std::string& key, const std::vector<std::string>& fields) {
  wifimgr_attr_record made{};
  std::memcpy(made.key, key.data(), std::min(key.size(), sizeof made.key));
  for (size_t i = 0; i < fields.size(); ++i) {
    std::memcpy(made.field[i], fields[i].data(), std::min(fields[i].size(), sizeof made.field[i]));
  }
  return made;
}

// Writes over the record of a key as another process would, without the lock.
inline void replace_record(int band, const std::string& key, const wifimgr_attr_record& with) {
  auto* const table = reinterpret_cast<wifimgr_attr_record*>(attach(band));
  const size_t count = segment_status(band).shm_segsz / kRecordSize;
  auto* const found = std::find_if(table, table + count, [&](const auto& one) { return key == one.key; });
  ASSERT_NE(table + count, found) << key;
  *found = with;
  EXPECT_EQ(0, shmdt(table));
}

}  // namespace ipc

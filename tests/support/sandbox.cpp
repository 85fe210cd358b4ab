#include "support/sandbox.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/shm.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

#include "support/full_dat.h"

namespace sandbox {

void write_file(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << text;
  file.close();
  ASSERT_TRUE(file.good()) << path;
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

bool exists(const std::string& path) {
  return access(path.c_str(), F_OK) == 0;
}

void load(int band, const std::string& dat_text) {
  write_file(dat_path(band), dat_text);
  ASSERT_EQ(0, wifimgr_lib_init(band)) << "band " << band;
}

std::string full_dat(int band) {
  return full_dat_text(kFullDatBands[band == 0 ? 0 : 1]);
}

std::string full_dat_with(int band, const std::string& key, const std::string& value) {
  std::istringstream lines(full_dat(band));
  std::string text;
  bool found = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(key + "=", 0) == 0) {
      line = key + "=" + value;
      found = true;
    }
    text += line + "\n";
  }
  EXPECT_TRUE(found) << "no key " << key << " in the dat text of band " << band;
  return text;
}

std::string full_dat_without(int band, const std::string& key) {
  std::istringstream lines(full_dat(band));
  std::string text;
  bool found = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(key + "=", 0) == 0) {
      found = true;
    } else {
      text += line + "\n";
    }
  }
  EXPECT_TRUE(found) << "no key " << key << " in the dat text of band " << band;
  return text;
}

std::string segment_bytes(int band) {
  const int id = shmget(band == 0 ? 0x12345 : 0x12346, 0, 0666);
  if (id < 0) return "";
  shmid_ds status{};
  if (shmctl(id, IPC_STAT, &status) != 0) return "";
  void* const address = shmat(id, nullptr, SHM_RDONLY);
  if (address == reinterpret_cast<void*>(-1)) return "";
  std::string bytes(static_cast<const char*>(address), status.shm_segsz);
  shmdt(address);
  return bytes;
}

std::string field(int band, const std::string& key, int number) {
  const std::string bytes = segment_bytes(band);
  for (size_t at = 0; at + sizeof(wifimgr_attr_record) <= bytes.size(); at += sizeof(wifimgr_attr_record)) {
    wifimgr_attr_record record;
    std::memcpy(&record, bytes.data() + at, sizeof record);
    if (record.key[0] == '\0') break;
    if (std::string(record.key, strnlen(record.key, sizeof record.key)) != key) continue;
    const char* const text = record.field[number - 1];
    return std::string(text, strnlen(text, WIFIMGR_FIELD_SIZE));
  }
  return "";
}

StdoutCapture::StdoutCapture() {
  std::fflush(stdout);
  saved_ = dup(STDOUT_FILENO);
  file_ = open("/tmp", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (saved_ < 0 || file_ < 0 || dup2(file_, STDOUT_FILENO) < 0) std::abort();
}

std::string StdoutCapture::take() {
  std::fflush(stdout);
  dup2(saved_, STDOUT_FILENO);
  std::string text;
  char part[4096];
  lseek(file_, 0, SEEK_SET);
  for (ssize_t n; (n = read(file_, part, sizeof part)) > 0;) text.append(part, static_cast<size_t>(n));
  close(saved_);
  close(file_);
  saved_ = -1;
  return text;
}

StdoutCapture::~StdoutCapture() {
  if (saved_ >= 0) take();
}

}  // namespace sandbox

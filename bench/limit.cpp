#include "limit.h"

#include <sys/ipc.h>
#include <sys/sem.h>

#include <cstdio>
#include <string>
#include <vector>

#include "gateway.h"

namespace bench::limit {
namespace {

constexpr key_t kSemaphoreKey = 0x12348;

void step(int semaphore, short operation) {
  struct sembuf steps = {0, operation, SEM_UNDO};
  (void)semop(semaphore, &steps, 1);
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t at = 0, end; at < text.size(); at = end + 1) {
    end = text.find('\n', at);
    if (text[at] != '#') lines.push_back(text.substr(at, end + 1 - at));
  }
  return lines;
}

}  // namespace

int look_up() {
  return semget(kSemaphoreKey, 1, 0666);
}

void p(int semaphore) {
  step(semaphore, -1);
}

void v(int semaphore) {
  step(semaphore, +1);
}

void lock_cycle() {
  const int semaphore = look_up();
  p(semaphore);
  v(semaphore);
}

void load() {
  const int semaphore = look_up();
  for (int record = 0; record <= size.keys; ++record) {
    p(semaphore);
    v(semaphore);
  }
}

void save() {
  static const std::vector<std::string> lines = lines_of(dat_text);
  const int semaphore = look_up();
  p(semaphore);
  v(semaphore);
  std::FILE* const file = std::fopen(other_file().c_str(), "w+e");
  p(semaphore);
  for (const std::string& line : lines) (void)std::fputs(line.c_str(), file);
  v(semaphore);
  (void)std::fclose(file);
}

}  // namespace bench::limit

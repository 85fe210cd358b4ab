#include "support/seams.h"

#include <sys/ipc.h>
#include <sys/resource.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <fstream>

#include "vexa_lib_dbg.h"

namespace seams {

int trace_level = 0;
int switch_calls = 0;
std::vector<std::string> trace;
std::function<void(const std::string&)> on_trace;
std::vector<std::string> commands;
std::function<int(const std::string&)> on_command;
Fault semget_fault, semctl_fault, semop_fault, shmget_fault, shmat_fault, shmctl_fault, shmdt_fault;

std::vector<std::string> trace_of(const std::function<void()>& run, int level) {
  trace.clear();
  trace_level = level;
  run();
  trace_level = 0;
  return trace;
}

std::vector<std::string> errors_of(const std::function<void()>& run) {
  return trace_of(run, 1);
}

void put_chips_on_the_bus(const std::vector<std::string>& chips) {
  on_command = [chips](const std::string& line) {
    if (line != "cat /proc/bus/pci/devices > /tmp/devices") return 0;
    std::ofstream file("/tmp/devices");
    for (const std::string& chip : chips) file << "0100\t14c3" << chip << "\t1a\n";
    return 0;
  };
}

void fail(Fault& fault, int nth, int error) {
  fault.countdown = nth;
  fault.error = error;
}

void limit_file_size(size_t bytes) {
  (void)std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, RLIM_INFINITY};
  (void)setrlimit(RLIMIT_FSIZE, &limit);
}

namespace {

// Whether this call is the one to fail; sets errno.
bool fails(Fault& fault) {
  ++fault.calls;
  if (fault.countdown == 0 || --fault.countdown != 0) return false;
  errno = fault.error;
  return true;
}

}  // namespace
}  // namespace seams

extern "C" {

int get_itf_dbg_switch(int level, int module) {
  ++seams::switch_calls;
  return module == 6 && level <= seams::trace_level ? 1 : 0;
}

int vexa_itf_printf(const char* fmt, ...) {
  char line[4096];
  va_list arguments;
  va_start(arguments, fmt);
  const int length = std::vsnprintf(line, sizeof line, fmt, arguments);
  va_end(arguments);
  seams::trace.emplace_back(line);
  if (seams::on_trace) seams::on_trace(line);
  return length;
}

int system(const char* line) {
  seams::commands.emplace_back(line);
  return seams::on_command ? seams::on_command(line) : 0;
}

int semget(key_t key, int count, int flags) {
  if (seams::fails(seams::semget_fault)) return -1;
  return static_cast<int>(syscall(SYS_semget, key, count, flags));
}

int semctl(int id, int number, int command, ...) {
  if (seams::fails(seams::semctl_fault)) return -1;
  va_list arguments;
  va_start(arguments, command);
  const unsigned long argument = va_arg(arguments, unsigned long);
  va_end(arguments);
  return static_cast<int>(syscall(SYS_semctl, id, number, command, argument));
}

int semop(int id, struct sembuf* steps, size_t count) {
  if (seams::fails(seams::semop_fault)) return -1;
  return static_cast<int>(syscall(SYS_semop, id, steps, count));
}

int shmget(key_t key, size_t size, int flags) {
  if (seams::fails(seams::shmget_fault)) return -1;
  return static_cast<int>(syscall(SYS_shmget, key, size, flags));
}

void* shmat(int id, const void* address, int flags) {
  if (seams::fails(seams::shmat_fault)) return reinterpret_cast<void*>(-1);
  return reinterpret_cast<void*>(syscall(SYS_shmat, id, address, flags));
}

int shmctl(int id, int command, struct shmid_ds* status) {
  if (seams::fails(seams::shmctl_fault)) return -1;
  return static_cast<int>(syscall(SYS_shmctl, id, command, status));
}

int shmdt(const void* address) {
  if (seams::fails(seams::shmdt_fault)) return -1;
  return static_cast<int>(syscall(SYS_shmdt, address));
}

}  // extern "C"

#include "soak/tracer.h"

#include <elf.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace soak {
namespace {

// Beginning and end of what is counted; nothing of the library asks this.
constexpr long kMarker = SYS_getpgid;

struct Failing {
  long number;
  const char* name;
  int errors[3];
};
constexpr Failing kFailing[] = {
    {SYS_openat, "openat", {EMFILE, EACCES, EROFS}},
#ifdef SYS_open
    {SYS_open, "open", {EMFILE, EACCES, EROFS}},
#endif
    {SYS_write, "write", {ENOSPC, EIO}},
    {SYS_writev, "writev", {ENOSPC, EIO}},
    {SYS_read, "read", {EIO}},
    {SYS_ftruncate, "ftruncate", {EIO}},
    {SYS_semop, "semop", {EINTR, EIDRM}},
    {SYS_semget, "semget", {ENOSPC, ENOENT}},
    {SYS_semctl, "semctl", {EIDRM}},
    {SYS_shmget, "shmget", {ENOSPC, ENOMEM}},
    {SYS_shmat, "shmat", {ENOMEM}},
    {SYS_shmctl, "shmctl", {EIDRM}},
    {SYS_socket, "socket", {EMFILE}},
    {SYS_fchmodat, "fchmodat", {EROFS}},
#ifdef SYS_chmod
    {SYS_chmod, "chmod", {EROFS}},
#endif
// The sanitizer's own memory must not run out.
#ifndef __SANITIZE_ADDRESS__
    {SYS_mmap, "mmap", {ENOMEM}},
    {SYS_brk, "brk", {ENOMEM}},
#endif
};

void fail(const char* what) {
  std::perror(what);
  std::exit(2);
}

// The number of a call about to be made, or what it will return.
void replace(pid_t child, bool is_number, long value) {
#if defined(__x86_64__)
  const size_t at = is_number ? offsetof(user_regs_struct, orig_rax) : offsetof(user_regs_struct, rax);
  if (ptrace(PTRACE_POKEUSER, child, at, value) != 0) fail("soak: PTRACE_POKEUSER");
#elif defined(__aarch64__)
  if (is_number) {
    int number = static_cast<int>(value);
    iovec data = {&number, sizeof number};
    if (ptrace(PTRACE_SETREGSET, child, NT_ARM_SYSTEM_CALL, &data) != 0) fail("soak: PTRACE_SETREGSET");
    return;
  }
  user_regs_struct registers;
  iovec data = {&registers, sizeof registers};
  if (ptrace(PTRACE_GETREGSET, child, NT_PRSTATUS, &data) != 0) fail("soak: PTRACE_GETREGSET");
  registers.regs[0] = static_cast<unsigned long long>(value);
  if (ptrace(PTRACE_SETREGSET, child, NT_PRSTATUS, &data) != 0) fail("soak: PTRACE_SETREGSET");
#else
#error "how are the registers of this processor written?"
#endif
}

// To the next beginning or end of a system call; false when the child is gone.
bool proceed(pid_t child, Outcome& outcome) {
  int signal_number = 0;
  for (;;) {
    if (ptrace(PTRACE_SYSCALL, child, nullptr, static_cast<long>(signal_number)) != 0 && errno != ESRCH) {
      fail("soak: PTRACE_SYSCALL");
    }
    if (waitpid(child, &outcome.status, 0) < 0) fail("soak: waitpid");
    if (!WIFSTOPPED(outcome.status)) return false;
    if (WSTOPSIG(outcome.status) == (SIGTRAP | 0x80)) return true;
    signal_number = WSTOPSIG(outcome.status) == SIGSTOP ? 0 : WSTOPSIG(outcome.status);
  }
}

__ptrace_syscall_info call_of(pid_t child) {
  __ptrace_syscall_info info = {};
  if (ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info) < 0) fail("soak: PTRACE_GET_SYSCALL_INFO");
  return info;
}

void end(pid_t child, Outcome& outcome) {
  (void)kill(child, SIGKILL);
  // A stop that was under way may come first.
  do {
    if (waitpid(child, &outcome.status, 0) < 0) return;
  } while (WIFSTOPPED(outcome.status));
}

}  // namespace

int error_of(long number, int variant) {
  for (const Failing& failing : kFailing) {
    if (failing.number == number && variant < 3 && failing.errors[variant] != 0) return failing.errors[variant];
  }
  return -1;
}

std::string name_of(long number) {
  for (const Failing& failing : kFailing) {
    if (failing.number == number) return failing.name;
  }
  return std::to_string(number);
}

Outcome run(const std::function<void()>& prepare, const std::function<void()>& code, const std::function<void()>& tell,
            const Fault& fault) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) fail("soak: fork");
  if (child == 0) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) fail("soak: PTRACE_TRACEME");
    (void)raise(SIGSTOP);
    prepare();
    (void)syscall(kMarker, 0);
    code();
    (void)syscall(kMarker, 0);
    tell();
    std::_Exit(0);
  }
  Outcome outcome;
  if (waitpid(child, &outcome.status, 0) < 0 || !WIFSTOPPED(outcome.status)) fail("soak: the child does not stop");
  const long options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL;
  if (ptrace(PTRACE_SETOPTIONS, child, nullptr, options) != 0) fail("soak: PTRACE_SETOPTIONS");
  bool is_counted = false;
  while (proceed(child, outcome)) {
    const __ptrace_syscall_info info = call_of(child);
    if (info.op != PTRACE_SYSCALL_INFO_ENTRY) continue;
    const long number = static_cast<long>(info.entry.nr);
    if (number == kMarker) {
      is_counted = !is_counted;
      continue;
    }
    if (!is_counted || ++outcome.calls != fault.nth) continue;
    outcome.number = number;
    if (fault.kills) {
      outcome.was_touched = true;
      end(child, outcome);
      return outcome;
    }
    outcome.error = error_of(number, fault.error);
    if (outcome.error <= 0) continue;
    outcome.was_touched = true;
    replace(child, true, -1);
    if (!proceed(child, outcome)) break;
    replace(child, false, -outcome.error);
  }
  return outcome;
}

}  // namespace soak

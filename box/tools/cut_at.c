// Runs a command and stops it for ever right after its Nth step that changes a file below a folder, so that the power can be cut there.
//
//   cut_at N FOLDER COMMAND [WORD]...
//
// Prints "CUT N what" or, when the command ended before that, "END steps". Only the command's first thread counts, not what it starts.
#define _GNU_SOURCE
#include <fcntl.h>
#include <signal.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

enum { kMostFiles = 1024, kWrites = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC };

static bool is_watched[kMostFiles];
static const char* folder;

static bool is_below(pid_t process, uint64_t address) {
  char path[256] = "";
  struct iovec own = {path, sizeof path - 1};
  struct iovec other = {(void*)(uintptr_t)address, sizeof path - 1};
  // What crosses the end of a mapping comes in part.
  if (process_vm_readv(process, &own, 1, &other, 1, 0) <= 0) {
    other.iov_len = own.iov_len = 4096 - address % 4096 < sizeof path - 1 ? 4096 - address % 4096 : sizeof path - 1;
    if (process_vm_readv(process, &own, 1, &other, 1, 0) <= 0) return false;
  }
  return strncmp(path, folder, strlen(folder)) == 0;
}

static bool is_on_watched(uint64_t fd) {
  return fd < kMostFiles && is_watched[fd];
}

// What a call that is about to begin changes; null for nothing.
static const char* step_of(pid_t process, const struct __ptrace_syscall_info* call) {
  const uint64_t* const argument = call->entry.args;
  switch (call->entry.nr) {
    case SYS_openat:
      return (argument[2] & kWrites) != 0 && is_below(process, argument[1]) ? "open" : NULL;
    case SYS_write:
    case SYS_writev:
    case SYS_pwrite64:
      return is_on_watched(argument[0]) ? "write" : NULL;
    case SYS_ftruncate:
      return is_on_watched(argument[0]) ? "truncate" : NULL;
    case SYS_fsync:
    case SYS_fdatasync:
      return is_on_watched(argument[0]) ? "sync" : NULL;
    case SYS_fchmod:
      return is_on_watched(argument[0]) ? "chmod" : NULL;
    case SYS_fchmodat:
      return is_below(process, argument[1]) ? "chmod" : NULL;
    case SYS_unlinkat:
      return is_below(process, argument[1]) ? "unlink" : NULL;
    case SYS_renameat2:
      return is_below(process, argument[3]) ? "rename" : NULL;
#ifdef SYS_renameat
    case SYS_renameat:
      return is_below(process, argument[3]) ? "rename" : NULL;
#endif
#ifdef SYS_rename
    case SYS_rename:
      return is_below(process, argument[1]) ? "rename" : NULL;
    case SYS_unlink:
      return is_below(process, argument[0]) ? "unlink" : NULL;
    case SYS_chmod:
      return is_below(process, argument[0]) ? "chmod" : NULL;
#endif
    default:
      return NULL;
  }
}

int main(int argc, char** argv) {
  if (argc < 4) return 2;
  const int wanted = atoi(argv[1]);
  folder = argv[2];
  const pid_t process = fork();
  if (process == 0) {
    ptrace(PTRACE_TRACEME, 0, NULL, NULL);
    execvp(argv[3], argv + 3);
    _exit(127);
  }
  int status;
  waitpid(process, &status, 0);
  ptrace(PTRACE_SETOPTIONS, process, NULL, (void*)(uintptr_t)(PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL));
  int steps = 0;
  int signal = 0;
  const char* step = NULL;
  uint64_t number = 0;
  while (ptrace(PTRACE_SYSCALL, process, NULL, (void*)(intptr_t)signal) == 0 &&
         waitpid(process, &status, 0) == process && WIFSTOPPED(status)) {
    struct __ptrace_syscall_info call;
    signal = WSTOPSIG(status) == (SIGTRAP | 0x80) || WSTOPSIG(status) == SIGTRAP ? 0 : WSTOPSIG(status);
    if (WSTOPSIG(status) != (SIGTRAP | 0x80)) continue;
    if (ptrace(PTRACE_GET_SYSCALL_INFO, process, (void*)sizeof call, &call) <= 0) continue;
    if (call.op == PTRACE_SYSCALL_INFO_ENTRY) {
      step = step_of(process, &call);
      number = call.entry.nr;
      if (number == SYS_close && call.entry.args[0] < kMostFiles) is_watched[call.entry.args[0]] = false;
      continue;
    }
    if (call.op != PTRACE_SYSCALL_INFO_EXIT || step == NULL) continue;
    if (number == SYS_openat && call.exit.rval >= 0 && call.exit.rval < kMostFiles) is_watched[call.exit.rval] = true;
    if (++steps < wanted) continue;
    printf("CUT %d %s\n", steps, step);
    fflush(stdout);
    for (;;) pause();
  }
  printf("END %d\n", steps);
  return 0;
}

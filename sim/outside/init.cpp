#include "sim/outside/init.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/outside/system_log.h"

namespace gateway {
namespace {

constexpr int kProcPollMs = 50;
constexpr long kGraceMs = 2000;

// What a program could do to the machine itself, through the kernel they share. Root in a user namespace has none of
// these anyway.
constexpr unsigned long kWithheld[] = {CAP_SYS_MODULE, CAP_SYS_BOOT, CAP_SYS_TIME};

sigset_t watched_signals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : {SIGCHLD, SIGTERM, SIGINT, SIGQUIT, SIGHUP}) sigaddset(&set, number);
  return set;
}

long now_ms() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1000 + now.tv_nsec / 1000000;
}

void prepend(const char* variable, const std::string& text, const char* separator) {
  const char* old = std::getenv(variable);
  const std::string value = old != nullptr && *old != '\0' ? text + separator + old : text;
  setenv(variable, value.c_str(), 1);
}

void set_environment(const std::string& programs) {
  constexpr char kUsualFolders[] = "/usr/sbin:/usr/bin:/sbin:/bin";
  const char* path = std::getenv("PATH");
  const std::string own = programs.empty() ? "" : programs + ":";
  setenv("PATH", (std::string(place::kTools) + ":" + own + (path != nullptr ? path : kUsualFolders)).c_str(), 1);
  prepend("LD_PRELOAD", place::kDriverLibrary, ":");
  // Programs under the address sanitizer insist on coming first, which the driver's library does.
  const char* sanitizer = std::getenv("ASAN_OPTIONS");
  const std::string before = sanitizer != nullptr && *sanitizer != '\0' ? std::string(sanitizer) + ":" : "";
  setenv("ASAN_OPTIONS", (before + "verify_asan_link_order=0").c_str(), 1);
  setenv("GATEWAY_SIM", "1", 1);
}

std::vector<std::string> shell_command() {
  setenv("PS1", "gateway# ", 1);
  if (access("/bin/bash", X_OK) == 0) return {"/bin/bash", "--norc", "--noprofile", "-i"};
  return {"/bin/sh", "-i"};
}

// A shell of its own process group gets the terminal's Ctrl-C for itself.
void take_terminal() {
  setpgid(0, 0);
  if (isatty(STDIN_FILENO) == 0) return;
  signal(SIGTTOU, SIG_IGN);
  tcsetpgrp(STDIN_FILENO, getpgrp());
  signal(SIGTTOU, SIG_DFL);
}

// A folder on the path that this user may not look into makes execvp report a command that is nowhere as forbidden.
bool is_on_path(const std::string& command) {
  if (command.find('/') != std::string::npos) return true;
  const char* const path = std::getenv("PATH");
  std::istringstream folders(path != nullptr ? path : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (path_exists((folder.empty() ? "." : folder) + "/" + command)) return true;
  }
  return false;
}

[[noreturn]] void execute(const Options& options, const std::string& folder, const std::string& programs) {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  for (const unsigned long capability : kWithheld) prctl(PR_CAPBSET_DROP, capability, 0, 0, 0);
  if (chdir(folder.c_str()) != 0 && chdir("/") != 0) _exit(kRefused);
  set_environment(options.shell ? programs : "");
  if (options.shell) take_terminal();
  const std::vector<std::string> words = options.shell ? shell_command() : options.command;
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  const int error = errno == EACCES && !is_on_path(words[0]) ? ENOENT : errno;
  std::fprintf(stderr, "gateway-sim: %s: %s\n", arguments[0],
               error == ENOENT ? "command not found" : std::strerror(error));
  _exit(error == ENOENT ? kNotFound : kNotRunnable);
}

int exit_status(int wait_status) {
  return WIFSIGNALED(wait_status) ? 128 + WTERMSIG(wait_status) : WEXITSTATUS(wait_status);
}

// Reaps everything that ended; returns whether `command` was among it, with its status.
bool reap(pid_t command, int* status) {
  bool ended = false;
  int wait_status = 0;
  for (pid_t pid; (pid = waitpid(-1, &wait_status, WNOHANG)) > 0;) {
    if (pid != command) continue;
    ended = true;
    *status = exit_status(wait_status);
  }
  return ended;
}

}  // namespace

void block_signals() {
  const sigset_t set = watched_signals();
  sigprocmask(SIG_SETMASK, &set, nullptr);
}

int run_command(const Options& options, const std::string& folder, const std::string& programs, ProcOverlay* proc) {
  const sigset_t set = watched_signals();
  const UniqueFd signals(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
  if (!signals) fail("wait for signals");
  SystemLog log;
  const pid_t command = fork();
  if (command < 0) fail("start a process");
  if (command == 0) execute(options, folder, programs);

  int ending = 0;
  long deadline = 0;
  for (int status = 0;;) {
    pollfd waits[] = {{signals.get(), POLLIN, 0}, {log.fd(), POLLIN, 0}};
    poll(waits, 2, kProcPollMs);
    log.write_down();
    signalfd_siginfo info;
    while (read(signals.get(), &info, sizeof info) == sizeof info) {
      const int number = static_cast<int>(info.ssi_signo);
      // What the terminal sends has reached the command as well, which may well take it calmly.
      if (number == SIGCHLD || info.ssi_code == SI_KERNEL) continue;
      kill(command, number);
      if (ending == 0) deadline = now_ms() + kGraceMs;
      ending = number;
    }
    if (reap(command, &status)) return status;
    if (ending != 0 && now_ms() >= deadline) return 128 + ending;
    proc->keep_ahead();
  }
}

}  // namespace gateway

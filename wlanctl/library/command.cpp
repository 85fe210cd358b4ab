#include "wlanctl/library/command.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>

#include "wlanctl/base/clock.h"
#include "wlanctl/base/interrupt.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/library/output.h"

extern char** environ;

namespace wlanctl {
namespace {

constexpr int kKilled = SIGKILL;         // a status as waitpid tells it
constexpr int kNotStarted = 127 << 8;    // likewise
constexpr int64_t kGraceMs = 500;        // between the request to end and the end
constexpr int64_t kLongestPauseMs = 50;  // should a signal get lost

int64_t g_limit_ms = kCommandSeconds * kMsPerSecond;
int64_t g_deadline_ms = 0;
AtInterrupt g_at_interrupt = AtInterrupt::kGoOn;
BrokenOff g_broken_off = BrokenOff::kNo;

pid_t* g_under_way = nullptr;  // shared with what is forked off; 0 for none

std::vector<Command>& list() {
  static std::vector<Command> commands;
  return commands;
}

// The library runs programs of the gateway, which expect what a boot gives them.
class SpawnRules {
 public:
  explicit SpawnRules(int output) {
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    sigdelset(&all, SIGKILL);
    sigdelset(&all, SIGSTOP);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
    posix_spawn_file_actions_init(&files_);
    posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    if (output < 0) return;
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) posix_spawn_file_actions_adddup2(&files_, output, stream);
  }
  SpawnRules(const SpawnRules&) = delete;
  SpawnRules& operator=(const SpawnRules&) = delete;
  ~SpawnRules() {
    posix_spawnattr_destroy(&attributes_);
    posix_spawn_file_actions_destroy(&files_);
  }

  int spawn(pid_t* child, const char* const* arguments) const {
    // posix_spawn's own type leaves out the const, and does not write.
    return posix_spawn(child, arguments[0], &files_, &attributes_, const_cast<char* const*>(arguments), environ);
  }

 private:
  posix_spawnattr_t attributes_;
  posix_spawn_file_actions_t files_;
};

// Held, so that the end of a child and an interrupt can be waited for at once.
class ChildSignal {
 public:
  ChildSignal() {
    // A caller that ignores it would have the child's status thrown away.
    (void)signal(SIGCHLD, SIG_DFL);
    sigset_t held;
    sigemptyset(&held);
    sigaddset(&held, SIGCHLD);
    (void)sigprocmask(SIG_BLOCK, &held, &before_);
  }
  ChildSignal(const ChildSignal&) = delete;
  ChildSignal& operator=(const ChildSignal&) = delete;
  ~ChildSignal() { (void)sigprocmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_;
};

// Whether the child ended in time, with its status. Not longer than to an interrupt where that is to be the end.
bool wait_until(pid_t child, int64_t end_ms, bool ends_by_interrupt, int* status) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGCHLD);
  add_interrupts(&signals);
  for (;;) {
    const pid_t ended = waitpid(child, status, WNOHANG);
    if (ended == child) return true;
    if (ended < 0 && errno != EINTR) {
      *status = kNotStarted;
      return true;
    }
    const int64_t left = end_ms - ms_since_boot();
    if (left <= 0 || (ends_by_interrupt && is_interrupted())) return false;
    const timespec pause = {0, std::min(left, kLongestPauseMs) * 1000000};
    const int number = sigtimedwait(&signals, nullptr, &pause);
    if (number > 0) note_interrupt(number);
  }
}

// A child in a state that no signal ends is left to itself.
void end_group(pid_t child) {
  int status = 0;
  (void)kill(-child, SIGTERM);
  (void)kill(-child, SIGCONT);
  const bool ended = wait_until(child, ms_since_boot() + kGraceMs, false, &status);
  (void)kill(-child, SIGKILL);
  if (!ended) (void)wait_until(child, ms_since_boot() + kGraceMs, false, &status);
}

// The start of it, which goes on to whoever listens to this process.
std::string pass_on(int output) {
  constexpr size_t kMostShown = 4096;
  std::string text(kMostShown, '\0');
  const ssize_t length = output < 0 ? 0 : pread(output, text.data(), text.size(), 0);
  text.resize(length > 0 ? static_cast<size_t>(length) : 0);
  if (!text.empty()) (void)write_bytes(STDOUT_FILENO, text);
  return text;
}

void note_under_way(pid_t child) {
  if (g_under_way != nullptr) *g_under_way = child;
}

Command run_now(const char* const* arguments, const std::string& line) {
  Command command;
  command.line = line;
  const SignalHold hold;
  const ChildSignal child_signal;
  const int output = memfd_create("wlanctl-command", MFD_CLOEXEC);
  const int64_t limit = ms_since_boot() + g_limit_ms;
  pid_t child = -1;
  const int error = SpawnRules(output).spawn(&child, arguments);
  note_under_way(error == 0 ? child : 0);
  if (error != 0) {
    command.status = kNotStarted;
    command.printed = std::string(arguments[0]) + ": " + std::strerror(error);
  } else if (!wait_until(child, g_deadline_ms == 0 ? limit : std::min(limit, g_deadline_ms),
                         g_at_interrupt == AtInterrupt::kEnd, &command.status)) {
    // One that an interrupt leaves alone was ended for its time, whatever came meanwhile.
    const bool is_interrupt = g_at_interrupt == AtInterrupt::kEnd && is_broken_off() == BrokenOff::kInterrupted;
    command.ending = is_interrupt ? Ending::kInterrupted : Ending::kTooLong;
    command.status = kKilled;
    end_group(child);
  }
  note_under_way(0);
  if (error == 0) command.printed = joined_lines(pass_on(output));
  if (output >= 0) (void)close(output);
  return command;
}

}  // namespace

std::string account_of(const Command& command) {
  std::string text = "\"" + command.line + "\" ";
  const int exit_status = WEXITSTATUS(command.status);
  constexpr int kDiedBelow = 128;  // as a shell tells it of its child
  if (command.ending == Ending::kNotRun) {
    text += "was not run any more";
  } else if (command.ending == Ending::kInterrupted) {
    text += "was interrupted, and ended";
  } else if (command.ending == Ending::kTooLong) {
    text += "did not end in time, and was ended";
  } else if (WIFSIGNALED(command.status)) {
    text += std::string("was ended by a signal (") + strsignal(WTERMSIG(command.status)) + ")";
  } else if (exit_status > kDiedBelow && exit_status < kDiedBelow + SIGRTMIN) {
    text += std::string("was ended by a signal (") + strsignal(exit_status - kDiedBelow) + ")";
  } else {
    text += "ended with status " + std::to_string(exit_status);
  }
  if (!command.printed.empty()) text += " and printed \"" + command.printed + "\"";
  return text;
}

int run_command(const char* const* arguments, const std::string& line) {
  Command command;
  if (is_broken_off() == BrokenOff::kNo) {
    command = run_now(arguments, line);
  } else {
    command = {line, Ending::kNotRun, kKilled, ""};
  }
  list().push_back(command);
  return command.status;
}

void share_command_under_way() {
  if (g_under_way != nullptr) return;
  void* const page = mmap(nullptr, sizeof(pid_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (page != MAP_FAILED) g_under_way = static_cast<pid_t*>(page);
}

void end_command_left_behind() {
  const pid_t group = g_under_way == nullptr ? 0 : *g_under_way;
  note_under_way(0);
  if (group <= 0 || kill(-group, SIGKILL) != 0) return;
  // It is somebody else's child by now. One that no signal ends is left to itself.
  const int64_t end_ms = ms_since_boot() + kGraceMs;
  constexpr timespec kPause = {0, 5000000};
  while (kill(-group, 0) == 0 && ms_since_boot() < end_ms) (void)nanosleep(&kPause, nullptr);
}

void limit_commands(unsigned seconds) {
  g_limit_ms = seconds * kMsPerSecond;
}

CommandRun::CommandRun(int64_t deadline_ms, AtInterrupt at_interrupt) {
  g_deadline_ms = deadline_ms;
  g_at_interrupt = at_interrupt;
  g_broken_off = BrokenOff::kNo;
  list().clear();
}

CommandRun::~CommandRun() {
  g_deadline_ms = 0;
  g_at_interrupt = AtInterrupt::kGoOn;
  g_broken_off = BrokenOff::kNo;
}

BrokenOff is_broken_off() {
  if (g_broken_off != BrokenOff::kNo) return g_broken_off;
  if (g_at_interrupt != AtInterrupt::kGoOn && is_interrupted()) {
    g_broken_off = BrokenOff::kInterrupted;
  } else if (g_deadline_ms != 0 && ms_since_boot() >= g_deadline_ms) {
    g_broken_off = BrokenOff::kTimeOver;
  }
  return g_broken_off;
}

const std::vector<Command>& commands_run() {
  return list();
}

const Command* failed_command(const std::string& line) {
  const auto is_it = [&](const Command& command) { return command.failed() && command.line == line; };
  const auto found = std::find_if(list().rbegin(), list().rend(), is_it);
  return found == list().rend() ? nullptr : &*found;
}

}  // namespace wlanctl

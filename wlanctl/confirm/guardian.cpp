#include "wlanctl/confirm/guardian.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/inotify.h>
#include <sys/prctl.h>
#include <sys/timerfd.h>
#include <sys/wait.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <iterator>

#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/clock.h"
#include "wlanctl/base/report.h"
#include "wlanctl/confirm/apply_terminal.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/rollback.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/process.h"
#include "wlanctl/library/command.h"
#include "wlanctl/live/driver_time.h"

namespace wlanctl {
namespace {

constexpr unsigned kLongestApply = 24 * 60 * 60;

void leave_terminal_and_files(std::initializer_list<int> kept) {
  (void)setsid();
  (void)chdir("/");
  (void)prctl(PR_SET_NAME, kGuardianName);
  const int nothing = open("/dev/null", O_RDWR);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) (void)dup2(nothing, stream);
  const long most = std::min(sysconf(_SC_OPEN_MAX), 4096L);
  // The tool lock and the terminal among them: they stay with who started it.
  for (int file = STDERR_FILENO + 1; file < most; ++file) {
    if (std::find(kept.begin(), kept.end(), file) == kept.end()) (void)close(file);
  }
  sigset_t none;
  sigemptyset(&none);
  (void)sigprocmask(SIG_SETMASK, &none, nullptr);
  for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTSTP}) (void)signal(number, SIG_IGN);
  (void)signal(SIGTERM, SIG_DFL);
  (void)signal(SIGCHLD, SIG_DFL);
}

void tell_log(Band band, const Report& report, bool done) {
  openlog("wlanctl", LOG_PID, LOG_DAEMON);
  const char* const outcome = !is_back_in_force(band)            ? "rolled back, but not in force"
                              : interfaces_to_come(band).empty() ? "rolled back"
                                                                 : "rolled back, but not all of it is on the air";
  if (done) syslog(LOG_WARNING, "%s: not confirmed, %s", label_of(band), outcome);
  for (const std::string& note : report.notes()) syslog(LOG_WARNING, "%s", note.c_str());
  for (const Problem& problem : report.problems()) syslog(LOG_ERR, "%s", problem.message.c_str());
}

// What a guardian sees happen.
class Watch {
 public:
  Watch(int starter, pid_t starting)
      : starter_(starter),
        starting_(starting),
        changes_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
        clock_(timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK)) {
    (void)inotify_add_watch(changes_, place::kFolder, IN_DELETE | IN_MOVED_TO);
  }

  bool is_starter_gone() const { return starter_ < 0; }

  // Returns when something may have changed, at the deadline at the latest.
  void wait(const Pending& pending) {
    itimerspec alarm = {};
    const bool is_running_late = pending.phase != Phase::kWaiting && ms_since_boot() >= pending.deadline_ms;
    if (pending.deadline_ms != 0 && !is_running_late) {
      // A time of zero would switch the alarm off.
      const int64_t at = std::max<int64_t>(pending.deadline_ms, 1);
      alarm.it_value = {.tv_sec = at / 1000, .tv_nsec = at % 1000 * 1000000};
    }
    (void)timerfd_settime(clock_, TFD_TIMER_ABSTIME, &alarm, nullptr);
    pollfd files[] = {{changes_, POLLIN, 0}, {clock_, POLLIN, 0}, {starter_, POLLIN, 0}};
    // Now and then without a reason, should the system have no watch to give.
    constexpr int kAtLeastEveryMs = 10000;
    constexpr int kWhenLateMs = 200;
    constexpr int kWhenGoingBackMs = 1000;  // nothing tells of the end of who is at it
    const int longest = pending.phase == Phase::kGoingBack ? kWhenGoingBackMs : kAtLeastEveryMs;
    (void)poll(files, std::size(files), is_running_late ? kWhenLateMs : longest);
    char unread[4096];
    while (read(changes_, unread, sizeof unread) > 0) continue;
    // The apply ends itself when its time is over, unless somebody has stopped it.
    if (is_running_late && starter_ >= 0 && is_stopped(starting_)) (void)kill(starting_, SIGKILL);
    if (files[2].revents != 0) {
      close(starter_);
      starter_ = -1;
    }
  }

 private:
  int starter_;  // ends with the process at the other end
  pid_t starting_;
  int changes_;
  int clock_;
};

// What was only prepared is nobody's loss.
std::string line_for_terminal(const Pending& pending, bool done) {
  const std::string label = label_of(pending.band);
  if (pending.phase == Phase::kPrepared) return "";
  const std::optional<TakenBack> taken = taken_back(pending.band);
  if (done && taken) {
    return "wlanctl: " + words_of(pending.band, *taken) +
           (!is_back_in_force(pending.band)            ? "; what was before is back, but not in force"
            : interfaces_to_come(pending.band).empty() ? ""
                                                       : "; what was before is back, but not all of it is on the air");
  }
  return "wlanctl: the apply of " + label + " cannot be taken back; wlanctl status " + label + " tells more";
}

void watch_over(Band band, int starter, pid_t starting, const ApplyTerminal& terminal) {
  Watch watch(starter, starting);
  std::optional<Pending> pending;
  for (; (pending = read_pending(band));) {
    if (pending->is_lost(watch.is_starter_gone())) {
      Report report;
      // Whoever is at a roll back ends it, and this process with its file; should he be killed, the lock is free.
      const bool is_at_work = pending->phase == Phase::kGoingBack;
      std::optional<ToolLock> lock;
      if (is_at_work) {
        lock.emplace();
      } else {
        lock.emplace(report, kLongestApply);
      }
      pending = read_pending(band);
      if (!pending || (!*lock && !is_at_work)) break;
      if (*lock && pending->is_lost(watch.is_starter_gone())) {
        const DriverTime limited;
        if (watch.is_starter_gone()) end_command_left_behind();
        const bool done = undo(*pending, By::kGuardian, reason_for(*pending), report);
        complain_of(band, lacks_of(band), "", report);
        tell_log(band, report, done);
        terminal.tell(line_for_terminal(*pending, done));
        return;
      }
    }
    watch.wait(*pending);
  }
  // Neither confirmed nor rolled back, which would have removed the other copy first.
  const std::optional<Pending> left = interrupted(band);
  if (!left) return;
  openlog("wlanctl", LOG_PID, LOG_DAEMON);
  const Problem problem = cut_off(*left);
  syslog(LOG_WARNING, "%s; %s", problem.message.c_str(), problem.next.c_str());
}

[[noreturn]] void be_guardian(Band band, const Guard& guard, int ready, int starter, pid_t starting) {
  const ApplyTerminal terminal;
  leave_terminal_and_files({guard.file(), ready, starter});
  guard.sign();
  (void)write(ready, "", 1);
  close(ready);
  watch_over(band, starter, starting, terminal);
  _exit(0);
}

void close_both(const int (&ends)[2]) {
  close(ends[0]);
  close(ends[1]);
}

}  // namespace

bool start_guardian(Band band, const Guard& guard, Report& report) {
  int ready[2];
  // Its end tells the guardian of this process's end; no other file would, however the process ends.
  int life[2];
  bool started = false;
  share_command_under_way();
  if (pipe2(ready, O_CLOEXEC) == 0) {
    if (pipe2(life, O_CLOEXEC) == 0) {
      const pid_t starting = getpid();
      const pid_t child = fork();
      if (child == 0) {
        const pid_t guardian = fork();
        if (guardian == 0) be_guardian(band, guard, ready[1], life[0], starting);
        _exit(guardian < 0 ? 1 : 0);
      }
      close(ready[1]);
      ready[1] = -1;
      close(life[0]);
      while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
      char word;
      started = child > 0 && read(ready[0], &word, 1) == 1;
    }
    close_both(ready);
  }
  if (started) return true;
  report.problem({std::string("no guardian can be started for ") + label_of(band) + ": " + std::strerror(errno),
                  "apply without --confirm", about(band)});
  return false;
}

}  // namespace wlanctl

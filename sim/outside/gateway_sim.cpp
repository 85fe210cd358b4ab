// gateway-sim: runs a command inside a simulated home gateway. See --help.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/outside/init.h"
#include "sim/outside/namespaces.h"
#include "sim/outside/options.h"
#include "sim/outside/starter.h"
#include "sim/radio/boot.h"
#include "sim/root/gateway_files.h"
#include "sim/root/proc_overlay.h"
#include "sim/root/real_paths.h"
#include "sim/root/root_file_system.h"

namespace gateway {
namespace {

constexpr char kHostName[] = "gateway";

// Says on standard error how the set-up goes.
class Progress {
 public:
  explicit Progress(bool wanted) : wanted_(wanted) { clock_gettime(CLOCK_MONOTONIC, &start_); }

  void say(const char* what) const {
    if (!wanted_) return;
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const double ms =
        static_cast<double>(now.tv_sec - start_.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec - start_.tv_nsec) / 1e6;
    std::fprintf(stderr, "gateway-sim: %6.1f ms  %s\n", ms, what);
  }

 private:
  bool wanted_;
  timespec start_ = {};
};

[[noreturn]] void refuse(const std::system_error& error, Caller caller) {
  std::fprintf(stderr, "gateway-sim: cannot %s\n", error.what());
  const std::string advice = advice_on(error.code().value(), caller);
  if (!advice.empty()) std::fprintf(stderr, "gateway-sim: %s\n", advice.c_str());
  _exit(kRefused);
}

// Creates the journal, and resolves its path while the machine's folders are still in sight.
std::string open_journal(const std::string& path) {
  if (path.empty()) return {};
  // What is there already is looked at before it is changed, and keeps its mode.
  const UniqueFd fd = open_file(path, O_WRONLY | O_CREAT, 0644);
  struct stat status;
  if (fstat(fd.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    errno = EINVAL;
    fail("use " + path + " as the journal, which is not a file");
  }
  if (ftruncate(fd.get(), 0) != 0) fail("empty " + path);
  return std::filesystem::canonical(path);
}

struct Preparation {
  Caller caller = Caller::kUser;
  RootPlan root;
  std::string folder;
  std::string programs;
};

// Everything that needs the machine's own files; what the user named wrongly ends the program here.
Preparation prepare(const Options& options, Caller caller) {
  Preparation prepared;
  prepared.caller = caller;
  Installation installation = find_installation();
  if (!options.dat_2_4g.empty()) installation.dat_2_4g = options.dat_2_4g;
  if (!options.dat_5g.empty()) installation.dat_5g = options.dat_5g;
  std::error_code ignored;
  prepared.folder = std::filesystem::current_path(ignored);
  try {
    for (const std::string& dat : {options.dat_2_4g, options.dat_5g}) {
      if (!dat.empty()) read_text(dat);
    }
    prepared.root.journal = open_journal(options.journal);
  } catch (const std::system_error& error) {
    std::fprintf(stderr, "gateway-sim: cannot %s\n", error.what());
    _exit(kUsageError);
  }
  prepared.programs = installation.programs;
  prepared.root.privileged = caller == Caller::kPrivileged;
  prepared.root.files = plan_gateway_files(options.chips, installation);
  prepared.root.real_folders = real_folders(installation, prepared.folder);
  return prepared;
}

[[noreturn]] void run_inside(const Options& options, const Preparation& prepared, int parent_alive,
                             const Progress& progress) {
  // Process 1 takes the whole simulation with it, so this leaves nothing behind when gateway-sim is killed.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  char byte;
  if (read(parent_alive, &byte, 1) == 0) _exit(kRefused);
  try {
    const mode_t mask = umask(022);
    RootFileSystem(prepared.root).enter();
    progress.say("root file system");
    if (sethostname(kHostName, sizeof kHostName - 1) != 0) fail("set the host name");
    ProcOverlay proc;
    proc.fill();
    progress.say("/proc");
    make_air(place::kAir);
    boot();
    progress.say("network and radios");
    umask(mask);
    _exit(run_command(options, prepared.folder, prepared.programs, &proc));
  } catch (const std::system_error& error) {
    refuse(error, prepared.caller);
  }
}

// The terminal goes back to this process group when a shell inside had it.
void take_terminal_back() {
  if (isatty(STDIN_FILENO) == 0 || tcgetpgrp(STDIN_FILENO) == getpgrp()) return;
  signal(SIGTTOU, SIG_IGN);
  tcsetpgrp(STDIN_FILENO, getpgrp());
}

int wait_for(pid_t child, const UniqueFd& starter) {
  sigset_t mask;
  sigprocmask(SIG_SETMASK, nullptr, &mask);
  const UniqueFd signals(signalfd(-1, &mask, SFD_CLOEXEC));
  if (!signals) fail("wait for signals");
  bool told = false;
  bool is_watched = static_cast<bool>(starter);
  for (;;) {
    pollfd waits[] = {{signals.get(), POLLIN, 0}, {is_watched ? starter.get() : -1, POLLIN, 0}};
    if (poll(waits, 2, -1) < 0) continue;
    if (waits[1].revents != 0) {
      is_watched = false;
      kill(child, SIGKILL);
    }
    signalfd_siginfo info = {};
    if (waits[0].revents == 0 || read(signals.get(), &info, sizeof info) != sizeof info) continue;
    const int number = static_cast<int>(info.ssi_signo);
    if (number == SIGCHLD) {
      int status = 0;
      if (waitpid(child, &status, WNOHANG) != child) continue;
      return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    }
    if (info.ssi_code == SI_KERNEL) continue;
    kill(child, told ? SIGKILL : number);
    told = true;
  }
}

int run(int argc, char** argv) {
  const Options options = parse_options(argc, argv);
  const Progress progress(options.verbose);
  const Caller caller = identify_caller();
  const UniqueFd starter = starter_to_watch(options.shell);
  try {
    const Preparation prepared = prepare(options, caller);
    const bool had_terminal = isatty(STDIN_FILENO) != 0 && tcgetpgrp(STDIN_FILENO) == getpgrp();
    int alive[2];
    if (pipe2(alive, O_CLOEXEC) != 0) fail("make a pipe");
    block_signals();
    enter_namespaces(caller);
    progress.say("namespaces");
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) fail("start a process");
    if (child == 0) {
      close(alive[1]);
      run_inside(options, prepared, alive[0], progress);
    }
    close(alive[0]);
    if (write(alive[1], "", 1) != 1) fail("start the simulation");
    const int status = wait_for(child, starter);
    if (had_terminal) take_terminal_back();
    progress.say("ended");
    return status;
  } catch (const std::system_error& error) {
    refuse(error, caller);
  }
}

}  // namespace
}  // namespace gateway

// Leaves without running exit handlers: a sanitizer's would want to start a process, in a namespace that has ended.
int main(int argc, char** argv) {
  _exit(gateway::run(argc, argv));
}

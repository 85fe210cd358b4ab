#include "wlanctl/library/private_script.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "wlanctl/library/output.h"

extern char** environ;

namespace wlanctl {
namespace {

constexpr char kShell[] = "/bin/sh";

// The status of the child, -1 with `reason` when it cannot be had.
int run_and_wait(const char* const* arguments, std::string* reason) {
  pid_t child = -1;
  // posix_spawn's own type leaves out the const, and does not write.
  const int error = posix_spawn(&child, kShell, nullptr, nullptr, const_cast<char* const*>(arguments), environ);
  if (error != 0) {
    *reason = std::string(kShell) + ": " + std::strerror(error);
    return -1;
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno == EINTR) continue;
    *reason = std::strerror(errno);
    return -1;
  }
  return status;
}

}  // namespace

PrivateScript::PrivateScript() {
  char name[] = "/tmp/wlanctl.XXXXXX";
  if (mkdtemp(name) == nullptr) return;
  folder_ = name;
  path_ = folder_ + "/script";
}

PrivateScript::~PrivateScript() {
  if (folder_.empty()) return;
  (void)unlink(path_.c_str());
  (void)rmdir(folder_.c_str());
}

bool PrivateScript::is_empty() const {
  struct stat status = {};
  return stat(path_.c_str(), &status) != 0 || status.st_size == 0;
}

bool PrivateScript::run(std::string* output) const {
  const char* const arguments[] = {kShell, "-e", path_.c_str(), nullptr};
  std::string reason;
  CaughtOutput caught;
  const int status = run_and_wait(arguments, &reason);
  *output = caught.end();
  if (output->empty()) *output = reason;
  return status == 0;
}

}  // namespace wlanctl

#include "wlanctl/library/private_script.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "wlanctl/library/command.h"
#include "wlanctl/library/output.h"

namespace wlanctl {
namespace {

constexpr char kShell[] = "/bin/sh";

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
  CaughtOutput caught;
  const int status = run_command(arguments, "the script");
  *output = caught.end();
  if (output->empty() && status != 0) *output = account_of(commands_run().back());
  return status == 0;
}

}  // namespace wlanctl

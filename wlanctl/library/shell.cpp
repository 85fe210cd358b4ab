#include "wlanctl/library/shell.h"

#include <dlfcn.h>

#include <cstdlib>

namespace wlanctl {
namespace {

ShellMode g_mode = ShellMode::kRun;
int g_last_status = 0;

}  // namespace

ShellScope::ShellScope(ShellMode mode) : before_(g_mode) {
  g_mode = mode;
}

ShellScope::~ShellScope() {
  g_mode = before_;
}

std::vector<std::string>& ShellScope::lines() {
  static std::vector<std::string> recorded;
  return recorded;
}

int last_shell_status() {
  return g_last_status;
}

void clear_shell_status() {
  g_last_status = 0;
}

}  // namespace wlanctl

extern "C" int system(const char* line) {
  switch (wlanctl::g_mode) {
    case wlanctl::ShellMode::kRecord:
      wlanctl::ShellScope::lines().emplace_back(line);
      return 0;
    case wlanctl::ShellMode::kDrop:
      return 0;
    case wlanctl::ShellMode::kRun:
      break;
  }
  using System = int (*)(const char*);
  static const auto real = reinterpret_cast<System>(dlsym(RTLD_NEXT, "system"));
  wlanctl::g_last_status = real(line);
  return wlanctl::g_last_status;
}

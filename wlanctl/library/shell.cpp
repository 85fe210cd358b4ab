#include "wlanctl/library/shell.h"

#include <cstdlib>

#include "wlanctl/library/command.h"

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

ShellMode ShellScope::mode() {
  return g_mode;
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
  // system(nullptr) asks whether there is a shell.
  if (line == nullptr) return 1;
  const char* const arguments[] = {"/bin/sh", "-c", line, nullptr};
  wlanctl::g_last_status = wlanctl::run_command(arguments, line);
  return wlanctl::g_last_status;
}

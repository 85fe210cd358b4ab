#include "wlanctl/library/shell.h"

#include <cstdlib>

#include "wlanctl/library/command.h"

namespace wlanctl {
namespace {

ShellMode g_mode = ShellMode::kRun;
int g_last_status = 0;

std::string& watched_script() {
  static std::string path;
  return path;
}

// A line each, as the script itself has them; the status is the last one that is not 0. A list of several addresses stands
// there unquoted: a shell takes all but the first for commands, which tells nothing of the driver.
constexpr char kEachLine[] =
    "while IFS= read -r line || [ -n \"$line\" ]; do eval \"$line\" </dev/null || case $line in\n"
    "*' set ACLAddEntry='*';'*) ;;\n"
    "*) failed=$? ;;\n"
    "esac; done <\"$0\"\n"
    "exit ${failed:-0}";

}  // namespace

int run_line(const std::string& line) {
  if (line != watched_script()) {
    const char* const arguments[] = {"/bin/sh", "-c", line.c_str(), nullptr};
    return run_command(arguments, line);
  }
  const char* const arguments[] = {"/bin/sh", "-c", kEachLine, line.c_str(), nullptr};
  return run_command(arguments, line);
}

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

WatchedScript::WatchedScript(const std::string& path) {
  watched_script() = path;
}

WatchedScript::~WatchedScript() {
  watched_script().clear();
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
  wlanctl::g_last_status = wlanctl::run_line(line);
  return wlanctl::g_last_status;
}

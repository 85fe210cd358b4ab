#include "wlanctl/library/shell.h"

#include <cstdlib>

#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/library/command.h"

namespace wlanctl {
namespace {

ShellMode g_mode = ShellMode::kRun;
int g_last_status = 0;

std::string& watched_script() {
  static std::string path;
  return path;
}

int run_by_shell(const std::string& line, const std::string& name) {
  const char* const arguments[] = {"/bin/sh", "-c", line.c_str(), nullptr};
  return run_command(arguments, name);
}

// A list of several addresses stands in a script unquoted: a shell takes all but the first for commands, which tells
// nothing of the driver.
bool is_list_of_addresses(const std::string& line) {
  const size_t list = line.find(" set ACLAddEntry=");
  return list != std::string::npos && line.find(';', list) != std::string::npos;
}

// "/userfs/bin/iwpriv ra0 set WPAPSK=secret" is "iwpriv ra0 set WPAPSK".
std::string name_of(const std::string& line) {
  const std::string name = line.substr(0, line.find('='));
  const size_t slash = name.rfind('/', name.find(' '));
  return slash == std::string::npos ? name : name.substr(slash + 1);
}

// Of one that hangs, the driver would let the others hang, too.
int run_each(const std::string& script) {
  int status = 0;
  for (const std::string& line : lines_of(read_bytes(script).value_or(""))) {
    if (line.empty() || line.front() == '#') continue;
    const int ended = run_by_shell(line, name_of(line));
    if (ended != 0 && !is_list_of_addresses(line)) status = ended;
    if (commands_run().back().ending != Ending::kByItself) break;
  }
  return status;
}

}  // namespace

int run_line(const std::string& line) {
  return line == watched_script() ? run_each(line) : run_by_shell(line, line);
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

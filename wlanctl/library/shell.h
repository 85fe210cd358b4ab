// The seam between the library and the shell: the tool defines system itself, so that every command line of the library
// passes here.
#pragma once

#include <string>
#include <vector>

namespace wlanctl {

enum class ShellMode {
  kRun,     // as the library wants it
  kRecord,  // kept instead of run
  kDrop,    // neither
};

// What happens to the library's command lines while this lives; the mode before comes back with its end.
class ShellScope {
 public:
  explicit ShellScope(ShellMode mode);
  ShellScope(const ShellScope&) = delete;
  ShellScope& operator=(const ShellScope&) = delete;
  ~ShellScope();

  static ShellMode mode();

  // The lines of kRecord so far.
  static std::vector<std::string>& lines();

 private:
  ShellMode before_;
};

// While this lives, a line that runs a script of plain commands at `path` has failed when any of its commands has, not the
// last one alone. Each is one of commands_run, named without its value, which may be a secret; after one that does not end
// in time no other is run.
class WatchedScript {
 public:
  explicit WatchedScript(const std::string& path);
  WatchedScript(const WatchedScript&) = delete;
  WatchedScript& operator=(const WatchedScript&) = delete;
  ~WatchedScript();
};

// Runs a line as the library's are run, whatever the mode; its status as system says it.
int run_line(const std::string& line);

// How the last line that was run ended, as system says it; the library itself does not look. 0 before the first, and
// after a clear.
int last_shell_status();
void clear_shell_status();

}  // namespace wlanctl

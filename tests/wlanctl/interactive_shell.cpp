#include "interactive_shell.h"

#include <gtest/gtest.h>

namespace wlanctl_test {
namespace {

// What a call prints, as a line of its own; a history, where Tab asks for it.
constexpr char kCall[] =
    "wlanctl() { local IFS='|'; if [ \"$*\" = log ]; then printf '17  2026-01-01  save\\n    Channel\\n9  2025\\n'; "
    "else printf 'CALLED %s\\n' \"$*\"; fi; }\n";

constexpr char kBashSettings[] =
    "PS1=\n"
    "bind 'set enable-bracketed-paste off'\n"
    "bind '\"\\C-xa\": insert-completions'\n";

constexpr char kZshSettings[] =
    "PS1=\n"
    "fpath=($PWD $fpath)\n"
    "autoload -Uz compinit && compinit -u -D\n"
    "zle -C insert-all complete-word _generic\n"
    "bindkey '^Xa' insert-all\n"
    "zstyle ':completion:insert-all:*' completer _all_matches _complete\n"
    "zstyle ':completion:insert-all:*' insert yes\n";

std::string completion_of(const char* shell) {
  return sim_test::shell(std::string("'") + wlanctl_program() + "' completion " + shell).out;
}

}  // namespace

bool is_there(Shell shell) {
  return sim_test::shell(std::string("command -v ") + (shell == Shell::kBash ? "bash" : "zsh") + " >/dev/null")
             .status == 0;
}

Words type(Shell shell, const Words& lines) {
  const TestFolder folder;
  std::string start;
  if (shell == Shell::kBash) {
    write_file(folder / ".bashrc", completion_of("bash") + kBashSettings + kCall);
    start = "exec bash --rcfile .bashrc -i";
  } else {
    write_file(folder / "_wlanctl", completion_of("zsh"));
    write_file(folder / ".zshrc", std::string(kZshSettings) + kCall);
    start = "exec zsh -d -i";
  }
  write_file(folder / "a file", "");
  std::string typed;
  for (const std::string& line : lines) typed += line + "\n";
  write_file(folder / "typed", typed + "exit\n");
  // A keyboard that never ends: script gives a shell seconds to react to the end of one.
  const Result result = sim_test::shell("cd '" + folder.path() +
                                        "' && mkfifo keyboard && { cat typed >keyboard & } && "
                                        "HOME=$PWD ZDOTDIR=$PWD LC_ALL=C TERM=dumb script -qec 'stty cols 9999; " +
                                        start + "' /dev/null <>keyboard 2>&1");
  Words calls;
  for (std::string line : lines_of(result.out)) {
    if (line.rfind("CALLED ", 0) != 0) continue;
    line.erase(0, line.find(' ') + 1);
    calls.push_back(line.substr(0, line.find('\r')));
  }
  EXPECT_EQ(lines.size(), calls.size()) << result.out;
  calls.resize(lines.size());
  return calls;
}

}  // namespace wlanctl_test

#include "terminal.h"

#include <algorithm>

namespace wlanctl_test {

std::string on_terminal(const std::string& script, int rows) {
  std::string quoted;
  for (const char c : "stty cols 80 rows " + std::to_string(rows) + "\n" + script) {
    quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  }
  return "env -u NO_COLOR -u PAGER -u LESS -u WLANCTL_PAGER TERM=xterm SHELL=/bin/sh script -qec '" + quoted +
         "' /dev/null </dev/null";
}

std::string without_carriage_returns(std::string text) {
  std::erase(text, '\r');
  return text;
}

Result run_on_terminal(const std::string& script, int rows) {
  Result result = sim_test::shell("PATH='" + built("bin") + "':$PATH; " + on_terminal(script, rows));
  result.out = without_carriage_returns(result.out);
  return result;
}

}  // namespace wlanctl_test

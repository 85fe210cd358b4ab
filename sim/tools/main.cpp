#include <algorithm>
#include <cstdio>
#include <exception>
#include <iterator>

#include "sim/base/file.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

struct Tool {
  const char* name;
  int (*run)(const Words& words);
};

constexpr Tool kTools[] = {
    {"brctl", record_real_tool},
    {"ifconfig", record_real_tool},
    {"insmod", insmod},
    {"iwpriv", iwpriv},
    {"killall", killall},
    {"mtd", mtd},
    {"reboot", reboot},
    {"rmmod", rmmod},
    {"simctl", run_simctl},
    {"sys", sys},
    {"wscd", wscd},
};

int run(const Words& words) {
  const std::string name = words.empty() ? "" : name_of(words[0]);
  for (const Tool& tool : kTools) {
    if (name != tool.name) continue;
    const std::optional<int> told = can_fail(name) ? fail_as_told(words) : std::nullopt;
    return told ? *told : tool.run(words);
  }
  std::fprintf(stderr, "usage: call this program by the name of one of its tools:");
  for (const Tool& tool : kTools) std::fprintf(stderr, " %s", tool.name);
  std::fputc('\n', stderr);
  return 2;
}

}  // namespace

bool can_fail(const std::string& name) {
  const auto is_called = [&](const Tool& tool) { return name == tool.name; };
  return name != "simctl" && std::any_of(std::begin(kTools), std::end(kTools), is_called);
}

}  // namespace gateway::tools

int main(int argc, char** argv) {
  try {
    return gateway::tools::run({argv, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
    return 1;
  }
}

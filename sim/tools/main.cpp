#include <cstdio>
#include <exception>

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
    if (name == tool.name) return tool.run(words);
  }
  std::fprintf(stderr, "usage: call this program by the name of one of its tools:");
  for (const Tool& tool : kTools) std::fprintf(stderr, " %s", tool.name);
  std::fputc('\n', stderr);
  return 2;
}

}  // namespace
}  // namespace gateway::tools

int main(int argc, char** argv) {
  try {
    return gateway::tools::run({argv, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
    return 1;
  }
}

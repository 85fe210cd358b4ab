// sys: the platform's register access. The registers are a file, one line for each write.
#include <fcntl.h>

#include <cstdio>
#include <cstdlib>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/records/journal.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

bool read_hex(const std::string& text, unsigned long* number) {
  char* end = nullptr;
  *number = std::strtoul(text.c_str(), &end, 16);
  return !text.empty() && text[0] != '-' && *end == '\0' && *number <= 0xffffffffUL;
}

}  // namespace

int sys(const Words& words) {
  const StateLock lock;
  unsigned long address = 0;
  unsigned long value = 0;
  if (words.size() != 4 || words[1] != "memwl" || !read_hex(words[2], &address) || !read_hex(words[3], &value)) {
    std::fprintf(stderr, "usage: sys memwl ADDRESS VALUE, both hexadecimal\n");
    record_call(words, {});
    return 2;
  }
  char line[64];
  std::snprintf(line, sizeof line, "%08lx %08lx", address, value);
  write_all(open_file(place::kRegisters, O_WRONLY | O_CREAT | O_APPEND).get(), std::string(line) + "\n",
            place::kRegisters);
  record_call(words, {"register " + std::string(line, 8) + ": written " + (line + 9)});
  return 0;
}

}  // namespace gateway::tools

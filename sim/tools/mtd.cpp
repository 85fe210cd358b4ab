// mtd: reads and writes the flash.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "sim/base/file.h"
#include "sim/records/flash.h"
#include "sim/records/journal.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

struct Request {
  std::string file;
  unsigned long length = 0;
  unsigned long offset = 0;
  std::string partition;
};

bool read_number(const std::string& text, unsigned long* number) {
  char* end = nullptr;
  *number = std::strtoul(text.c_str(), &end, 0);
  return !text.empty() && text[0] != '-' && *end == '\0';
}

bool read_request(const Words& words, Request* request) {
  if (words.size() != 6) return false;
  request->file = words[2];
  request->partition = words[5];
  return read_number(words[3], &request->length) && read_number(words[4], &request->offset) &&
         !request->partition.empty() && request->partition.find('/') == std::string::npos;
}

int read_to_file(const Words& words, const Request& request) {
  write_text(request.file, read_flash(request.partition, request.offset, request.length), 0644);
  record_call(words, {request.file + ": " + std::to_string(request.length) + " bytes read from flash"});
  return 0;
}

int write_from_file(const Words& words, const Request& request) {
  const std::string content = read_text(request.file).substr(0, request.length);
  write_flash(request.partition, request.offset, content);
  record_call(words, {request.partition + ": " + std::to_string(content.size()) + " bytes written at " +
                      std::to_string(request.offset)});
  return 0;
}

}  // namespace

int mtd(const Words& words) {
  const StateLock lock;
  Request request;
  const bool reads = words.size() > 1 && words[1] == "readflash";
  const bool writes = words.size() > 1 && words[1] == "writeflash";
  if ((!reads && !writes) || !read_request(words, &request)) {
    std::fprintf(stderr, "usage: mtd readflash|writeflash FILE LENGTH OFFSET PARTITION\n");
    record_call(words, {});
    return 2;
  }
  if (request.offset > kPartitionSize || request.length > kPartitionSize - request.offset) {
    std::fprintf(stderr, "mtd: %s: beyond the end of the partition\n", request.partition.c_str());
    record_call(words, {});
    return 1;
  }
  if (writes && access(request.file.c_str(), R_OK) != 0) {
    std::fprintf(stderr, "mtd: %s: cannot be read\n", request.file.c_str());
    record_call(words, {});
    return 1;
  }
  return reads ? read_to_file(words, request) : write_from_file(words, request);
}

}  // namespace gateway::tools

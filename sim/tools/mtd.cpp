// mtd: reads and writes the flash. A partition is a file; what was never written reads as erased flash does.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "sim/file.h"
#include "sim/journal.h"
#include "sim/places.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

constexpr unsigned long kPartitionSize = 0x400000;
constexpr char kErased = '\xff';

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

std::string image_of(const Request& request) {
  return std::string(place::kFlash) + "/" + request.partition;
}

std::string load_image(const Request& request) {
  const std::string path = image_of(request);
  return path_exists(path) ? read_text(path) : std::string();
}

int read_flash(const Words& words, const Request& request) {
  std::string image = load_image(request);
  image.resize(request.offset + request.length, kErased);
  write_text(request.file, image.substr(request.offset), 0644);
  record_call(words, {request.file + ": " + std::to_string(request.length) + " bytes read from flash"});
  return 0;
}

int write_flash(const Words& words, const Request& request) {
  const std::string content = read_text(request.file).substr(0, request.length);
  std::string image = load_image(request);
  if (image.size() < request.offset + content.size()) image.resize(request.offset + content.size(), kErased);
  image.replace(request.offset, content.size(), content);
  write_text(image_of(request), image, 0644);
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
  return reads ? read_flash(words, request) : write_flash(words, request);
}

}  // namespace gateway::tools

#include "sim/records/flash.h"

#include "sim/base/file.h"
#include "sim/base/places.h"

namespace gateway {
namespace {

constexpr char kErased = '\xff';

std::string path_of(const std::string& partition) {
  return std::string(place::kFlash) + "/" + partition;
}

std::string load(const std::string& partition) {
  const std::string path = path_of(partition);
  return path_exists(path) ? read_text(path) : std::string();
}

}  // namespace

std::string read_flash(const std::string& partition, unsigned long offset, unsigned long length) {
  std::string image = load(partition);
  image.resize(offset + length, kErased);
  return image.substr(offset);
}

void write_flash(const std::string& partition, unsigned long offset, const std::string& content) {
  std::string image = load(partition);
  if (image.size() < offset + content.size()) image.resize(offset + content.size(), kErased);
  image.replace(offset, content.size(), content);
  write_text(path_of(partition), image, 0644);
}

}  // namespace gateway

#include "wlanctl/files/bytes.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "wlanctl/files/plain_file.h"

namespace wlanctl {

std::optional<std::string> read_open_file(int file) {
  std::string bytes;
  char block[4096];
  ssize_t got = 0;
  while ((got = read(file, block, sizeof block)) > 0) {
    bytes.append(block, static_cast<size_t>(got));
    if (bytes.size() <= kMostBytes) continue;
    errno = EFBIG;
    return std::nullopt;
  }
  if (got < 0) return std::nullopt;
  return bytes;
}

std::optional<std::string> read_bytes(const std::string& path) {
  const int file = open_plain_file(path, O_RDONLY);
  if (file < 0) return std::nullopt;
  std::optional<std::string> bytes = read_open_file(file);
  const int error = errno;
  close(file);
  errno = error;
  return bytes;
}

bool write_bytes(int file, const std::string& bytes) {
  for (size_t at = 0; at < bytes.size();) {
    const ssize_t written = write(file, bytes.data() + at, bytes.size() - at);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    at += static_cast<size_t>(written);
  }
  return true;
}

bool finish_file(int file, const std::string& bytes) {
  const bool done = write_bytes(file, bytes) && fsync(file) == 0;
  const int error = errno;
  const bool closed = close(file) == 0;
  if (!done) errno = error;
  return done && closed;
}

}  // namespace wlanctl

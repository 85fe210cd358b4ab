#include "wlanctl/files/plain_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace wlanctl {
namespace {

const char* name_of_kind(mode_t mode) {
  if (S_ISDIR(mode)) return "a folder";
  if (S_ISFIFO(mode)) return "a pipe";
  if (S_ISSOCK(mode)) return "a socket";
  return "a device";
}

void close_with(int file, int error) {
  (void)close(file);
  errno = error;
}

}  // namespace

int open_plain_file(const std::string& path, int flags, unsigned mode) {
  // Emptied only when it is known to be one.
  const int file = open(path.c_str(), (flags & ~O_TRUNC) | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode);
  if (file < 0) return -1;
  struct stat status = {};
  if (fstat(file, &status) != 0) {
    close_with(file, errno);
    return -1;
  }
  if (!S_ISREG(status.st_mode)) {
    close_with(file, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    return -1;
  }
  if ((flags & O_TRUNC) != 0 && ftruncate(file, 0) != 0) {
    close_with(file, errno);
    return -1;
  }
  return file;
}

std::string reason_against_file(const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) return std::strerror(errno);
  if (!S_ISREG(status.st_mode)) return std::string("it is ") + name_of_kind(status.st_mode) + ", not a file";
  if (status.st_size > static_cast<off_t>(kMostBytes)) return kTooLarge;
  const int file = open_plain_file(path, O_RDONLY);
  if (file < 0) return std::strerror(errno);
  (void)close(file);
  return "";
}

}  // namespace wlanctl

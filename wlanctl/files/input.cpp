#include "wlanctl/files/input.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "wlanctl/base/asked_line.h"
#include "wlanctl/files/plain_file.h"

namespace wlanctl {
namespace {

// One that was handed over as an open file, as /dev/stdin is, has no name of its own.
bool is_pipe_with_a_name(int file, const std::string& path) {
  struct stat status = {};
  struct stat named = {};
  return fstat(file, &status) == 0 && S_ISFIFO(status.st_mode) && lstat(path.c_str(), &named) == 0 &&
         S_ISFIFO(named.st_mode);
}

Input read_all(int file, const std::string& path, Until until) {
  std::string bytes;
  char block[4096];
  bool is_anybody_there = !is_pipe_with_a_name(file, path);
  for (;;) {
    const ssize_t got = read(file, block, sizeof block);
    if (got == 0) break;
    if (got > 0) {
      is_anybody_there = true;
      bytes.append(block, static_cast<size_t>(got));
      if (until == Until::kLineEnd && bytes.find('\n') != std::string::npos) break;
      if (bytes.size() > kMostBytes) return {std::nullopt, kTooLarge};
    } else if (errno == EAGAIN) {
      is_anybody_there = true;
      pollfd more = {file, POLLIN, 0};
      (void)poll(&more, 1, -1);
    } else if (errno != EINTR) {
      return {std::nullopt, std::strerror(errno)};
    }
  }
  if (!is_anybody_there) return {std::nullopt, "it is a pipe that nobody writes to"};
  return {std::move(bytes), ""};
}

}  // namespace

Input read_input(const std::string& path, Until until) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (file < 0) return {std::nullopt, std::strerror(errno)};
  Input input = read_all(file, path, until);
  (void)close(file);
  return input;
}

std::optional<std::string> first_line_of(const Input& input) {
  if (!input.bytes || input.bytes->empty()) return std::nullopt;
  return without_end(input.bytes->substr(0, input.bytes->find('\n')));
}

}  // namespace wlanctl

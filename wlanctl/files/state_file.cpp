#include "wlanctl/files/state_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "wlanctl/base/report.h"

namespace wlanctl {
namespace {

// Far more than a dat file may have, and what a device without an end is stopped at.
constexpr size_t kMost = size_t{1} << 20;

bool is_own(int file) {
  struct stat status;
  return fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
         (status.st_mode & 077) == 0;
}

std::optional<std::string> read_open(int file) {
  std::string bytes;
  char block[4096];
  ssize_t got = 0;
  while ((got = read(file, block, sizeof block)) > 0) {
    bytes.append(block, static_cast<size_t>(got));
    if (bytes.size() <= kMost) continue;
    errno = EFBIG;
    return std::nullopt;
  }
  if (got < 0) return std::nullopt;
  return bytes;
}

}  // namespace

// Against half-written and hand-edited files; a sum (FNV-1a), not a seal.
std::string sum_of(const std::string& text) {
  uint64_t sum = 0xcbf29ce484222325;
  for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return std::to_string(sum);
}

std::string this_boot() {
  std::string id = read_bytes("/proc/sys/kernel/random/boot_id").value_or("");
  id = id.substr(0, id.find('\n'));
  return id.empty() ? "-" : id;
}

std::optional<std::string> read_bytes(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  std::optional<std::string> bytes = read_open(file);
  const int error = errno;
  close(file);
  errno = error;
  return bytes;
}

std::optional<std::string> read_state_file(const std::string& path, const std::string& format, int version) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
  if (file < 0) return std::nullopt;
  const std::optional<std::string> bytes = is_own(file) ? read_open(file) : std::nullopt;
  close(file);
  if (!bytes) return std::nullopt;
  std::istringstream head(bytes->substr(0, bytes->find('\n')));
  std::string found_format, sum;
  int found_version = 0;
  if (!(head >> found_format >> found_version >> sum) || found_format != format || found_version != version) {
    return std::nullopt;
  }
  const size_t end = bytes->find('\n');
  if (end == std::string::npos) return std::nullopt;
  std::string text = bytes->substr(end + 1);
  if (sum != sum_of(text)) return std::nullopt;
  return text;
}

bool write_state_file(const std::string& path, const std::string& format, int version, const std::string& text,
                      Report& report) {
  const std::string head = format + " " + std::to_string(version) + " " + sum_of(text) + "\n";
  return replace_file(path, head + text, 0600, report);
}

bool replace_file(const std::string& path, const std::string& bytes, unsigned mode, Report& report) {
  std::string fresh = path + ".XXXXXX";
  const int file = mkostemp(fresh.data(), O_CLOEXEC);
  bool done = file >= 0 && fchmod(file, mode) == 0;
  for (size_t at = 0; done && at < bytes.size();) {
    const ssize_t written = write(file, bytes.data() + at, bytes.size() - at);
    if (written < 0 && errno == EINTR) continue;
    done = written > 0;
    if (done) at += static_cast<size_t>(written);
  }
  done = done && fsync(file) == 0;
  int error = done ? 0 : errno;
  if (file >= 0 && close(file) != 0 && done) {
    error = errno;
    done = false;
  }
  if (done && rename(fresh.c_str(), path.c_str()) != 0) {
    error = errno;
    done = false;
  }
  if (done) return true;
  if (file >= 0) unlink(fresh.c_str());
  report.problem({"cannot write " + path + ": " + std::strerror(error), "is there room, and the right to?"});
  return false;
}

}  // namespace wlanctl

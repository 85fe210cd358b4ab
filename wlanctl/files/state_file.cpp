#include "wlanctl/files/state_file.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"

namespace wlanctl {
namespace {

bool is_own(int file) {
  struct stat status;
  return fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
         (status.st_mode & 077) == 0;
}

// A pipe in its place must not be waited for.
int open_to_read(const std::string& path) {
  return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
}

std::string owner_of(const std::string& path) {
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) return "its owner";
  const passwd* const user = getpwuid(status.st_uid);
  return user != nullptr ? user->pw_name : "user " + std::to_string(status.st_uid);
}

bool replace_file(const std::string& path, const std::string& bytes) {
  std::string fresh = path + ".XXXXXX";
  const int file = mkostemp(fresh.data(), O_CLOEXEC);
  if (file < 0) return false;
  if (finish_file(file, bytes) && rename(fresh.c_str(), path.c_str()) == 0) {
    finish_folder_of(path);
    return true;
  }
  const int error = errno;
  unlink(fresh.c_str());
  errno = error;
  return false;
}

}  // namespace

void finish_folder_of(const std::string& path) {
  const int folder = open(path.substr(0, path.rfind('/') + 1).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  (void)fsync(folder);
  (void)close(folder);
}

// Against half-written and hand-edited files; a sum (FNV-1a), not a seal.
std::string sum_of(const std::string& text) {
  uint64_t sum = 0xcbf29ce484222325;
  for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return std::to_string(sum);
}

std::string with_head(const std::string& format, int version, const std::string& text) {
  return format + " " + std::to_string(version) + " " + sum_of(text) + "\n" + text;
}

std::optional<std::string> without_head(const std::string& bytes, const std::string& format, int version) {
  const size_t end = bytes.find('\n');
  if (end == std::string::npos) return std::nullopt;
  std::string text = bytes.substr(end + 1);
  if (bytes != with_head(format, version, text)) return std::nullopt;
  return text;
}

bool is_state_file_there(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0;
}

bool is_state_file_damaged(const std::string& path, const std::string& format, int version) {
  struct stat status;
  if (lstat(path.c_str(), &status) != 0 || read_state_file(path, format, version)) return false;
  // The tool makes none, wherever it leads.
  return S_ISLNK(status.st_mode) || access(path.c_str(), R_OK) == 0;
}

std::optional<Unreadable> unreadable_state_file(const std::string& path) {
  const int file = open_to_read(path);
  const int error = errno;
  if (file >= 0) {
    (void)close(file);
    return std::nullopt;
  }
  // A link is none of the tool's, whose files are plain.
  if (error == ENOENT || error == ELOOP) return std::nullopt;
  const bool is_forbidden = error == EACCES || error == EPERM;
  return Unreadable{std::strerror(error), is_forbidden ? owner_of(path) + " can read it" : "mend that, and try again"};
}

bool remove_state_file(const std::string& path) {
  if (unlink(path.c_str()) == 0) {
    finish_folder_of(path);
    return true;
  }
  // A file system that is mounted read-only refuses also what is not there.
  const int error = errno;
  if (error == ENOENT || !is_state_file_there(path)) return true;
  errno = error;
  return false;
}

std::string this_boot() {
  const std::string id = without_line_end(read_bytes("/proc/sys/kernel/random/boot_id").value_or(""));
  return id.empty() ? "-" : id;
}

bool write_own_file(const std::string& path, const std::string& bytes) {
  return replace_file(path, bytes);
}

std::optional<std::string> read_state_file(const std::string& path, const std::string& format, int version) {
  const int file = open_to_read(path);
  if (file < 0) return std::nullopt;
  const std::optional<std::string> bytes = is_own(file) ? read_open_file(file) : std::nullopt;
  close(file);
  return bytes ? without_head(*bytes, format, version) : std::nullopt;
}

bool write_state_file(const std::string& path, const std::string& format, int version, const std::string& text,
                      Report& report) {
  if (replace_file(path, with_head(format, version, text))) return true;
  report.problem({"cannot write " + path + ": " + std::strerror(errno), "is there room, and the right to?"});
  return false;
}

}  // namespace wlanctl

#include "sim/base/file.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

namespace gateway {

void fail(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

UniqueFd& UniqueFd::operator=(UniqueFd&& other) noexcept {
  if (this != &other) {
    reset();
    fd_ = std::exchange(other.fd_, -1);
  }
  return *this;
}

void UniqueFd::reset() {
  if (fd_ >= 0) close(fd_);
  fd_ = -1;
}

UniqueFd open_file(const std::string& path, int flags, unsigned mode) {
  UniqueFd fd(open(path.c_str(), flags | O_CLOEXEC, mode));
  if (!fd) fail("open " + path);
  return fd;
}

void lock_file(int fd, const std::string& path) {
  while (flock(fd, LOCK_EX) != 0) {
    if (errno != EINTR) fail("lock " + path);
  }
}

bool path_exists(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0;
}

bool is_folder(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string read_text(int fd, const std::string& path) {
  std::string text;
  char part[4096];
  for (;;) {
    const ssize_t got = read(fd, part, sizeof part);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) fail("read " + path);
    if (got == 0) return text;
    text.append(part, static_cast<size_t>(got));
  }
}

std::string read_text(const std::string& path) {
  return read_text(open_file(path, O_RDONLY).get(), path);
}

void write_all(int fd, std::string_view text, const std::string& path) {
  while (!text.empty()) {
    const ssize_t put = write(fd, text.data(), text.size());
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) fail("write " + path);
    text.remove_prefix(static_cast<size_t>(put));
  }
}

void write_text(const std::string& path, std::string_view text, unsigned mode) {
  const UniqueFd fd = open_file(path, O_WRONLY | O_CREAT | O_TRUNC, mode);
  // Only a file has a mode of its own to set: a device's belongs to the machine.
  struct stat status;
  if (fstat(fd.get(), &status) == 0 && S_ISREG(status.st_mode)) fchmod(fd.get(), mode);
  write_all(fd.get(), text, path);
}

namespace {

bool is_proc_file(const std::string& path) {
  struct statfs status;
  return statfs(path.c_str(), &status) == 0 && status.f_type == PROC_SUPER_MAGIC;
}

}  // namespace

void swap_in(const std::string& fresh, const std::string& path, std::string_view text) {
  // A driver's door in /proc lets nothing be renamed over it; it takes a text whole when the file is closed.
  if (is_proc_file(path)) return write_all(open_file(path, O_WRONLY | O_TRUNC).get(), text, path);
  write_text(fresh, text, 0644);
  if (rename(fresh.c_str(), path.c_str()) != 0) fail("replace " + path);
}

void make_link(const std::string& target, const std::string& path) {
  if (symlink(target.c_str(), path.c_str()) != 0) fail("link " + path);
}

void make_folder(const std::string& path, unsigned mode) {
  if (mkdir(path.c_str(), mode) == 0) {
    chmod(path.c_str(), mode);
    return;
  }
  if (errno == ENOENT) {
    make_folder(parent_of(path));
    make_folder(path, mode);
    return;
  }
  // A read-only place says so even where the folder is already there.
  const int error = errno;
  struct stat status;
  if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) return;
  errno = error;
  fail("make the folder " + path);
}

std::vector<std::string> names_in(const std::string& folder) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.c_str()), closedir);
  if (!stream) return names;
  while (const dirent* entry = readdir(stream.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  return names;
}

std::string parent_of(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string name_of(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool is_within(const std::string& path, const std::string& folder) {
  if (folder == "/" || path == folder) return true;
  return path.size() > folder.size() && path.compare(0, folder.size(), folder) == 0 && path[folder.size()] == '/';
}

void empty_folder(const std::string& folder, const std::vector<std::string>& kept) {
  struct stat own;
  if (stat(folder.c_str(), &own) != 0) return;
  for (const std::string& name : names_in(folder)) {
    if (std::find(kept.begin(), kept.end(), name) != kept.end()) continue;
    const std::string path = folder + "/" + name;
    struct stat status;
    if (lstat(path.c_str(), &status) != 0 || status.st_dev != own.st_dev) continue;
    if (S_ISDIR(status.st_mode)) {
      empty_folder(path);
      rmdir(path.c_str());
    } else {
      unlink(path.c_str());
    }
  }
}

}  // namespace gateway

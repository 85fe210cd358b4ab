#include "wlanctl/library/file_redirect.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "wlanctl/files/bytes.h"
#include "wlanctl/library/band_variables.h"

namespace wlanctl {
namespace {

// Null before main and whenever nothing is redirected: the loader's own libraries open files through here too.
constinit const std::map<std::string, std::string>* g_paths = nullptr;

const char* led(const char* path) {
  if (g_paths == nullptr || path == nullptr) return path;
  const auto found = g_paths->find(path);
  return found == g_paths->end() ? path : found->second.c_str();
}

// As fopen takes them; -1 of a mode that is none.
int flags_of(const char* mode) {
  const bool is_updated = std::strchr(mode, '+') != nullptr;
  int flags = is_updated ? O_RDWR : *mode == 'r' ? O_RDONLY : O_WRONLY;
  switch (*mode) {
    case 'r':
      break;
    case 'w':
      flags |= O_CREAT | O_TRUNC;
      break;
    case 'a':
      flags |= O_CREAT | O_APPEND;
      break;
    default:
      return -1;
  }
  if (std::strchr(mode, 'x') != nullptr) flags |= O_EXCL;
  if (std::strchr(mode, 'e') != nullptr) flags |= O_CLOEXEC;
  return flags;
}

// A pipe in the place of a file would be waited for, by a library that cannot know better.
std::FILE* open_without_waiting(const char* path, const char* mode) {
  constexpr mode_t kForAll = 0666;
  const int flags = flags_of(mode);
  const int file = flags < 0 ? -1 : open(path, flags | O_NONBLOCK | O_NOCTTY, kForAll);
  if (flags < 0) errno = EINVAL;
  if (file < 0) return nullptr;
  struct stat status = {};
  if (fstat(file, &status) != 0 || S_ISFIFO(status.st_mode) || fcntl(file, F_SETFL, flags & (O_APPEND | O_RDWR)) != 0) {
    close(file);
    errno = EINVAL;
    return nullptr;
  }
  std::FILE* const stream = fdopen(file, mode);
  if (stream == nullptr) close(file);
  return stream;
}

}  // namespace

MemoryFile::MemoryFile(const std::string& text) : file_(memfd_create("wlanctl", MFD_CLOEXEC)) {
  (void)write_bytes(file_, text);
}

MemoryFile::~MemoryFile() {
  if (file_ >= 0) close(file_);
}

std::string MemoryFile::path() const {
  return "/proc/self/fd/" + std::to_string(file_);
}

std::string MemoryFile::text() const {
  struct stat status;
  if (fstat(file_, &status) != 0) return "";
  std::string text(static_cast<size_t>(status.st_size), '\0');
  const ssize_t got = pread(file_, text.data(), text.size(), 0);
  text.resize(got > 0 ? static_cast<size_t>(got) : 0);
  return text;
}

FileRedirect::FileRedirect(const std::map<std::string, const MemoryFile*>& files) {
  for (const auto& [path, file] : files) paths_[path] = file->path();
  g_paths = &paths_;
}

FileRedirect::~FileRedirect() {
  g_paths = nullptr;
}

DatRedirect::DatRedirect(Band band, const MemoryFile& file) : band_(band), before_(dat_path_variable(band)) {
  (void)std::snprintf(dat_path_variable(band), WIFIMGR_DAT_PATH_SIZE, "%s", file.path().c_str());
}

DatRedirect::~DatRedirect() {
  (void)std::snprintf(dat_path_variable(band_), WIFIMGR_DAT_PATH_SIZE, "%s", before_.c_str());
}

}  // namespace wlanctl

extern "C" std::FILE* fopen(const char* path, const char* mode) {
  return wlanctl::open_without_waiting(wlanctl::led(path), mode);
}

extern "C" int chmod(const char* path, mode_t mode) noexcept {
  using Change = int (*)(const char*, mode_t);
  static const auto real = reinterpret_cast<Change>(dlsym(RTLD_NEXT, "chmod"));
  return real(wlanctl::led(path), mode);
}

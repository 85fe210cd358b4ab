#include "wlanctl/library/file_redirect.h"

#include <dlfcn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

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
  using Open = std::FILE* (*)(const char*, const char*);
  static const auto real = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "fopen"));
  return real(wlanctl::led(path), mode);
}

extern "C" int chmod(const char* path, mode_t mode) noexcept {
  using Change = int (*)(const char*, mode_t);
  static const auto real = reinterpret_cast<Change>(dlsym(RTLD_NEXT, "chmod"));
  return real(wlanctl::led(path), mode);
}

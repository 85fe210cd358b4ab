#include "wlanctl/library/output.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <vector>

#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

constexpr int kStreams[] = {STDOUT_FILENO, STDERR_FILENO};
constexpr size_t kMostShown = 4096;

// The library prints through stdio: what it has buffered must not come out after the streams are back.
void flush_all() {
  (void)std::fflush(stdout);
}

std::string start_of(int file) {
  std::string text(kMostShown, '\0');
  const ssize_t length = pread(file, text.data(), text.size(), 0);
  text.resize(length > 0 ? static_cast<size_t>(length) : 0);
  return text;
}

}  // namespace

std::string joined_lines(const std::string& text) {
  std::vector<std::string> said;
  for (const std::string& line : lines_of(text)) {
    if (line.find_first_not_of(" \t\r") != std::string::npos) said.push_back(line);
  }
  return joined(said, "; ");
}

// In memory: a pipe would block a program that prints more than it holds.
CaughtOutput::CaughtOutput() : file_(memfd_create("wlanctl-output", MFD_CLOEXEC)) {
  flush_all();
  if (file_ < 0) file_ = open("/dev/null", O_RDWR | O_CLOEXEC);
  if (file_ < 0) return;
  for (int i = 0; i < 2; ++i) {
    saved_[i] = fcntl(kStreams[i], F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    (void)dup2(file_, kStreams[i]);
  }
}

CaughtOutput::~CaughtOutput() {
  give_back();
}

std::string CaughtOutput::end() {
  if (file_ < 0) return "";
  flush_all();
  const std::string text = start_of(file_);
  give_back();
  return joined_lines(text);
}

void CaughtOutput::give_back() {
  if (file_ < 0) return;
  flush_all();
  for (int i = 0; i < 2; ++i) {
    // A stream that was closed before is closed again.
    if (saved_[i] < 0) {
      (void)close(kStreams[i]);
      continue;
    }
    (void)dup2(saved_[i], kStreams[i]);
    (void)close(saved_[i]);
  }
  (void)close(file_);
  file_ = -1;
}

}  // namespace wlanctl

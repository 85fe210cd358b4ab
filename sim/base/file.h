// Files, folders and descriptors, with errors that name the path.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gateway {

// Throws std::system_error for the current errno; `what` says what could not be done, and to which path.
[[noreturn]] void fail(const std::string& what);

// Sole owner of a file descriptor.
class UniqueFd {
 public:
  UniqueFd() = default;
  explicit UniqueFd(int fd) : fd_(fd) {}
  UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept;
  UniqueFd(const UniqueFd&) = delete;
  UniqueFd& operator=(const UniqueFd&) = delete;
  ~UniqueFd() { reset(); }

  int get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }
  void reset();

 private:
  int fd_ = -1;
};

// Opens close-on-exec; throws when it cannot.
UniqueFd open_file(const std::string& path, int flags, unsigned mode = 0644);

// Waits until nobody else holds the file's lock, and takes it until the file is closed.
void lock_file(int fd, const std::string& path);

bool path_exists(const std::string& path);
bool is_folder(const std::string& path);

std::string read_text(const std::string& path);
std::string read_text(int fd, const std::string& path);

// Replaces the file's content. The mode holds whatever the umask is.
void write_text(const std::string& path, std::string_view text, unsigned mode = 0644);

// Writes `fresh` and gives it the place of `path`: whoever reads finds one content or the other, whole.
void swap_in(const std::string& fresh, const std::string& path, std::string_view text);

void write_all(int fd, std::string_view text, const std::string& path);
void make_link(const std::string& target, const std::string& path);

// Makes the folder and those above it, as far as they are missing.
void make_folder(const std::string& path, unsigned mode = 0755);

// Names in a folder, "." and ".." left out; empty when it cannot be read.
std::vector<std::string> names_in(const std::string& folder);

std::string parent_of(const std::string& path);
std::string name_of(const std::string& path);

// Whether `path` is `folder` or lies somewhere in it.
bool is_within(const std::string& path, const std::string& folder);

// Removes what is in `folder`, keeping the folder and the entries named in `kept`. Whatever lies on another file system
// is left alone, so that a folder bound in from outside keeps its content.
void empty_folder(const std::string& folder, const std::vector<std::string>& kept = {});

}  // namespace gateway

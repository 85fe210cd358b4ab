// The owner of a stdio stream.
#pragma once

#include <cstdio>

namespace store {

class Stream {
 public:
  explicit Stream(std::FILE* file) : file_(file) {}
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() {
    if (file_ != nullptr) (void)std::fclose(file_);
  }

  explicit operator bool() const { return file_ != nullptr; }
  std::FILE* get() const { return file_; }

  // For writers, to whom it matters whether the file holds all that was written; false when any of it was lost.
  [[nodiscard]] bool close() {
    std::FILE* const file = file_;
    file_ = nullptr;
    const bool failed = std::ferror(file) != 0;
    return std::fclose(file) == 0 && !failed;
  }

 private:
  std::FILE* file_;
};

// For a file that was written in part.
inline void empty_file(const char* path) {
  const Stream file(std::fopen(path, "we"));
}

}  // namespace store

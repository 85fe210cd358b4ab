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

  // For writers, to whom the result of closing matters.
  [[nodiscard]] bool close() {
    std::FILE* const file = file_;
    file_ = nullptr;
    return std::fclose(file) == 0;
  }

 private:
  std::FILE* file_;
};

}  // namespace store

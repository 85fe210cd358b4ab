// Wakes who waits when a file in one of some folders was written, came or went. Nobody has to rely on it: there are file
// systems, and kernels, that tell nothing.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace wlanctl {

class FolderNotice {
 public:
  explicit FolderNotice(const std::vector<std::string>& folders);
  FolderNotice(const FolderNotice&) = delete;
  FolderNotice& operator=(const FolderNotice&) = delete;
  ~FolderNotice();

  // Readable when there is something to take; -1 where there is nothing to wait for.
  int file() const { return file_; }

  // The names of the files since the last call, without their folders.
  std::set<std::string> take() const;

 private:
  int file_;
};

}  // namespace wlanctl

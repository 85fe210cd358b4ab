#include "wlanctl/files/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "wlanctl/files/bytes.h"
#include "wlanctl/files/plain_file.h"
#include "wlanctl/files/state_file.h"

namespace wlanctl {
namespace {

bool is_replaceable(const std::string& path, struct stat* status) {
  return lstat(path.c_str(), status) == 0 && S_ISREG(status->st_mode) && status->st_nlink == 1 &&
         access(path.c_str(), W_OK) == 0;
}

bool is_replaced(const std::string& path, const std::string& bytes) {
  struct stat status = {};
  if (!is_replaceable(path, &status)) return false;
  const std::string next = path + ".wlanctl-new";
  (void)unlink(next.c_str());
  const int file = open(next.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (file < 0) return false;
  const bool is_alike = fchown(file, status.st_uid, status.st_gid) == 0 && fchmod(file, status.st_mode & 07777U) == 0;
  if (finish_file(file, bytes) && is_alike && rename(next.c_str(), path.c_str()) == 0) {
    finish_folder_of(path);
    return true;
  }
  (void)unlink(next.c_str());
  return false;
}

}  // namespace

bool write_whole_file(const std::string& path, const std::string& bytes) {
  if (is_replaced(path, bytes)) return true;
  const int file = open_plain_file(path, O_WRONLY | O_CREAT | O_TRUNC, 0644);
  return file >= 0 && finish_file(file, bytes);
}

}  // namespace wlanctl

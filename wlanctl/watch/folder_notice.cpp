#include "wlanctl/watch/folder_notice.h"

#include <sys/inotify.h>
#include <unistd.h>

namespace wlanctl {

FolderNotice::FolderNotice(const std::vector<std::string>& folders) : file_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  constexpr uint32_t kDone = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE;
  for (const std::string& folder : folders) {
    if (file_ >= 0) (void)inotify_add_watch(file_, folder.c_str(), kDone | IN_ONLYDIR);
  }
}

FolderNotice::~FolderNotice() {
  if (file_ >= 0) (void)close(file_);
}

bool FolderNotice::take() const {
  alignas(inotify_event) char bytes[4096];
  bool any = false;
  while (file_ >= 0 && read(file_, bytes, sizeof bytes) > 0) any = true;
  return any;
}

}  // namespace wlanctl

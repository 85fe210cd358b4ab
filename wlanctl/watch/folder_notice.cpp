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

std::set<std::string> FolderNotice::take() const {
  alignas(inotify_event) char bytes[4096];
  std::set<std::string> names;
  ssize_t length = 0;
  while (file_ >= 0 && (length = read(file_, bytes, sizeof bytes)) > 0) {
    for (size_t at = 0; at + sizeof(inotify_event) <= static_cast<size_t>(length);) {
      const auto* const event = reinterpret_cast<const inotify_event*>(bytes + at);
      if (event->len > 0) names.insert(event->name);
      at += sizeof *event + event->len;
    }
  }
  return names;
}

}  // namespace wlanctl

#include "wlanctl/files/lasting_folder.h"

#include <cstdlib>

namespace wlanctl {

std::string lasting_folder() {
  const char* const chosen = std::getenv(kFolderVariable);
  return chosen == nullptr ? WLANCTL_FOLDER : chosen;
}

}  // namespace wlanctl

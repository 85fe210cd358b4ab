// The folder for what must outlive a boot.
#pragma once

#include <string>

namespace wlanctl {

inline constexpr char kFolderVariable[] = "WLANCTL_FOLDER";

// As that variable names it, else as the tool was built; "" for nowhere.
std::string lasting_folder();

}  // namespace wlanctl

// The machine's own folders that stay real inside the simulation: what is written there persists.
#pragma once

#include <string>
#include <vector>

namespace gateway {

// Where the program's parts are, next to the program itself.
struct Installation {
  // The folder of gateway-sim itself.
  std::string programs;
  std::string tools;
  std::string driver_library;
  // The dat files to start with.
  std::string dat_2_4g;
  std::string dat_5g;
  // The build tree and the checkout it was made from; empty when the program is installed.
  std::string build_tree;
  std::string checkout;
};

// Throws when a part is missing.
Installation find_installation();

// The current directory and the build tree, and the checkout where it would be out of reach otherwise. Folders that the
// gateway needs for itself, such as /etc, never stay real.
std::vector<std::string> real_folders(const Installation& installation, const std::string& current);

}  // namespace gateway

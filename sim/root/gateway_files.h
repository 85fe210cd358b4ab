// Files that the gateway has and the machine has not, or has otherwise.
#pragma once

#include <string>
#include <vector>

#include "sim/radio/chip.h"
#include "sim/root/real_paths.h"

namespace gateway {

struct PlannedFile {
  std::string path;
  std::string text;
  unsigned mode = 0644;
  // Set for a symbolic link.
  std::string target;
};

// Reads everything from the machine; paths have no symbolic link above their last name. Throws when the machine lacks a
// tool that the gateway borrows.
std::vector<PlannedFile> plan_gateway_files(const Chips& chips, const Installation& installation);

// Writes a planned file below the folder `root`, which stands for "/".
void place_file(const PlannedFile& file, const std::string& root);

}  // namespace gateway

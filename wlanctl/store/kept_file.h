// The dat file as it was before somebody overwrites what it alone has, beside the tool's state.
#pragma once

#include <string>

#include "wlanctl/base/band.h"

namespace wlanctl {

std::string kept_path_of(Band band);

// Takes the place of what was kept before. False with errno when it cannot be kept.
bool keep_dat_bytes(Band band, const std::string& bytes);

}  // namespace wlanctl

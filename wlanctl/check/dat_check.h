// What is wrong with a dat file: what the loader would take otherwise than it is written, what a save would lose, and
// what the library's setters would refuse. Touches nothing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/check/finding.h"

namespace wlanctl {

// In the order of the lines. A value counts as good when one of the bands takes it.
std::vector<DatFinding> check_dat(const std::string& bytes, const std::vector<Band>& bands);

// The band whose folder of dat files the file stands in, wherever it is named from; none for other folders. A file that
// is named after 5G's folder is 5G's.
std::optional<Band> band_of_dat_path(const std::string& path);

}  // namespace wlanctl

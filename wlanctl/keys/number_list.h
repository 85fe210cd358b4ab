// The numbers that a rule allows, as its words list them: "0; 2.4g 1 to 14; 5g 36 to 64, 149 to 177 in steps of 4".
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

// Of the band, in order; none where the words are no such list.
std::vector<long> numbers_in(const std::string& words, Band band);

// The part that is about the band alone, "1 to 14"; "" where there is none.
std::string part_about(const std::string& words, Band band);

}  // namespace wlanctl

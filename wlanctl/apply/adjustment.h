// Values that an apply changes by itself, so that they agree with others.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/keys/assignment.h"

namespace wlanctl {

struct Adjustment {
  Target target;
  std::string from;
  std::string to;

  bool operator==(const Adjustment& other) const = default;

  // "an apply will make it 1", masked where it is a secret.
  std::string words() const;
};

// Of the store that the library works on, asked of the library on a private copy. None where its SSID count makes no
// sense.
std::vector<Adjustment> adjustments_of(Band band);

}  // namespace wlanctl

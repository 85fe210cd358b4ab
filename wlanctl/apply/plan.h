// What an apply of a band would come to, found out on private copies.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

// A value that a shell would act on when the driver's script is run.
struct Danger {
  std::string key;  // "SSID:1"
  std::string reason;
};

struct Plan {
  bool nothing = false;  // the store, the dat file and what is in force agree, and the driver knows
  bool is_file_in_force = true;
  int weight = 0;  // with dependent settings made consistent, as an apply does
  std::vector<Danger> dangers;
};

// The band's store must be open, and restore_applied comes first.
Plan plan_apply(Band band);

}  // namespace wlanctl

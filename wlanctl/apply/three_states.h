// What the store holds, what the dat file holds, and what is in force: whether the three agree.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

struct ThreeStates {
  bool has_store = true;
  // What of that which was last applied is not in force, and whether the driver took all of it.
  std::vector<Lack> lacks;
  bool is_told = true;
  // In how many values two of them differ; none where one of the two is not there or not known.
  std::optional<size_t> store_from_file;
  std::optional<size_t> store_from_in_force;
  std::optional<size_t> file_from_in_force;

  bool is_lacking() const { return !lacks.empty() || !is_told; }

  // None where that is not known.
  std::optional<bool> agree() const;

  // On one line of a terminal.
  std::string line() const;
};

// The band's store must be open, be it that of a look. Changes nothing.
ThreeStates three_states_of(Band band);

}  // namespace wlanctl

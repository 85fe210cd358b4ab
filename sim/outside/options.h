// The command line of gateway-sim.
#pragma once

#include <string>
#include <vector>

#include "sim/radio/chip.h"

namespace gateway {

// Exit codes besides the command's own.
inline constexpr int kUsageError = 2;
inline constexpr int kRefused = 125;
inline constexpr int kNotRunnable = 126;
inline constexpr int kNotFound = 127;

struct Options {
  Chips chips;
  std::string dat_2_4g;
  std::string dat_5g;
  std::string journal;
  bool shell = false;
  bool verbose = false;
  std::vector<std::string> command;
};

// Prints help or the version and ends the program when asked to, and ends it with kUsageError for what it does not
// understand.
Options parse_options(int argc, char** argv);

}  // namespace gateway

// The terminal that an apply was started at, for a line to who may still sit there, as a shutdown writes one.
#pragma once

#include <sys/stat.h>

#include <string>

namespace wlanctl {

class ApplyTerminal {
 public:
  // This process's; none where it has none.
  ApplyTerminal();

  // Writes the line if the terminal is the same one still, and nobody else's: never waits for it, and never becomes its
  // process.
  void tell(const std::string& line) const;

 private:
  std::string path_;
  struct stat status_ = {};
};

}  // namespace wlanctl

// What the library and the programs that it runs print. It belongs to no document of the tool: it is caught, and tells
// why something failed.
#pragma once

#include <string>

namespace wlanctl {

// The lines of a text that are not blank, on one line.
std::string joined_lines(const std::string& text);

// Catches standard output and standard error while it lives.
class CaughtOutput {
 public:
  CaughtOutput();
  CaughtOutput(const CaughtOutput&) = delete;
  CaughtOutput& operator=(const CaughtOutput&) = delete;
  ~CaughtOutput();

  // Ends the catching and returns what was printed, its lines joined by "; ".
  std::string end();

 private:
  void give_back();

  int file_;
  int saved_[2] = {-1, -1};
};

}  // namespace wlanctl

// The record of the commands that the gateway's software ran, and of what each of them changed.
#pragma once

#include <string>
#include <vector>

#include "sim/base/file.h"

namespace gateway {

// A command line as a shell would take it: words that hold anything special are quoted.
std::string command_line(const std::vector<std::string>& words);

// The text as it is; spelt out in $'' where control characters would break the journal's lines and columns.
std::string on_one_line(const std::string& text);

// Appends one line in one write: time stamp, command line, changes ("-" when there are none), separated by tabs.
void record_call(const std::vector<std::string>& words, const std::vector<std::string>& changes);

// Holds the simulation's state still while a tool reads, changes and records it; other tools wait.
class StateLock {
 public:
  StateLock();

 private:
  UniqueFd file_;
};

}  // namespace gateway

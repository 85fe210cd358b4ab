// Calls of the gateway's commands that are to go wrong.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace gateway {

// What a call does after it has printed its text and waited its time.
enum class FaultEnding { kWorks, kHangs, kExits, kDies };

struct ToolFault {
  std::string tool;
  std::vector<std::string> words;  // only calls that have them all, such as "ra0" and "up"
  int skipped = 0;                 // calls that still work before it
  int count = -1;                  // -1: from then on
  long delay_ms = 0;
  FaultEnding ending = FaultEnding::kWorks;
  int number = 0;    // the exit status or the signal
  std::string text;  // for standard error, without its line end
};

std::vector<ToolFault> load_tool_faults();

// Changes them while no call uses one up.
void change_tool_faults(const std::function<void(std::vector<ToolFault>* faults)>& change);

// The fault that this call meets, which it uses up. The first word is the command's name.
std::optional<ToolFault> take_tool_fault(const std::vector<std::string>& words);

}  // namespace gateway

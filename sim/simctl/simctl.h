// simctl: the simulated gateway's controls. Each group of commands has a file of its own.
#pragma once

#include <stdexcept>
#include <string>

#include "sim/driver/lists.h"
#include "sim/state/tool_faults.h"
#include "sim/tools/tool.h"

namespace gateway::tools::simctl {

// The words make no sense.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// They do, but the gateway cannot have that.
struct Refusal : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A command gets the words after its own name, and returns what it changed, for the journal.
using Changes = Words;

Changes show(const Words& words);

Changes channel(const Words& words);
Changes noise(const Words& words);
Changes load(const Words& words);
Changes temperature(const Words& words);
Changes wps(const Words& words);

Changes station(const Words& words);
Changes neighbour(const Words& words);
Changes process(const Words& words);

Changes press(const Words& words);
Changes calibration(const Words& words);
Changes chip_id(const Words& words);

Changes faults(const Words& words);
Changes fail_requests(const Words& words);
Changes fail_tool(const Words& words);

// The names that requests go by, on lines of their own, and what a fault does.
std::string request_names();
std::string fault_text(const Fault& fault);
std::string fault_text(const ToolFault& fault);

Changes power_cut(const Words& words);
Changes reset(const Words& words);

}  // namespace gateway::tools::simctl

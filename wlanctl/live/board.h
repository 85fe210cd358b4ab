// What the gateway's board says at this moment, beside its radios.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/report.h"

namespace wlanctl {

struct Process {
  std::string name;
  unsigned id;
  bool is_running;
};

struct Board {
  std::optional<std::string> bridge_address;
  std::optional<int> chip_package;
  std::optional<std::vector<Process>> processes;  // of the WLAN service and its driver
};
Board board_of(Report& report);
Json json_of(const Board& board);

}  // namespace wlanctl

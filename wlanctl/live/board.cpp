#include "wlanctl/live/board.h"

#include <climits>
#include <cstring>

#include "wifimgr_lib.h"
#include "wlanctl/library/query.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {
namespace {

std::vector<Process> listed(const wifimgr_process_info& info) {
  std::vector<Process> processes;
  for (const wifimgr_process& process : info.process) {
    const std::string name(process.name, strnlen(process.name, sizeof process.name));
    if (!name.empty()) processes.push_back({name, process.pid, process.running != 0});
  }
  return processes;
}

}  // namespace

Board board_of(Report& report) {
  Board board;
  const Asked bridge = {"the bridge br0", {{"interface", "br0"}}, "is there a br0? brctl show tells"};
  board.bridge_address = hardware_address_of("br0", bridge, report);
  // Nothing scanned leaves the value as it was.
  constexpr int kUntold = INT_MIN;
  int package = kUntold;
  const Asked chip = {"the board", Json::object(), "is this the gateway?"};
  if (ask(report, chip, "its chip's package",
          [&] { return wifimgr_lib_get_CHIP_ID(&package) == 0 && package != kUntold; })) {
    board.chip_package = package;
  }
  // The driver answers for its processes on the 5G radio only.
  const std::string interface = interface_of(Band::k5G, 0);
  wifimgr_process_info info = {};
  if (link_state(interface) != LinkState::kAbsent &&
      ask_driver(report, Band::k5G, interface, "the driver's processes",
                 [&] { return wifimgr_lib_get_wifi_process_info(&info) == 0; })) {
    board.processes = listed(info);
  }
  return board;
}

Json json_of(const Board& board) {
  Json processes;
  if (board.processes) {
    processes = Json::array();
    for (const Process& process : *board.processes) {
      processes.push_back({{"name", process.name}, {"pid", process.id}, {"running", process.is_running}});
    }
  }
  return {{"bridge_address", json_or_null(board.bridge_address)},
          {"chip_package", json_or_null(board.chip_package)},
          {"processes", std::move(processes)}};
}

}  // namespace wlanctl

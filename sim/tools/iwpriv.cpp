// iwpriv: the private commands of the WLAN driver.
#include <net/if.h>
// Goes without its own names for what the header above has.
#include <linux/wireless.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <stdexcept>

#include "sim/base/band.h"
#include "sim/base/file.h"
#include "sim/records/journal.h"
#include "sim/state/association.h"
#include "sim/state/driver_lists.h"
#include "sim/state/driver_state.h"
#include "sim/state/neighbourhood.h"
#include "sim/state/wps_session.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

int complain(const Words& words, const std::string& interface, const char* reason) {
  std::fprintf(stderr, "%s: %s\n", interface.c_str(), reason);
  record_call(words, {});
  return 1;
}

int set(const Words& words, const std::string& interface, Band band) {
  const size_t equals = words[3].find('=');
  const std::string key = words[3].substr(0, equals);
  const std::string value = equals == std::string::npos ? "" : words[3].substr(equals + 1);
  try {
    check_wps(key, value);
    Words changes = change_setting(interface, key, value);
    const bool is_left = !changes.empty() && is_joined_by(key);
    for (const Words& more : {carry_out_wps(interface, key, value), is_left ? stations_leave(interface) : Words()}) {
      changes.insert(changes.end(), more.begin(), more.end());
    }
    if (key == "PartialScan" && value == "1") {
      changes.push_back(std::string(traits(band).label) + " radio: heard " + std::to_string(scan(band)) +
                        " neighbours");
    }
    record_call(words, changes);
    return 0;
  } catch (const std::invalid_argument& refusal) {
    return complain(words, interface, refusal.what());
  }
}

int show(const Words& words, const std::string& interface) {
  for (const auto& [key, value] : load_settings(interface).value_or(DriverSettings())) {
    std::printf("%s=%s\n", key.c_str(), value.c_str());
  }
  for (const auto& [kind, bytes] : kept_payloads(interface)) std::printf("%s=%s\n", kind.c_str(), bytes.c_str());
  record_call(words, {});
  return 0;
}

int survey(const Words& words, const std::string& interface, Band band) {
  std::fputs(site_survey(band, interface).c_str(), stdout);
  record_call(words, {});
  return 0;
}

// Asks the driver like any other program.
int stat(const Words& words, const std::string& interface) {
  struct {
    uint32_t stations;
    int32_t noise;
    uint64_t counter[6];
  } reply = {};
  iwreq request = {};
  interface.copy(request.ifr_name, sizeof request.ifr_name - 1);
  request.u.data.pointer = &reply;
  request.u.data.length = sizeof reply;
  const UniqueFd socket(::socket(AF_INET, SOCK_DGRAM, 0));
  if (!socket || ioctl(socket.get(), SIOCIWFIRSTPRIV + 9, &request) < 0) {
    return complain(words, interface, std::strerror(errno));
  }
  std::printf("Stations        = %u\nNoise           = %d dBm\n", reply.stations, reply.noise);
  const char* const kNames[] = {"Tx packets", "Rx packets", "Tx bytes", "Rx bytes", "Tx errors", "Rx errors"};
  for (size_t i = 0; i < std::size(kNames); ++i) {
    std::printf("%-16s= %llu\n", kNames[i], static_cast<unsigned long long>(reply.counter[i]));
  }
  record_call(words, {});
  return 0;
}

}  // namespace

int iwpriv(const Words& words) {
  const StateLock lock;
  if (words.size() < 3) {
    std::fprintf(stderr,
                 "usage: iwpriv INTERFACE set KEY=VALUE\n"
                 "       iwpriv INTERFACE show|stat|get_site_survey\n");
    record_call(words, {});
    return 2;
  }
  const std::string& interface = words[1];
  const std::string& command = words[2];
  if (if_nametoindex(interface.c_str()) == 0) return complain(words, interface, "no such device");
  const std::optional<Band> band = band_of(interface);
  if (!band || !load_settings(interface)) return complain(words, interface, "no private ioctls");
  if (command == "set" && words.size() == 4) return set(words, interface, *band);
  if (command == "show" && words.size() == 3) return show(words, interface);
  if (command == "stat" && words.size() == 3) return stat(words, interface);
  if (command == "get_site_survey" && words.size() == 3) return survey(words, interface, *band);
  return complain(words, interface, ("invalid command " + command).c_str());
}

}  // namespace gateway::tools

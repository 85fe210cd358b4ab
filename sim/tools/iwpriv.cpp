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
#include "sim/network/network_state.h"
#include "sim/records/journal.h"
#include "sim/state/association.h"
#include "sim/state/driver_lists.h"
#include "sim/state/driver_state.h"
#include "sim/state/neighbourhood.h"
#include "sim/state/wps_session.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

constexpr int kFailed = 255;

struct Command {
  const char* name;
  unsigned long request;
  const char* sets;
  const char* gets;
};

// As the driver describes its commands to the kernel. An even number needs the permission to administer the network.
constexpr Command kSet = {"set", SIOCIWFIRSTPRIV + 2, "1024 char ", "  0      "};
constexpr Command kStat = {"stat", SIOCIWFIRSTPRIV + 9, "  0      ", " 56 byte "};
constexpr Command kSurvey = {"get_site_survey", SIOCIWFIRSTPRIV + 13, "  0      ", "2047 char "};
constexpr Command kShow = {"show", SIOCIWFIRSTPRIV + 17, "  0      ", "2047 char "};

int no_commands(const Words& words, const std::string& interface) {
  std::fprintf(stderr, "%-8.16s  no private ioctls.\n\n", interface.c_str());
  record_call(words, {});
  return kFailed;
}

int complain(const Words& words, const Command& command, const char* reason) {
  std::fprintf(stderr, "Interface doesn't accept private ioctl...\n%s (%lX): %s\n", command.name, command.request,
               reason);
  record_call(words, {});
  return kFailed;
}

// The request itself, as any program makes it; the errno, or 0.
int send(const Command& command, const std::string& interface, void* data, uint16_t size) {
  iwreq request = {};
  interface.copy(request.ifr_name, sizeof request.ifr_name - 1);
  request.u.data.pointer = data;
  request.u.data.length = size;
  const UniqueFd socket(::socket(AF_INET, SOCK_DGRAM, 0));
  return socket && ioctl(socket.get(), command.request, &request) >= 0 ? 0 : errno;
}

void list_commands(const std::string& interface) {
  std::printf("%-8.16s  Available private ioctls :\n", interface.c_str());
  for (const Command& each : {kSet, kStat, kSurvey, kShow}) {
    std::printf("          %-16.16s (%lX) : set %s & get %s\n", each.name, each.request, each.sets, each.gets);
  }
  std::printf("\n");
}

bool has_commands(const std::string& interface) {
  return if_nametoindex(interface.c_str()) != 0 && band_of(interface) && load_settings(interface);
}

// Without a word, those of every interface.
int list_all(const Words& words) {
  for (const auto& entry : read_network_state()) {
    if (has_commands(entry.first)) {
      list_commands(entry.first);
    } else {
      std::fprintf(stderr, "%-8.16s  no private ioctls.\n\n", entry.first.c_str());
    }
  }
  record_call(words, {});
  return 0;
}

int set(const Words& words, const std::string& interface, Band band) {
  // The driver takes it from here, not through its request: what it refuses before is refused here as well.
  const int error = send(kSet, interface, nullptr, 0);
  if (error != 0 && error != EOPNOTSUPP && error != ENOTTY) return complain(words, kSet, std::strerror(error));
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
    return complain(words, kSet, refusal.what());
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
  const int error = send(kStat, interface, &reply, sizeof reply);
  if (error != 0) return complain(words, kStat, std::strerror(error));
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
  if (words.size() < 2) return list_all(words);
  const std::string& interface = words[1];
  if (!has_commands(interface)) return no_commands(words, interface);
  if (words.size() == 2) {
    list_commands(interface);
    record_call(words, {});
    return 0;
  }
  const std::string& command = words[2];
  if (command == kSet.name) {
    return words.size() == 4 ? set(words, interface, band_of(interface).value())
                             : complain(words, kSet, std::strerror(EINVAL));
  }
  if (command == kShow.name) return show(words, interface);
  if (command == kStat.name) return stat(words, interface);
  if (command == kSurvey.name) return survey(words, interface, band_of(interface).value());
  std::fprintf(stderr, "Invalid command : %s\n", command.c_str());
  record_call(words, {});
  return kFailed;
}

}  // namespace gateway::tools

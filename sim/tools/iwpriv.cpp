// iwpriv: the private commands of the WLAN driver.
#include <net/if.h>

#include <cstdio>
#include <cstdlib>

#include "sim/band.h"
#include "sim/driver_state.h"
#include "sim/file.h"
#include "sim/journal.h"
#include "sim/places.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

constexpr int kMostChannel = 196;

int complain(const Words& words, const std::string& interface, const char* reason) {
  std::fprintf(stderr, "%s: %s\n", interface.c_str(), reason);
  record_call(words, {});
  return 1;
}

// The value that the driver keeps, which for a channel is where the radio goes; false when it refuses.
bool accept(Band band, const std::string& key, std::string* value) {
  if (key.empty() || key.find('\n') != std::string::npos) return false;
  if (key != "Channel") return true;
  char* end = nullptr;
  const long channel = std::strtol(value->c_str(), &end, 10);
  if (value->empty() || *end != '\0' || channel < 0 || channel > kMostChannel) return false;
  *value = std::to_string(channel_for(band, static_cast<int>(channel)));
  return true;
}

void change(const std::string& interface, const std::string& key, const std::string& value) {
  DriverSettings settings = load_settings(interface).value_or(DriverSettings());
  settings[key] = value;
  store_settings(interface, settings);
}

int set(const Words& words, const std::string& interface, Band band) {
  const size_t equals = words[3].find('=');
  const std::string key = words[3].substr(0, equals);
  std::string value = equals == std::string::npos ? "" : words[3].substr(equals + 1);
  if (!accept(band, key, &value)) return complain(words, interface, "invalid argument");

  const DriverSettings before = load_settings(interface).value_or(DriverSettings());
  const auto old = before.find(key);
  const bool changed = old == before.end() || old->second != value;
  std::string owner = interface;
  if (is_radio_wide(key)) {
    owner = std::string(traits(band).label) + " radio";
    for (const std::string& name : names_in(place::kDriver)) {
      if (band_of(name) == band) change(name, key, value);
    }
  } else {
    change(interface, key, value);
  }
  const auto shown = [](const std::string& text) { return text.empty() ? std::string("empty") : on_one_line(text); };
  const std::string was = old == before.end() ? "none" : shown(old->second);
  record_call(words, changed ? Words{owner + ": " + key + " " + was + " -> " + shown(value)} : Words{});
  return 0;
}

int show(const Words& words, const std::string& interface) {
  for (const auto& [key, value] : load_settings(interface).value_or(DriverSettings())) {
    std::printf("%s=%s\n", key.c_str(), value.c_str());
  }
  record_call(words, {});
  return 0;
}

}  // namespace

int iwpriv(const Words& words) {
  const StateLock lock;
  if (words.size() < 3) {
    std::fprintf(stderr, "usage: iwpriv INTERFACE set KEY=VALUE\n       iwpriv INTERFACE show\n");
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
  return complain(words, interface, ("invalid command " + command).c_str());
}

}  // namespace gateway::tools

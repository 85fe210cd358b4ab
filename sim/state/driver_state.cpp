#include "sim/state/driver_state.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/records/journal.h"

namespace gateway {
namespace {

// Settings of the radio that the driver takes from the dat file. The channel is treated apart.
constexpr const char* kRadioKeys[] = {"WirelessMode", "TxPower",    "CountryRegion", "CountryRegionABand",
                                      "BeaconPeriod", "DtimPeriod", "HT_BW",         "VHT_BW"};

// What the radio reports, whatever the dat file says.
constexpr const char* kReportKeys[] = {"Noise", "ChannelLoad", "Temperature", "WpsStatus", "WpsStation"};

constexpr const char* kChannel = "Channel";
constexpr int kMostChannel = 196;

// Settings that the dat file lists once per SSID.
constexpr const char* kSsidKeys[] = {"EnableSSID",   "HideSSID",   "AuthMode",  "EncrypType",  "IEEE8021X",
                                     "DefaultKeyID", "WmmCapable", "MaxStaNum", "WscConfMode", "WscConfStatus"};

std::string file_of(const std::string& interface) {
  return std::string(place::kDriver) + "/" + interface;
}

// A setting is one line of the file whatever its value holds: backslashes and line feeds are escaped in it.
std::string escaped(const std::string& value) {
  std::string text;
  for (const char c : value) {
    if (c == '\n') {
      text += "\\n";
    } else {
      if (c == '\\') text += '\\';
      text += c;
    }
  }
  return text;
}

std::string unescaped(const std::string& text) {
  std::string value;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool escape = text[i] == '\\' && i + 1 < text.size();
    if (escape) ++i;
    value += escape && text[i] == 'n' ? '\n' : text[i];
  }
  return value;
}

// The value that the driver keeps, which for a channel is where the radio goes.
std::string accepted(Band band, const std::string& key, const std::string& value) {
  if (key.empty() || key.find('\n') != std::string::npos) throw std::invalid_argument("invalid argument");
  if (key != kChannel) return value;
  char* end = nullptr;
  const long channel = std::strtol(value.c_str(), &end, 10);
  if (value.empty() || *end != '\0' || channel < 0 || channel > kMostChannel) {
    throw std::invalid_argument("invalid argument");
  }
  return std::to_string(channel_for(band, static_cast<int>(channel)));
}

bool is_in(const std::string& key, const char* const* begin, const char* const* end) {
  return std::find(begin, end, key) != end;
}

// What does not come from the dat file, so that reading that does not change it.
bool is_reported(const std::string& key) {
  return is_in(key, std::begin(kReportKeys), std::end(kReportKeys)) || key == "WpsPin";
}

int number_of_bss(const std::string& interface) {
  return std::atoi(interface.c_str() + std::strlen(traits(band_of(interface).value()).bss_prefix));
}

// The change of a key in words; nothing when it stayed.
std::vector<std::string> describe(Band band, const std::string& interface, const std::string& key,
                                  const DriverSettings& before, const DriverSettings& after) {
  const auto shown = [&](const DriverSettings& settings) {
    const auto found = settings.find(key);
    if (found == settings.end()) return std::string("none");
    return found->second.empty() ? std::string("empty") : on_one_line(found->second);
  };
  const auto old = before.find(key);
  const auto now = after.find(key);
  const bool had = old != before.end();
  const bool has = now != after.end();
  if (had == has && (!had || old->second == now->second)) return {};
  const std::string owner = is_radio_wide(key) ? std::string(traits(band).label) + " radio" : interface;
  return {owner + ": " + key + " " + shown(before) + " -> " + shown(after)};
}

}  // namespace

int channel_for(Band band, int wanted) {
  return wanted > 0 ? wanted : traits(band).automatic_channel;
}

bool is_radio_wide(const std::string& key) {
  return key == kChannel || is_in(key, std::begin(kRadioKeys), std::end(kRadioKeys)) ||
         is_in(key, std::begin(kReportKeys), std::end(kReportKeys));
}

DriverSettings settings_from_dat(const DatFile& dat, Band band, int ssid) {
  DriverSettings settings;
  settings[kChannel] = std::to_string(channel_for(band, std::atoi(dat.field(kChannel, 1).c_str())));
  for (const char* key : kRadioKeys) settings[key] = dat.field(key, 1);
  for (const char* key : kSsidKeys) settings[key] = dat.field(key, ssid);
  settings["SSID"] = dat.value("SSID" + std::to_string(ssid));
  settings["WPAPSK"] = dat.value("WPAPSK" + std::to_string(ssid));
  const std::string number = std::to_string(ssid - 1);
  settings["AccessPolicy"] = dat.value("AccessPolicy" + number);
  settings["WpsAccessList"] = dat.value("AccessControlList" + number);
  // Idle where WPS is on.
  settings["WpsState"] = std::atoi(settings["WscConfMode"].c_str()) != 0 ? "1" : "0";
  for (auto entry = settings.begin(); entry != settings.end();) {
    entry = entry->second.empty() ? settings.erase(entry) : std::next(entry);
  }
  return settings;
}

std::optional<DriverSettings> load_settings(const std::string& interface) {
  std::ifstream stream(file_of(interface));
  if (!stream) return std::nullopt;
  DriverSettings settings;
  for (std::string line; std::getline(stream, line);) {
    const size_t equals = line.find('=');
    if (equals != std::string::npos) settings[line.substr(0, equals)] = unescaped(line.substr(equals + 1));
  }
  return settings;
}

void store_settings(const std::string& interface, const DriverSettings& settings) {
  std::string text;
  for (const auto& [key, value] : settings) text += key + "=" + escaped(value) + "\n";
  // Requests are answered from it at any time, without a lock.
  swap_in(std::string(place::kLists) + "/settings.new", file_of(interface), text);
}

std::vector<std::string> driver_interfaces(Band band) {
  std::vector<std::string> interfaces = names_in(place::kDriver);
  const auto is_foreign = [&](const std::string& name) { return band_of(name) != band; };
  interfaces.erase(std::remove_if(interfaces.begin(), interfaces.end(), is_foreign), interfaces.end());
  std::sort(interfaces.begin(), interfaces.end());
  return interfaces;
}

std::vector<std::string> change_setting(const std::string& interface, const std::string& key,
                                        const std::string& value) {
  const Band band = band_of(interface).value();
  const std::string kept = accepted(band, key, value);
  const DriverSettings before = load_settings(interface).value_or(DriverSettings());
  const bool wide = is_radio_wide(key);
  for (const std::string& name : wide ? driver_interfaces(band) : std::vector<std::string>{interface}) {
    DriverSettings settings = load_settings(name).value_or(DriverSettings());
    settings[key] = kept;
    store_settings(name, settings);
  }
  return describe(band, interface, key, before, {{key, kept}});
}

std::vector<std::string> read_dat_file_anew(Band band) {
  const DatFile dat(traits(band).dat_file);
  const std::vector<std::string> interfaces = driver_interfaces(band);
  std::vector<std::string> changes;
  for (const std::string& interface : interfaces) {
    const DriverSettings before = load_settings(interface).value_or(DriverSettings());
    DriverSettings after = settings_from_dat(dat, band, number_of_bss(interface) + 1);
    for (const auto& [key, value] : before) {
      if (is_reported(key)) after[key] = value;
    }
    store_settings(interface, after);
    DriverSettings all = before;
    all.insert(after.begin(), after.end());
    for (const auto& [key, value] : all) {
      if (is_radio_wide(key) && interface != interfaces.front()) continue;
      const std::vector<std::string> change = describe(band, interface, key, before, after);
      changes.insert(changes.end(), change.begin(), change.end());
    }
  }
  return changes;
}

void forget_settings(Band band) {
  for (const std::string& name : driver_interfaces(band)) unlink(file_of(name).c_str());
}

}  // namespace gateway

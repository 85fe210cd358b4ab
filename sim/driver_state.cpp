#include "sim/driver_state.h"

#include <stdio.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "sim/file.h"
#include "sim/places.h"

namespace gateway {
namespace {

// Settings of the radio that the driver takes from the dat file. The channel is treated apart.
constexpr const char* kRadioKeys[] = {"WirelessMode", "TxPower",    "CountryRegion", "CountryRegionABand",
                                      "BeaconPeriod", "DtimPeriod", "HT_BW",         "VHT_BW"};

constexpr const char* kChannel = "Channel";

// Settings that the dat file lists once per SSID.
constexpr const char* kSsidKeys[] = {"EnableSSID", "HideSSID",     "AuthMode",   "EncrypType",
                                     "IEEE8021X",  "DefaultKeyID", "WmmCapable", "MaxStaNum"};

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

}  // namespace

int channel_for(Band band, int wanted) {
  return wanted > 0 ? wanted : traits(band).automatic_channel;
}

bool is_radio_wide(const std::string& key) {
  return key == kChannel || std::find(std::begin(kRadioKeys), std::end(kRadioKeys), key) != std::end(kRadioKeys);
}

DriverSettings settings_from_dat(const DatFile& dat, Band band, int ssid) {
  DriverSettings settings;
  settings[kChannel] = std::to_string(channel_for(band, std::atoi(dat.field(kChannel, 1).c_str())));
  for (const char* key : kRadioKeys) settings[key] = dat.field(key, 1);
  for (const char* key : kSsidKeys) settings[key] = dat.field(key, ssid);
  settings["SSID"] = dat.value("SSID" + std::to_string(ssid));
  settings["WPAPSK"] = dat.value("WPAPSK" + std::to_string(ssid));
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
  // The file is swapped in whole: requests are answered from it at any time, without a lock.
  const std::string path = file_of(interface);
  const std::string fresh = std::string(place::kState) + "/driver.new";
  write_text(fresh, text, 0644);
  if (rename(fresh.c_str(), path.c_str()) != 0) fail("replace " + path);
}

void forget_settings(Band band) {
  for (const std::string& name : names_in(place::kDriver)) {
    if (band_of(name) == band) unlink(file_of(name).c_str());
  }
}

}  // namespace gateway

// A dat file as the WLAN driver reads it when it loads.
#pragma once

#include <map>
#include <string>

namespace gateway {

class DatFile {
 public:
  // An unreadable file counts as an empty one: the driver then runs on its defaults.
  explicit DatFile(const std::string& path);

  // The whole value; empty when the key is missing.
  std::string value(const std::string& key) const;

  // Field `number`, counted from 1, of a value that holds one per SSID; empty when it has fewer.
  std::string field(const std::string& key, int number) const;

  // How many SSIDs the radio serves: 1 to 8, and 1 when the file does not say.
  int ssid_count() const;

  bool is_enabled(int ssid) const;

 private:
  std::map<std::string, std::string> values_;
};

}  // namespace gateway

#include "sim/records/dat_file.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "sim/base/band.h"

namespace gateway {

DatFile::DatFile(const std::string& path) {
  std::ifstream stream(path);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const size_t equals = line.find('=');
    if (line.empty() || line[0] == '#' || equals == std::string::npos) continue;
    values_.emplace(line.substr(0, equals), line.substr(equals + 1));
  }
}

std::string DatFile::value(const std::string& key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? std::string() : found->second;
}

std::string DatFile::field(const std::string& key, int number) const {
  std::istringstream stream(value(key));
  for (std::string part; std::getline(stream, part, ';');) {
    if (!part.empty() && --number == 0) return part;
  }
  return {};
}

int DatFile::ssid_count() const {
  const int count = std::atoi(field("BssidNum", 1).c_str());
  return count >= 1 && count <= kMostSsids ? count : 1;
}

bool DatFile::is_enabled(int ssid) const {
  return std::atoi(field("EnableSSID", ssid).c_str()) == 1;
}

}  // namespace gateway

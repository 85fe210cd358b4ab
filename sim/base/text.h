// Lists as texts.
#pragma once

#include <string>
#include <vector>

namespace gateway {

inline std::string joined(const std::vector<std::string>& parts, const char* separator) {
  std::string text;
  for (const std::string& part : parts) {
    if (!text.empty()) text += separator;
    text += part;
  }
  return text;
}

}  // namespace gateway

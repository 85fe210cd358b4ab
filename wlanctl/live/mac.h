// Hardware addresses as this tool writes them: small letters and colons.
#pragma once

#include <cstdint>
#include <string>

namespace wlanctl {

inline constexpr size_t kMacTextSize = sizeof "00:00:00:00:00:00";

std::string mac_text(const uint8_t* mac);

// Of a text in capitals, as the library gives them.
std::string mac_text(const char* capitals);

}  // namespace wlanctl

// Bytes as hexadecimal digits, two each.
#pragma once

#include <optional>
#include <string>

namespace wlanctl {

std::string hex_of(const std::string& bytes);

// None where a character is no digit, or one is left over. Capitals do not matter.
std::optional<std::string> bytes_of_hex(const std::string& digits);

}  // namespace wlanctl

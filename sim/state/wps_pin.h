// WPS PINs: eight digits, the last of them a check digit.
#pragma once

#include <string>

namespace gateway {

// The PIN that begins with these seven digits.
std::string pin_from(unsigned seven_digits);

// A PIN at random.
std::string random_pin();

bool is_valid_pin(const std::string& pin);

}  // namespace gateway

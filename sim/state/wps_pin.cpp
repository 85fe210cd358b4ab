#include "sim/state/wps_pin.h"

#include <cstdio>
#include <random>

namespace gateway {
namespace {

constexpr unsigned kSevenDigits = 10000000;

}  // namespace

// The digits weigh 3 and 1 in turn; the check digit makes the sum a multiple of ten.
std::string pin_from(unsigned seven_digits) {
  unsigned sum = 0;
  unsigned weight = 3;
  for (unsigned rest = seven_digits % kSevenDigits; rest != 0; rest /= 10) {
    sum += weight * (rest % 10);
    weight = 4 - weight;
  }
  char text[16];
  std::snprintf(text, sizeof text, "%07u%u", seven_digits % kSevenDigits, (10 - sum % 10) % 10);
  return text;
}

std::string random_pin() {
  std::random_device source;
  return pin_from(std::uniform_int_distribution<unsigned>(0, kSevenDigits - 1)(source));
}

bool is_valid_pin(const std::string& pin) {
  if (pin.size() != 8 || pin.find_first_not_of("0123456789") != std::string::npos) return false;
  return pin_from(static_cast<unsigned>(std::stoul(pin.substr(0, 7)))) == pin;
}

}  // namespace gateway

// Values for the rules that only a few settings have.
#pragma once

#include "params/setting_checks.h"

namespace settings {

inline Values words(std::vector<std::string> accepted) {
  Values values = {accepted, {"", "x", ";"}};
  for (const std::string& word : accepted) {
    values.refused.push_back(word + " ");
    values.refused.push_back(" " + word);
    values.refused.push_back(word + "\n");
    values.refused.push_back(word + word);
    values.refused.push_back(word.substr(0, word.size() - 1));
  }
  return values;
}

inline Values ciphers() {
  Values values = words({"NONE", "WEP", "TKIP", "AES", "TKIPAES", "GCMP256"});
  values.refused.insert(values.refused.end(), {"aes", "none", "Wep", "AESTKIP", "TKIP,AES", "GCMP"});
  return values;
}

inline Values rekey_methods() {
  Values values = words({"TIME", "PKT", "DISABLE"});
  values.refused.insert(values.refused.end(), {"time", "Pkt", "DISABLED", "TIMEPKT"});
  return values;
}

inline Values binary_digit() {
  return {{"0", "1"}, {"", "00", "01", "10", "1 ", " 1", "1\n", "2", "-1", "a", "11", "/", "0x"}};
}

inline Values radius_secret() {
  const std::string hexadecimal = repeat("0123456789abcdefABCDEF", 3).substr(0, 64);
  return {{repeat("g", 8), repeat("g", 63), repeat(";", 8), hexadecimal, repeat("f", 64)},
          {"", repeat("g", 7), repeat("f", 7), repeat("f", 65), repeat("g", 64), repeat("f", 63) + "g",
           std::string("g") + repeat("f", 63), repeat("f", 63) + "\n", repeat("f", 128)}};
}

// The number in front counts, whatever follows it.
inline Values streams() {
  return {{"0", "4", "", "x", "abc", "00", "3x", " 4", "+4", "1\n", "0.9"},
          {"5", "-1", "-4", "-2147483648", "10", "4294967296", "4294967300", "18446744073709551616",
           "18446744073709551617"}};
}

inline Values session_timeout() {
  return {{"", "0", "2147483647", "999999999", "0000000001", "1999999999"},
          {"2147483648", "9999999999", "10000000000", "00000000001", "3000000000", "-1", "+1", " 1", "1\n", "1a", "x",
           "4294967296", "18446744073709551616"}};
}

// Texts for a rule that accepts none.
inline Values no_text() {
  return {{}, {"00:1a:22:aa:dc:a1", "02:00:00:00:00:03", "FC:FF:FF:FF:FF:FF", "00:00:00:00:00:00", "", "x"}};
}

}  // namespace settings

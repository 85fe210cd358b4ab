// Passphrases and keys taken out of what the library writes, for showing it.
#pragma once

#include <string>

namespace wlanctl {

struct Key;

inline constexpr char kMasked[] = "********";

// The value, or the mask where it is a secret.
std::string shown_value(const Key& key, const std::string& value);

// Also of keys that this tool does not know, by what they are called.
bool is_secret_dat_key(const std::string& dat_key);

std::string masked_dat_line(const std::string& line);

// Of a driver's script, as a whole: a value may go over several lines.
std::string masked_script(const std::string& script);

}  // namespace wlanctl

// The JSON that export writes.
#pragma once

#include <string>

#include "wlanctl/exchange/settings_text.h"

namespace wlanctl {

// Of the format; another one is refused.
inline constexpr int kSettingsVersion = 1;

// The names in it.
namespace settings_json {
inline constexpr char kVersion[] = "wlanctl_settings";
inline constexpr char kBands[] = "bands";
inline constexpr char kSettings[] = "settings";
inline constexpr char kOther[] = "other";
inline constexpr char kHex[] = "hex";
}  // namespace settings_json

SettingsText read_json_settings(const std::string& bytes);

}  // namespace wlanctl

#include "wlanctl/keys/danger.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "wlanctl/base/text.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/key.h"

namespace wlanctl {
namespace {

// How the library puts a value into the script that brings an SSID's settings into force. The authentication mode is not
// here: only the modes that the library knows are written as they stand.
enum class InScript { kNowhere, kQuoted, kBare };

InScript place_in_script(const std::string& name) {
  static constexpr const char* kQuoted[] = {"SSID", "WPAPSK", "Key1Str", "Key2Str", "Key3Str", "Key4Str"};
  static constexpr const char* kBare[] = {kAddressList, "AccessPolicy", "DefaultKeyID",  "EncrypType",    "HideSSID",
                                          "RADIUS_Key", "RADIUS_Port",  "RADIUS_Server", "RekeyInterval", "WmmCapable"};
  for (const char* const quoted : kQuoted) {
    if (name == quoted) return InScript::kQuoted;
  }
  for (const char* const bare : kBare) {
    if (name == bare) return InScript::kBare;
  }
  return InScript::kNowhere;
}

bool is_mac_address(const std::string& text) {
  constexpr size_t kLength = 17;
  if (text.size() != kLength) return false;
  for (size_t i = 0; i < kLength; ++i) {
    if (i % 3 == 2 ? text[i] != ':' : doHexCheck(text[i]) != 1) return false;
  }
  return true;
}

// What follows a ';' is run as a command of its own. An address is none that exists.
bool is_address_list(const std::string& value) {
  for (size_t at = 0; at != std::string::npos;) {
    const size_t end = value.find(';', at);
    if (!is_mac_address(value.substr(at, end - at))) return false;
    at = end == std::string::npos ? end : end + 1;
  }
  return true;
}

}  // namespace

bool is_in_script(const Key& key) {
  return place_in_script(key.name) != InScript::kNowhere;
}

std::string shell_danger_of(const Key& key, const std::string& value) {
  const std::string name = key.name;
  const InScript place = place_in_script(name);
  if (place == InScript::kQuoted && value.find_first_of("$`") != std::string::npos) {
    return "a shell acts on $ and ` when the driver's script runs";
  }
  if (place != InScript::kBare || (name == kAddressList && is_address_list(value))) return "";
  constexpr char kHarmless[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789:._-,+@%/";
  if (value.find_first_not_of(kHarmless) == std::string::npos) return "";
  return std::string(
             "a shell acts on what is neither letter nor digit nor one of : . _ - , + @ % / when the driver's ") +
         "script runs" + (name == kAddressList ? "; addresses are joined by ;" : "");
}

std::string danger_of(const Key& key, const std::string& value) {
  std::string in_shell = shell_danger_of(key, value);
  if (!in_shell.empty()) return in_shell;
  if (value.find_first_of("\r\n") != std::string::npos) return "a line end makes lines of their own in the dat file";
  if (value.find('=') != std::string::npos) return "the dat file ends a value at =";
  if (value.size() >= WIFIMGR_FIELD_SIZE) {
    return "the store cuts a value behind " + std::to_string(WIFIMGR_FIELD_SIZE - 1) + " characters";
  }
  if (!keeps_list_whole(key.dat_key) && !is_split_list(key) && value.find(';') != std::string::npos)
    return "the dat file takes ; for the next SSID's value";
  return "";
}

}  // namespace wlanctl

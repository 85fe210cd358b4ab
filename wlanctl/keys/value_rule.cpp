#include "wlanctl/keys/value_rule.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/text.h"
#include "wlanctl/keys/key.h"
#include "wlanctl/keys/number_list.h"

namespace wlanctl {
namespace {

constexpr char kModes[] =
    "OPEN WPAPSK WPA2PSK WPAPSKWPA2PSK WPA3PSK WPA2PSKWPA3PSK WPA WPA2 WPA1WPA2 WPA3 WPA3-192Bit WEP WEPRadius";

constexpr char kChannels[] = "0; 2.4g 1 to 14; 5g 36 to 64, 100 to 144, 149 to 177 in steps of 4";

// Where the library takes any text, or more numbers than there are.
constexpr struct {
  const char* key;
  Accepted served;
} kServed[] = {
    {"AuthMode", {Accepted::Kind::kWords, 0, 0, kModes}},
    {"BssidNum", {Accepted::Kind::kNumber, 1, WIFIMGR_FIELDS}},
    {"Channel", {Accepted::Kind::kRule, 0, 0, kChannels}},
    {"EnableSSID", {Accepted::Kind::kNumber, 0, 1}},
    {"Key1Str", {Accepted::Kind::kRule, 0, 0, "5 or 13 characters, 10 or 26 hexadecimal digits, or 0 for none"}},
    {"Key2Str", {Accepted::Kind::kRule, 0, 0, "5 or 13 characters, 10 or 26 hexadecimal digits, or 0 for none"}},
    {"Key3Str", {Accepted::Kind::kRule, 0, 0, "5 or 13 characters, 10 or 26 hexadecimal digits, or 0 for none"}},
    {"Key4Str", {Accepted::Kind::kRule, 0, 0, "5 or 13 characters, 10 or 26 hexadecimal digits, or 0 for none"}},
    {"SSID", {Accepted::Kind::kRule, 0, 0, "1 to 32 bytes"}},
    {"WPAPSK", {Accepted::Kind::kRule, 0, 0, "8 to 63 characters, 64 hexadecimal digits, or 0 for none"}},
};

// The ciphers that a mode can have. A mode that is not here has its own, whatever is stored: the library stores it.
constexpr struct {
  const char* mode;
  const char* ciphers;
} kCiphers[] = {
    {"WPAPSK", "TKIP AES TKIPAES"}, {"WPA2PSK", "TKIP AES TKIPAES"},   {"WPAPSKWPA2PSK", "TKIP AES TKIPAES"},
    {"WPA3PSK", "AES GCMP256"},     {"WPA2PSKWPA3PSK", "AES TKIPAES"}, {"WPA", "TKIP AES TKIPAES"},
    {"WPA2", "TKIP AES TKIPAES"},   {"WPA1WPA2", "TKIP AES TKIPAES"},  {"WPA3", "AES GCMP256"},
    {"WPA3-192Bit", "AES GCMP256"}, {"WPA3-192", "AES GCMP256"},
};

// Modes that take users in by a RADIUS server, and those that do it by a passphrase instead.
constexpr struct {
  const char* mode;
  const char* with_passphrase;
} kEnterprise[] = {{"WPA", "WPAPSK"},   {"WPA2", "WPA2PSK"},        {"WPA1WPA2", "WPAPSKWPA2PSK"},
                   {"WPA3", "WPA3PSK"}, {"WPA3-192Bit", "WPA3PSK"}, {"WPA3-192", "WPA3PSK"}};

bool has_word(const char* words, const std::string& word) {
  const std::vector<std::string> all = words_of(words);
  return std::find(all.begin(), all.end(), word) != all.end();
}

bool is_hexadecimal(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return doHexCheck(c) == 1; });
}

std::string bad_number(const Accepted& served, const std::string& value) {
  const std::optional<int64_t> number = number_in(value);
  return number && std::to_string(*number) == value && *number >= served.lowest && *number <= served.highest
             ? ""
             : "the gateway serves " + words_for(served) + " only";
}

std::string bad_channel(Band band, const std::string& value) {
  const std::vector<long> channels = numbers_in(kChannels, band);
  if (std::find(channels.begin(), channels.end(), number_in(value).value_or(-1)) != channels.end()) return "";
  return std::string("the channels of ") + label_of(band) + " are " + part_about(kChannels, band);
}

std::string bad_cipher(const std::string& mode, const std::string& cipher) {
  for (const auto& row : kCiphers) {
    if (mode != row.mode || cipher.empty() || has_word(row.ciphers, cipher)) continue;
    return mode + " cannot have the cipher " + cipher + ", but " + joined(words_of(row.ciphers), " or ");
  }
  return "";
}

std::string bad_mode(const std::string& mode) {
  // The library takes any word with WEP in it for WEP; WPA3-192 is what it makes of WPA3-192Bit.
  if (mode.find("WEP") != std::string::npos || mode == "WPA3-192" || has_word(kModes, mode)) return "";
  return "it would open the network, as every mode does but " + joined(words_of(kModes), ", ");
}

// How the library itself stores that there is none, as an apply does for an open network.
constexpr char kNoPassphrase[] = "0";

bool needs_passphrase(const std::string& mode) {
  return mode.find("PSK") != std::string::npos;
}

std::string lacking_passphrase(const std::string& mode, const std::optional<std::string>& passphrase) {
  const bool has_none = passphrase && (passphrase->empty() || *passphrase == kNoPassphrase);
  if (!has_none || !needs_passphrase(mode)) return "";
  return mode + " needs a passphrase, and WPAPSK is " + (passphrase->empty() ? "empty" : *passphrase) +
         ": it has none; set WPAPSK with it";
}

std::string bad_passphrase(const std::string& value, const std::string& mode) {
  constexpr size_t kShortest = 8;
  constexpr size_t kKeyDigits = 64;
  if (value == kNoPassphrase) {
    return needs_passphrase(mode) ? mode + " needs a passphrase, and " + kNoPassphrase + " stands for none" : "";
  }
  if (value.size() >= kShortest && value.size() < kKeyDigits) return "";
  if (value.size() < kShortest) return "a passphrase has 8 characters at least, 63 at most";
  if (value.size() == kKeyDigits && is_hexadecimal(value)) return "";
  return "what has 64 characters must be hexadecimal digits; a passphrase has 63 at most";
}

std::string bad_wep_key(const std::string& value) {
  if (value == "0" || value.empty()) return "";
  if (value.size() == 5 || value.size() == 13) return "";
  if ((value.size() == 10 || value.size() == 26) && is_hexadecimal(value)) return "";
  return "a WEP key has 5 or 13 characters, or 10 or 26 hexadecimal digits";
}

}  // namespace

const Accepted& served(const Key& key) {
  for (const auto& row : kServed) {
    if (std::strcmp(row.key, key.name) == 0) return row.served;
  }
  return key.accepted;
}

std::string served_words(const Key& key) {
  return words_for(served(key));
}

std::vector<std::string> choices_on(const Key& key, Band band) {
  constexpr size_t kMost = 32;
  const Accepted& what = served(key);
  if (what.kind != Accepted::Kind::kRule) return choices_of(what);
  std::vector<std::string> choices;
  for (const long number : numbers_in(what.words, band)) choices.push_back(std::to_string(number));
  return choices.size() > kMost ? std::vector<std::string>() : choices;
}

std::string told_meaning(const Key& key) {
  const std::string name = key.name;
  const bool is_about_channels = name == "Channel" || name.starts_with("CountryRegion");
  return key.meaning +
         std::string(is_about_channels ? "; which of the channels a region allows is the driver's to say" : "");
}

std::string unserved_reason(const Key& key, Band band, const std::string& value, const Sibling& sibling) {
  const std::string name = key.name;
  constexpr size_t kLongestName = 32;
  if (name == "Channel") return bad_channel(band, value);
  if (name == "EnableSSID" || name == "BssidNum") return bad_number(served(key), value);
  if (name == "SSID" && value.empty()) return "the network has no name then";
  if (name == "SSID" && value.size() > kLongestName) return "on the air a network's name has 32 bytes at most";
  if (name == "AuthMode") {
    for (const std::string& reason : {bad_mode(value), bad_cipher(value, sibling("EncrypType").value_or(""))}) {
      if (!reason.empty()) return reason;
    }
    return lacking_passphrase(value, sibling("WPAPSK"));
  }
  if (name == "EncrypType") return bad_cipher(sibling("AuthMode").value_or(""), value);
  if (name == "WPAPSK") return bad_passphrase(value, sibling("AuthMode").value_or(""));
  if (name.starts_with("Key") && name.ends_with("Str")) return bad_wep_key(value);
  return key.numbering == Numbering::kShared && key.scope == Scope::kSsid ? "" : reason_against_none(key, band, value);
}

std::string reason_against_none(const Key& key, Band band, const std::string& value) {
  if (!value.empty()) return "";
  const char* const by_default = key.defaults[number_of(band)];
  const bool is_one_of_some = key.holds_numbers() || key.accepted.kind == Accepted::Kind::kWords ||
                              (key.accepted.kind == Accepted::Kind::kRule && !choices_on(key, band).empty());
  if (!is_one_of_some || (by_default != nullptr && by_default[0] == '\0')) return "";
  return "it is empty then, and it takes " + words_for(served(key));
}

std::string told_of_change(const Key& key, const std::string& before, const std::string& after) {
  const std::string name = key.name;
  if (name != "AuthMode" || before.find("PSK") == std::string::npos) return "";
  for (const auto& row : kEnterprise) {
    if (after != row.mode) continue;
    return after + " asks a RADIUS server, and no passphrase; with one it is " + row.with_passphrase;
  }
  return "";
}

}  // namespace wlanctl

#include "store/key_family.h"

#include <cstddef>
#include <cstring>

namespace store {
namespace {

constexpr char kWholeValue[][16] = {"APAifsn",   "APCwmin",  "APCwmax",       "APTxop",    "APACM",
                                    "BSSAifsn",  "BSSCwmin", "BSSCwmax",      "BSSTxop",   "BSSACM",
                                    "AckPolicy", "WdsList",  "WdsEncrypType", "WdsPhyMode"};

constexpr char kNumberedFromOne[][16] = {"SSID",    "RADIUS_Key", "WscDefaultSSID", "WPAPSK",     "Key1Str",
                                         "Key2Str", "Key3Str",    "Key4Str",        "WSC_UUID_E", "WSC_UUID_Str"};

constexpr char kNumberedFromZero[][18] = {"AccessPolicy", "AccessControlList"};

template <size_t kRows, size_t kWidth>
const char* prefix_of(const char* key, const char (&prefixes)[kRows][kWidth]) {
  for (const auto& prefix : prefixes) {
    if (std::strncmp(key, prefix, std::strlen(prefix)) == 0) return prefix;
  }
  return nullptr;
}

}  // namespace

bool is_whole_value_key(const char* key) {
  return prefix_of(key, kWholeValue) != nullptr;
}

const char* family_numbered_from_one(const char* key) {
  return prefix_of(key, kNumberedFromOne);
}

const char* family_numbered_from_zero(const char* key) {
  return prefix_of(key, kNumberedFromZero);
}

bool is_single_value_key(const char* key) {
  return family_numbered_from_one(key) != nullptr || family_numbered_from_zero(key) != nullptr;
}

}  // namespace store

// The per-SSID getters and setters: every row of per_ssid.def becomes an exported function.
#include <cstring>

#include "params/accepted.h"
#include "params/ssid_setting.h"
#include "params/unique_keys.h"
#include "wifimgr_lib.h"

using params::any_text;
using params::at_most_characters;
using params::kNoUpperLimit;
using params::number;
using params::passing;
using enum params::Numbering;

namespace {

template <size_t kWords, size_t kWidth>
int is_one_of(const char (&words)[kWords][kWidth], const char* value) {
  for (const auto& word : words) {
    if (std::strcmp(word, value) == 0) return 1;
  }
  return 0;
}

int is_cipher(const char* value) {
  static constexpr char kCiphers[][8] = {"NONE", "WEP", "TKIP", "AES", "TKIPAES", "GCMP256"};
  return is_one_of(kCiphers, value);
}

int is_rekey_method(const char* value) {
  static constexpr char kMethods[][8] = {"TIME", "PKT", "DISABLE"};
  return is_one_of(kMethods, value);
}

int is_binary_digit(const char* value) {
  return (value[0] == '0' || value[0] == '1') && value[1] == '\0' ? 1 : 0;
}

// A passphrase, or a raw key.
int is_radius_secret(const char* value) {
  const size_t length = std::strlen(value);
  if (length >= 8 && length <= 63) return 1;
  return length == 64 && doStrHexCheck(value) != 0 ? 1 : 0;
}

constexpr const char* kReadKeys[] = {
#define SSID_GETTER(getter, key, numbering) key,
#define SSID_SETTER(setter, key, numbering, accepts, refusal)
#include "params/per_ssid.def"
};
static_assert(params::are_unique(kReadKeys));

constexpr const char* kWrittenKeys[] = {
#define SSID_GETTER(getter, key, numbering)
#define SSID_SETTER(setter, key, numbering, accepts, refusal) key,
#include "params/per_ssid.def"
};
static_assert(params::are_unique(kWrittenKeys));

}  // namespace

#define SSID_GETTER(getter, key, numbering)                                                     \
  extern "C" uint64_t getter(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len) { \
    return params::get_ssid_value(wifi_type, ssid_index, buf, len, #getter, key, numbering);    \
  }
#define SSID_SETTER(setter, key, numbering, accepts, refusal)                                               \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t ssid_index, const char* value) {                   \
    return params::set_ssid_value<numbering>(wifi_type, ssid_index, value, #setter, key, refusal, accepts); \
  }
#include "params/per_ssid.def"

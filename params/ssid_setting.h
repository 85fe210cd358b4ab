// Getter and setter of one SSID's value: the templates of the per-SSID family, and their steps for those that need
// more.
#pragma once

#include <cstdint>

#include "params/accepted.h"
#include "params/band_setting.h"
#include "store/record.h"
#include "store/trace.h"

namespace params {

// How the key of an SSID is made.
enum class Numbering : uint8_t {
  kShared,    // one key, a field per SSID
  kFromOne,   // a key per SSID: "%d" becomes the SSID index
  kFromZero,  // a key per SSID: "%d" becomes the SSID index minus one
};

// By the words of the settings' table.
inline constexpr Numbering NUMBERING_SHARED = Numbering::kShared;
inline constexpr Numbering NUMBERING_FROM_ONE = Numbering::kFromOne;
inline constexpr Numbering NUMBERING_FROM_ZERO = Numbering::kFromZero;

// The key of one SSID: a shared one as it is, else in the buffer size that bounds all formatted keys.
class SsidKey {
 public:
  SsidKey(const char* key, Numbering numbering, int32_t ssid_index);
  SsidKey(const SsidKey&) = delete;
  SsidKey& operator=(const SsidKey&) = delete;

  const char* text;

 private:
  char formatted_[store::kValueSize + 1];
};

// Reads the band's SSID count; false when it cannot be read.
bool read_ssid_count(uint32_t wifi_type, int& count);

// Whether `ssid_index` is one of `count` SSIDs; traces the refusal as `function` when it is not.
bool is_ssid_of(const char* function, int count, int32_t ssid_index);

// Whether `ssid_index` is one of the band's SSIDs; traces the refusal as `function` when it is not, or when the band's
// SSID count cannot be read.
bool is_ssid_of_band(const char* function, uint32_t wifi_type, int32_t ssid_index);

// The last step of every getter and setter: the store's answer, traced as `function`.
trace::Result read_ssid_value(const char* function, uint32_t wifi_type, int32_t ssid_index, const char* key, char* buf,
                              uint32_t len);
trace::Result write_ssid_value(const char* function, uint32_t wifi_type, int32_t ssid_index, const char* key,
                               const char* value);

uint64_t get_ssid_value(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len, const char* function,
                        const char* key, Numbering numbering);

// Checks the value's presence, the SSID count, the index and the value, in this order, then writes the SSID's value.
// `refusal` may print the refused number with "%d". The numbering is no argument, so that all others fit in registers.
template <Numbering kNumbering>
uint64_t set_ssid_value(uint32_t wifi_type, int32_t ssid_index, const char* value, const char* function,
                        const char* key, const char* refusal, Accepted accepted);

}  // namespace params

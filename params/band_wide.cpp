// The band-wide getters and setters: every row of band_wide.def becomes an exported function.
#include <cstring>

#include "params/accepted.h"
#include "params/band_setting.h"
#include "params/unique_keys.h"
#include "store/band_value.h"
#include "store/decimal.h"
#include "wifimgr_lib.h"

using params::any_text;
using params::digits;
using params::kNoUpperLimit;
using params::number;
using params::passing;

namespace {

// Only the number that the text begins with counts, so "x" is 0 streams and is stored; the weaker check is deliberate.
int is_stream_count(const char* value) {
  const long long streams = store::wide_decimal(value);
  return streams >= 0 && streams <= 4 ? 1 : 0;
}

// The bound is checked on the text, so that no number overflows on the way.
int is_session_timeout(const char* value) {
  constexpr char kHighest[] = "2147483647";
  if (doStrDecCheck(value) == 0) return 0;
  const size_t length = std::strlen(value);
  if (length > sizeof kHighest - 1) return 0;
  return length < sizeof kHighest - 1 || std::strcmp(value, kHighest) <= 0 ? 1 : 0;
}

constexpr const char* kReadKeys[] = {
#define BAND_GETTER(getter, key) key,
#define BAND_SETTER(setter, key, accepts, refusal)
#define HT_GROUP_SETTER(setter, key, accepts, refusal)
#include "params/band_wide.def"
};
static_assert(params::are_unique(kReadKeys));

constexpr const char* kWrittenKeys[] = {
#define BAND_GETTER(getter, key)
#define BAND_SETTER(setter, key, accepts, refusal) key,
#define HT_GROUP_SETTER(setter, key, accepts, refusal) key,
#include "params/band_wide.def"
};
static_assert(params::are_unique(kWrittenKeys));

}  // namespace

#define BAND_GETTER(getter, key)                                             \
  extern "C" int getter(int wifi_type, int index, char* buf, unsigned len) { \
    return store::get_band_value(wifi_type, index, buf, len, #getter, key);  \
  }
#define BAND_SETTER(setter, key, accepts, refusal)                                          \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t index, const char* value) {        \
    return params::set_band_value(wifi_type, index, value, #setter, key, refusal, accepts); \
  }
#define HT_GROUP_SETTER(setter, key, accepts, refusal)                                          \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t index, const char* value) {            \
    return params::set_ht_group_value(wifi_type, index, value, #setter, key, refusal, accepts); \
  }
#include "params/band_wide.def"

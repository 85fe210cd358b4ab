// What must hold of every row of the settings' table; nothing of this is in the library's code.
#include <string_view>

#include "params/unique_keys.h"
#include "store/record.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

using std::string_view;

constexpr const char* kKeys[] = {
#define WIFIMGR_DAT_KEY(key, meaning, on_2_4g, on_5g) key,
#define WIFIMGR_SETTING(key, ...) key,
#include "wifimgr_settings.h"
};
static_assert(params::are_unique(kKeys), "two rows of the table are for one key");

constexpr bool NUMBERED_SHARED = false;
constexpr bool NUMBERED_FROM_ONE = true;
constexpr bool NUMBERED_FROM_ZERO = true;

// Only the per-SSID family prints the refused number, which takes up to eleven characters.
constexpr bool NUMBER_PRINTED_BAND = false;
constexpr bool NUMBER_PRINTED_HT_GROUP = false;
constexpr bool NUMBER_PRINTED_SSID = true;
constexpr bool NUMBER_PRINTED_WMM = false;
constexpr bool NUMBER_PRINTED_WPS = false;
constexpr bool NUMBER_PRINTED_OWN = false;
constexpr size_t kNumberLength = 11;

// A text without "%", or with "%d" once where a number is printed.
constexpr bool is_refusal(string_view text, bool number_printed) {
  const size_t at = text.find('%');
  if (at == string_view::npos) return true;
  return number_printed && text.substr(at, 2) == "%d" && text.find('%', at + 1) == string_view::npos;
}

#define WIFIMGR_SETTING(key, scope, numbering, bands, reads, getter, writes, setter, accepts, low, high, words,       \
                        refusal, meaning, unit, on_2_4g, on_5g, secrecy, effect)                                      \
  static_assert(sizeof key <= store::kKeySize, "the store cuts this key: " key);                                      \
  static_assert((string_view(key).find("%d") != string_view::npos) == NUMBERED_##numbering, "numbered or not? " key); \
  static_assert((low) <= (high), "the bounds of " key);                                                               \
  static_assert(is_refusal(refusal, NUMBER_PRINTED_##writes), "printed as a format, or only looks like one: " key);   \
  static_assert(sizeof refusal + kNumberLength <= trace::kReasonSize, "the trace cuts the refusal of " key);          \
  static_assert(sizeof meaning > 1, "what does it mean? " key);
#include "wifimgr_settings.h"

}  // namespace

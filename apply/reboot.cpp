// The reboot that a changed setting asks for.
#include <cstring>

#include "apply/interface.h"
#include "store/band.h"
#include "store/decimal.h"
#include "store/shell.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

void take_down_only(const char* prefix, int count) {
  for (int i = 0; i < count; ++i) (void)store::run_shell("/sbin/ifconfig %s%d down", prefix, i);
}

// Never for the two settings that the change detection counts as wanting a reboot; deliberate.
bool wants_reboot(const char* key, uint8_t current, uint32_t new_value) {
  return std::strcmp(key, "BssidNum") != 0 && std::strcmp(key, "WHNAT") != 0 && current != new_value;
}

}  // namespace

extern "C" int wifimgr_lib_reboot(int32_t wifi_type, uint8_t* current, uint32_t new_value, int32_t wds_count,
                                  const char* other_count, const char* key) {
  trace::enter(__func__);
  if (current == nullptr || other_count == nullptr || key == nullptr) return trace::fail(__func__).as(0);
  if (!wants_reboot(key, *current, new_value) || !store::is_band(wifi_type)) return trace::success(__func__);
  const apply::Prefixes own = apply::prefixes_of(static_cast<uint32_t>(wifi_type));
  const apply::Prefixes other = apply::prefixes_of(static_cast<uint32_t>(store::k5G - wifi_type));
  take_down_only(own.wds, wds_count);
  take_down_only(other.wds, wds_count);
  take_down_only(own.bss, *current);
  take_down_only(other.bss, store::decimal(other_count));
  *current = static_cast<uint8_t>(new_value);
  (void)store::run_shell("reboot");
  return trace::success(__func__);
}

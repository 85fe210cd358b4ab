// Command lines and line templates that callers run or write themselves.
#include <cstdio>

#include "driver/request.h"
#include "store/band.h"
#include "store/bounded_text.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

driver::InterfaceName name_of(const char* prefix, int index) {
  if (index == -1) return driver::interface_named(prefix);
  driver::InterfaceName name = {};
  (void)std::snprintf(name.text, sizeof name.text, "%s%d", prefix, index);
  return name;
}

}  // namespace

extern "C" int wifimgr_lib_set_WIFI_CMD(const char* prefix, int index, int size, const char* argument, char* out,
                                        int kind) {
  trace::enter(__func__);
  if (prefix != nullptr && argument != nullptr && out != nullptr && size > 0 && (kind == 0 || kind == 1)) {
    const driver::InterfaceName name = name_of(prefix, index);
    (void)std::snprintf(out, static_cast<size_t>(size), "/userfs/bin/iwpriv %s %s%s", name.text,
                        kind == 0 ? "set " : "", argument);
  }
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_WLAN_SCRIPT(int wifi_type, int size, char* out) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  store::write_text(
      out, size,
      wifi_type == store::k2_4G ? "/userfs/bin/iwpriv ra%d set %s=%s\n" : "/userfs/bin/iwpriv rai%d set %s=%s\n");
  return trace::success(__func__);
}

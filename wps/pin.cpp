// The WPS PIN of one of the band's SSIDs.
#include "driver/wps_pin.h"
#include "params/ssid_setting.h"
#include "store/band.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

extern "C" int wifimgr_lib_get_wscPinCode(int wifi_type, int ssid_index, char* out) {
  trace::enter(__func__);
  if (out == nullptr) return trace::fail(__func__);
  int count = 0;
  if (!params::read_ssid_count(wifi_type, count)) {
    return trace::fail(__func__, "get_bssidnum err.");
  }
  if (!params::is_ssid_of(count, ssid_index, __func__)) return 1;
  const driver::Outcome outcome =
      driver::read_wps_pin(driver::bss_interface(wifi_type == store::k5G, ssid_index - 1), out);
  // Both name other functions, whatever the band; kept, as callers match the text.
  constexpr driver::Complaints kComplaints = {"UpdatePinCodeAC: Create socket fail", "UpdatePinCode: ioctl open fail"};
  if (const char* const why = driver::complaint_about(outcome, kComplaints)) return trace::fail(__func__, why);
  return trace::success(__func__);
}

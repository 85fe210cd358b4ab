// The temperature of a radio's chip.
#include "driver/request.h"
#include "store/band.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr uint16_t kTemperature = 0x09A1;

}  // namespace

extern "C" int wifimgr_lib_get_CPU_TEMPERATURE(int wifi_type, uint32_t* value) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (value == nullptr) return trace::fail(__func__);
  uint32_t reply = 0;
  // Both name another function; kept, as callers match the text.
  constexpr driver::Complaints kComplaints = {"wifimgr_lib_get_WPS_STA_MAC: Create socket fail",
                                              "wifimgr_lib_get_WPS_STA_MAC: ioctl open fail"};
  const driver::Outcome outcome =
      driver::ask_oid(driver::radio_interface(wifi_type == store::k5G), kTemperature, &reply, sizeof reply);
  if (const char* const why = driver::complaint_about(outcome, kComplaints)) return trace::fail(__func__, why);
  *value = reply;
  return trace::success(__func__);
}

#include "driver/wps_pin.h"

#include <cstdio>
#include <cstring>

#include "store/band.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace driver {
namespace {

constexpr uint16_t kPin = 0x0752;
constexpr size_t kTextSize = sizeof "4294967295";

constexpr Complaints kComplaints = {"==>UpdatePinCode: Create socket fail", "==>UpdatePinCode: ioctl open fail"};
constexpr Complaints kComplaintsAc = {"==>UpdatePinCodeAC: Create socket fail", "==>UpdatePinCodeAC: ioctl open fail"};

bool read_or_report(const InterfaceName& interface, const Complaints& complaints, char* out) {
  const char* const why = complaint_about(read_wps_pin(interface, out), complaints);
  if (why == nullptr) return true;
  (void)std::puts(why);
  std::memcpy(out, "0", 2);
  return false;
}

}  // namespace

Outcome read_wps_pin(const InterfaceName& interface, char* out) {
  uint32_t reply[4] = {};
  const Outcome outcome = ask_oid(interface, kPin, reply, sizeof reply);
  if (outcome == Outcome::kAnswered) (void)std::snprintf(out, kTextSize, "%08u", reply[0]);
  return outcome;
}

}  // namespace driver

extern "C" void UpdatePinCode(char* out) {
  if (out != nullptr) (void)driver::read_or_report(driver::radio_interface(false), driver::kComplaints, out);
}

extern "C" void UpdatePinCodeAC(char* out) {
  if (out != nullptr) (void)driver::read_or_report(driver::radio_interface(true), driver::kComplaintsAc, out);
}

extern "C" int wifimgr_lib_get_WPS_PIN_CODE(int wifi_type, int ssid_index, char* out) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (out == nullptr) return trace::fail(__func__);
  const driver::InterfaceName interface = driver::bss_interface(wifi_type == store::k5G, ssid_index);
  if (!driver::read_or_report(interface, driver::kComplaints, out)) return -1;
  return trace::success(__func__);
}

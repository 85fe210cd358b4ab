// The channel that a radio is on.
#include <cstdio>
#include <cstring>

#include "driver/request.h"
#include "store/band.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

// Answered when the driver gives no channel, for 5G too; deliberate.
constexpr char kFallback[] = "6";
constexpr size_t kTextSize = sizeof "-2147483648";

constexpr driver::Complaints kComplaints = {"==>UpdateChannel: Create socket fail",
                                            "==>UpdateChannel: ioctl open fail"};
constexpr driver::Complaints kComplaintsAc = {"==>UpdateChannelAC: Create socket fail",
                                              "==>UpdateChannelAC: ioctl open fail"};

bool read_channel(bool is_5g, const driver::Complaints& complaints, char* out) {
  driver::Request request = driver::make_request(driver::radio_interface(is_5g), nullptr, 16);
  const driver::Outcome outcome = driver::ask(driver::kGetFrequency, request);
  if (const char* const why = driver::complaint_about(outcome, complaints)) {
    (void)std::puts(why);
    std::memcpy(out, kFallback, sizeof kFallback);
    return false;
  }
  // The reply lies where the data pointer stood; this driver gives the channel as the mantissa of the frequency.
  int32_t channel = 0;
  std::memcpy(&channel, &request.data, sizeof channel);
  (void)std::snprintf(out, kTextSize, "%d", channel);
  return true;
}

}  // namespace

extern "C" void UpdateChannel(char* out) {
  if (out != nullptr) (void)read_channel(false, kComplaints, out);
}

extern "C" void UpdateChannelAC(char* out) {
  if (out != nullptr) (void)read_channel(true, kComplaintsAc, out);
}

extern "C" int wifimgr_lib_get_CHANNEL(int wifi_type, char* out) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (out == nullptr) return trace::fail(__func__);
  if (!read_channel(wifi_type == store::k5G, kComplaints, out)) return -1;
  return trace::success(__func__);
}

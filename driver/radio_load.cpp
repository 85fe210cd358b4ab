// How noisy and how busy a radio's channel is.
#include <cstdio>

#include "driver/request.h"
#include "store/band.h"
#include "store/band_value.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr uint16_t kNoise = 0x069C;
constexpr uint16_t kChannelLoad = 0x0765;

constexpr size_t kTextSize = sizeof "-2147483648";

constexpr driver::Complaints kNoiseComplaints = {"get_Noise: Create socket fail", "get_Noise: ioctl open fail"};
constexpr driver::Complaints kLoadComplaints = {"chanLoad: Create socket fail", "chanLoad: ioctl open fail"};

// What both queries are but for their OID, their words and how they print the number.
trace::Result get_number(const char* function, int wifi_type, int index, char* out, uint16_t oid,
                         const driver::Complaints& complaints, const char* format) {
  trace::enter(function);
  if (index != -1) return trace::fail(function, store::kIndexRefusal);
  if (!store::is_band(wifi_type)) return trace::fail(function, store::kWrongBand);
  if (out == nullptr) return trace::fail(function);
  uint32_t number = 0;
  const driver::Outcome outcome =
      driver::ask_oid(driver::radio_interface(wifi_type == store::k5G), oid, &number, sizeof number);
  if (const char* const why = driver::complaint_about(outcome, complaints)) return trace::fail(function, why);
  (void)std::snprintf(out, kTextSize, format, number);
  return trace::success(function);
}

}  // namespace

extern "C" int wifimgr_lib_get_Noise(int wifi_type, int index, char* out) {
  return get_number(__func__, wifi_type, index, out, kNoise, kNoiseComplaints, "%d");
}

extern "C" int wifimgr_lib_get_chanLoad(int wifi_type, int index, char* out) {
  return get_number(__func__, wifi_type, index, out, kChannelLoad, kLoadComplaints, "%u");
}

// For band steering: the same number, asked with a longer payload and read as a signed one. Every band but 2.4G counts
// as 5G.
extern "C" int wifimgr_lib_get_BndstrgChanLoad(int wifi_type, int ssid_index, char* out, int out_size) {
  trace::enter(__func__);
  if (ssid_index != 1) return trace::fail(__func__, "The ssid index should be 1 .");
  if (wifi_type == store::k2_4G) return trace::fail(__func__, "Only 5G support BndstrgChanLoad.");
  if (out == nullptr) return trace::fail(__func__);
  int32_t reply[4] = {};
  const driver::Outcome outcome = driver::ask_oid(driver::radio_interface(true), kChannelLoad, reply, sizeof reply);
  if (const char* const why = driver::complaint_about(outcome, kLoadComplaints)) return trace::fail(__func__, why);
  if (out_size > 0) (void)std::snprintf(out, static_cast<size_t>(out_size), "%d", reply[0]);
  return trace::success(__func__);
}

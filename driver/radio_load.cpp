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

}  // namespace

extern "C" int wifimgr_lib_get_Noise(int wifi_type, int index, char* out) {
  trace::enter(__func__);
  if (index != -1) return trace::fail(__func__, store::kIndexRefusal);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (out == nullptr) return trace::fail(__func__);
  int32_t noise = 0;
  driver::Request request =
      driver::make_request(driver::radio_interface(wifi_type == store::k5G), &noise, sizeof noise, kNoise);
  const driver::Outcome outcome = driver::ask(driver::kOid, request);
  if (const char* const why = driver::complaint_about(outcome, kNoiseComplaints)) return trace::fail(__func__, why);
  (void)std::snprintf(out, kTextSize, "%d", noise);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_chanLoad(int wifi_type, int index, char* out) {
  trace::enter(__func__);
  if (index != -1) return trace::fail(__func__, store::kIndexRefusal);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (out == nullptr) return trace::fail(__func__);
  uint32_t load = 0;
  driver::Request request =
      driver::make_request(driver::radio_interface(wifi_type == store::k5G), &load, sizeof load, kChannelLoad);
  const driver::Outcome outcome = driver::ask(driver::kOid, request);
  if (const char* const why = driver::complaint_about(outcome, kLoadComplaints)) return trace::fail(__func__, why);
  (void)std::snprintf(out, kTextSize, "%u", load);
  return trace::success(__func__);
}

// For band steering: the same number, asked with a longer payload and read as a signed one. Every band but 2.4G counts
// as 5G.
extern "C" int wifimgr_lib_get_BndstrgChanLoad(int wifi_type, int ssid_index, char* out, int out_size) {
  trace::enter(__func__);
  if (ssid_index != 1) return trace::fail(__func__, "The ssid index should be 1 .");
  if (wifi_type == store::k2_4G) return trace::fail(__func__, "Only 5G support BndstrgChanLoad.");
  if (out == nullptr) return trace::fail(__func__);
  int32_t reply[4] = {};
  driver::Request request = driver::make_request(driver::radio_interface(true), reply, sizeof reply, kChannelLoad);
  const driver::Outcome outcome = driver::ask(driver::kOid, request);
  if (const char* const why = driver::complaint_about(outcome, kLoadComplaints)) return trace::fail(__func__, why);
  if (out_size > 0) (void)std::snprintf(out, static_cast<size_t>(out_size), "%d", reply[0]);
  return trace::success(__func__);
}

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

// What both queries have in common but for the text. False when there is no number; the failure is traced then.
bool read_number(int wifi_type, int index, const char* out, const char* function, uint16_t oid,
                 const driver::Complaints& complaints, uint32_t* number) {
  trace::enter(function);
  const char* why = nullptr;
  if (index != -1) {
    why = store::kIndexRefusal;
  } else if (!store::is_band(wifi_type)) {
    why = store::kWrongBand;
  } else if (out == nullptr) {
    return trace::fail(function).as(false);
  } else {
    const driver::InterfaceName radio = driver::radio_interface(wifi_type == store::k5G);
    why = driver::complaint_about(driver::ask_oid(radio, oid, number, sizeof *number), complaints);
  }
  return why == nullptr || trace::fail(function, why).as(false);
}

}  // namespace

extern "C" int wifimgr_lib_get_Noise(int wifi_type, int index, char* out) {
  uint32_t noise = 0;
  if (!read_number(wifi_type, index, out, __func__, kNoise, kNoiseComplaints, &noise)) return 1;
  (void)std::snprintf(out, kTextSize, "%d", static_cast<int32_t>(noise));
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_chanLoad(int wifi_type, int index, char* out) {
  uint32_t load = 0;
  if (!read_number(wifi_type, index, out, __func__, kChannelLoad, kLoadComplaints, &load)) return 1;
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
  const driver::Outcome outcome = driver::ask_oid(driver::radio_interface(true), kChannelLoad, reply, sizeof reply);
  if (const char* const why = driver::complaint_about(outcome, kLoadComplaints)) return trace::fail(__func__, why);
  if (out_size > 0) (void)std::snprintf(out, static_cast<size_t>(out_size), "%d", reply[0]);
  return trace::success(__func__);
}

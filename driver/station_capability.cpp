// What a station can do: 802.11k radio measurement and 802.11v management.
#include <algorithm>
#include <cstring>
#include <iterator>

#include "driver/allocated.h"
#include "driver/request.h"
#include "store/band.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr uint16_t k11k = 0x494C;
constexpr uint16_t k11v = 0x494A;

constexpr uint8_t kStationQuery = 4;

// The two query records differ in the width of their length; so the driver has it, both are to be kept.
struct __attribute__((packed)) Query11k {
  uint8_t kind;
  uint32_t length;  // of what follows; both the gateway and its driver are little-endian
  uint8_t mac[6];
  uint8_t capability[8];
};
static_assert(sizeof(Query11k) == 19 && offsetof(Query11k, length) == 1 && offsetof(Query11k, mac) == 5 &&
              offsetof(Query11k, capability) == 11);

struct __attribute__((packed)) Query11v {
  uint8_t kind;
  uint8_t length;
  uint8_t mac[6];
  uint8_t capability;
};
static_assert(sizeof(Query11v) == 9 && offsetof(Query11v, length) == 1 && offsetof(Query11v, mac) == 2 &&
              offsetof(Query11v, capability) == 8);

struct Complaints {
  driver::Complaints request;
  const char* no_memory;
};
constexpr Complaints k11kComplaints = {{"getSta11kCap: Create socket fail", "getSta11kCap: ioctl open fail"},
                                       "getSta11kCap: malloc fail"};
constexpr Complaints k11vComplaints = {{"getSta11vCap: Create socket fail", "getSta11vCap: ioctl open fail"},
                                       "getSta11vCap: malloc fail"};

// Why the arguments are refused; null when they are fine, "" when a pointer is missing.
const char* refusal(int wifi_type, int ssid_index, const uint8_t* mac, const uint8_t* out) {
  if (ssid_index < 1 || ssid_index > 4) return "The ssid index should be from 1 to 4";
  if (!store::is_band(wifi_type)) return store::kWrongBand;
  return mac == nullptr || out == nullptr ? "" : nullptr;
}

// Asks about the station at `mac`. Returns null and leaves the answer in `query`, or why it could not.
template <typename Query>
const char* ask_about(int wifi_type, int ssid_index, const uint8_t* mac, uint16_t oid, const Complaints& complaints,
                      const driver::Allocated<Query>& query) {
  const driver::Socket socket;
  if (!socket) return complaints.request.no_socket;
  if (!query) return complaints.no_memory;
  query->kind = kStationQuery;
  query->length = sizeof query->mac + sizeof query->capability;
  std::memcpy(query->mac, mac, sizeof query->mac);
  driver::Request request = driver::make_request(driver::bss_interface(wifi_type == store::k5G, ssid_index - 1),
                                                 query.get(), sizeof(Query), oid);
  return socket.send(driver::kOid, &request) < 0 ? complaints.request.refused : nullptr;
}

// Plainly for "".
trace::Result fail(const char* function, const char* why) {
  return trace::fail(function, *why != '\0' ? why : nullptr);
}

}  // namespace

extern "C" int wifimgr_lib_get_Sta11kCap(int wifi_type, int ssid_index, const uint8_t* mac, uint8_t* capable) {
  trace::enter(__func__);
  if (const char* const why = refusal(wifi_type, ssid_index, mac, capable)) return fail(__func__, why);
  const driver::Allocated<Query11k> query;
  if (const char* const why = ask_about(wifi_type, ssid_index, mac, k11k, k11kComplaints, query)) {
    return fail(__func__, why);
  }
  const uint8_t* const bits = query->capability;
  *capable = std::any_of(bits, bits + sizeof query->capability, [](uint8_t byte) { return byte != 0; }) ? 1 : 0;
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_Sta11vCap(int wifi_type, int ssid_index, const uint8_t* mac, uint8_t* cap) {
  trace::enter(__func__);
  if (const char* const why = refusal(wifi_type, ssid_index, mac, cap)) return fail(__func__, why);
  const driver::Allocated<Query11v> query;
  if (const char* const why = ask_about(wifi_type, ssid_index, mac, k11v, k11vComplaints, query)) {
    return fail(__func__, why);
  }
  *cap = query->capability;
  return trace::success(__func__);
}

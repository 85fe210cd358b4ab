// The access list of a WPS session.
#include <cstring>

#include "driver/request.h"
#include "store/band.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr uint16_t kAccessList = 0x052A;

struct Reply {
  wifimgr_wps_access_list list;
  uint8_t rest[240];
};
static_assert(sizeof(wifimgr_wps_access_entry) == 8 && offsetof(wifimgr_wps_access_entry, value) == 6);
static_assert(sizeof(wifimgr_wps_access_list) == 528 && offsetof(wifimgr_wps_access_list, entry) == 16);
static_assert(sizeof(Reply) == 768);

// Stops at a zero byte and fills up with zeros, as callers know it: a MAC with a zero byte loses what follows.
void copy_mac(uint8_t (&to)[6], const uint8_t (&from)[6]) {
  const size_t length = strnlen(reinterpret_cast<const char*>(from), sizeof from);
  std::memset(to, 0, sizeof to);
  std::memcpy(to, from, length);
}

}  // namespace

extern "C" int wifimgr_lib_get_WPS_ACL_INFO(int wifi_type, int ssid_index, wifimgr_wps_access_list* out) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (out == nullptr) return trace::fail(__func__);
  Reply reply = {};
  const driver::InterfaceName interface = driver::bss_interface(wifi_type == store::k5G, ssid_index);
  const driver::Outcome outcome = driver::ask_oid(interface, kAccessList, &reply, sizeof reply);
  if (driver::report(__func__, outcome, {":Create ACL socket fail", ":ioctl open fail"}) != 0) return -1;
  std::memcpy(out->header, reply.list.header, sizeof out->header);
  for (size_t i = 0; i < WIFIMGR_WPS_ACCESS_ENTRIES; ++i) {
    copy_mac(out->entry[i].mac, reply.list.entry[i].mac);
    out->entry[i].value = reply.list.entry[i].value;
  }
  return trace::success(__func__);
}

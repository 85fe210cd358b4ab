// The state of a WPS session, and its peer.
#include <cstdio>
#include <cstring>

#include "driver/allocated.h"
#include "driver/request.h"
#include "store/band.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr uint16_t kState = 0x0751;
constexpr uint16_t kPeer = 0x075C;
constexpr uint16_t kSessionStation = 0x2044;

// States above this one have a peer.
constexpr int32_t kLastStateWithoutPeer = 2;

struct StateReply {
  uint32_t state;
  uint8_t rest[16];
};
static_assert(sizeof(StateReply) == 20);

struct PeerReply {
  uint8_t profile[192];
  uint8_t mac[6];
};
static_assert(sizeof(PeerReply) == 198 && offsetof(PeerReply, mac) == 192);

struct StationReply {
  uint8_t mac[6];
  uint8_t rest[26];
};
static_assert(sizeof(StationReply) == 32);

constexpr size_t kMacTextSize = sizeof "00:00:00:00:00:00";

// One socket for both requests. False when one of them fails; what was read until then stays.
bool read_session(bool is_5g, uint32_t* state, char* peer_mac, int ssid_index) {
  const driver::Socket socket;
  if (!socket) {
    (void)std::puts("==>UpdateWpsStatus: Create socket fail");
    *state = 0;
    *peer_mac = '\0';
    return false;
  }
  const driver::InterfaceName interface = driver::bss_interface(is_5g, ssid_index);
  StateReply reply = {};
  driver::Request request = driver::make_request(interface, &reply, sizeof reply, kState);
  if (socket.send(driver::kOid, &request) < 0) {
    (void)std::puts("==>UpdateWpsStatus: ioctl open fail");
    *state = 0;
    *peer_mac = '\0';
    return false;
  }
  *state = reply.state;
  if (static_cast<int32_t>(reply.state) <= kLastStateWithoutPeer) return true;

  PeerReply peer = {};
  request = driver::make_request(interface, &peer, sizeof peer, kPeer);
  const int result = socket.send(driver::kOid, &request);
  if (result < 0) {
    (void)std::printf("==>UpdateWpsMac: ioctl open fail:%d\n", result);
    *peer_mac = '\0';
    return false;
  }
  const uint8_t* const mac = peer.mac;
  (void)std::snprintf(peer_mac, kMacTextSize, "%02X:%02X:%02X:%02X:%02X:%02X", mac[0], mac[1], mac[2], mac[3], mac[4],
                      mac[5]);
  return true;
}

}  // namespace

extern "C" void UpdateWpsStatus(uint32_t* state, char* peer_mac, int ssid_index) {
  if (state != nullptr && peer_mac != nullptr) (void)read_session(false, state, peer_mac, ssid_index);
}

extern "C" void UpdateWpsStatusAC(uint32_t* state, char* peer_mac, int ssid_index) {
  if (state != nullptr && peer_mac != nullptr) (void)read_session(true, state, peer_mac, ssid_index);
}

extern "C" int wifimgr_lib_get_WpsStatus(int wifi_type, uint32_t* state, char* peer_mac, int ssid_index) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (state == nullptr || peer_mac == nullptr) return trace::fail(__func__);
  if (!read_session(wifi_type == store::k5G, state, peer_mac, ssid_index)) return -1;
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_WPS_STATUS(int wifi_type, uint16_t* status) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (status == nullptr) return trace::fail(__func__);
  uint16_t reply[384] = {};
  static_assert(sizeof reply == 768);
  driver::Request request = driver::make_request(driver::radio_interface(wifi_type == store::k5G), reply, sizeof reply);
  const driver::Outcome outcome = driver::ask(driver::kWpsStatusWord, request);
  if (driver::report(__func__, outcome, {"Create socket fail", ":ioctl open fail"}) != 0) return -1;
  *status = reply[0];
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_WPS_STA_MAC(int wifi_type, char* out) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (out == nullptr) return trace::fail(__func__);
  const driver::Allocated<StationReply> reply;
  if (!reply) {
    (void)std::puts("malloc failed.");
    return 4;
  }
  constexpr driver::Complaints kComplaints = {"wifimgr_lib_get_WPS_STA_MAC: Create socket fail",
                                              "wifimgr_lib_get_WPS_STA_MAC: ioctl open fail"};
  const driver::Outcome outcome = driver::ask_oid(driver::radio_interface(wifi_type == store::k5G), kSessionStation,
                                                  reply.get(), sizeof(StationReply));
  if (const char* const why = driver::complaint_about(outcome, kComplaints)) return trace::fail(__func__, why);
  const uint8_t* const mac = reply.get()->mac;
  (void)std::snprintf(out, kMacTextSize, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3], mac[4],
                      mac[5]);
  return trace::success(__func__);
}

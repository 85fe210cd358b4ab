// What the kernel says about an interface: its hardware address and its flags.
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <cstdio>
#include <cstring>

#include "driver/request.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr char kBridge[] = "br0";
constexpr size_t kMacSize = 6;
constexpr int kRawProtocol = 255;

ifreq make_request(const char* name) {
  ifreq request = {};
  std::memcpy(request.ifr_name, driver::interface_named(name).text, driver::kInterfaceNameSize);
  static_assert(sizeof request.ifr_name == driver::kInterfaceNameSize);
  return request;
}

void copy_address(uint8_t* mac, const ifreq& request) {
  std::memcpy(mac, request.ifr_hwaddr.sa_data, kMacSize);
}

bool ask_address(const driver::Socket& socket, ifreq& request) {
  return socket.send(SIOCGIFHWADDR, &request) >= 0;
}

void write_address(const ifreq& request, char* out, int size) {
  if (size <= 0) return;
  uint8_t mac[kMacSize];
  copy_address(mac, request);
  (void)std::snprintf(out, static_cast<size_t>(size), "%02X:%02X:%02X:%02X:%02X:%02X", mac[0], mac[1], mac[2], mac[3],
                      mac[4], mac[5]);
}

}  // namespace

extern "C" int wifimgr_lib_get_itf_hwaddr(const char* ifname, char* out, int size) {
  trace::enter(__func__);
  if (out == nullptr) return trace::fail(__func__).as(-1);
  const driver::Socket socket;
  if (!socket) {
    (void)std::printf("%s %d: socket open fail\n", __func__, 2026);
    return -1;
  }
  ifreq request = make_request(ifname);
  if (!ask_address(socket, request)) {
    (void)std::printf("%s %d: ioctl open fail\n", __func__, 2033);
    return -1;
  }
  write_address(request, out, size);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_interface_mac0(const char* ifname, char* out, int size) {
  trace::enter(__func__);
  if (out == nullptr) return trace::fail(__func__).as(-1);
  const driver::Socket socket;
  if (!socket) {
    (void)std::printf("%s %d: socket open fail\n", __func__, 2078);
    return -1;
  }
  ifreq request = make_request(ifname);
  if (!ask_address(socket, request)) return trace::fail(__func__).as(-1);
  write_address(request, out, size);
  return trace::success(__func__);
}

// Never fails; deliberate.
extern "C" int wifimgr_lib_get_interface_mac(const char* ifname, uint8_t* mac) {
  trace::enter(__func__);
  const driver::Socket socket(AF_INET, SOCK_RAW, kRawProtocol);
  ifreq request = make_request(ifname);
  request.ifr_addr.sa_family = AF_INET;
  if (mac != nullptr && socket && ask_address(socket, request)) copy_address(mac, request);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_ethaddr(uint8_t* mac) {
  trace::enter(__func__);
  if (mac == nullptr) return trace::fail(__func__);
  uint8_t address[kMacSize] = {};
  // Only another definition of that function fails.
  if (wifimgr_lib_get_interface_mac(kBridge, address) != 0) {
    return trace::fail(__func__, "wifimgr_lib_get_ethaddr: get ethaddr fail");
  }
  std::memcpy(mac, address, sizeof address);
  return trace::success(__func__);
}

// The socket is the caller's and stays open.
extern "C" int wifimgr_lib_get_ifaddr(int socket, uint8_t* mac) {
  trace::enter(__func__);
  ifreq request = make_request(kBridge);
  if (mac == nullptr || ioctl(socket, SIOCGIFHWADDR, &request) < 0) return trace::fail(__func__).as(-1);
  copy_address(mac, request);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_br0_v6addr(uint8_t* record) {
  trace::enter(__func__);
  if (record == nullptr) return trace::fail(__func__).as(-1);
  const driver::Socket socket(AF_INET6, SOCK_DGRAM, 0);
  ifreq request = make_request(kBridge);
  if (!socket || !ask_address(socket, request)) return trace::fail(__func__).as(-1);
  uint8_t mac[kMacSize];
  copy_address(mac, request);
  const auto local = static_cast<uint8_t>(mac[0] ^ 0x02U);
  // The upper half is no standard prefix, and its first two bytes are the caller's; deliberate.
  const uint8_t bytes[] = {local,  mac[2], mac[1], 0xE3, mac[4], 0xEF,   local,
                           mac[1], mac[2], 0xFF,   0xFE, mac[3], mac[4], mac[5]};
  static_assert(sizeof bytes == 14);
  std::memcpy(record + 2, bytes, sizeof bytes);
  return trace::success(__func__);
}

// No answer counts as no flag.
extern "C" int wifimgr_lib_get_test_itf_status(const char* ifname, uint16_t mask) {
  trace::enter(__func__);
  const driver::Socket socket;
  ifreq request = make_request(ifname);
  if (!socket || socket.send(SIOCGIFFLAGS, &request) < 0) return trace::fail(__func__).as(0);
  return trace::success(__func__).as((static_cast<uint16_t>(request.ifr_flags) & mask) != 0 ? 1 : 0);
}

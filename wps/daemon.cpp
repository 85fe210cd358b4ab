// The WPS daemon, which is told the bridge's address when it starts.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "store/band.h"
#include "store/decimal.h"
#include "store/record.h"
#include "store/shell.h"
#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

extern "C" void get_onu_ipaddr(char* out) {
  if (out == nullptr) return;
  (void)store::run_line("ifconfig br0 > /tmp/br0_info.txt");
  const store::Stream file(std::fopen("/tmp/br0_info.txt", "re"));
  if (!file) return;
  char* line = nullptr;
  size_t size = 0;
  while (getline(&line, &size, file.get()) >= 0) {
    const char* const address = std::strstr(line, "inet addr:");
    if (address == nullptr) continue;
    (void)std::sscanf(address, "inet addr:%31s ", out);
    break;
  }
  std::free(line);
}

namespace {

// Any process may have put the text where it is read from, and it goes to a shell: what is no address counts as none.
// IPV4check leaves a sixteenth character unjudged.
bool is_address(const char* text) {
  constexpr size_t kLongest = sizeof "255.255.255.255" - 1;
  return std::strlen(text) <= kLongest && IPV4check(text) == 1;
}

}  // namespace

// `ssid_index` counts from 1 here.
extern "C" int wifimgr_lib_service_wpsstart_wifiupnp(int wifi_type, int ssid_index, const char* enable) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__).as(-1);
  if (enable == nullptr) return trace::fail(__func__);
  (void)store::run_line("killall -9 wscd");
  if (std::strcmp(enable, "Yes") == 0) {
    char mode[store::kValueSize] = "";
    if (wifimgr_lib_get_wscConfMode(static_cast<uint32_t>(wifi_type), ssid_index, mode, sizeof mode) != 0) {
      (void)std::puts("write_wlan_config:wifimgr_lib_get_wscConfMode fail.");
    }
    if (store::decimal(mode) != 0) {
      char address[32] = "";
      get_onu_ipaddr(address);
      if (!is_address(address)) address[0] = '\0';
      char line[128];
      (void)std::snprintf(line, sizeof line, "/usr/bin/wscd -i %s%d -a %s -m 1 &",
                          wifi_type == store::k2_4G ? "ra" : "rai", ssid_index - 1, address);
      (void)store::run_line(line);
    }
  }
  return trace::success(__func__);
}

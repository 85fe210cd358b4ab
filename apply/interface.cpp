#include "apply/interface.h"

#include <cstdio>

#include "apply/band_number.h"
#include "store/decimal.h"
#include "store/record.h"
#include "store/shell.h"
#include "wifimgr_lib.h"

namespace apply {

void take_down(const char* bridge, const char* prefix, int number) {
  (void)store::run_shell("ifconfig %s%d down", prefix, number);
  (void)store::run_shell("brctl delif %s %s%d", bridge, prefix, number);
}

void take_all_down(const char* bridge, const char* prefix, int count) {
  for (int i = 0; i < count; ++i) take_down(bridge, prefix, i);
}

void bring_up(const char* bridge, const char* prefix, int number) {
  (void)store::run_shell("ifconfig %s%d up", prefix, number);
  (void)store::run_shell("brctl addif %s %s%d", bridge, prefix, number);
}

void bring_wds_up(const char* bridge, const char* prefix) {
  for (int link = 0; link < kWdsLinks; ++link) {
    bring_up(bridge, prefix, link);
    (void)std::printf("addif %s%d to br0\n", prefix, link);
  }
}

void take_band_down(const Prefixes& prefix, int bss_count) {
  take_all_down(kBr0, prefix.bss, bss_count);
  take_all_down(kBr0, prefix.wds, kWdsLinks);
}

void bring_bss_up(const Prefixes& prefix, int number) {
  bring_up(kBr0, prefix.bss, number);
  (void)std::printf("add %s%d to br0\n", prefix.bss, number);
}

void bring_wds_up_if_on(uint32_t wifi_type, const Prefixes& prefix) {
  int32_t mode = 0;
  if (read_number(wifimgr_lib_get_wdsenable, wifi_type, mode) && mode == 1) bring_wds_up(kBr0, prefix.wds);
}

int32_t read_enable(uint32_t wifi_type, int32_t ssid_index) {
  char text[store::kValueSize] = "";
  if (wifimgr_lib_get_enableSsid(wifi_type, ssid_index, text, sizeof text) != 0) return 0;
  return store::decimal(text);
}

}  // namespace apply

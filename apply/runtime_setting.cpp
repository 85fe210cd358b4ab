// Small settings and probes at run time.
#include <cstdio>

#include "store/band.h"
#include "store/bounded_text.h"
#include "store/shell.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

extern "C" int wifimgr_lib_set_WifiTxQueue(int32_t count, uint32_t length) {
  trace::enter(__func__);
  for (int32_t i = 0; i < count; ++i) {
    (void)store::run_shell("ifconfig ra%d txqueuelen %d", i, static_cast<int>(length));
  }
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_set_TxBurst_to_file(char* dst, int32_t size, int32_t ssid_number, const char* value) {
  trace::enter(__func__);
  if (dst == nullptr || size <= 0 || value == nullptr) return trace::fail(__func__).as(0);
  (void)std::snprintf(dst, static_cast<size_t>(size), "/userfs/bin/iwpriv rai%d set %s=%s\n", ssid_number, "TxBurst",
                      value);
  return trace::success(__func__);
}

extern "C" uint64_t wifimgr_lib_set_MaxStaNum(uint32_t wifi_type, uint32_t ssid_index, const char* value) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::success(__func__);
  const uint64_t result = wifimgr_lib_set_mbssMaxStaNum(wifi_type, static_cast<int32_t>(ssid_index), value);
  if (result != 0) return trace::fail(__func__).as(result);
  return trace::success(__func__);
}

// The last byte wraps without a carry into the fifth; deliberate.
extern "C" int wifimgr_lib_use_global_mac(uint8_t* mac) {
  trace::enter(__func__);
  if (mac == nullptr) return trace::fail(__func__).as(0);
  mac[5] = static_cast<uint8_t>(mac[5] + 1);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_is_WHNAT_support(uint32_t wifi_type, char* dst, int32_t size) {
  if (store::is_band(wifi_type)) store::write_text(dst, size, "N/A");
  return 0;
}

extern "C" int wifimgr_lib_is_Tx_Rx_Stream_support(char* dst, int32_t size) {
  store::write_text(dst, size, "N/A");
  return 0;
}

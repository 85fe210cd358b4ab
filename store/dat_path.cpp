#include "store/dat_path.h"

#include <cstdio>
#include <cstring>

#include "store/record.h"
#include "store/stream.h"
#include "store/trace.h"

char dat_path_2_4g[WIFIMGR_DAT_PATH_SIZE] = "/etc/Wireless/RT2860AP/RT2860AP.dat";
char dat_path_5g[WIFIMGR_DAT_PATH_SIZE] = "/etc/Wireless/RT2860AP_AC/RT2860AP.dat";

namespace store {

DatPath::DatPath(int band) {
  std::memcpy(text, band == k2_4G ? dat_path_2_4g : dat_path_5g, sizeof text);
  text[sizeof text - 1] = '\0';
}

}  // namespace store

extern "C" int wifimgr_lib_set_wifi_path(int wifi_type, const char* path) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, "The wifi type is invalid.");
  if (path == nullptr) return trace::fail(__func__);
  std::memmove(wifi_type == store::k2_4G ? dat_path_2_4g : dat_path_5g, path, WIFIMGR_DAT_PATH_SIZE);
  return trace::success(__func__);
}

// Counts reads, not lines: a line longer than the buffer takes several. The five records more end the table.
extern "C" int get_dat_para_num(int wifi_type) {
  if (!store::is_band(wifi_type)) return 0;
  const store::Stream file(std::fopen(store::DatPath(wifi_type).text, "re"));
  if (!file) return 0;
  int reads = 0;
  for (char line[store::kLineSize]; std::fgets(line, sizeof line, file.get()) != nullptr;) ++reads;
  return std::ferror(file.get()) == 0 ? reads + 5 : 0;
}

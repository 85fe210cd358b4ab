#include <sys/shm.h>

#include <cstring>

#include "fuzz/functions.h"
#include "fuzz/library_stand.h"
#include "support/sandbox.h"

namespace {

// Every byte of the segment is a foreign writer's; the input is repeated to its end.
void overwrite(int band, std::string_view bytes, bool keeps_keys) {
  const int segment = shmget(band == 0 ? 0x12345 : 0x12346, 0, 0);
  shmid_ds status;
  fuzz::require(segment >= 0 && shmctl(segment, IPC_STAT, &status) == 0, "the segment is there");
  char* const table = band == 0 ? shm_addr_2_4g : shm_addr_5g;
  if (bytes.empty()) return;
  for (size_t i = 0; i < status.shm_segsz; ++i) {
    const bool is_key = i % sizeof(wifimgr_attr_record) < WIFIMGR_KEY_SIZE;
    if (!is_key || !keeps_keys) table[i] = bytes[i % bytes.size()];
  }
}

void read_all(int band) {
  const uint32_t wifi_type = static_cast<uint32_t>(band);
  for (const int index : {-1, 1, 8}) fuzz::get_all(band, index);
  for (const fuzz::SnapshotTaker taker : fuzz::functions().snapshot_takers) {
    wifimgr_band_snapshot snapshot = {};
    (void)taker(&snapshot, wifi_type);
  }
  (void)wifimgr_lib_dump(band);
  (void)wifimgr_lib_wifi_config_oper(wifi_type, 0);
  (void)wifimgr_lib_wifi_config_oper(wifi_type, 1);
  for (const uint32_t ssid : {0U, 1U, 7U, 8U}) (void)wifimgr_lib_write_wifi_execute_sh(wifi_type, ssid);
  (void)update_datafile_from_shm(band, 8);
  (void)wifimgr_lib_save_dataFile(band);
  (void)wifimgr_lib_check_wifi_value_befor_write_dat(wifi_type);
  (void)wifimgr_lib_commit(wifi_type, 1);
}

}  // namespace

// A band, whether the keys stay, and the bytes.
void fuzz::try_segment(std::string_view input) {
  Bytes bytes(input);
  const uint8_t how = bytes.byte();
  const int band = how % 2;
  static const std::string kDat[] = {sandbox::full_dat(0), sandbox::full_dat(1)};
  require(load(band, kDat[band]) == 0, "the dat file is loaded");
  overwrite(band, bytes.rest(), how / 2 % 2 == 0);
  quietly([&] { read_all(band); });
}

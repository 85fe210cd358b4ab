#include <type_traits>
#include <vector>

#include "fuzz/functions.h"
#include "fuzz/library_stand.h"
#include "support/sandbox.h"

namespace {

using fuzz::functions;
using fuzz::Setter;

template <typename Function>
void get(const std::vector<Function>& getters, uint8_t which, int band, int index) {
  if (getters.empty()) return;
  char value[WIFIMGR_VALUE_SIZE] = "";
  const Function getter = getters[which % getters.size()];
  if constexpr (std::is_same_v<Function, fuzz::Getter>) {
    (void)getter(static_cast<uint32_t>(band), index, value, sizeof value);
  } else {
    (void)getter(band, index, value, sizeof value);
  }
}

void operate(uint8_t which, int band) {
  const uint32_t wifi_type = static_cast<uint32_t>(band);
  switch (which % 8) {
    case 0:
      (void)wifimgr_lib_wifi_config_oper(wifi_type, 0);
      break;
    case 1:
      fuzz::require(wifimgr_lib_wifi_config_oper(wifi_type, 1) <= 2, "a change is nothing, a restart or a reboot");
      break;
    case 2:
      (void)wifimgr_lib_check_wifi_value_befor_write_dat(wifi_type);
      break;
    case 3:
      (void)wifimgr_lib_save_dataFile(band);
      break;
    case 4:
      (void)wifimgr_lib_commit(wifi_type, 1);
      break;
    case 5:
      (void)wifimgr_lib_write_wifi_execute_sh(wifi_type, which / 8 % 10);
      break;
    case 6:
      (void)wifimgr_lib_wifi_onoff(wifi_type, which / 8 % 3);
      break;
    default:
      doWifiDownUp(wifi_type, which / 8 % 3);
      break;
  }
}

}  // namespace

// A band, then operations: what kind, which of them, the index, and for a setter a text that a NUL ends.
void fuzz::try_settings(std::string_view input) {
  Bytes bytes(input);
  const int band = bytes.byte() % 2;
  static const std::string kDat[] = {sandbox::full_dat(0), sandbox::full_dat(1)};
  require(load(band, kDat[band]) == 0, "the dat file is loaded");
  const std::string stored = keys(band);
  for (int operations = 0; operations < 32 && !bytes.is_empty(); ++operations) {
    const uint8_t kind = bytes.byte();
    const uint8_t which = bytes.byte();
    const int index = bytes.byte() % 12 - 1;
    quietly([&] {
      switch (kind % 4) {
        case 0:
        case 1: {
          const std::vector<Setter>& setters = functions().setters;
          const size_t setter = (which + (kind / 4) * 256U) % setters.size();
          (void)setters[setter](static_cast<uint32_t>(band), index, bytes.text().c_str());
          break;
        }
        case 2:
          if (kind / 4 % 2 == 0) {
            get(functions().getters, which, band, index);
          } else {
            get(functions().other_getters, which, band, index);
          }
          break;
        default:
          operate(which, band);
      }
    });
  }
  require_whole_store(band);
  require(keys(band) == stored, "settings change no key");
}

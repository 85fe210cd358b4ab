// Dependent values of a band, made consistent in the store before its dat file is written.
//
// No setter's refusal stops it: HT_BW, for one, stays as it is in a mode that refuses it.
#include <cstdio>

#include "apply/band_number.h"
#include "store/band.h"
#include "store/record.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

using apply::read_number_or_report;

constexpr int kBandWide = -1;

void set_band_wide(wifimgr_setter_t setter, uint32_t band, const char* value) {
  (void)setter(band, kBandWide, value);
}

void select_channel_automatically_if_unset(uint32_t band) {
  const bool fixed = read_number_or_report(wifimgr_lib_get_channel, band, nullptr) != 0;
  set_band_wide(wifimgr_lib_set_autoChannelSelect, band, fixed ? "0" : "3");
}

// The values are not used; what cannot be read is reported.
void read_wmm_of_all(uint32_t band, int ssids, const char* failure) {
  for (int ssid = 1; ssid <= ssids; ++ssid) {
    char text[store::kValueSize] = "";
    if (wifimgr_lib_get_wmmCapable(band, ssid, text, sizeof text) != 0 && failure != nullptr) (void)std::puts(failure);
  }
}

const char* basic_rates_2_4g(int mode) {
  switch (mode) {
    case 0:
    case 6:
    case 9:
    case 16:
      return "15";
    case 1:
      return "3";
    case 4:
    case 7:
      return "351";
    default:
      return nullptr;
  }
}

const char* ht_operating_mode_2_4g(int mode) {
  const bool green_field = mode == 0 || mode == 1 || mode == 7 || mode == 9 || mode == 16;
  return green_field ? "1" : "0";
}

// A level of the user interface as a percentage.
const char* tx_power_percentage(int level) {
  switch (level) {
    case 1:
      return "75";
    case 2:
      return "50";
    case 3:
      return "25";
    case 4:
      return "15";
    case 5:
      return "9";
    case 6:
      return "100";
    default:
      return nullptr;
  }
}

void normalise_2_4g(int mode, int ssids) {
  constexpr uint32_t band = store::k2_4G;
  const bool ht_mode_with_wmm_off = mode == 6 || mode == 9 || mode == 16;
  for (int ssid = 1; ssid <= ssids; ++ssid) {
    update_auth_mode(band, static_cast<uint32_t>(ssid));
    // "0" here, "1" on 5G; deliberate, callers find exactly these values in the store after an apply.
    if (ht_mode_with_wmm_off) (void)wifimgr_lib_set_wmmCapable(band, ssid, "0");
    update_fixedTxMode(band, static_cast<uint32_t>(ssid), static_cast<uint32_t>(mode));
  }
  read_wmm_of_all(band, ssids, apply::kWmmCapableFailed);
  set_band_wide(wifimgr_lib_set_txBurst, band, "1");
  if (mode != 6 && mode != 7 && mode != 9 && mode != 16) set_band_wide(wifimgr_lib_set_HT_BW, band, "0");
  select_channel_automatically_if_unset(band);
  if (const char* rates = basic_rates_2_4g(mode)) set_band_wide(wifimgr_lib_set_basicRate, band, rates);
  set_band_wide(wifimgr_lib_set_HT_OpMode, band, ht_operating_mode_2_4g(mode));
  const char* const percentage = tx_power_percentage(read_number_or_report(wifimgr_lib_get_txPower, band, nullptr));
  if (percentage != nullptr) set_band_wide(wifimgr_lib_set_txPower, band, percentage);
}

void normalise_5g(int mode, int ssids) {
  constexpr uint32_t band = store::k5G;
  const bool vht_mode = mode == 14 || mode == 15 || mode == 17;
  for (int ssid = 1; ssid <= ssids; ++ssid) {
    update_auth_mode(band, static_cast<uint32_t>(ssid));
    if (vht_mode || mode == 8) (void)wifimgr_lib_set_wmmCapable(band, ssid, "1");
    (void)wifimgr_lib_set_fixedTxMode(band, ssid, "0");
  }
  read_wmm_of_all(band, ssids, nullptr);
  set_band_wide(wifimgr_lib_set_txBurst, band, "1");
  if (mode == 2) set_band_wide(wifimgr_lib_set_HT_BW, band, "0");
  if (!vht_mode) {
    set_band_wide(wifimgr_lib_set_VHT_BW, band, "0");
    set_band_wide(wifimgr_lib_set_VHT_SGI, band, "1");
  } else if (read_number_or_report(wifimgr_lib_get_HT_BW, band, nullptr) != 1) {
    set_band_wide(wifimgr_lib_set_VHT_SGI, band, "1");
  }
  set_band_wide(wifimgr_lib_set_HT_OpMode, band, "0");
  select_channel_automatically_if_unset(band);
  // A second time; deliberate, the sequence of changes is part of the contract.
  set_band_wide(wifimgr_lib_set_HT_OpMode, band, "0");
}

}  // namespace

extern "C" int wifimgr_lib_check_wifi_value_befor_write_dat(uint32_t wifi_type) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::success(__func__);
  const int mode = read_number_or_report(wifimgr_lib_get_wirelessMode, wifi_type, apply::kWirelessModeFailed);
  const int ssids = read_number_or_report(wifimgr_lib_get_bssidnum, wifi_type, apply::kSsidCountFailed);
  if (wifi_type == store::k2_4G) {
    normalise_2_4g(mode, ssids);
  } else {
    normalise_5g(mode, ssids);
  }
  return trace::success(__func__);
}

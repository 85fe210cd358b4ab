// stations: who is associated with which SSID.
#include <cstdio>

#include "wlanctl/apply/plan.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/radio.h"
#include "wlanctl/live/served_ssid.h"
#include "wlanctl/live/stations.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

std::string hexadecimal(const std::optional<int>& byte) {
  if (!byte) return "-";
  char text[8];
  (void)std::snprintf(text, sizeof text, "0x%02x", static_cast<unsigned>(*byte));
  return text;
}

Json ask_ssid(Report& report, Band band, const ServedSsid& ssid, Rows* rows) {
  std::optional<std::vector<Station>> stations;
  if (ssid.link != LinkState::kAbsent) {
    stations = stations_of(band, ssid.number, report);
  } else if (link_state(interface_of(band, 0)) != LinkState::kAbsent) {
    report.note(ssid.interface + " is not there yet: SSID " + std::to_string(ssid.number) + " of " + label_of(band) +
                " waits for wlanctl apply, or a boot behind it");
  }
  for (const Station& station : stations.value_or(std::vector<Station>())) {
    rows->push_back({station.mac, label_of(band), std::to_string(ssid.number), yes_or_no(station.can_11k),
                     hexadecimal(station.features_11v), printable(ssid.name)});
  }
  return {{"ssid", ssid.number}, {"interface", ssid.interface}, {"name", ssid.name}, {"stations", json_of(stations)}};
}

int run(const Words& words, Report& report) {
  const DriverTime limited;
  int code = kDone;
  Json bands = Json::array();
  Rows rows = {{"STATION", "BAND", "SSID", "11k", "11v", "NAME"}};
  for (const Band band : look_at_bands(bands_of(words.band), &code, report)) {
    if (words.ssid != 0 && !has_ssid(band, words.ssid, report)) return kRefused;
    note_senseless_count(band, report);
    Json ssids = Json::array();
    (void)is_there(band, report);
    for (const ServedSsid& ssid : served_ssids(band)) {
      if (words.ssid == 0 || words.ssid == ssid.number) ssids.push_back(ask_ssid(report, band, ssid, &rows));
    }
    bands.push_back({{"band", label_of(band)}, {"ssids", std::move(ssids)}});
  }
  report.data() = {{"bands", std::move(bands)}};
  if (rows.size() > 1) {
    report.text() << table(rows);
  } else if (!report.has_problems()) {
    report.text() << "no stations\n";
  }
  if (code != kDone) return code;
  return report.has_problems() ? kNoAnswer : kDone;
}

constexpr Word kWords[] = {word::kBand, word::kSsid};

}  // namespace

const Verb kStations = {"stations",
                        "Show the stations of a band or an SSID",
                        "11k and 11v are what the driver tells of a station's 802.11k and 802.11v, of\n"
                        "SSIDs 1 to 4 only; the latter is its own number.\n\n"
                        "Examples:\n  wlanctl stations\n  wlanctl stations 2.4g 1 --json",
                        kWords,
                        run,
                        {},
                        true};

}  // namespace wlanctl

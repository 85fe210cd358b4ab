// ssid list: the SSIDs of a band, as the store has them, and whether they are up.
#include "wlanctl/apply/plan.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/live/served_ssid.h"
#include "wlanctl/live/stations.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/ssid/report.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

int run(const Words& words, Report& report) {
  int code = kDone;
  Json bands = Json::array();
  for (const Band band : look_at_bands(bands_of(words.band), &code, report)) {
    Json ssids = Json::array();
    note_senseless_count(band, report);
    Rows rows = {{"  SSID", "INTERFACE", "STATE", "ENABLED", "HIDDEN", "SECURITY", "NAME"}};
    for (const ServedSsid& ssid : served_ssids(band)) {
      const bool is_hidden = read_value(band, *find_key("HideSSID"), ssid.number).value_or("") == "1";
      const std::string security = security_of(band, ssid.number);
      rows.push_back({"  " + std::to_string(ssid.number), ssid.interface, word_for(ssid.link),
                      yes_or_no(ssid.is_enabled), yes_or_no(is_hidden), printable(security), printable(ssid.name)});
      ssids.push_back({{"ssid", ssid.number},
                       {"interface", ssid.interface},
                       {"name", ssid.name},
                       {"enabled", ssid.is_enabled},
                       {"hidden", is_hidden},
                       {"security", security},
                       {"state", word_for(ssid.link)}});
    }
    report.text() << label_of(band) << '\n' << table(rows);
    bands.push_back({{"band", label_of(band)}, {"ssids", std::move(ssids)}});
  }
  report.data() = {{"bands", std::move(bands)}};
  return code;
}

constexpr Word kWords[] = {word::kBand};

}  // namespace

const Verb kSsidList = {"list", "List the SSIDs, and which are up",
                        "Examples:\n  wlanctl ssid list\n  wlanctl ssid list 5g", kWords, run};

}  // namespace wlanctl

// show: a band or one of its SSIDs, as a table.
#include <algorithm>
#include <cstring>

#include "wlanctl/apply/plan.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// A list of addresses is longer than a line.
void add_row(const Key& key, const std::string& value, Rows* rows) {
  static const size_t value_column = [] {
    size_t longest = 0;
    for (const Key& one : all_keys()) longest = std::max(longest, std::strlen(one.name));
    return longest + 4;
  }();
  std::string name = std::string("  ") + key.name;
  for (const std::string& line : list_lines(value, kColumns - value_column)) {
    rows->push_back({name, line});
    name.clear();
  }
}

// The keys of one scope that the store has.
Json settings_of(Band band, Scope scope, int index, bool secrets, Rows* rows) {
  Json settings = Json::object();
  for (const Key& key : all_keys()) {
    if (key.scope != scope || !key.is_on(band)) continue;
    const std::optional<std::string> value = read_value(band, key, index);
    if (!value) continue;
    const std::string shown = secrets ? *value : shown_value(key, *value);
    settings[key.name] = json_value(key, shown);
    add_row(key, printable(shown), rows);
  }
  return settings;
}

void print(Report& report, const std::string& title, const Rows& rows) {
  report.text() << title << '\n' << table(rows);
}

Json show_ssid(Report& report, Band band, int ssid, bool secrets) {
  Rows rows;
  Json settings = settings_of(band, Scope::kSsid, ssid, secrets, &rows);
  print(report, std::string(label_of(band)) + " SSID " + std::to_string(ssid), rows);
  return {{"ssid", ssid}, {"interface", interface_of(band, ssid - 1)}, {"settings", std::move(settings)}};
}

Json show_band(Report& report, Band band, const Words& words) {
  Rows rows;
  Json shown = about(band);
  if (words.ssid == 0) {
    shown["settings"] = settings_of(band, Scope::kBand, -1, words.secrets, &rows);
    print(report, label_of(band), rows);
    Json links = Json::array();
    for (int link = 1; link <= kLinks; ++link) {
      rows.clear();
      links.push_back({{"link", link}, {"settings", settings_of(band, Scope::kLink, link, words.secrets, &rows)}});
    }
    shown["wds_links"] = std::move(links);
  }
  Json ssids = Json::array();
  const int first = words.ssid == 0 ? 1 : words.ssid;
  const int last = words.ssid == 0 ? ssid_count(band) : words.ssid;
  for (int ssid = first; ssid <= last; ++ssid) ssids.push_back(show_ssid(report, band, ssid, words.secrets));
  shown["ssids"] = std::move(ssids);
  return shown;
}

int run(const Words& words, Report& report) {
  int code = kDone;
  Json bands = Json::array();
  for (const Band band : look_at_bands(bands_of(words.band), &code, report)) {
    if (words.ssid > ssid_count(band)) {
      report.problem({std::string(label_of(band)) + " has " + std::to_string(ssid_count(band)) + " SSIDs",
                      "name one of them", about(band, words.ssid)});
      return kRefused;
    }
    note_senseless_count(band, report);
    bands.push_back(show_band(report, band, words));
  }
  report.data() = {{"bands", std::move(bands)}};
  return code;
}

constexpr Word kWords[] = {word::kBand, word::kSsid, word::kSecrets};

}  // namespace

const Verb kShow = {"show",
                    "Show the live settings of a band or an SSID",
                    "Examples:\n  wlanctl show 2.4g\n  wlanctl show 5g 1 --secrets",
                    kWords,
                    run,
                    {},
                    true};

}  // namespace wlanctl

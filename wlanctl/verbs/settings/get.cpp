// get: single values of the live store.
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

int run(const Words& words, Report& report) {
  const Band band = *parse_band(words.band);
  std::vector<Target> targets;
  for (const std::string& text : words.keys) {
    if (const std::optional<Target> target = parse_target(text, band, report)) targets.push_back(*target);
  }
  if (report.has_problems()) return kRefused;
  if (!look_at_band(band, report)) return kNoStore;
  Json values = Json::array();
  Rows rows;
  for (const Target& target : targets) {
    const std::optional<std::string> value = read_value(band, *target.key, target.index);
    if (!value) {
      report.problem({target.name() + " is not in the dat file of " + label_of(band),
                      "add the line " + dat_key_of(*target.key, target.index) + "= to it and load it anew",
                      about_key(target.name(), band)});
      continue;
    }
    rows.push_back({target.name(), printable(*value)});
    values.push_back({{"key", target.key->name}, {"index", target.index}, {"value", json_value(*target.key, *value)}});
  }
  // One value alone is for scripts.
  if (targets.size() == 1 && rows.size() == 1) {
    report.text() << rows[0][1] << '\n';
  } else {
    report.text() << table(rows);
  }
  report.data() = {{"band", label_of(band)}, {"values", std::move(values)}};
  return report.has_problems() ? kRefused : kDone;
}

constexpr Word kWords[] = {
    word::kOneBand,
    {"KEY", &Words::keys, "KEY for the band, KEY:SSID for an SSID", {.required = true, .offers = "key"}},
};

}  // namespace

const Verb kGet = {"get", "Print values of the live store",
                   "A passphrase that is asked for by its name is printed as it is.\n\n"
                   "Examples:\n  wlanctl get 2.4g Channel\n  wlanctl get 5g SSID:1 HideSSID:1 --json",
                   kWords, run};

}  // namespace wlanctl

// get: single values of the live store.
#include "wlanctl/command_line/command.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/store/store.h"

namespace wlanctl {
namespace {

struct Words {
  std::string band;
  std::vector<std::string> keys;
};

int run(const Words& words, Context& context) {
  const Band band = *parse_band(words.band);
  std::vector<Target> targets;
  for (const std::string& text : words.keys) {
    if (const std::optional<Target> target = parse_target(text, band, context.report)) targets.push_back(*target);
  }
  if (context.report.has_problems()) return kRefused;
  if (!open_store(band, context.report)) return kNoStore;
  Json values = Json::array();
  std::vector<std::vector<std::string>> rows;
  for (const Target& target : targets) {
    const std::optional<std::string> value = read_value(band, *target.key, target.index);
    if (!value) {
      context.report.problem({target.name() + " is not in the dat file of " + label_of(band),
                              "add the line " + dat_key_of(*target.key, target.index) + "= to it and load it anew",
                              {{"band", label_of(band)}, {"key", target.name()}}});
      continue;
    }
    rows.push_back({target.name(), printable(*value)});
    values.push_back({{"key", target.key->name}, {"index", target.index}, {"value", json_value(*target.key, *value)}});
  }
  // One value alone is for scripts.
  if (targets.size() == 1 && rows.size() == 1) {
    context.report.text() << rows[0][1] << '\n';
  } else {
    context.report.text() << table(rows);
  }
  context.report.data() = {{"band", label_of(band)}, {"values", std::move(values)}};
  return context.report.has_problems() ? kRefused : kDone;
}

}  // namespace

void add_get(CLI::App& app, Context& context) {
  add_verb<Words>(
      app, context, "get", "Print values of the live store",
      [](CLI::App& verb, Words& words) {
        add_band(verb, words.band)->required();
        verb.add_option("KEY", words.keys, "KEY for the band, KEY:SSID for an SSID")->required();
        verb.footer(
            "A passphrase that is asked for by its name is printed as it is.\n\n"
            "Examples:\n  wlanctl get 2.4g Channel\n  wlanctl get 5g SSID:1 HideSSID:1 --json");
      },
      run);
}

}  // namespace wlanctl

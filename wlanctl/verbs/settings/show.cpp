// show: a band or one of its SSIDs, as a table.
#include "wlanctl/command_line/command.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/store/store.h"

namespace wlanctl {
namespace {

struct Words {
  std::string band;
  int ssid = 0;
  bool secrets = false;
};

struct Row {
  std::string name;
  std::string value;
};

std::string masked(const Key& key, const std::string& value, bool secrets) {
  return key.secret && !secrets && !value.empty() ? kMasked : value;
}

// The keys of one scope that the store has.
Json settings_of(Band band, Scope scope, int index, bool secrets, std::vector<Row>* rows) {
  Json settings = Json::object();
  for (const Key& key : all_keys()) {
    if (key.scope != scope || !key.is_on(band)) continue;
    const std::optional<std::string> value = read_value(band, key, index);
    if (!value) continue;
    const std::string shown = masked(key, *value, secrets);
    settings[key.name] = json_value(key, shown);
    rows->push_back({key.name, printable(shown)});
  }
  return settings;
}

void print(Report& report, const std::string& title, const std::vector<Row>& rows) {
  std::vector<std::vector<std::string>> cells;
  for (const Row& row : rows) cells.push_back({"  " + row.name, row.value});
  report.text() << title << '\n' << table(cells);
}

Json show_ssid(Report& report, Band band, int ssid, bool secrets) {
  std::vector<Row> rows;
  Json settings = settings_of(band, Scope::kSsid, ssid, secrets, &rows);
  print(report, std::string(label_of(band)) + " SSID " + std::to_string(ssid), rows);
  return {{"ssid", ssid}, {"interface", interface_of(band, ssid - 1)}, {"settings", std::move(settings)}};
}

Json show_band(Report& report, Band band, const Words& words) {
  std::vector<Row> rows;
  Json shown = {{"band", label_of(band)}};
  if (words.ssid == 0) {
    shown["settings"] = settings_of(band, Scope::kBand, -1, words.secrets, &rows);
    print(report, label_of(band), rows);
    Json links = Json::array();
    for (int link = 1; link <= 4; ++link) {
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

int run(const Words& words, Context& context) {
  Json bands = Json::array();
  for (const Band band : bands_of(words.band)) {
    if (!open_store(band, context.report)) return kNoStore;
    if (words.ssid > ssid_count(band)) {
      context.report.problem({std::string(label_of(band)) + " has " + std::to_string(ssid_count(band)) + " SSIDs",
                              "name one of them",
                              {{"band", label_of(band)}, {"ssid", words.ssid}}});
      return kRefused;
    }
    bands.push_back(show_band(context.report, band, words));
  }
  context.report.data() = {{"bands", std::move(bands)}};
  return kDone;
}

}  // namespace

void add_show(CLI::App& app, Context& context) {
  add_verb<Words>(
      app, context, "show", "Show the live settings of a band or an SSID",
      [](CLI::App& verb, Words& words) {
        CLI::Option* const band = add_band(verb, words.band);
        verb.add_option("SSID", words.ssid, "1 to 8")->check(CLI::Range(1, WIFIMGR_FIELDS))->needs(band);
        verb.add_flag("--secrets", words.secrets, "Show passphrases and keys");
        verb.footer("Examples:\n  wlanctl show 2.4g\n  wlanctl show 5g 1 --secrets");
      },
      run);
}

}  // namespace wlanctl

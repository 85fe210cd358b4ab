// neighbours: who else sends on the band.
#include "wlanctl/command_line/command.h"
#include "wlanctl/live/neighbours.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {
namespace {

struct Words {
  std::string band;
};

int run(const Words& words, Context& context) {
  Report& report = context.report;
  Json bands = Json::array();
  for (const Band band : bands_of(words.band)) {
    const auto neighbours = is_there(band, report) ? neighbours_of(band, report) : std::nullopt;
    bands.push_back({{"band", label_of(band)}, {"neighbours", json_of(neighbours)}});
    if (!neighbours) continue;
    report.text() << label_of(band) << ": " << neighbours->size() << " neighbours\n";
    if (!neighbours->empty()) report.text() << table_of(*neighbours, neighbours->size());
  }
  report.data() = {{"bands", std::move(bands)}};
  return report.has_problems() ? kNoAnswer : kDone;
}

}  // namespace

void add_neighbours(CLI::App& app, Context& context) {
  add_verb<Words>(
      app, context, "neighbours", "Show who else sends on a band, the strongest first",
      [](CLI::App& verb, Words& words) {
        add_band(verb, words.band);
        verb.footer("Examples:\n  wlanctl neighbours\n  wlanctl neighbours 5g --json");
      },
      run);
}

}  // namespace wlanctl

// neighbours: who else sends on the band.
#include "wlanctl/live/neighbours.h"
#include "wlanctl/base/report.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/radio.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

int run(const Words& words, Report& report) {
  const DriverTime limited;
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

constexpr Word kWords[] = {word::kBand};

}  // namespace

const Verb kNeighbours = {"neighbours",
                          "Show who else sends on a band, the strongest first",
                          "Examples:\n  wlanctl neighbours\n  wlanctl neighbours 5g --json",
                          kWords,
                          run,
                          {},
                          true};

}  // namespace wlanctl

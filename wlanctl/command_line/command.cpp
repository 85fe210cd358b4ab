#include "wlanctl/command_line/command.h"

namespace wlanctl {

CLI::Option* add_band(CLI::App& verb, std::string& band) {
  return verb.add_option("BAND", band, "2.4g or 5g")->check([](const std::string& text) {
    return parse_band(text) ? std::string() : "there is no band \"" + text + "\"; say 2.4g or 5g";
  });
}

std::vector<Band> bands_of(const std::string& text) {
  if (const std::optional<Band> band = parse_band(text)) return {*band};
  return {kBands.begin(), kBands.end()};
}

}  // namespace wlanctl

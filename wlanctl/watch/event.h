// Something that happened, as `monitor` tells it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/base/json.h"

namespace wlanctl {

struct Event {
  const char* kind;          // "station-joined" ...
  std::optional<Band> band;  // none for what is of no band
  // For a person, on one line with time, band and kind, which leave some 27 columns of a terminal: only what the operator
  // has named is longer. Not printable yet.
  std::string text;
  Json details = Json::object();
};

using Events = std::vector<Event>;

}  // namespace wlanctl

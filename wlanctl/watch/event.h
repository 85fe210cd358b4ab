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
  std::string text;          // for a person, on one line; not printable yet
  Json details = Json::object();
};

using Events = std::vector<Event>;

}  // namespace wlanctl

// What driver and kernel say of a radio at this moment. A question that gets no answer adds a problem to the report and
// leaves its place empty.
#pragma once

#include <optional>
#include <string>

#include "wlanctl/base/band.h"
#include "wlanctl/base/report.h"
#include "wlanctl/library/query.h"

namespace wlanctl {

enum class LinkState { kAbsent, kDown, kUp };
LinkState link_state(const std::string& interface);
const char* word_for(LinkState state);  // "absent", "down", "up"

// How many of the band's interfaces of SSIDs come before the last one that is up, with that; 0 where none is.
int interfaces_up(Band band);

// Whether the driver serves the band at all; a problem when it does not.
bool is_there(Band band, Report& report);

// The channel that the band's driver tells; none, with what it said, where it does not.
std::optional<int> channel_of(Band band, std::string* reason);

// The interface's hardware address, of which `asked` is asked.
std::optional<std::string> hardware_address_of(const std::string& interface, const Asked& asked, Report& report);

struct Radio {
  std::optional<std::string> address;
  std::optional<int> channel;
  std::optional<int> noise;
  std::optional<int> load;
  std::optional<unsigned> temperature;
};
Radio radio_of(Band band, Report& report);

}  // namespace wlanctl

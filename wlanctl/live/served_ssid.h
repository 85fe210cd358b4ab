// The SSIDs that a band's live store has, with what the live verbs need of each.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/base/report.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {

struct ServedSsid {
  int number;  // from 1
  std::string interface;
  std::string name;
  bool is_enabled;
  LinkState link;  // kAbsent while an apply has not made the interface yet
};

// The band's store must be open.
ServedSsid served_ssid(Band band, int number);
std::vector<ServedSsid> served_ssids(Band band);

// False with a problem when the band has no such SSID.
bool has_ssid(Band band, int number, Report& report);

}  // namespace wlanctl

// What the driver of a band says of itself, asked again and again.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>

#include "wlanctl/base/band.h"
#include "wlanctl/live/wps_session.h"
#include "wlanctl/watch/event.h"

namespace wlanctl {

class LinkWatch;
class StoreWatch;

class DriverWatch {
 public:
  explicit DriverWatch(Band band) : band_(band) {}

  // Tells what differs from the last look. The first one only tells of a driver that does not answer.
  void look(const LinkWatch& links, const StoreWatch& store, Events& events);

 private:
  struct Ssid {
    std::optional<std::set<std::string>> stations;  // none before the driver has told them
    WpsSession wps;                                 // without a state likewise
  };

  bool look_at_channel(const LinkWatch& links, Events& events);
  void tell_channel(int from, int to, Events& events);
  void look_at_ssid(int number, const LinkWatch& links, const StoreWatch& store, Events& events);

  Band band_;
  bool is_first_ = true;  // that the driver answered
  bool answers_ = true;
  std::optional<int> channel_;
  unsigned long changes_ = 0;  // of the band's interfaces, by the last look
  int looks_since_restart_ = 0;
  std::map<int, Ssid> ssids_;  // by number, those whose interface is there
};

}  // namespace wlanctl

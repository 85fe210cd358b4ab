// Whether what was applied to a band is in force.
#pragma once

#include <set>
#include <string>

#include "wlanctl/base/band.h"
#include "wlanctl/watch/event.h"

namespace wlanctl {

class InForceWatch {
 public:
  explicit InForceWatch(Band band) : band_(band) {}

  // Tells what has come to lack since the last look, and when nothing does any more.
  void look(Events& events);

 private:
  Band band_;
  std::set<std::string> lacking_;
};

}  // namespace wlanctl

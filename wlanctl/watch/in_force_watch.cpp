#include "wlanctl/watch/in_force_watch.h"

#include <utility>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"

namespace wlanctl {

void InForceWatch::look(Events& events) {
  std::set<std::string> now;
  for (const Lack& lack : lacks_of(band_)) {
    const std::string text = lacking(lack.wanted);
    // It may have been mended this moment.
    if (text.empty() || !now.insert(text).second || lacking_.contains(text)) continue;
    events.push_back({"not-in-force", band_, text, {{"lack", text}, {"reason", lack.cause}}});
  }
  const std::string untold = "the driver did not take all of what was applied";
  if (!was_told(band_) && now.insert(untold).second && !lacking_.contains(untold)) {
    events.push_back({"not-in-force", band_, untold, {{"lack", untold}, {"reason", ""}}});
  }
  if (now.empty() && !lacking_.empty()) {
    events.push_back({"in-force-again", band_, "what was applied is in force again"});
  }
  lacking_ = std::move(now);
}

}  // namespace wlanctl

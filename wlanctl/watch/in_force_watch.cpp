#include "wlanctl/watch/in_force_watch.h"

#include <algorithm>
#include <utility>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {
namespace {

constexpr char kUntold[] = "the driver did not take all of what was applied";

bool answers(Band band) {
  std::string unheard;
  return channel_of(band, &unheard).has_value();
}

}  // namespace

void InForceWatch::look(Events& events) {
  if (are_lacks_damaged(band_)) return;  // so that nothing is known of them
  std::set<std::string> now;
  for (const Lack& lack : lacks_of(band_)) {
    const std::string text = lacking(lack.wanted);
    // It may have been mended this moment.
    if (text.empty() || !now.insert(text).second || lacking_.contains(text)) continue;
    events.push_back({"not-in-force", band_, text, {{"lack", text}, {"reason", lack.cause}}});
  }
  if (!was_told(band_)) {
    now.insert(kUntold);
    if (!lacking_.contains(kUntold)) {
      events.push_back({"not-in-force", band_, kUntold, {{"lack", kUntold}, {"reason", ""}}});
    }
  } else if (lacking_.contains(kUntold) && !is_in_force_known(band_)) {
    // Somebody has written the dat file, which tells the driver nothing.
    now.insert(kUntold);
  }
  // A driver that does not answer has mended nothing.
  if (!std::includes(now.begin(), now.end(), lacking_.begin(), lacking_.end()) && !answers(band_)) {
    now.insert(lacking_.begin(), lacking_.end());
  }
  if (now.empty() && !lacking_.empty()) {
    events.push_back({"in-force-again", band_, "what was applied is in force again"});
  }
  lacking_ = std::move(now);
}

}  // namespace wlanctl

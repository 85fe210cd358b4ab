#include "wlanctl/watch/in_force_watch.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {
namespace {

constexpr char kUntold[] = "the driver did not take all of what was applied";

// What a line has no room for; its band and kind say it already.
constexpr struct {
  const char* words;
  const char* in_short;
} kShorter[] = {{kUntold, "not all reached the driver"},
                {"the driver of 2.4g is on ", ""},
                {"the driver of 5g is on ", ""},
                {"the driver of 2.4g does not tell its channel", "the driver tells no channel"},
                {"the driver of 5g does not tell its channel", "the driver tells no channel"},
                {"the kernel does not tell the bridge of ", "untold is the bridge of "},
                {"the driver's module ", ""},
                {" is in ", " in "},
                {" instead of ", ", not "},
                {", so the driver has not read all of it", ""}};

std::string in_short(std::string lack) {
  for (const auto& [words, shorter] : kShorter) {
    const size_t at = lack.find(words);
    if (at != std::string::npos) lack.replace(at, std::strlen(words), shorter);
  }
  return lack;
}

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
    events.push_back({"not-in-force", band_, in_short(text), {{"lack", text}, {"reason", lack.cause}}});
  }
  if (!was_told(band_)) {
    now.insert(kUntold);
    if (!lacking_.contains(kUntold)) {
      events.push_back({"not-in-force", band_, in_short(kUntold), {{"lack", kUntold}, {"reason", ""}}});
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
    events.push_back({"in-force-again", band_, "all is in force again"});
  }
  lacking_ = std::move(now);
}

}  // namespace wlanctl

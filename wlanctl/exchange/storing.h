// Stores what was judged, all of it or nothing, whoever interrupts or kills it.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/exchange/try_out.h"

namespace wlanctl {

// A value that is another one now, or would be.
struct ValueChange {
  Target target;
  std::string before;
  std::string after;
};

// What the plan's steps make of the store as it is, a change for each step as given; as needed one for each setting.
std::vector<ValueChange> changes_of(const StorePlan& plan);

// Under the tool's lock, in the stores that are open. False with a problem when nothing was stored. `verb` is who asks.
bool store_plans(const std::string& verb, const std::vector<StorePlan>& plans, Report& report);

// "2.4g Channel = 11  (was 6)", and as JSON; secrets masked.
std::string text_of(Band band, const std::vector<ValueChange>& changes);
Json json_of(const std::vector<ValueChange>& changes);

}  // namespace wlanctl

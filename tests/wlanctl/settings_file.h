// Settings files, and calls in a gateway whose stores are there.
#pragma once

#include "apply_story.h"

namespace wlanctl_test {

inline std::vector<Result> run_live(Words steps, const Words& options = {}) {
  steps.insert(steps.begin(), "library_probe init 0 init 1 >/dev/null");
  std::vector<Result> results = run_steps(steps, options);
  results.erase(results.begin());
  return results;
}

// A settings file of 2.4g with these members.
inline std::string settings(const std::string& members) {
  return "{\"wlanctl_settings\": 1,\n\"bands\": {\"2.4g\": {\"settings\": {\n" + members + "}}}}\n";
}

inline std::string into(const std::string& name, const std::string& text) {
  return "cat >" + name + " <<'.'\n" + text + ".\n";
}

}  // namespace wlanctl_test

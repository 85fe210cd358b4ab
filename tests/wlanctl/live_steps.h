// Steps in a gateway whose stores are there, and settings files for them.
#pragma once

#include "apply_story.h"

namespace wlanctl_test {

// The results of the steps, without that of what comes before them.
inline std::vector<Result> run_live(Words steps, const Words& options = {}, const std::string& before = "") {
  steps.insert(steps.begin(), before + "library_probe init 0 init 1 >/dev/null");
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

// What a radio reports of itself, and its WPS sessions.
#include <sstream>

#include "sim/base/text.h"
#include "sim/simctl/words.h"
#include "sim/state/driver_state.h"
#include "sim/state/wps_session.h"

namespace gateway::tools::simctl {
namespace {

constexpr size_t kMostAccessEntries = 64;

Changes set_radio(Band band, const char* key, const std::string& value) {
  return change_setting(driver_interfaces(band).front(), key, value);
}

Changes set_reading(const Words& words, const char* key, const char* what) {
  expect_words(words, 2, 2);
  const Band band = loaded_band_from(words[0]);
  return set_radio(band, key, reading_from(words[1], what));
}

Changes set_state(const std::string& interface, const Words& words) {
  expect_words(words, 3, 5);
  const uint32_t state = number_from(words[2], "state");
  if (words.size() == 3) return set_wps_state(interface, state);
  expect_words(words, 5, 5);
  if (words[3] != "peer") throw UsageError("unknown: " + words[3]);
  const Mac peer = mac_from(words[4]);
  if (static_cast<int32_t>(state) <= 2) throw Refusal("a session in state " + words[2] + " has no peer");
  char text[kMacTextSize];
  format_mac(peer.data(), text);
  return set_wps_state(interface, state, text);
}

Changes set_access_list(const std::string& interface, const std::string& word) {
  Words entries;
  std::istringstream stream(word == "none" ? "" : word);
  for (std::string part; std::getline(stream, part, ',');) {
    char text[kMacTextSize];
    format_mac(mac_from(part).data(), text);
    entries.emplace_back(text);
  }
  if (entries.empty() && word != "none") throw UsageError("an access list is missing");
  if (entries.size() > kMostAccessEntries) throw Refusal("an access list has at most 64 entries");
  return change_setting(interface, "WpsAccessList", joined(entries, ";"));
}

}  // namespace

Changes channel(const Words& words) {
  expect_words(words, 2, 2);
  return set_radio(loaded_band_from(words[0]), "Channel", words[1]);
}

Changes noise(const Words& words) {
  return set_reading(words, "Noise", "noise level");
}

Changes load(const Words& words) {
  return set_reading(words, "ChannelLoad", "channel load");
}

Changes temperature(const Words& words) {
  return set_reading(words, "Temperature", "temperature");
}

Changes wps(const Words& words) {
  expect_words(words, 3, 5);
  const std::string interface = interface_from(words[0]);
  const std::string& what = words[1];
  if (what == "state") return set_state(interface, words);
  expect_words(words, 3, 3);
  if (what == "pin") return change_setting(interface, "WpsPin", std::to_string(number_from(words[2], "PIN")));
  if (what == "status") {
    return change_setting(interface, "WpsStatus", std::to_string(number_from(words[2], "status", UINT16_MAX)));
  }
  if (what == "access") return set_access_list(interface, words[2]);
  throw UsageError("unknown: " + what + " (known: state, pin, status, access)");
}

}  // namespace gateway::tools::simctl

#include "sim/state/wps_session.h"

#include <cstdlib>
#include <iterator>
#include <stdexcept>

#include "sim/state/driver_state.h"
#include "sim/state/wps_pin.h"

namespace gateway {
namespace {

using Changes = std::vector<std::string>;

enum State : uint32_t { kOff = 0, kIdle = 1, kOpen = 2 };

constexpr char kPinKey[] = "WscPinCode";
// The phone that enrols when nobody says who.
constexpr char kSomebody[] = "02:5a:10:00:00:57";

std::string setting(const std::string& interface, const std::string& key) {
  const DriverSettings settings = load_settings(interface).value_or(DriverSettings());
  const auto found = settings.find(key);
  return found == settings.end() ? std::string() : found->second;
}

void add(Changes* changes, const Changes& more) {
  changes->insert(changes->end(), more.begin(), more.end());
}

bool is_on(const std::string& interface) {
  return std::atoi(setting(interface, "WscConfMode").c_str()) != 0;
}

Changes end_session(const std::string& interface) {
  Changes changes = set_wps_state(interface, is_on(interface) ? kIdle : kOff);
  add(&changes, change_setting(interface, "WpsStatus", "0"));
  return changes;
}

Changes open_session(const std::string& interface, const std::string& value) {
  if (std::atoi(value.c_str()) == 0 || !is_on(interface)) return {};
  Changes changes = set_wps_state(interface, kOpen);
  add(&changes, change_setting(interface, "WpsStatus", "1"));
  return changes;
}

Changes follow_mode(const std::string& interface, const std::string&) {
  const std::string state = setting(interface, "WpsState");
  if (!is_on(interface)) return end_session(interface);
  return state.empty() || state == "0" ? set_wps_state(interface, kIdle) : Changes();
}

Changes take_pin(const std::string& interface, const std::string& value) {
  return change_setting(interface, "WpsPin", value);
}

Changes make_pin(const std::string& interface, const std::string& value) {
  if (std::atoi(value.c_str()) == 0) return {};
  const std::string old = setting(interface, "WpsPin");
  std::string pin = random_pin();
  while (pin == old) pin = random_pin();
  return change_setting(interface, "WpsPin", pin);
}

Changes stop(const std::string& interface, const std::string&) {
  return end_session(interface);
}

// Out of the box: not configured, no session.
Changes reset(const std::string& interface, const std::string& value) {
  if (std::atoi(value.c_str()) == 0) return {};
  Changes changes = change_setting(interface, "WscConfStatus", "1");
  add(&changes, end_session(interface));
  return changes;
}

constexpr struct {
  const char* key;
  Changes (*carry_out)(const std::string& interface, const std::string& value);
} kCommands[] = {
    {"WscConfMode", follow_mode}, {"WscGetConf", open_session}, {"WscStop", stop}, {"WscOOB", reset},
    {kPinKey, take_pin},          {"WscGenPinCode", make_pin},
};

}  // namespace

std::vector<std::string> set_wps_state(const std::string& interface, uint32_t state, const std::string& peer) {
  Changes changes = change_setting(interface, "WpsState", std::to_string(state));
  std::string mac = kNobody;
  if (static_cast<int32_t>(state) > static_cast<int32_t>(kOpen)) {
    const std::string old = setting(interface, "WpsPeer");
    mac = !peer.empty() ? peer : old.empty() || old == kNobody ? kSomebody : old;
  }
  if (mac == kNobody && setting(interface, "WpsPeer").empty()) return changes;
  add(&changes, change_setting(interface, "WpsPeer", mac));
  add(&changes, change_setting(interface, "WpsStation", mac));
  return changes;
}

void check_wps(const std::string& key, const std::string& value) {
  if (key != kPinKey) return;
  constexpr size_t kMostDigits = 10;
  const bool is_number = !value.empty() && value.find_first_not_of("0123456789") == std::string::npos;
  if (is_number && value.size() <= kMostDigits && std::stoull(value) <= UINT32_MAX) return;
  throw std::invalid_argument("invalid argument");
}

std::vector<std::string> carry_out_wps(const std::string& interface, const std::string& key, const std::string& value) {
  for (const auto& command : kCommands) {
    if (key == command.key) return command.carry_out(interface, value);
  }
  return {};
}

}  // namespace gateway

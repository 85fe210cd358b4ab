#include "wlanctl/apply/in_force.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <utility>

#include "wifimgr_lib.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/keys/key.h"
#include "wlanctl/library/command.h"
#include "wlanctl/live/bridge.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/link_downs.h"
#include "wlanctl/live/module.h"
#include "wlanctl/live/radio.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

using State = Wanted::State;

constexpr char kLoad[] = "insmod ";
constexpr char kUnload[] = "rmmod ";

std::string link_of(Band band, int index) {
  return (band == Band::k2_4G ? "wds" : "wdsi") + std::to_string(index);
}

// None where the driver chooses one.
std::optional<Wanted> wanted_channel(Band band) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  if (wifimgr_lib_get_channel(number_of(band), -1, text, sizeof text) != 0) return std::nullopt;
  const long channel = std::strtol(text, nullptr, 10);
  if (channel <= 0) return std::nullopt;
  return Wanted{State::kChannel, label_of(band), std::to_string(channel)};
}

bool has_links(Band band) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  return wifimgr_lib_get_wdsenable(number_of(band), -1, text, sizeof text) == 0 && text[0] == '1';
}

// "insmod /lib/modules/4.4.115/mt7603eap.ko" loads "mt7603eap".
std::string module_of(const std::string& line) {
  const size_t begin = line.rfind('/');
  std::string name = line.substr(begin == std::string::npos ? sizeof kLoad - 1 : begin + 1);
  if (name.ends_with(".ko")) name.resize(name.size() - 3);
  // As the kernel lists it.
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

std::optional<int> channel_told(const std::string& label) {
  std::string unheard;
  const std::optional<Band> band = parse_band(label);
  return band ? channel_of(*band, &unheard) : std::nullopt;
}

std::string unknown_of(const Wanted& wanted) {
  return "the driver of " + wanted.subject + " did not tell its channel within " + std::to_string(kDriverSeconds) +
         " s";
}

// One that does not answer lacks more than that.
std::string lacking_channel(const Wanted& wanted) {
  const std::optional<int> channel = channel_told(wanted.subject);
  if (!channel && is_unknown(wanted)) return unknown_of(wanted);
  if (!channel || std::to_string(*channel) == wanted.detail) return "";
  return "the driver of " + wanted.subject + " is on channel " + std::to_string(*channel) + " instead of " +
         wanted.detail;
}

std::string lacking_bridge(const Wanted& wanted) {
  if (wanted.detail.empty()) return "";
  const std::optional<std::string> bridge = bridge_of(wanted.subject);
  if (!bridge) return "the kernel does not tell the bridge of " + wanted.subject;
  if (*bridge == wanted.detail) return "";
  return wanted.subject + " is " + (bridge->empty() ? "in no bridge" : "in " + *bridge) + " instead of " +
         wanted.detail;
}

// The line that was to bring it about.
std::string line_for(const Wanted& wanted) {
  const std::string& name = wanted.subject;
  if (wanted.state == State::kDown || wanted.state == State::kRestarted) return "ifconfig " + name + " down";
  if (wanted.state == State::kChannel) {
    return "ifconfig " + interface_of(parse_band(name).value_or(Band::k2_4G), 0) + " down";
  }
  if (wanted.state != State::kUp) return "";
  if (link_state(name) == LinkState::kUp) return "brctl addif " + wanted.detail + " " + name;
  return "ifconfig " + name + " up";
}

bool is_missing(const Wanted& wanted) {
  return wanted.state == State::kUp && link_state(wanted.subject) == LinkState::kAbsent;
}

// An interface that never came, or does not answer: its driver's module may tell why.
std::string cause_in_modules(const Wanted& wanted) {
  if (wanted.state == State::kDown || (wanted.state == State::kUp && !is_missing(wanted))) return "";
  // One that was not loaded cannot be removed either, which is no cause.
  for (const char* const tool : {kLoad, kUnload}) {
    for (const Command& command : commands_run()) {
      if (command.line.starts_with(tool) && command.failed()) return account_of(command);
    }
  }
  return "";
}

std::string cause_of(const Wanted& wanted) {
  std::string cause = cause_in_modules(wanted);
  const std::string line = line_for(wanted);
  const Command* const command = cause.empty() && !line.empty() ? failed_command(line) : nullptr;
  return command == nullptr ? cause : account_of(*command);
}

// Beside this band's own interfaces: those of the other one go too when both have the same module.
void add_other_band(Band other, std::vector<Wanted>* wanted) {
  bool is_up = false;
  for (int i = 0; i < WIFIMGR_FIELDS; ++i) {
    const std::string interface = interface_of(other, i);
    if (link_state(interface) != LinkState::kUp) continue;
    is_up = true;
    wanted->push_back({State::kUp, interface, bridge_of(interface).value_or("")});
  }
  const Wanted driver = {State::kAnswers, label_of(other), ""};
  if (is_up && lacking(driver).empty()) wanted->push_back(driver);
}

// An interface that is in a bridge already stays there: brctl puts none into a second one.
std::string bridge_after(Operation operation, const std::string& interface) {
  if (operation == Operation::kSave) return "";
  if (operation == Operation::kCommit) return kApplyBridge;
  const std::string before = bridge_of(interface).value_or("");
  return before.empty() ? kSwitchBridge : before;
}

void add_links(Band band, Operation operation, std::vector<Wanted>* wanted) {
  const bool are_on = has_links(band) && operation != Operation::kRadioOff;
  // What is off stays as it is when the radio comes on.
  if (operation == Operation::kRadioOn && !are_on) return;
  for (int i = 0; i < kLinks; ++i) {
    const std::string link = link_of(band, i);
    wanted->push_back({are_on ? State::kUp : State::kDown, link, are_on ? bridge_after(operation, link) : ""});
  }
}

bool is_of_link(const Wanted& wanted) {
  return wanted.state == State::kUp || wanted.state == State::kDown || wanted.state == State::kBridged;
}

}  // namespace

bool is_unknown(const Wanted& wanted) {
  const bool is_asked = wanted.state == State::kAnswers || wanted.state == State::kChannel;
  const std::optional<Band> band = is_asked ? parse_band(wanted.subject) : std::nullopt;
  return band && is_driver_late(*band);
}

std::string lacking(const Wanted& wanted) {
  const std::string& name = wanted.subject;
  switch (wanted.state) {
    case State::kUp: {
      const LinkState state = link_state(name);
      return state == LinkState::kUp ? lacking_bridge(wanted) : name + " is " + word_for(state);
    }
    case State::kDown:
      return link_state(name) == LinkState::kUp ? name + " is still up" : "";
    case State::kLoaded:
      // A kernel that lists no modules says nothing against one.
      return is_module_loaded(name).value_or(true) ? "" : "the driver's module " + name + " is not loaded";
    case State::kAnswers:
      if (channel_told(name)) return "";
      return is_unknown(wanted) ? unknown_of(wanted) : "the driver of " + name + " does not tell its channel";
    case State::kChannel:
      return lacking_channel(wanted);
    case State::kRestarted:
      return name + " was not restarted, so the driver has not read all of it";
    case State::kBridged:
      return link_state(name) == LinkState::kUp ? lacking_bridge(wanted) : "";
  }
  return "";
}

Expectation::Expectation(Band band, Operation operation, int interfaces) {
  const int count = std::clamp(ssid_count(band), 0, WIFIMGR_FIELDS);
  const int judged = std::clamp(std::max(interfaces, count), 0, WIFIMGR_FIELDS);
  bool is_up = false;
  for (int i = 0; i < WIFIMGR_FIELDS; ++i) {
    const std::string interface = interface_of(band, i);
    // Be it what the settings serve no more: it is not to stay on the air.
    if (i >= judged && (operation == Operation::kRadioOn || link_state(interface) != LinkState::kUp)) continue;
    const bool up = operation != Operation::kRadioOff && i < count && is_switched_on(band, i + 1);
    is_up = is_up || up;
    if (link_state(interface) == LinkState::kUp) up_before_.push_back(interface);
    wanted_.push_back(
        {up ? State::kUp : State::kDown, interface, up ? bridge_after(operation, interface) : std::string()});
  }
  add_links(band, operation, &wanted_);
  if (has_links(band)) {
    for (int i = 0; i < kLinks; ++i) {
      if (link_state(link_of(band, i)) == LinkState::kUp) up_before_.push_back(link_of(band, i));
    }
  }
  std::copy_if(wanted_.begin(), wanted_.end(), std::back_inserter(bridges_),
               [](const Wanted& one) { return one.state == State::kUp && !one.detail.empty(); });
  if (is_up) wanted_.push_back({State::kAnswers, label_of(band), ""});
  const std::optional<Wanted> channel = wanted_channel(band);
  if (is_up && operation == Operation::kCommit && channel) wanted_.push_back(*channel);
  if (operation == Operation::kCommit) add_other_band(band == Band::k2_4G ? Band::k5G : Band::k2_4G, &wanted_);
  if (link_state(interface_of(band, 0)) == LinkState::kAbsent) return;  // then it is the driver that is missing
  std::copy_if(wanted_.begin(), wanted_.end(), std::back_inserter(await_boot_), is_missing);
}

std::vector<Lack> Expectation::look(bool may_lack_interfaces, LinkDowns* downs) const {
  std::vector<Wanted> all;
  bool is_reloaded = false;
  for (const Command& command : commands_run()) {
    if (!command.line.starts_with(kLoad)) continue;
    is_reloaded = true;
    all.push_back({State::kLoaded, module_of(command.line), ""});
  }
  all.insert(all.end(), wanted_.begin(), wanted_.end());
  std::vector<Lack> lacks;
  for (const Wanted& wanted : all) {
    const bool awaits_boot = std::find(await_boot_.begin(), await_boot_.end(), wanted) != await_boot_.end();
    if ((may_lack_interfaces || awaits_boot) && !is_reloaded && is_missing(wanted)) continue;
    if (!lacking(wanted).empty()) lacks.push_back({wanted, cause_of(wanted), is_unknown(wanted)});
  }
  for (const std::string& interface : up_before_) {
    // Up as before, as it never went down: what a restart brings into force did not come.
    const Wanted restarted = {State::kRestarted, interface, ""};
    if (downs == nullptr) continue;
    // Where the kernel does not tell all, the command does.
    const bool has_failed = !downs->is_all_told() && !is_reloaded && link_state(interface) == LinkState::kUp &&
                            failed_command(line_for(restarted)) != nullptr;
    if (downs->may_have_been_down(interface) && !has_failed) continue;
    lacks.push_back({restarted, cause_of(restarted)});
  }
  return lacks;
}

std::vector<Wanted> Expectation::lacking_now() const {
  std::vector<Wanted> found;
  std::copy_if(wanted_.begin(), wanted_.end(), std::back_inserter(found),
               [](const Wanted& wanted) { return !lacking(wanted).empty(); });
  return found;
}

bool Expectation::judges(const Wanted& wanted) const {
  return std::any_of(wanted_.begin(), wanted_.end(), [&](const Wanted& one) {
    return one.subject == wanted.subject && (one.state == wanted.state || (is_of_link(one) && is_of_link(wanted)));
  });
}

bool Expectation::wants_up(const std::string& interface) const {
  return std::any_of(wanted_.begin(), wanted_.end(),
                     [&](const Wanted& one) { return one.state == State::kUp && one.subject == interface; });
}

bool are_all_unknown(const std::vector<Lack>& lacks) {
  return !lacks.empty() && std::all_of(lacks.begin(), lacks.end(), [](const Lack& lack) { return lack.is_unknown; });
}

std::string way_out(const Wanted& wanted) {
  if (wanted.state == State::kDown) return "ifconfig " + wanted.subject + " down takes it down; ";
  if (wanted.state == State::kLoaded) {
    return "load it with insmod, or reboot: an apply loads it when the SSID count changes; ";
  }
  if (is_missing(wanted)) return "load the driver with insmod, or reboot; ";
  const bool is_in_bridge = wanted.state == State::kUp || wanted.state == State::kBridged;
  const std::string bridge = is_in_bridge ? bridge_of(wanted.subject).value_or("") : "";
  if (bridge.empty() || wanted.detail.empty() || bridge == wanted.detail) return "";
  return "brctl delif " + bridge + " " + wanted.subject + " takes it out; ";
}

std::string text_of(const Lack& lack) {
  if (lack.is_unknown) return unknown_of(lack.wanted);
  const std::string state = lacking(lack.wanted);
  return (state.empty() ? lack.wanted.subject + " was not as wanted a moment ago" : state) + because(lack.cause);
}

std::string next_step(Band band) {
  return std::string("when that is mended, wlanctl apply ") + label_of(band) + " applies it again";
}

void complain_of(Band band, const std::vector<Lack>& lacks, const std::string& next, Report& report) {
  bool is_doubt_told = false;
  for (const Lack& lack : lacks) {
    // What there is to say of a driver that is late is said once.
    if (lack.is_unknown && std::exchange(is_doubt_told, true)) continue;
    Json details = is_of_link(lack.wanted) ? about(band, lack.wanted.subject) : about(band);
    details["reason"] = lack.cause;
    report.problem({std::string(label_of(band)) +
                        (lack.is_unknown ? ": not known whether it is in force: " : ": not in force: ") + text_of(lack),
                    lack.is_unknown ? std::string("wlanctl diff ") + label_of(band) + " asks it again"
                    : next.empty()  ? next
                                    : way_out(lack.wanted) + next,
                    std::move(details)});
  }
}

std::vector<Lack> lacks_by_driver(Band band) {
  // One that is off reads it when it starts.
  const std::optional<Wanted> channel = interfaces_up(band) > 0 ? wanted_channel(band) : std::nullopt;
  if (!channel || lacking(*channel).empty()) return {};
  return {{*channel, "", is_unknown(*channel)}};
}

}  // namespace wlanctl

// wps: lets a station in by push button or PIN, and shows how far it is.
#include <poll.h>

#include <cstdint>
#include <cstdlib>

#include "wlanctl/base/report.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/library/private_script.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/radio.h"
#include "wlanctl/live/served_ssid.h"
#include "wlanctl/live/wps_session.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

enum Method : uint32_t { kByPin = 0, kByPushButton = 1 };

constexpr uint32_t kOwnPin = 0;
constexpr size_t kPinDigits = 8;
constexpr size_t kMostPinDigits = 10;

// The digits weigh 3 and 1 in turn; a PIN's sum is a multiple of ten.
bool has_right_check_digit(const std::string& pin) {
  unsigned sum = 0;
  for (size_t i = 0; i < pin.size(); ++i) sum += static_cast<unsigned>(pin[i] - '0') * (i % 2 == 0 ? 3 : 1);
  return sum % 10 == 0;
}

std::optional<uint32_t> parse_pin(const Words& words, Report& report) {
  const std::string& pin = words.pin;
  const auto refuse = [&](const std::string& reason, const std::string& next) {
    report.problem({"that is no PIN: " + reason, next, {{"value", pin}, {"reason", reason}}});
    return std::nullopt;
  };
  if (pin.empty() || pin.size() > kMostPinDigits || pin.find_first_not_of("0123456789") != std::string::npos) {
    return refuse("a PIN is made of 8 digits", "write it without blanks and dashes");
  }
  const unsigned long long number = std::stoull(pin);
  if (number == kOwnPin || number > UINT32_MAX) {
    return refuse("the driver has no room for it", "take another PIN of the station");
  }
  if (words.force) return static_cast<uint32_t>(number);
  if (pin.size() != kPinDigits) return refuse("it has " + std::to_string(pin.size()) + " digits, not 8", "look again");
  if (!has_right_check_digit(pin)) {
    return refuse("its last digit does not fit the others", "look for a typing error, or insist with --force");
  }
  return static_cast<uint32_t>(number);
}

// The SSID's WPS setting in the live store, 0 when there is none.
int wps_setting(Band band, const char* key, int ssid) {
  return std::atoi(read_value(band, *find_key(key), ssid).value_or("").c_str());
}

// The library's service works in these modes only, and says nothing in the others.
bool is_served(int mode) {
  return mode == 1 || mode == 2 || mode == 7;
}

bool is_ready(Band band, int ssid, Report& report) {
  const int mode = wps_setting(band, "WscConfMode", ssid);
  const int status = wps_setting(band, "WscConfStatus", ssid);
  const std::string target = std::string(label_of(band)) + " SSID " + std::to_string(ssid);
  const std::string set = std::string("wlanctl set ") + label_of(band) + " ";
  const std::string index = ":" + std::to_string(ssid);
  const Json details = {{"band", label_of(band)}, {"ssid", ssid}, {"mode", mode}};
  if (!is_served(mode)) {
    report.problem({mode == 0 ? "WPS is off for " + target
                              : "WPS of " + target + " is in mode " + std::to_string(mode) + ", which is not served",
                    "switch it on: " + set + "WscConfMode" + index + "=7", details});
    return false;
  }
  if (status != 1 && status != 2) {
    report.problem({"WPS of " + target + " does not know whether the SSID is configured",
                    "tell it: " + set + "WscConfStatus" + index + "=2", details});
    return false;
  }
  return true;
}

enum class Aim { kOpen, kClosed };

bool is_reached(Aim aim, unsigned state) {
  constexpr unsigned kIdle = 1;
  constexpr unsigned kOpenState = 2;
  constexpr unsigned kEnrolling = 3;
  return aim == Aim::kOpen ? state > kIdle : state != kOpenState && state != kEnrolling;
}

// A driver that has taken a request need not have done it. It gets a moment; one that does not tell is not judged here.
void look_for(Aim aim, Band band, int ssid, Report& report) {
  constexpr int kLooks = 20;
  constexpr int kPauseMs = 100;
  std::optional<unsigned> state;
  for (int look = 0; look < kLooks; ++look) {
    Report unheard;
    state = wps_session_of(band, ssid, unheard).state;
    if (!state || is_reached(aim, *state)) return;
    poll(nullptr, 0, kPauseMs);
  }
  report.problem({std::string("the driver was told to ") + (aim == Aim::kOpen ? "open" : "end") +
                      " the session, but WPS of " + label_of(band) + " SSID " + std::to_string(ssid) + " is " +
                      word_for_wps(state),
                  "is the driver well? wlanctl status tells", about(band, ssid)});
}

// What the driver says, for every action: what it led to as well.
void show_session(Report& report, Band band, const ServedSsid& ssid) {
  const WpsSession session = wps_session_of(band, ssid.number, report);
  const std::optional<std::string> pin = wps_pin_of(band, ssid.number, report);
  const int mode = wps_setting(band, "WscConfMode", ssid.number);
  report.text() << label_of(band) << " SSID " << ssid.number << " (" << ssid.interface << "): WPS "
                << word_for_wps(session.state) << (session.peer ? " with " + *session.peer : std::string()) << ", mode "
                << mode << ", PIN " << pin.value_or("-") << '\n';
  Json shown = {{"band", label_of(band)}, {"ssid", ssid.number}, {"interface", ssid.interface}, {"mode", mode}};
  shown.update(json_of(session));
  shown["pin"] = json_or_null(pin);
  report.data() = std::move(shown);
}

// 0, or the exit code of what is wrong.
int open_ssid(const Words& words, Band band, bool (*open)(Band, Report&), Report& report) {
  if (!open(band, report)) return kNoStore;
  if (!has_ssid(band, words.ssid, report)) return kRefused;
  if (link_state(interface_of(band, words.ssid - 1)) != LinkState::kAbsent) return kDone;
  if (is_there(band, report)) {
    report.problem({"there is no " + interface_of(band, words.ssid - 1) + " yet",
                    std::string("bring the SSID into force: wlanctl apply ") + label_of(band),
                    about(band, words.ssid)});
  }
  return kNoAnswer;
}

// The library's scripts rather than its setters: a script tells the driver everything that a session needs, mode and
// state included, in one go, and leaves the store alone. What is in it are the library's own numbers and interface
// names; nothing that an operator typed gets there but the PIN, as a number.
// `write` gets the script's path, the band's number and that of the SSID, from 0.
template <typename Write>
int act(const Words& words, Report& report, const char* action, Aim aim, Write write) {
  const Band band = *parse_band(words.band);
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  if (const int failure = open_ssid(words, band, open_band_if_there, report)) return failure;
  if (!is_ready(band, words.ssid, report)) return kRefused;
  const PrivateScript script;
  std::string reason;
  const auto write_script = [&] {
    // The library takes the interface's prefix from a snapshot; this one is for that, and goes with the process.
    (void)wifimgr_lib_wifi_config_oper(wifi_type_of(band), 0);
    return script.path() != nullptr && write(script.path(), number_of(band), words.ssid - 1) == 0 && !script.is_empty();
  };
  if (!call_quietly(write_script, &reason)) {
    report.problem({std::string("no script to ") + action + " could be written" + because(reason),
                    "is there room in /tmp?", about(band, words.ssid)});
    return kRefused;
  }
  std::string printed;
  if (!script.run(&printed)) {
    report.problem({std::string("the driver did not ") + action + because(printed),
                    "is the driver well? wlanctl status tells",
                    {{"band", label_of(band)}, {"ssid", words.ssid}, {"reason", printed}}});
    return kNoAnswer;
  }
  const DriverTime limited;
  look_for(aim, band, words.ssid, report);
  show_session(report, band, served_ssid(band, words.ssid));
  return report.has_problems() ? kNoAnswer : kDone;
}

int start(const Words& words, Report& report, Method method, uint32_t pin) {
  return act(words, report, "open a session", Aim::kOpen, [&](const char* path, int band, int ssid) {
    const uint32_t argument[] = {method, pin};
    return wifimgr_lib_service_start_wps(path, band, ssid, argument);
  });
}

int push_button(const Words& words, Report& report) {
  return start(words, report, kByPushButton, kOwnPin);
}

int enrol_by_pin(const Words& words, Report& report) {
  if (!words.has_pin) return start(words, report, kByPin, kOwnPin);
  const std::optional<uint32_t> pin = parse_pin(words, report);
  return pin ? start(words, report, kByPin, *pin) : kRefused;
}

int stop(const Words& words, Report& report) {
  return act(words, report, "end the session", Aim::kClosed, wifimgr_lib_service_stop_wps);
}

int status(const Words& words, Report& report) {
  const DriverTime limited;
  const Band band = *parse_band(words.band);
  if (const int failure = open_ssid(words, band, look_at_band, report)) return failure;
  show_session(report, band, served_ssid(band, words.ssid));
  return report.has_problems() ? kNoAnswer : kDone;
}

constexpr Word kActWords[] = {word::kOneBand, word::kOneSsid, word::kCommandTimeout, word::kWait};
constexpr Word kPinWords[] = {
    word::kOneBand,
    word::kOneSsid,
    {"PIN", &Words::pin, "Without it, the one that status shows", {.is_given = &Words::has_pin}},
    {"--force", &Words::force, "Whatever its length and check digit"},
    word::kCommandTimeout,
    word::kWait,
};
constexpr Word kStatusWords[] = {word::kOneBand, word::kOneSsid};

constexpr Verb kPbc = {"pbc", "As if the gateway's WPS button was pressed", "Examples:\n  wlanctl wps pbc 2.4g 1",
                       kActWords, push_button};
constexpr Verb kPin = {"pin", "Let a station in by its PIN or the gateway's",
                       "Examples:\n  wlanctl wps pin 5g 1 12345670\n  wlanctl wps pin 5g 1", kPinWords, enrol_by_pin};
constexpr Verb kStop = {"stop", "End the session", "Examples:\n  wlanctl wps stop 2.4g 1", kActWords, stop};
constexpr Verb kSession = {"status", "Show how far a session is, and the PIN",
                           "Examples:\n  wlanctl wps status 2.4g 1 --json", kStatusWords, status};
constexpr const Verb* kVerbs[] = {&kPbc, &kPin, &kStop, &kSession};

}  // namespace

const Verb kWps = {.name = "wps",
                   .help = "Let a station in by push button or PIN",
                   .footer = "Examples:\n  wlanctl wps pbc 2.4g 1\n  wlanctl wps status 2.4g 1",
                   .verbs = kVerbs};

}  // namespace wlanctl

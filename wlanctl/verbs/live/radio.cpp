// radio: takes a band off the air and back.
#include "wlanctl/command_line/command.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/library/query.h"
#include "wlanctl/live/served_ssid.h"
#include "wlanctl/store/store.h"

namespace wlanctl {
namespace {

struct Words {
  std::string band;
  unsigned wait_seconds = 10;
};

enum Switch : uint32_t { kOff = 0, kOn = 1 };

// What each interface should be after the switch; the library does not look at how its commands end.
bool is_as_wanted(const ServedSsid& ssid, Switch position) {
  const bool wants_up = position == kOn && ssid.is_enabled;
  return ssid.link == LinkState::kAbsent || (ssid.link == LinkState::kUp) == wants_up;
}

int turn(const Words& words, Context& context, Switch position) {
  Report& report = context.report;
  const Band band = *parse_band(words.band);
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  if (!open_store(band, report)) return kNoStore;
  if (!is_there(band, report)) return kNoAnswer;
  std::string reason;
  (void)call_quietly([&] { return wifimgr_lib_wifi_onoff(static_cast<uint32_t>(number_of(band)), position) == 0; },
                     &reason);

  Json ssids = Json::array();
  std::vector<std::vector<std::string>> rows;
  for (const ServedSsid& ssid : served_ssids(band)) {
    ssids.push_back({{"ssid", ssid.number}, {"interface", ssid.interface}, {"state", word_for(ssid.link)}});
    rows.push_back({"  " + ssid.interface, word_for(ssid.link), printable(ssid.name)});
    if (is_as_wanted(ssid, position)) continue;
    report.problem({ssid.interface + " is still " + word_for(ssid.link) + (reason.empty() ? "" : ": ") + reason,
                    "are you root, and is the driver well?",
                    {{"band", label_of(band)}, {"interface", ssid.interface}, {"reason", json_text(reason)}}});
  }
  report.text() << label_of(band) << ": radio " << (position == kOn ? "on" : "off") << '\n' << table(rows);
  report.data() = {{"band", label_of(band)}, {"radio", position == kOn ? "on" : "off"}, {"ssids", std::move(ssids)}};
  return report.has_problems() ? kNoAnswer : kDone;
}

int turn_on(const Words& words, Context& context) {
  return turn(words, context, kOn);
}

int turn_off(const Words& words, Context& context) {
  return turn(words, context, kOff);
}

void configure(CLI::App& verb, Words& words, const char* footer) {
  add_band(verb, words.band)->required();
  verb.add_option("--wait", words.wait_seconds, "Seconds to wait for another wlanctl")->capture_default_str();
  verb.footer(footer);
}

}  // namespace

void add_radio(CLI::App& app, Context& context) {
  CLI::App* const radio = app.add_subcommand("radio", "Take a band off the air, and back");
  radio->require_subcommand(1);
  radio->footer(
      "The settings stay as they are: an apply or a boot brings the band back too.\n\n"
      "Examples:\n  wlanctl radio off 5g\n  wlanctl radio on 5g");
  add_verb<Words>(
      *radio, context, "on", "Bring the band's enabled SSIDs up",
      [](CLI::App& verb, Words& words) { configure(verb, words, "Examples:\n  wlanctl radio on 5g"); }, turn_on);
  add_verb<Words>(
      *radio, context, "off", "Take the band's SSIDs down",
      [](CLI::App& verb, Words& words) { configure(verb, words, "Examples:\n  wlanctl radio off 5g"); }, turn_off);
}

}  // namespace wlanctl

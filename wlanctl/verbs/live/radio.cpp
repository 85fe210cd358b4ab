// radio: takes a band off the air and back.
#include "wlanctl/live/radio.h"
#include "wifimgr_lib.h"
#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/apply/undone.h"
#include "wlanctl/apply/unread.h"
#include "wlanctl/base/interrupt.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/library/command.h"
#include "wlanctl/library/query.h"
#include "wlanctl/live/bridge.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/served_ssid.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/difference.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

enum Switch : uint32_t { kOff = 0, kOn = 1 };

// The library's switch knows one bridge alone, and an apply takes none out of it.
void note_moved(Band band, const std::vector<std::string>& unbridged, Report& report) {
  for (const std::string& interface : unbridged) {
    if (bridge_of(interface).value_or("") != kSwitchBridge) continue;
    report.note(interface + " was in no bridge, and is in " + kSwitchBridge + " now; brctl delif " + kSwitchBridge +
                " " + interface + ", and wlanctl apply " + label_of(band) + " --again puts it into that of an apply");
  }
}

void tell_radio(Band band, Switch position, bool is_unknown, Report& report) {
  Json ssids = Json::array();
  Rows rows;
  bool is_any_on = false;
  for (const ServedSsid& ssid : served_ssids(band)) {
    ssids.push_back({{"ssid", ssid.number}, {"interface", ssid.interface}, {"state", word_for(ssid.link)}});
    rows.push_back({"  " + ssid.interface, word_for(ssid.link), printable(ssid.name)});
    is_any_on = is_any_on || is_switched_on(band, ssid.number);
  }
  if (position == kOn && !is_any_on) {
    report.note(std::string(label_of(band)) +
                ": nothing is on the air, as no SSID is switched on; wlanctl ssid enable does that");
  }
  report.text() << label_of(band) << ": radio " << (position == kOn ? "on" : "off")
                << (!report.has_problems() ? ""
                    : is_unknown           ? ", but not known whether in force"
                                           : ", but not in force")
                << '\n'
                << table(rows);
  report.data() = {{"band", label_of(band)}, {"radio", position == kOn ? "on" : "off"}, {"ssids", std::move(ssids)}};
}

// The driver reads the dat file when its radio starts, whatever the store has.
void note_file_read(Band band, Report& report) {
  const auto file = parse_dat_file(band);
  if (!file) return;
  const size_t apart = served_differences(records_of(table_of_store(band)), records_of(*file), DatFile::kRight).size();
  if (apart > 0) {
    report.note(std::string(label_of(band)) + ": the driver has read the dat file, and the store has " +
                count_of(apart, "other value") + "; wlanctl apply " + label_of(band) + " brings them into force");
  }
  Report unheard;
  Doubt doubt = Doubt::kNone;
  if (!is_in_force_known(band) || !restore_applied(band, &doubt, unheard) || is_file_in_force(band)) return;
  doubt_applied(band);
  (void)keep_applied(band, FileIs::kSettled, report);
}

int turn(const Words& words, Report& report, Switch position) {
  const Band band = *parse_band(words.band);
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  const DriverTime limited;
  if (!open_band_if_there(band, report)) return kNoStore;
  if (!is_there(band, report)) return kNoAnswer;
  // The library would switch none, and say nothing.
  if (const auto count = senseless_count(band)) {
    tell_senseless_count(band, *count, report);
    return kRefused;
  }
  const std::vector<std::string> unbridged = unbridged_interfaces(band);
  const bool starts = position == kOn && interfaces_up(band) == 0;
  const SignalHold hold;
  const InterruptAnswer answer("interrupted; the radio is switched first, and the result told");
  const CommandRun commands;
  const Expectation expected(band, position == kOn ? Operation::kRadioOn : Operation::kRadioOff, 0);
  std::string reason;
  (void)call_quietly([&] { return wifimgr_lib_wifi_onoff(wifi_type_of(band), position) == 0; }, &reason);
  // An interface that the driver has not made yet is none of the switch's.
  DriverTime::renew();
  std::vector<Lack> lacks = expected.look(true);
  std::vector<Lack> beside = lacks_beside(band, expected, &lacks);
  const bool has_started = starts && interfaces_up(band) > 0;
  if (has_started) drop_missing_restarts(&beside);
  complain_of(band, lacks, "are you root, and is the driver well?", report);
  lacks.insert(lacks.end(), beside.begin(), beside.end());
  keep_lacks(band, lacks, report);
  // Off the air, that is nobody's loss; the driver may have it in force when it is back.
  if (position == kOn) {
    std::vector<Lack> told = beside;
    std::erase_if(told, [](const Lack& lack) { return lacking(lack.wanted).empty(); });
    complain_of(band, told, next_step(band), report);
  }
  note_moved(band, unbridged, report);
  if (has_started) {
    forget_unread(band);
    note_file_read(band, report);
  }
  tell_radio(band, position, are_all_unknown(lacks), report);
  return report.has_problems() ? kNotInForce : kDone;
}

int turn_on(const Words& words, Report& report) {
  return turn(words, report, kOn);
}

int turn_off(const Words& words, Report& report) {
  return turn(words, report, kOff);
}

constexpr Word kWords[] = {word::kOneBand, word::kCommandTimeout, word::kWait};
constexpr Verb kOnVerb = {"on", "Bring the band's enabled SSIDs up", "Examples:\n  wlanctl radio on 5g", kWords,
                          turn_on};
constexpr Verb kOffVerb = {"off", "Take the band's SSIDs down", "Examples:\n  wlanctl radio off 5g", kWords, turn_off};
constexpr const Verb* kVerbs[] = {&kOnVerb, &kOffVerb};

}  // namespace

const Verb kRadio = {.name = "radio",
                     .help = "Take a band off the air, and back",
                     .footer =
                         "The settings stay as they are. A boot brings the band back too, and so does an\n"
                         "apply that restarts the interfaces, such as wlanctl apply --again.\n\n"
                         "Examples:\n  wlanctl radio off 5g\n  wlanctl radio on 5g",
                     .verbs = kVerbs};

}  // namespace wlanctl

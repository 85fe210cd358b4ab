#include "wlanctl/apply/undone.h"

#include <algorithm>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/bridges.h"
#include "wlanctl/apply/unread.h"
#include "wlanctl/base/report.h"
#include "wlanctl/check/bare_ssid.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/live/bridge.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/radio.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

using State = Wanted::State;

// The interfaces of the SSIDs that are served and on, of which something is so.
template <typename IsSo>
std::vector<std::string> switched_on(Band band, IsSo is_so) {
  std::vector<std::string> found;
  for (const int ssid : ssids_switched_on(band)) {
    const std::string interface = interface_of(band, ssid - 1);
    if (is_so(interface)) found.push_back(interface);
  }
  return found;
}

// The switch of a radio that is up does nothing, and puts what is in no bridge into its own.
std::string words_of(Band band, const Wanted& wanted) {
  const std::string label = label_of(band);
  const std::string again = "wlanctl apply " + label + " --again ";
  const std::string is_so = lacking(wanted);
  switch (wanted.state) {
    case State::kUp:
      if (link_state(wanted.subject) == LinkState::kUp) {
        return is_so + ", where a restart puts it; " + way_out(wanted) + again + "puts it there";
      }
      return is_so + ", which the settings want otherwise; wlanctl radio on " + label + " or " + again +
             "brings it back";
    case State::kDown:
      return is_so + ", which the settings want otherwise; " + again + "takes it down";
    default:
      return is_so + ", which the settings want otherwise; " + again + "restarts the radio";
  }
}

}  // namespace

std::vector<Lack> look_now(Band band) {
  return Expectation(band, Operation::kSave, 0).look(true);
}

std::vector<Lack> look_closely(Band band) {
  std::vector<Lack> lacks = look_now(band);
  for (const Wanted& wanted : bridges_lacking(band)) lacks.push_back({wanted, ""});
  const std::vector<Lack> channel = lacks_by_driver(band);
  lacks.insert(lacks.end(), channel.begin(), channel.end());
  return lacks;
}

void note_undone(Band band, const std::vector<Lack>& told, Report& report) {
  const std::string label = label_of(band);
  const DriverTime limited;
  const bool is_told = is_driver_late(band);
  const std::vector<Lack> lacks = look_closely(band);
  const bool is_late = is_driver_late(band);
  if (is_late && !is_told) {
    report.note(label + ": the driver took longer than " + std::to_string(kDriverSeconds) +
                " s to tell its channel; whether it serves what was applied is not known");
  }
  for (const Lack& lack : lacks) {
    if (lack.is_unknown || (is_late && lack.wanted.state == State::kAnswers)) continue;
    const auto is_same = [&](const Lack& one) { return one.wanted.subject == lack.wanted.subject; };
    if (std::any_of(told.begin(), told.end(), is_same)) continue;
    report.note(label + ": " + words_of(band, lack.wanted));
  }
}

std::vector<std::string> missing_interfaces(Band band) {
  return switched_on(band, [](const std::string& interface) { return link_state(interface) == LinkState::kAbsent; });
}

std::vector<std::string> unbridged_interfaces(Band band) {
  return switched_on(band, [](const std::string& interface) { return bridge_of(interface).value_or("-").empty(); });
}

void note_missing(Band band, const std::vector<std::string>& missing, bool is_reboot_advised, Report& report) {
  if (missing.empty()) return;
  report.note(std::string(label_of(band)) + ": not on the air before " + (is_reboot_advised ? "that" : "a") +
              " reboot, as the driver has made no interface: " + joined(missing, ", "));
}

void note_lists_cut(Band band, Report& report) {
  const auto parsed = parse_dat_file(band);
  if (!parsed) return;
  const std::vector<StoreRecord> store = records_of(table_of_store(band));
  const std::vector<StoreRecord> file = records_of(*parsed);
  const int ssids = ssid_count(band);
  const std::vector<DatFinding> to_be_cut = lists_to_be_cut(store, file, ssids);
  for (const DatFinding& cut : lists_cut_at_save(store, ssids)) {
    const auto is_same = [&](const DatFinding& one) { return one.key == cut.key; };
    if (std::any_of(to_be_cut.begin(), to_be_cut.end(), is_same)) continue;
    report.note(cut.key + " of " + label_of(band) + " is cut in the dat file, and so at the next boot: " + cut.reason);
  }
}

void note_system(Band band, const std::vector<Lack>& told, Report& report) {
  note_lists_cut(band, report);
  note_kept_unread(band, report);
  const PrivateStore in_force(band, settings_in_force(band));
  // Of a file that is read as little else it says nothing.
  if (senseless_count(band)) return;
  note_undone(band, told, report);
  // Without the first one it is the driver that is missing.
  if (link_state(interface_of(band, 0)) != LinkState::kAbsent) {
    std::vector<std::string> missing = missing_interfaces(band);
    std::erase_if(missing, [&](const std::string& interface) {
      return std::any_of(told.begin(), told.end(), [&](const Lack& one) { return one.wanted.subject == interface; });
    });
    note_missing(band, missing, false, report);
  }
}

}  // namespace wlanctl

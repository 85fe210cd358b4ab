#include "wlanctl/verbs/apply/apply_text.h"

#include <algorithm>
#include <iterator>

#include "wlanctl/apply/undone.h"
#include "wlanctl/base/report.h"
#include "wlanctl/command_line/verb.h"
#include "wlanctl/live/radio.h"
#include "wlanctl/store/value.h"

namespace wlanctl {

namespace {

// "2 SSIDs"; "1 of 2 SSIDs" where a script failed.
std::string told_ssids(const Applied& applied) {
  const auto told = std::count_if(applied.scripts.begin(), applied.scripts.end(),
                                  [](const Script& script) { return script.status == 0; });
  const std::string all = std::to_string(applied.scripts.size()) + " SSIDs";
  return told == std::ssize(applied.scripts) ? all : std::to_string(told) + " of " + all;
}

// Of SSIDs that are off, too.
bool has_all_interfaces(Band band) {
  for (int ssid = 1; ssid <= ssid_count(band); ++ssid) {
    if (link_state(interface_of(band, ssid - 1)) == LinkState::kAbsent) return false;
  }
  return true;
}

}  // namespace

bool Job::is_in_force() const {
  const auto is_taken = [](const Script& script) { return script.status == 0 || script.may_fail; };
  // An SSID that the driver makes an interface for at the next boot is not on the air yet.
  return applied && applied->lacks.empty() && !is_rolled_back && broken_off == BrokenOff::kNo &&
         missing_interfaces(band).empty() && std::all_of(applied->scripts.begin(), applied->scripts.end(), is_taken);
}

bool Job::waits() const {
  return applied && pending && pending->phase != Phase::kGoingBack && broken_off == BrokenOff::kNo && !is_rolled_back;
}

void tell_applied(const Words& words, const Job& job, Report& report) {
  const std::string label = label_of(job.band);
  Json entry = {{"band", label}, {"apply", word_for_apply(job.plan.nothing, job.plan.weight)}, {"action", "none"}};
  entry["counted_as_in_force"] = job.doubt == Doubt::kNone ? "last_applied" : "dat_file";
  Json scripts = Json::array();
  if (job.plan.nothing) {
    report.text() << label << ": nothing to apply; the store"
                  << (job.doubt != Doubt::kNone ? " is as the dat file, which counts as in force\n"
                                                : ", the dat file and what is in force agree\n");
    note_system(job.band, {}, report);
  } else if (job.applied) {
    const Applied& applied = *job.applied;
    entry["apply"] = word_for_apply(false, applied.weight);
    entry["action"] = applied.committed ? "committed" : "saved";
    if (job.is_rolled_back) entry["action"] = "rolled back";
    if (job.is_rolled_back || job.broken_off != BrokenOff::kNo) {
      report.text() << label << (job.is_rolled_back ? ": rolled back" : ": not applied") << "\n";
    } else if (are_all_unknown(applied.lacks)) {
      report.text() << label << ": applied; not known whether it is in force\n";
    } else if (!applied.lacks.empty()) {
      report.text() << label << ": applied, but not in force\n";
    } else {
      report.text() << label
                    << (applied.committed ? ": applied; dat file written, interfaces restarted,\n  driver told of "
                                          : ": applied without a restart, as nothing that needs one differs;\n"
                                            "  dat file saved, driver told of ")
                    << told_ssids(applied) << '\n';
    }
    for (const Script& script : applied.scripts) {
      scripts.push_back({{"ssid", script.ssid}, {"path", script.path}, {"status", script.status}});
    }
    const std::vector<std::string> missing = missing_interfaces(job.band);
    if (applied.weight > 1) {
      const bool is_all_there = applied.lacks.empty() && has_all_interfaces(job.band);
      report.note(label + ": the SSID count or hardware NAT changed; a reboot is recommended" +
                  (is_all_there ? ", though every SSID has its interface by now" : ""));
    }
    // A roll back has told its own.
    if (applied.lacks.empty() && !job.is_rolled_back) note_missing(job.band, missing, applied.weight > 1, report);
  } else {
    report.text() << label << ": not applied\n";
  }
  entry["scripts"] = std::move(scripts);
  Json lacks = Json::array();
  if (job.applied) {
    for (const Lack& lack : job.applied->lacks) lacks.push_back(text_of(lack));
  }
  entry["not_in_force"] = std::move(lacks);
  entry["confirm_within"] = job.waits() ? Json(words.confirm_seconds) : Json();
  if (job.waits()) {
    report.text() << "  confirm it within " << count_of(words.confirm_seconds, "second")
                  << " of its start: wlanctl confirm " << label << "\n  else the settings before come back\n";
  }
  report.data()["bands"].push_back(std::move(entry));
}

}  // namespace wlanctl

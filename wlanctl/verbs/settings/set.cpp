// set: changes the live store, all of it or nothing.
#include <algorithm>

#include "wlanctl/apply/adjustment.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/danger.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/keys/value_rule.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/setter.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

Json about_assignment(Band band, const Assignment& assignment, const std::string& reason) {
  return {{"band", label_of(band)},
          {"key", assignment.target.name()},
          {"value", shown_value(*assignment.target.key, assignment.value)},
          {"reason", reason},
          {"accepted", served_words(*assignment.target.key)}};
}

void refuse(Report& report, Band band, const Assignment& assignment, const std::string& reason,
            const std::string& next) {
  const Key& key = *assignment.target.key;
  report.problem({assignment.target.name() + " cannot be \"" + shown_value(key, assignment.value) + "\": " + reason,
                  next, about_assignment(band, assignment, reason)});
}

bool is_stored(Band band, const Assignment& assignment) {
  return set_by_library(band, assignment.target, assignment.value);
}

void read_assignments(const Words& words, Band band, Report& report, std::vector<Assignment>* assignments) {
  for (const std::string& text : words.assignments) {
    if (auto assignment = parse_assignment(text, band, words.literal, report)) assignments->push_back(*assignment);
  }
  for (const std::string& text : words.files) {
    if (auto assignment = parse_file_assignment(text, band, report)) assignments->push_back(*assignment);
  }
}

// What depends on all values together, before and after they are set.
struct Outlook {
  std::vector<DatFinding> losses;
  std::vector<Adjustment> adjustments;
};

Outlook outlook_of(Band band) {
  const std::optional<std::string> text = saved_text(band);
  Outlook outlook = {text ? losses_at_load(*text) : std::vector<DatFinding>(), adjustments_of(band)};
  const std::vector<DatFinding> at_save = losses_at_save(records_of(table_of_store(band)), ssid_count(band));
  outlook.losses.insert(outlook.losses.end(), at_save.begin(), at_save.end());
  return outlook;
}

bool is_set_by(const Assignment& assignment, const std::string& dat_key) {
  return dat_key_of(*assignment.target.key, assignment.target.index) == dat_key;
}

// What the values would lose in the dat file that was not lost before.
void refuse_losses(Band band, Report& report, const std::vector<Assignment>& assignments, const Outlook& before,
                   const Outlook& after) {
  constexpr char kNext[] = "choose another value, or insist with --force";
  for (const DatFinding& loss : after.losses) {
    const auto is_known = [&](const DatFinding& one) { return one.key == loss.key && one.reason == loss.reason; };
    if (std::any_of(before.losses.begin(), before.losses.end(), is_known)) continue;
    for (const Assignment& assignment : assignments) {
      if (!is_set_by(assignment, loss.key)) continue;
      refuse(report, band, assignment, "in the dat file, " + loss.reason, kNext);
      break;
    }
  }
}

// A value that another one takes the place of is judged alone.
void refuse_unserved(Band band, Report& report, const Assignment& assignment, bool is_last) {
  const Target& target = assignment.target;
  const auto sibling = [&](const char* name) {
    return is_last ? read_value(band, *find_key(name), target.index).value_or("") : std::string();
  };
  const std::string reason = unserved_reason(*target.key, band, assignment.value, sibling);
  if (!reason.empty()) refuse(report, band, assignment, reason, "choose another value, or insist with --force");
}

// What an apply makes of values by itself, where that is not as it was, or about a value that is set now.
void note_adjustments(Report& report, const std::vector<Assignment>& assignments, const Outlook& before,
                      const Outlook& after) {
  for (const Adjustment& one : after.adjustments) {
    const bool is_new =
        std::find(before.adjustments.begin(), before.adjustments.end(), one) == before.adjustments.end();
    const bool is_set = std::any_of(assignments.begin(), assignments.end(),
                                    [&](const Assignment& assignment) { return assignment.target == one.target; });
    if (is_new || is_set) report.note(one.target.name() + ": " + one.words());
  }
}

// On a private copy of the store, in order, so that a value may depend on one before it.
void try_out(const Words& words, Band band, Report& report, const std::vector<Assignment>& assignments) {
  const Outlook before = outlook_of(band);
  const PrivateStore copy(band);
  const ShellScope nothing_runs(ShellMode::kDrop);
  std::vector<const Assignment*> taken;
  for (const Assignment& assignment : assignments) {
    if (!is_stored(band, assignment)) {
      const std::string reason = first_reason();
      refuse(report, band, assignment, reason.empty() ? "the library refuses it" : reason,
             "it takes " + served_words(*assignment.target.key));
      continue;
    }
    const std::string danger = words.force ? "" : danger_of(*assignment.target.key, assignment.value);
    if (!danger.empty()) {
      refuse(report, band, assignment, danger, "choose another value, or insist with --force");
    } else {
      taken.push_back(&assignment);
    }
  }
  if (!words.force) {
    for (size_t i = 0; i < taken.size(); ++i) {
      const bool is_last = std::none_of(taken.begin() + static_cast<long>(i) + 1, taken.end(),
                                        [&](const Assignment* later) { return later->target == taken[i]->target; });
      refuse_unserved(band, report, *taken[i], is_last);
    }
  }
  if (report.has_problems()) return;
  const Outlook after = outlook_of(band);
  if (!words.force) refuse_losses(band, report, assignments, before, after);
  if (!report.has_problems()) note_adjustments(report, assignments, before, after);
}

int run(const Words& words, Report& report) {
  const Band band = *parse_band(words.band);
  std::vector<Assignment> assignments;
  read_assignments(words, band, report, &assignments);
  if (assignments.empty() && !report.has_problems()) {
    report.problem({"nothing to set", "write KEY=VALUE or KEY:SSID=VALUE"});
    return kWrongUsage;
  }
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  if (!open_band(band, report)) return kNoStore;
  note_waiting(band, report);
  try_out(words, band, report, assignments);
  report.data() = {{"band", label_of(band)}, {"changes", Json::array()}};
  if (report.has_problems()) return kRefused;

  // All or nothing, whoever interrupts it.
  const SignalHold hold;
  std::vector<Stored> stored;
  Json changes = Json::array();
  Text text;
  for (const Assignment& assignment : assignments) {
    const Key& key = *assignment.target.key;
    const std::string before = read_value(band, key, assignment.target.index).value_or("");
    if (!is_stored(band, assignment)) {
      refuse(report, band, assignment, first_reason(), "another process changed the store; try again");
      take_back(band, stored);
      return kRefused;
    }
    stored.push_back({assignment.target, before});
    if (last_shell_status() != 0) {
      report.problem({"the driver did not take " + assignment.target.name() + ", which is in the store now",
                      "is the driver well? set it again then", about_key(assignment.target.name(), band)});
    }
    if (std::string(key.name) == kAddressList && assignment.value.find(';') != std::string::npos) {
      report.note(assignment.target.name() + ": " + kOnlyFirstAddress);
    }
    changes.push_back({{"key", key.name},
                       {"index", assignment.target.index},
                       {"before", json_value(key, shown_value(key, before))},
                       {"after", json_value(key, shown_value(key, assignment.value))}});
    text << label_of(band) << ' ' << assignment.target.name() << " = " << printable(shown_value(key, assignment.value))
         << "  (was " << printable(shown_value(key, before)) << ")\n";
  }
  report.text() << text.str();
  report.data()["changes"] = std::move(changes);
  return report.has_problems() ? kNoAnswer : kDone;
}

constexpr Word kWords[] = {
    word::kOneBand,
    {"KEY=VALUE",
     &Words::assignments,
     "KEY=VALUE for the band, KEY:SSID=VALUE for an SSID; - is a line of standard input",
     {.offers = "assignment"}},
    {"--file",
     &Words::files,
     "KEY[:SSID]=PATH: the value is the first line of a file",
     {.value_name = "KEY=PATH", .offers = "file-assignment"}},
    {"--literal", &Words::literal, "- means a dash"},
    {"--force", &Words::force, "Store what is dangerous, would be lost, or cannot be served"},
    word::kWait,
};

}  // namespace

const Verb kSet = {"set", "Change the live store: all of the values, or none",
                   "The settings are in the live store then; save or apply brings them to the dat\n"
                   "file. They are tried in the order given, and the last one of a key counts. Six\n"
                   "of WPS go to the driver at once: WscConfMode, WscConfStatus, WscV2Support,\n"
                   "WscMaxPinAttack, WscKeyASCII and WscSetupLockTime.\n\n"
                   "Examples:\n"
                   "  wlanctl set 2.4g Channel=11 HideSSID:2=1\n"
                   "  wlanctl set 2.4g WPAPSK:1=- <passphrase.txt",
                   kWords, run};

}  // namespace wlanctl

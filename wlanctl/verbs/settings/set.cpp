// set: changes the live store, all of it or nothing.
#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/danger.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/library/output.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

Json about_assignment(Band band, const Assignment& assignment, const std::string& reason) {
  return {{"band", label_of(band)},
          {"key", assignment.target.name()},
          {"value", shown_value(*assignment.target.key, assignment.value)},
          {"reason", reason},
          {"accepted", words_for(assignment.target.key->accepted)}};
}

void refuse(Report& report, Band band, const Assignment& assignment, const std::string& reason,
            const std::string& next) {
  const Key& key = *assignment.target.key;
  report.problem({assignment.target.name() + " cannot be \"" + shown_value(key, assignment.value) + "\": " + reason,
                  next, about_assignment(band, assignment, reason)});
}

// Asks the library's own setter, and only that. Some tell the driver too, whose tool prints.
bool is_stored(Band band, const Assignment& assignment) {
  clear_messages();
  clear_shell_status();
  const CaughtOutput unheard;
  const Key& key = *assignment.target.key;
  if (key.setter(wifi_type_of(band), assignment.target.index, assignment.value.c_str()) != 0) {
    return false;
  }
  spread_list(band, key, assignment.value);
  return true;
}

void read_assignments(const Words& words, Band band, Report& report, std::vector<Assignment>* assignments) {
  for (const std::string& text : words.assignments) {
    if (auto assignment = parse_assignment(text, band, words.literal, report)) assignments->push_back(*assignment);
  }
  for (const std::string& text : words.files) {
    if (auto assignment = parse_file_assignment(text, band, report)) assignments->push_back(*assignment);
  }
}

// On a private copy of the store, in order, so that a value may depend on one before it.
void try_out(const Words& words, Band band, Report& report, const std::vector<Assignment>& assignments) {
  const PrivateStore copy(band);
  const ShellScope nothing_runs(ShellMode::kDrop);
  for (const Assignment& assignment : assignments) {
    if (!is_stored(band, assignment)) {
      const std::string reason = first_reason();
      refuse(report, band, assignment, reason.empty() ? "the library refuses it" : reason,
             "it takes " + words_for(assignment.target.key->accepted));
      continue;
    }
    const std::string danger = words.force ? "" : danger_of(*assignment.target.key, assignment.value);
    if (!danger.empty()) refuse(report, band, assignment, danger, "choose another value, or insist with --force");
  }
}

struct Stored {
  Target target;
  std::string before;
};

void take_back(Band band, const std::vector<Stored>& stored) {
  for (auto one = stored.rbegin(); one != stored.rend(); ++one) {
    write_value(band, *one->target.key, one->target.index, one->before);
  }
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
      report.note(assignment.target.name() + ": a boot loads the first address of a list only");
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
    {"--force", &Words::force, "Store what a shell or the dat file would take apart"},
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

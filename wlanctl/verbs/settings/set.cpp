// set: changes the live store, all of it or nothing.
#include "wlanctl/base/report.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/exchange/reader.h"
#include "wlanctl/exchange/storing.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr char kStandardInput[] = "-";

bool asks_for_input(const std::string& assignment) {
  const size_t equals = assignment.find('=');
  return equals != std::string::npos && assignment.substr(equals + 1) == kStandardInput;
}

// The lines of a file; false where it cannot be read.
bool read_from(const Words& words, Band band, Report& report, std::vector<Wish>* wishes) {
  if (words.from.empty()) return true;
  for (const std::string& text : words.assignments) {
    if (words.from != kStandardInput || words.literal || !asks_for_input(text)) continue;
    report.problem({"standard input cannot be both the lines and a value", "give one of them another way"});
    return false;
  }
  const std::optional<std::string> bytes = read_settings_file(words.from, report);
  if (!bytes) return false;
  const SettingsText text = read_lines(*bytes, band);
  report_problems(words.from, text, report);
  for (const FileSetting& setting : text.settings) {
    if (!setting.is_left_out) wishes->push_back({setting.target, setting.value, words.from, setting.line});
  }
  return true;
}

void read_words(const Words& words, Band band, Report& report, std::vector<Wish>* wishes) {
  const auto add = [&](const std::optional<Assignment>& one) {
    if (one) wishes->push_back({one->target, one->value, "", 0});
  };
  for (const std::string& text : words.assignments) add(parse_assignment(text, band, words.literal, report));
  for (const std::string& text : words.files) add(parse_file_assignment(text, band, report));
}

int run(const Words& words, Report& report) {
  const Band band = *parse_band(words.band);
  std::vector<Wish> wishes;
  if (!read_from(words, band, report, &wishes)) return kWrongUsage;
  read_words(words, band, report, &wishes);
  if (wishes.empty() && !report.has_problems()) {
    report.problem({"nothing to set", words.from.empty() ? "write KEY=VALUE or KEY:SSID=VALUE"
                                                         : "write lines of KEY=VALUE or KEY:SSID=VALUE"});
    return kWrongUsage;
  }
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  if (!open_band(band, report)) return kNoStore;
  note_waiting(band, report);
  const StorePlan plan = try_out(band, wishes, Order::kAsGiven, words.force, report);
  report.data() = {{"band", label_of(band)}, {"changes", Json::array()}};
  if (report.has_problems()) return kRefused;
  const std::vector<ValueChange> changes = changes_of(plan);
  if (!store_plans("set", {plan}, report)) return kRefused;
  report.text() << text_of(band, changes);
  report.data()["changes"] = json_of(changes);
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
    {"--from",
     &Words::from,
     "A file with lines of KEY[:SSID]=VALUE, which come first; - is standard input",
     {.value_name = "FILE", .offers = "file"}},
    {"--literal", &Words::literal, "- means a dash"},
    {"--force", &Words::force, "Store what is dangerous, would be lost, or cannot be served"},
    word::kCommandTimeout,
    word::kWait,
};

}  // namespace

const Verb kSet = {"set", "Change the live store: all of the values, or none",
                   "The settings are in the live store then; save or apply brings them to the dat\n"
                   "file. They are tried in the order given, and the last one of a key counts. Six\n"
                   "of WPS go to the driver at once: WscConfMode, WscConfStatus, WscV2Support,\n"
                   "WscMaxPinAttack, WscKeyASCII and WscSetupLockTime. A line of --from that begins\n"
                   "with # is a comment. Blanks around = do not count there; but of a text such as\n"
                   "SSID all that stands behind = is the value, blanks too.\n\n"
                   "Examples:\n"
                   "  wlanctl set 2.4g Channel=11 HideSSID:2=1\n"
                   "  wlanctl set 2.4g WPAPSK:1=- <passphrase.txt\n"
                   "  wlanctl set 5g --from radio.txt Channel=36",
                   kWords, run};

}  // namespace wlanctl

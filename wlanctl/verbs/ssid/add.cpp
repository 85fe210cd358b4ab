// ssid add: one more SSID behind the others, in the live store or, where that has no room, in the dat file.
#include <unistd.h>

#include "wlanctl/base/asked_line.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/confirm/filing.h"
#include "wlanctl/files/input.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/guarded_save.h"
#include "wlanctl/verbs/apply/way_into_store.h"
#include "wlanctl/verbs/ssid/report.h"
#include "wlanctl/verbs/ssid/steps.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

std::optional<NewSsid> described(const Words& words, const std::string& name, Report& report) {
  NewSsid fresh = {.name = name,
                   .security = find_security(words.security.empty() ? kDefaultSecurity : words.security),
                   .passphrase = "",
                   .is_hidden = words.hide,
                   .is_isolated = words.isolate};
  const bool is_file_given = !words.passphrase_file.empty();
  if (!fresh.security->has_passphrase) {
    if (!is_file_given) return fresh;
    report.problem({"an open network has no passphrase", "leave out --passphrase-file, or choose another --security"});
    return std::nullopt;
  }
  if (!is_file_given && isatty(STDIN_FILENO) == 0) {
    report.problem({std::string(fresh.security->name) + " needs a passphrase",
                    "--passphrase-file FILE, or - for a line of standard input; --security open for none"});
    return std::nullopt;
  }
  std::optional<std::string> line;
  if (!is_file_given || words.passphrase_file == "-") {
    line = asked_line("passphrase of " + printable(name), true);
  } else {
    const Input input = read_input(words.passphrase_file, Until::kLineEnd);
    if (!input.bytes) {
      report.problem({"cannot read the passphrase: " + input.reason, "its file holds it in the first line"});
      return std::nullopt;
    }
    line = first_line_of(input);
  }
  // "0" is none at all in the store.
  if (!line || line->empty() || *line == "0") {
    report.problem({"there is no passphrase", "is it the first line of that file, or of standard input?"});
    return std::nullopt;
  }
  fresh.passphrase = *line;
  return fresh;
}

void refuse_room(const SsidPlan& plan, Report& report) {
  const size_t room = free_records(plan.band);
  if (plan.records.size() <= room) return;
  std::vector<std::string> keys;
  for (const wifimgr_attr_record& record : plan.records) keys.push_back(key_of(record));
  report.problem({std::string("the store of ") + label_of(plan.band) + " has room for " +
                      count_of(room, "more record") + ", and SSID " + std::to_string(plan.ssid) + " needs " +
                      std::to_string(keys.size()) + ": " + joined(keys, ", "),
                  "--to-file writes it to the dat file, and says what to restart for it", about(plan.band, plan.ssid)});
}

std::vector<wifimgr_attr_record> enlarged_table(const SsidPlan& plan) {
  std::vector<wifimgr_attr_record> content = table_of_store(plan.band);
  content.insert(content.end(), plan.records.begin(), plan.records.end());
  return content;
}

// Into the dat file as a save of a larger store would write it; of both bands or of none.
int write_files(const Words& words, const std::vector<SsidPlan>& plans, Report& report) {
  std::vector<JudgedPlan> done;
  std::vector<FileToCome> files;
  for (const SsidPlan& plan : plans) {
    const EnlargedStore larger(plan.band, enlarged_table(plan));
    const std::optional<JudgedPlan> judged = judge(plan, words.force, report);
    if (!judged) return kRefused;
    (void)make_changes(plan);
    files.push_back({plan.band, saved_text(plan.band).value_or("")});
    done.push_back(*judged);
  }
  if (!words.dry_run && !begin_filing("ssid", files, report)) return kRefused;
  for (const SsidPlan& plan : plans) {
    if (words.dry_run) break;
    const EnlargedStore larger(plan.band, enlarged_table(plan));
    (void)make_changes(plan);
    if (const int code = save_guarded(plan.band, words.force, report); code != kDone) {
      take_back_filing(report);
      return code;
    }
  }
  if (!words.dry_run && !end_filing(report)) return kRefused;
  Json bands = Json::array();
  for (const JudgedPlan& judged : done) {
    tell_change(judged, "added", words.dry_run ? ChangeIs::kTried : ChangeIs::kInFile, report);
    if (!words.dry_run) tell_restart(judged.plan.band, "SSID " + std::to_string(judged.plan.ssid), report);
    bands.push_back(json_of(judged));
  }
  report.data() = {{"dry_run", words.dry_run}, {"in_file", true}, {"bands", std::move(bands)}, {"next", ""}};
  return kDone;
}

int add(const Words& words, Report& report) {
  const auto asked = asked_of(words, 1, "one name", report);
  if (!asked) return kWrongUsage;
  const std::string& name = asked->names.front();
  const auto fresh = described(words, name, report);
  if (!fresh) return kWrongUsage;
  const MaybeLock lock(words, report);
  if (lock.is_missing()) return lock.exit_code();
  if (const int code = open_all(words, *asked, report); code != kDone) return code;
  refuse_bad_name(name, words.force, report);
  std::vector<SsidPlan> plans;
  for (const Band band : asked->bands) {
    if (ssid_count(band) >= WIFIMGR_FIELDS) {
      report.problem(
          {std::string(label_of(band)) + " has " + std::to_string(WIFIMGR_FIELDS) + " SSIDs, the most there are",
           std::string("wlanctl ssid remove ") + label_of(band) + " takes one away", about(band)});
      continue;
    }
    if (!words.force) refuse_taken_name(band, name, 0, report);
    plans.push_back(plan_to_add(band, *fresh));
    if (!words.to_file) refuse_room(plans.back(), report);
  }
  if (report.has_problems()) return kRefused;
  return words.to_file ? write_files(words, plans, report) : finish(words, *asked, plans, "added", report);
}

std::string security_refusal(const std::string& text) {
  return find_security(text) != nullptr ? "" : "there is no security \"" + text + "\"";
}

constexpr Word kAddWords[] = {
    word::kBandOrBoth,
    {"NAME", &Words::names, "The network's name", {.offers = "text"}},
    {"--security",
     &Words::security,
     "How it is secured; wpa2-psk without",
     {.choices = security_names, .refusal = security_refusal}},
    {"--passphrase-file",
     &Words::passphrase_file,
     "Its first line is the passphrase; - is standard input",
     {.value_name = "FILE", .offers = "file"}},
    {"--hide", &Words::hide, "Beacons without the name"},
    {"--isolate", &Words::isolate, "No traffic between its stations"},
    {"--to-file", &Words::to_file, "Into the dat file, where the store has no room"},
    word::kBoth,
    word::kDryRun,
    word::kForceName,
    word::kWait,
};

}  // namespace

const Verb kSsidAdd = {"add", "Add an SSID behind the others",
                       "It is enabled, WPS is off, and what is not said has the defaults that wlanctl\n"
                       "keys and explain know. At a terminal the passphrase is asked for. The SSID is\n"
                       "in the live store then, and on the air with the next apply.\n\n"
                       "Examples:\n"
                       "  wlanctl ssid add 2.4g Guest --isolate --passphrase-file guest.txt\n"
                       "  wlanctl ssid add --both Guest --security wpa2-wpa3",
                       kAddWords, add};

}  // namespace wlanctl

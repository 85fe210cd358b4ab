// ssid: SSIDs added, taken away, renamed, switched on and off; on one band, or on both at once.
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "wlanctl/apply/plan.h"
#include "wlanctl/base/asked_line.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/confirm/rollback.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/ssid/change.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/guarded_save.h"
#include "wlanctl/verbs/settings/ssid_report.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// The bands, and what stands behind them on the command line.
struct Asked {
  std::vector<Band> bands;
  std::vector<std::string> names;
};

// With --both there is no band in front.
std::optional<Asked> asked_of(const Words& words, size_t count, const std::string& what, Report& report) {
  Asked asked = {{kBands[0], kBands[1]}, words.names};
  if (words.both) {
    asked.names.insert(asked.names.begin(), words.band);
  } else if (const auto band = parse_band(words.band)) {
    asked.bands = {*band};
  } else {
    report.problem({word::band_refusal(words.band), "--both stands for both, instead of a band"});
    return std::nullopt;
  }
  if (asked.names.size() == count) return asked;
  report.problem({"behind " + std::string(words.both ? "--both" : "the band") + " stands " + what,
                  "the band is left out with --both"});
  return std::nullopt;
}

// Opens the band for a change, or for looking at it in a dry run. The exit code.
int open_for(const Words& words, Band band, Report& report) {
  if (!(words.dry_run ? look_at_band(band, report) : open_band(band, report))) return kNoStore;
  if (refuse_undecided(band, report)) return kRefused;
  if (const auto count = senseless_count(band)) {
    tell_senseless_count(band, *count, report);
    return kRefused;
  }
  return kDone;
}

int open_all(const Words& words, const Asked& asked, Report& report) {
  int code = kDone;
  for (const Band band : asked.bands) code = worse_of(code, open_for(words, band, report));
  return code;
}

// Its number; 0 with a problem.
int asked_ssid(Band band, const std::string& word, Report& report) {
  const int ssid = find_ssid(band, word);
  if (ssid == 0) {
    const std::string label = label_of(band);
    report.problem({label + " has no SSID \"" + word + "\", by number or by name",
                    "wlanctl ssid list " + label + " lists them", about(band)});
  }
  return ssid;
}

void refuse_taken_name(Band band, const std::string& name, int own, Report& report) {
  for (int ssid = 1; ssid <= ssid_count(band); ++ssid) {
    if (ssid == own || name_of_ssid(band, ssid) != name) continue;
    report.problem({std::string(label_of(band)) + " has an SSID of that name: " + title_of(band, ssid, name),
                    "choose another name, or insist with --force", about(band, ssid)});
  }
}

// A network's name is shown in lists of stations everywhere.
void refuse_bad_name(const std::string& name, bool force, Report& report) {
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; };
  if (force || std::none_of(name.begin(), name.end(), is_control)) return;
  report.problem({"the name has control characters, which stations show as they please",
                  "choose another name, or insist with --force"});
}

std::vector<JudgedPlan> judge_all(const std::vector<SsidPlan>& plans, bool force, Report& report) {
  std::vector<JudgedPlan> judged;
  for (const SsidPlan& plan : plans) {
    if (auto one = judge(plan, force, report)) judged.push_back(std::move(*one));
  }
  return judged;
}

// An apply asks twice before it leaves values out of the dat file. Those of an SSID that was removed are meant to go.
bool needs_force(Band band) {
  const auto text = saved_text(band);
  return text && !losses_behind_count(read_bytes(dat_path_of(band)).value_or(""), *text).empty();
}

std::string next_of(const Asked& asked) {
  const bool is_forced = std::any_of(asked.bands.begin(), asked.bands.end(), needs_force);
  return "wlanctl apply" + (asked.bands.size() == 1 ? std::string(" ") + label_of(asked.bands.front()) : "") +
         (is_forced ? " --force" : "");
}

int finish(const Words& words, const Asked& asked, const std::vector<SsidPlan>& plans, const std::string& done,
           Report& report) {
  const std::vector<JudgedPlan> judged = judge_all(plans, words.force, report);
  if (report.has_problems()) return kRefused;
  if (!words.dry_run && !carry_out(judged, report)) return kRefused;
  Json bands = Json::array();
  for (const JudgedPlan& one : judged) {
    tell_change(one, done, words.dry_run ? ChangeIs::kTried : ChangeIs::kInStore, report);
    bands.push_back(json_of(one));
  }
  const std::string next = next_of(asked);
  if (!words.dry_run) report.text() << "next: " << next << '\n';
  report.data() = {
      {"dry_run", words.dry_run}, {"in_file", false}, {"bands", std::move(bands)}, {"next", words.dry_run ? "" : next}};
  return kDone;
}

// Taken for a change; a dry run waits for nobody.
class MaybeLock {
 public:
  MaybeLock(const Words& words, Report& report) {
    if (!words.dry_run) lock_.emplace(report, words.wait_seconds);
  }
  bool is_missing() const { return lock_ && !*lock_; }
  int exit_code() const { return lock_->exit_code(); }

 private:
  std::optional<ToolLock> lock_;
};

// ---- add

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
  } else if (std::FILE* const file = std::fopen(words.passphrase_file.c_str(), "re"); file != nullptr) {
    line = first_line(file);
    (void)std::fclose(file);
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

// Into the dat file as a save of a larger store would write it. With several bands the first one's file is put back
// where the second one's cannot be written.
int write_files(const Words& words, const std::vector<SsidPlan>& plans, Report& report) {
  std::vector<JudgedPlan> done;
  std::vector<std::pair<Band, std::string>> before;
  for (const SsidPlan& plan : plans) {
    std::vector<wifimgr_attr_record> content = table_of_store(plan.band);
    content.insert(content.end(), plan.records.begin(), plan.records.end());
    const EnlargedStore larger(plan.band, content);
    const std::optional<JudgedPlan> judged = judge(plan, words.force, report);
    int code = judged ? kDone : kRefused;
    if (judged && !words.dry_run) {
      const std::string file = read_bytes(dat_path_of(plan.band)).value_or("");
      (void)make_changes(plan);
      code = save_guarded(plan.band, words.force, report);
      if (code == kDone) before.emplace_back(plan.band, file);
    }
    if (code != kDone) {
      for (const auto& [band, file] : before) (void)restore_dat_file(band, file, report);
      return code;
    }
    done.push_back(*judged);
  }
  Json bands = Json::array();
  for (const JudgedPlan& judged : done) {
    tell_change(judged, "added", words.dry_run ? ChangeIs::kTried : ChangeIs::kInFile, report);
    if (!words.dry_run) tell_restart(judged.plan.band, judged.plan.ssid, report);
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

// ---- remove

// None with problems.
std::vector<SsidPlan> plans_to_remove(const Asked& asked, Report& report) {
  std::vector<SsidPlan> plans;
  for (const Band band : asked.bands) {
    const int ssid = asked_ssid(band, asked.names.front(), report);
    if (ssid == 0) continue;
    const std::string label = label_of(band);
    if (ssid_count(band) == 1) {
      report.problem({title_of(band, ssid, name_of_ssid(band, ssid)) + " is the only one of " + label,
                      "wlanctl ssid disable " + label + " 1 takes it off the air", about(band, ssid)});
      continue;
    }
    plans.push_back(plan_to_remove(band, ssid));
  }
  return plans;
}

std::string farewells(const std::vector<SsidPlan>& plans) {
  std::string text;
  for (const SsidPlan& plan : plans) text += farewell(plan);
  return text;
}

// What is lost is told, and somebody asked, without holding up other processes.
int ask_first(const Words& words, const Asked& asked, std::string* told, Report& report) {
  for (const Band band : asked.bands) {
    if (!look_at_band(band, report)) return kNoStore;
  }
  const std::vector<SsidPlan> plans = plans_to_remove(asked, report);
  if (report.has_problems()) return kRefused;
  *told = farewells(plans);
  if (words.json || isatty(STDIN_FILENO) == 0) {
    report.text() << *told;
    const SsidPlan& plan = plans.front();
    report.problem({"this would take " + title_of(plan.band, plan.ssid, plan.name) + " of " + label_of(plan.band) +
                        " away, with its values",
                    "if that is meant, say so with --yes; wlanctl ssid disable keeps them",
                    about(plan.band, plan.ssid)});
    return kRefused;
  }
  (void)std::fputs(told->c_str(), stderr);
  const auto answer = asked_line("wlanctl ssid disable keeps them. Take it away? yes or no", false);
  if (answer == "yes" || answer == "y") return kDone;
  report.problem({"nothing is taken away", "answer yes, or say so with --yes"});
  return kRefused;
}

int remove(const Words& words, Report& report) {
  const auto asked = asked_of(words, 1, "one SSID, by number or name", report);
  if (!asked) return kWrongUsage;
  std::string told;
  if (!words.yes && !words.dry_run) {
    if (const int code = ask_first(words, *asked, &told, report); code != kDone) return code;
  }
  const MaybeLock lock(words, report);
  if (lock.is_missing()) return lock.exit_code();
  if (const int code = open_all(words, *asked, report); code != kDone) return code;
  const std::vector<SsidPlan> plans = plans_to_remove(*asked, report);
  if (report.has_problems()) return kRefused;
  const std::string lost = farewells(plans);
  if (!told.empty() && told != lost) {
    report.problem({"the SSIDs have changed since you were asked", "look at them, and try again"});
    return kRefused;
  }
  if (told.empty()) report.text() << lost;
  return finish(words, *asked, plans, "removed", report);
}

// ---- enable, disable, rename

int set(const Words& words, const Asked& asked, const char* key, const std::string& value, const std::string& done,
        Report& report) {
  const MaybeLock lock(words, report);
  if (lock.is_missing()) return lock.exit_code();
  if (const int code = open_all(words, asked, report); code != kDone) return code;
  std::vector<SsidPlan> plans;
  for (const Band band : asked.bands) {
    const int ssid = asked_ssid(band, asked.names.front(), report);
    if (ssid == 0) continue;
    if (asked.names.size() == 2 && !words.force) refuse_taken_name(band, value, ssid, report);
    plans.push_back(plan_to_set(band, ssid, key, value));
  }
  if (report.has_problems()) return kRefused;
  return finish(words, asked, plans, done, report);
}

int turn(const Words& words, const char* value, const char* done, Report& report) {
  const auto asked = asked_of(words, 1, "one SSID, by number or name", report);
  return asked ? set(words, *asked, "EnableSSID", value, done, report) : kWrongUsage;
}

int enable(const Words& words, Report& report) {
  return turn(words, "1", "enabled", report);
}

int disable(const Words& words, Report& report) {
  return turn(words, "0", "disabled", report);
}

int rename(const Words& words, Report& report) {
  const auto asked = asked_of(words, 2, "one SSID, by number or name, and its new name", report);
  if (!asked) return kWrongUsage;
  refuse_bad_name(asked->names[1], words.force, report);
  if (report.has_problems()) return kRefused;
  return set(words, *asked, "SSID", asked->names[1], "renamed to \"" + printable(asked->names[1]) + "\"", report);
}

// ---- words

std::string security_refusal(const std::string& text) {
  return find_security(text) != nullptr ? "" : "there is no security \"" + text + "\"";
}

constexpr Word kBandWord = {
    "BAND", &Words::band, "2.4g or 5g; left out with --both", {.required = true, .offers = "band"}};
constexpr Word kBoth = {"--both", &Words::both, "On both bands, or on none"};
constexpr Word kDryRun = {"--dry-run", &Words::dry_run, "Say what would change, and change nothing"};
constexpr Word kForceName = {"--force", &Words::force, "Take a name twice, or what cannot be served"};
constexpr Word kWhich = {"SSID", &Words::names, "Its number or name", {.offers = "text"}};

constexpr Word kAddWords[] = {
    kBandWord,
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
    kBoth,
    kDryRun,
    kForceName,
    word::kWait,
};
constexpr Word kRemoveWords[] = {
    kBandWord, kWhich, {"--yes", &Words::yes, "Yes, with all of its values"}, kBoth, kDryRun, kForceName, word::kWait};
constexpr Word kTurnWords[] = {kBandWord, kWhich, kBoth, kDryRun, word::kWait};
constexpr Word kRenameWords[] = {
    kBandWord,  {"SSID", &Words::names, "Its number or name, and the new name", {.offers = "text"}},
    kBoth,      kDryRun,
    kForceName, word::kWait};

constexpr Verb kAdd = {"add", "Add an SSID behind the others",
                       "It is enabled, WPS is off, and what is not said has the defaults that wlanctl\n"
                       "keys and explain know. At a terminal the passphrase is asked for. The SSID is\n"
                       "in the live store then, and on the air with the next apply.\n\n"
                       "Examples:\n"
                       "  wlanctl ssid add 2.4g Guest --isolate --passphrase-file guest.txt\n"
                       "  wlanctl ssid add --both Guest --security wpa2-wpa3",
                       kAddWords, add};
constexpr Verb kRemove = {"remove", "Take an SSID away, with its values",
                          "The SSIDs behind it move down by one, with all of their values: they get the\n"
                          "interface, and the MAC address, of the one before. wlanctl ssid disable takes\n"
                          "an SSID off the air and leaves all as it is.\n\n"
                          "Examples:\n"
                          "  wlanctl ssid remove 2.4g Guest\n"
                          "  wlanctl ssid remove --both Guest --yes",
                          kRemoveWords, remove};
constexpr Verb kEnable = {"enable", "Serve an SSID from the next apply on",
                          "Examples:\n  wlanctl ssid enable 5g 2\n  wlanctl ssid enable --both Guest", kTurnWords,
                          enable};
constexpr Verb kDisable = {"disable", "Serve it no longer; its values stay",
                           "Examples:\n  wlanctl ssid disable 5g 2\n  wlanctl ssid disable --both Guest", kTurnWords,
                           disable};
constexpr Verb kRename = {
    "rename", "Give an SSID another name",
    "Examples:\n  wlanctl ssid rename 2.4g 1 Kitchen\n  wlanctl ssid rename --both Guest Visitors", kRenameWords,
    rename};
constexpr const Verb* kVerbs[] = {&kSsidList, &kAdd, &kRemove, &kEnable, &kDisable, &kRename};

}  // namespace

const Verb kSsid = {.name = "ssid",
                    .help = "List, add, remove, rename and switch SSIDs",
                    .footer =
                        "What is changed is in the live store then; wlanctl apply brings it into force.\n"
                        "With --both instead of a band it is done on both bands, or on none.\n\n"
                        "Examples:\n"
                        "  wlanctl ssid list\n"
                        "  wlanctl ssid add --both Guest --isolate --passphrase-file guest.txt\n"
                        "  wlanctl ssid remove --both Guest && wlanctl apply",
                    .verbs = kVerbs};

}  // namespace wlanctl

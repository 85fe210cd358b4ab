// ssid: the verb with those below it, and those that set one value: enable, disable, rename.
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/verbs/ssid/steps.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

int set(const Words& words, const AskedSsids& asked, const char* key, const std::string& value, const std::string& done,
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

constexpr Word kTurnWords[] = {word::kBandOrBoth, word::kWhichSsid, word::kBoth, word::kDryRun, word::kWait};
constexpr Word kEnableWords[] = {word::kBandOrBoth,
                                 word::kWhichSsid,
                                 word::kBoth,
                                 word::kDryRun,
                                 {"--force", &Words::force, "Also one without a name or security"},
                                 word::kWait};
constexpr Word kRenameWords[] = {
    word::kBandOrBoth,
    {"SSID", &Words::names, "Its number or name, and the new name", {.offers = "1,2,3,4,5,6,7,8 text"}},
    word::kBoth,
    word::kDryRun,
    word::kForceName,
    word::kWait};

constexpr Verb kEnable = {"enable", "Serve an SSID from the next apply on",
                          "Examples:\n  wlanctl ssid enable 5g 2\n  wlanctl ssid enable --both Guest", kEnableWords,
                          enable};
constexpr Verb kDisable = {"disable", "Serve it no longer; its values stay",
                           "Examples:\n  wlanctl ssid disable 5g 2\n  wlanctl ssid disable --both Guest", kTurnWords,
                           disable};
constexpr Verb kRename = {
    "rename", "Give an SSID another name",
    "Examples:\n  wlanctl ssid rename 2.4g 1 Kitchen\n  wlanctl ssid rename --both Guest Visitors", kRenameWords,
    rename};
constexpr const Verb* kVerbs[] = {&kSsidList, &kSsidAdd, &kSsidRemove, &kEnable, &kDisable, &kRename};

}  // namespace

const Verb kSsid = {.name = "ssid",
                    .help = "List, add, remove, rename and switch SSIDs",
                    .footer =
                        "What is changed is in the live store then; wlanctl apply brings it into force.\n"
                        "With --both instead of a band it is done on both bands, or on none.\n\n"
                        "Examples:\n"
                        "  wlanctl ssid list\n"
                        "  wlanctl ssid add --both Guest --isolate --passphrase-file guest.txt\n"
                        "  wlanctl ssid remove --both Guest && wlanctl apply --force",
                    .verbs = kVerbs};

}  // namespace wlanctl

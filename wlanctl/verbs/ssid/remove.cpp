// ssid remove: takes an SSID away, after telling what goes with it; those behind it move down.
#include <unistd.h>

#include <cstdio>

#include "wlanctl/base/asked_line.h"
#include "wlanctl/base/report.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/ssid/report.h"
#include "wlanctl/verbs/ssid/steps.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// None with problems.
std::vector<SsidPlan> plans_to_remove(const AskedSsids& asked, Report& report) {
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
int ask_first(const Words& words, const AskedSsids& asked, std::string* told, Report& report) {
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

constexpr Word kRemoveWords[] = {
    word::kBandOrBoth, word::kWhichSsid, {"--yes", &Words::yes, "Yes, with all of its values"},
    word::kBoth,       word::kDryRun,    word::kForceName,
    word::kWait};

}  // namespace

const Verb kSsidRemove = {"remove", "Take an SSID away, with its values",
                          "The SSIDs behind it move down by one, with all of their values: they get the\n"
                          "interface, and the MAC address, of the one before. wlanctl ssid disable takes\n"
                          "an SSID off the air and leaves all as it is.\n\n"
                          "Examples:\n"
                          "  wlanctl ssid remove 2.4g Guest\n"
                          "  wlanctl ssid remove --both Guest --yes",
                          kRemoveWords, remove};

}  // namespace wlanctl

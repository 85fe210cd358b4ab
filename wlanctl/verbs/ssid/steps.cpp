#include "wlanctl/verbs/ssid/steps.h"

#include <algorithm>

#include "wlanctl/apply/plan.h"
#include "wlanctl/base/report.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/ssid/report.h"

namespace wlanctl {
namespace {

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

std::vector<JudgedPlan> judge_all(const std::vector<SsidPlan>& plans, bool force, Report& report) {
  std::vector<JudgedPlan> judged;
  for (const SsidPlan& plan : plans) {
    if (auto one = judge(plan, force, report)) judged.push_back(std::move(*one));
  }
  return judged;
}

std::string next_of(const AskedSsids& asked) {
  // The values of an SSID that was removed are meant to go.
  const bool is_forced = std::any_of(asked.bands.begin(), asked.bands.end(),
                                     [](Band band) { return save_loses_ssids(band, saved_text(band)); });
  return "wlanctl apply" + (asked.bands.size() == 1 ? std::string(" ") + label_of(asked.bands.front()) : "") +
         (is_forced ? " --force" : "");
}

}  // namespace

std::optional<AskedSsids> asked_of(const Words& words, size_t count, const std::string& what, Report& report) {
  AskedSsids asked = {{kBands[0], kBands[1]}, words.names};
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

int open_all(const Words& words, const AskedSsids& asked, Report& report) {
  int code = kDone;
  for (const Band band : asked.bands) code = worse_of(code, open_for(words, band, report));
  return code;
}

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

void refuse_bad_name(const std::string& name, bool force, Report& report) {
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; };
  if (force || std::none_of(name.begin(), name.end(), is_control)) return;
  report.problem({"the name has control characters, which stations show as they please",
                  "choose another name, or insist with --force"});
}

int finish(const Words& words, const AskedSsids& asked, const std::vector<SsidPlan>& plans, const std::string& done,
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

}  // namespace wlanctl

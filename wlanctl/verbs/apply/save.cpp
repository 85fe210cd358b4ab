// save and revert: the live store into the dat file, and back.
#include <algorithm>
#include <utility>

#include "wlanctl/base/report.h"
#include "wlanctl/check/dat_text.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/filing.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/history/record.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/difference.h"
#include "wlanctl/store/revert.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/file_guard.h"
#include "wlanctl/verbs/apply/guarded_save.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

int save_band(Band band, bool force, Report& report, Json& saved) {
  if (!open_band(band, report)) return kNoStore;
  if (const int code = save_guarded(band, force, report); code != kDone) return code;
  forget_taken_back(band);
  saved.push_back(label_of(band));
  report.text() << label_of(band) << ": saved to " << dat_path_of(band) << '\n';
  return kDone;
}

int save(const Words& words, Report& report) {
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  Json saved = Json::array();
  int code = kDone;
  for (const Band band : bands_of(words.band)) code = worse_of(code, save_band(band, words.force, report, saved));
  report.data() = {{"bands", std::move(saved)}};
  return code;
}

Problem unreadable_file(Band band) {
  return {unreadable_dat_file(band), "is it there, and readable?", about(band)};
}

Problem lacking_keys(Band band, const Reverted& outcome) {
  const size_t others = outcome.missing.size() - 1;
  return {dat_path_of(band) + " lacks " + outcome.missing.front() +
              (others == 0 ? "" : " and " + std::to_string(others) + " more keys that the store has"),
          "was it cut off? wlanctl save " + std::string(label_of(band)) +
              " --force writes it anew; revert --force reverts to what there is",
          about(band)};
}

void refuse(Band band, const Reverted& outcome, Report& report) {
  switch (outcome.how) {
    case Reverting::kUnreadable:
      report.problem(unreadable_file(band));
      break;
    case Reverting::kNoRoom: {
      const std::vector<DatFinding> repeated = repeated_lines(read_dat_text(outcome.bytes).lines);
      const std::string next = repeated.empty()
                                   ? "stop the management processes, remove the segment with ipcrm and start them"
                                   : count_of(repeated.size(), "line") + " of it repeat others: take them out";
      report.problem(
          {std::string("the store of ") + label_of(band) + " has no room for its dat file", next, about(band)});
      refuse_repeated(band, repeated, report);
      break;
    }
    case Reverting::kIncomplete:
      report.problem(lacking_keys(band, outcome));
      [[fallthrough]];
    case Reverting::kUnsound:
      refuse_unsound(band, outcome.bytes, report);
      break;
    case Reverting::kDone:
      break;
  }
}

bool is_sound(const std::string& bytes) {
  return losses_at_load(bytes).empty();
}

// What the store has got, be it that only a line end was wrong.
size_t values_apart(const std::vector<wifimgr_attr_record>& before, const std::vector<wifimgr_attr_record>& after) {
  return differences(exact_records_of(before), exact_records_of(after), ssids_in(records_of(before))).size();
}

void note_misread(Band band, const std::string& bytes, Report& report) {
  const std::vector<DatFinding> losses = losses_at_load(bytes);
  if (losses.empty()) return;
  report.note(dat_path_of(band) + ", line " + std::to_string(losses.front().line) + ": " + losses.front().reason +
              (losses.size() == 1 ? "" : "; and " + count_of(losses.size() - 1, "more finding")) +
              "; the store has it as the loader reads it");
}

int revert_band(Band band, bool force, Report& report, Json& reverted) {
  take_back_filing(report);
  if (!open_store(band, report, Content::kToCome)) return kNoStore;
  (void)note_taken_back(band, report);
  const std::vector<wifimgr_attr_record> before = table_of_store(band);
  const Entry entry =
      begin_quiet_entry(band, Deed::kRevert, changes_between(before, parse_dat_file(band).value_or(before)), report);
  const Reverted outcome = revert_store(band, force, is_sound);
  if (outcome.how != Reverting::kDone) {
    refuse(band, outcome, report);
    finish_quiet_entry(entry, outcome.how == Reverting::kUnreadable ? kWrongUsage : kRefused, report);
    return outcome.how == Reverting::kUnreadable ? kWrongUsage : kRefused;
  }
  finish_quiet_entry(entry, kDone, report);
  note_misread(band, outcome.bytes, report);
  const size_t values = values_apart(outcome.before, table_of_store(band));
  reverted.push_back({{"band", label_of(band)}, {"values", values}});
  report.text() << label_of(band) << ": " << count_of(values, "value") << " put back to the dat file's\n";
  return kDone;
}

int revert(const Words& words, Report& report) {
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  Json reverted = Json::array();
  int code = kDone;
  for (const Band band : bands_of(words.band)) code = worse_of(code, revert_band(band, words.force, report, reverted));
  report.data() = {{"bands", std::move(reverted)}};
  return code;
}

constexpr Word kSaveWords[] = {
    word::kBand, {"--force", &Words::force, "Also where something of the dat file is lost"}, word::kWait};
constexpr Word kRevertWords[] = {
    word::kBand,
    {"--force", &Words::force, "Also to a dat file that lacks keys of the store, or is misread"},
    word::kWait};

}  // namespace

const Verb kSave = {"save", "Write the live store to the dat file, no more",
                    "Examples:\n  wlanctl save\n  wlanctl save 5g", kSaveWords, save};
const Verb kRevert = {"revert", "Put the live store back to what the dat file says", "Examples:\n  wlanctl revert 2.4g",
                      kRevertWords, revert};

}  // namespace wlanctl

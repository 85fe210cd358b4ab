#include "wlanctl/verbs/apply/guarded_save.h"

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/base/report.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/history/record.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/file_guard.h"

namespace wlanctl {

int save_guarded(Band band, bool force, Report& report) {
  if (const auto count = senseless_count(band)) {
    tell_senseless_count(band, *count, report);
    return kRefused;
  }
  const auto before = parse_dat_file(band);
  // From now on the dat file no longer says what is in force.
  if (!restore_applied(band, report)) return kWrongUsage;
  const std::optional<std::string> text = saved_text(band);
  Report objections;
  (void)may_write_file(band, text, objections);
  if (!may_go_on(objections, force, report)) return kRefused;
  if (!keep_file_of_now(band, text, report) || !keep_applied(band, FileIs::kChanging, report)) return kRefused;
  forget_settled(band);
  const Entry entry = begin_quiet_entry(
      band, Deed::kSave,
      changes_between(before.value_or(std::vector<wifimgr_attr_record>()), table_of_store(band), DatFile::kLeft),
      report);
  clear_messages();
  if (wifimgr_lib_save_dataFile(number_of(band)) != 0) {
    report.problem({std::string(label_of(band)) + " was not saved: " + first_reason(),
                    "is " + dat_path_of(band) + " writable, and is there room?", about(band)});
    finish_quiet_entry(entry, kRefused, report);
    return kRefused;
  }
  const int code = keep_applied(band, FileIs::kSettled, report) ? kDone : kRefused;
  finish_quiet_entry(entry, code, report);
  return code;
}

}  // namespace wlanctl

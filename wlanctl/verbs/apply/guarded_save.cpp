#include "wlanctl/verbs/apply/guarded_save.h"

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/base/report.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/file_guard.h"

namespace wlanctl {

int save_guarded(Band band, bool force, Report& report) {
  if (const auto count = senseless_count(band)) {
    tell_senseless_count(band, *count, report);
    return kRefused;
  }
  // From now on the dat file no longer says what is in force.
  if (!restore_applied(band, report)) return kWrongUsage;
  const std::optional<std::string> text = saved_text(band);
  if (!force && !may_write_file(band, text, report)) return kRefused;
  if (!keep_file_of_now(band, text, report) || !keep_applied(band, FileIs::kChanging, report)) return kRefused;
  forget_settled(band);
  clear_messages();
  if (wifimgr_lib_save_dataFile(number_of(band)) != 0) {
    report.problem({std::string(label_of(band)) + " was not saved: " + first_reason(),
                    "is " + dat_path_of(band) + " writable, and is there room?", about(band)});
    return kRefused;
  }
  return keep_applied(band, FileIs::kSettled, report) ? kDone : kRefused;
}

}  // namespace wlanctl

#include "wlanctl/verbs/apply/guarded_save.h"

#include <cerrno>
#include <cstring>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/base/report.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/rollback.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/history/record.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/file_guard.h"

namespace wlanctl {

namespace {

bool save(Band band, Report& report) {
  clear_messages();
  if (wifimgr_lib_save_dataFile(number_of(band)) == 0) return true;
  report.problem({std::string(label_of(band)) + " was not saved: " + first_reason(),
                  "is " + dat_path_of(band) + " writable, and is there room?", about(band)});
  return false;
}

bool write(Band band, const std::string& text, Report& report) {
  const std::string file = read_bytes(dat_path_of(band)).value_or("");
  if (write_dat_file(band, text)) return true;
  report.problem({"cannot write " + dat_path_of(band) + because(std::strerror(errno)),
                  "make room, or make it writable; the file as it was is put back", about(band)});
  (void)restore_dat_file(band, file, report);
  return false;
}

int write_as(Band band, Writer writer, const std::optional<std::string>& text, bool force, Report& report) {
  // A dat file may hold any, where that is insisted on.
  if (const auto count = senseless_count(band); count && !(writer == Writer::kTool && force)) {
    tell_senseless_count(band, *count, report);
    return kRefused;
  }
  const auto before = parse_dat_file(band);
  // From now on the dat file no longer says what is in force.
  if (!restore_applied(band, report)) return kWrongUsage;
  if (writer == Writer::kTool && settings_in_force(band).empty()) doubt_applied(band);
  Report objections;
  (void)may_write_file(band, text, objections, writer);
  if (!may_go_on(objections, force, report)) return kRefused;
  const bool is_kept = writer == Writer::kLibrary
                           ? keep_file_of_now(band, text, report)
                           : keep_file_anyway(band, read_bytes(dat_path_of(band)).value_or(""), report);
  if (!is_kept || !keep_applied(band, FileIs::kChanging, report)) return kRefused;
  forget_settled(band);
  const Entry entry = begin_quiet_entry(
      band, Deed::kSave,
      changes_between(before.value_or(std::vector<wifimgr_attr_record>()), table_of_store(band), DatFile::kLeft),
      report);
  if (!(writer == Writer::kLibrary ? save(band, report) : write(band, *text, report))) {
    finish_quiet_entry(entry, kRefused, report);
    return kRefused;
  }
  const int code = keep_applied(band, FileIs::kSettled, report) ? kDone : kRefused;
  finish_quiet_entry(entry, code, report);
  return code;
}

}  // namespace

int save_guarded(Band band, bool force, Report& report) {
  return write_as(band, Writer::kLibrary, saved_text(band), force, report);
}

int write_guarded(Band band, const std::string& text, bool force, Report& report) {
  return write_as(band, Writer::kTool, text, force, report);
}

}  // namespace wlanctl

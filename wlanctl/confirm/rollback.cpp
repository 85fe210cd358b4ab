#include "wlanctl/confirm/rollback.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include "wifimgr_lib.h"
#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/apply/run.h"
#include "wlanctl/apply/undone.h"
#include "wlanctl/base/report.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/plain_file.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/files/whole_file.h"
#include "wlanctl/history/record.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/library/command.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/storing_note.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

// A store that was made of a saved file has no room for keys of SSIDs behind the last one. They are in the old file.
std::vector<wifimgr_attr_record> without_unserved(Band band, std::vector<wifimgr_attr_record> settings) {
  int count = 0;
  {
    const PrivateStore store(band, settings);
    count = ssid_count(band);
  }
  std::erase_if(settings, [&](const wifimgr_attr_record& record) {
    return is_left_out(std::string(record.key, strnlen(record.key, sizeof record.key)), count);
  });
  return settings;
}

bool fill_store(Band band, const std::vector<wifimgr_attr_record>& settings) {
  const bool is_filled = replace_store(band, settings) || replace_store(band, without_unserved(band, settings));
  if (is_filled) drop_storing(band);
  return is_filled;
}

// Of the store as it is now.
Entry begun_entry(const Pending& pending, By by, bool is_open, const Settings& booted, Report& report) {
  Entry entry;
  entry.band = pending.band;
  entry.deed = Deed::kRollback;
  entry.by = by;
  entry.weight = word_for_apply(false, 1);
  entry.about = undecided_entry(pending.band);
  if (is_open || booted) {
    entry.changes = changes_between(booted ? *booted : table_of_store(pending.band), settings_in_force(pending.band));
  }
  return begin_entry(std::move(entry), report);
}

void finish(Entry entry, bool is_done, bool is_in_force, bool is_on_air, Report& report) {
  entry.state = is_done ? State::kDone : State::kFailed;
  entry.is_in_force = is_done && is_in_force && is_on_air;
  entry.exit_code = !is_done ? kRefused : is_in_force ? kDone : kNotInForce;
  finish_entry(std::move(entry), report);
}

// The operator who is told is the one whose call it is.
bool end_pending(const Pending& pending, By by, TakenFor reason, Report& report) {
  const bool is_heard = by != By::kGuardian;
  const bool is_kept = keep_taken_back(pending, reason, is_heard);
  if (!remove_pending(pending.band, report)) return false;
  // What is gone has left room.
  if (!is_kept) (void)keep_taken_back(pending, reason, is_heard);
  return true;
}

// What cannot be kept of it in a full folder must not have it done again: who asks next takes the dat file for what is in
// force, as it is.
bool settle(const Pending& pending, By by, TakenFor reason, Report& report) {
  Report unheard;
  const bool is_kept = keep_applied(pending.band, FileIs::kSettled, unheard);
  if (!end_pending(pending, by, reason, report)) return false;
  if (!is_kept && !keep_applied(pending.band, FileIs::kSettled, report)) forget_applied(pending.band);
  return true;
}

// Also where it is another file system's.
bool has_room_for(const std::string& path, size_t bytes) {
  struct statvfs room = {};
  struct stat file = {};
  if (statvfs(path.c_str(), &room) != 0 || stat(path.c_str(), &file) != 0) return true;
  return uint64_t{room.f_bavail} * room.f_frsize + static_cast<uint64_t>(file.st_size) >= bytes;
}

bool may_write(const std::string& path) {
  return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0 || errno == ENOENT;
}

// How the first of its commands that failed did.
std::string cause_of_driver(const Applied& applied) {
  for (const Script& script : applied.scripts) {
    if (!script.cause.empty() && !script.may_fail) return script.cause;
  }
  return "";
}

}  // namespace

bool write_dat_file(Band band, const std::string& bytes) {
  return write_whole_file(dat_path_of(band), bytes);
}

std::string reason_against_roll_back(const Pending& pending) {
  const std::string path = dat_path_of(pending.band);
  if (const std::string reason = reason_against_dat_file(pending.band); !reason.empty()) return path + reason;
  if (!may_write(path)) return path + " cannot be written: " + std::strerror(errno);
  if (!has_room_for(path, pending.dat.size())) return "there is no room for " + path;
  const std::string copy = path_over_boot(pending.band);
  if (!copy.empty() && is_state_file_there(copy) && !may_write(copy.substr(0, copy.rfind('/')))) {
    return copy + " cannot be removed: " + std::strerror(errno);
  }
  return "";
}

bool restore_dat_file(Band band, const std::string& bytes, Report& report) {
  if (write_dat_file(band, bytes)) return true;
  const int error = errno;
  const std::string reason = reason_against_dat_file(band);
  report.problem(
      {"cannot put " + dat_path_of(band) + " back" + (reason.empty() ? because(std::strerror(error)) : reason),
       "make room, or make it writable", about(band)});
  return false;
}

bool roll_back(Pending pending, By by, TakenFor reason, Report& report, const Settings& booted) {
  const Band band = pending.band;
  begin_going_back(&pending, reason, report);
  const bool is_open = reopen_if_replaced(band, report);
  // However far the apply came: what is up now is at most the larger of the two.
  const int applied_count = is_open ? ssid_count(band) : 0;
  if (!adopt_applied(band, pending.applied)) {
    report.problem({std::string("what was in force on ") + label_of(band) + " before is not to be read",
                    "set the values again, and apply", about(band)});
    (void)restore_dat_file(band, pending.dat, report);
    return false;
  }
  Entry entry = begun_entry(pending, by, is_open, booted, report);
  const int count_before = pre_wlan_state[number_of(band)];
  // The radio and the file come back even if the store cannot: the operator may have no other way in.
  std::optional<PrivateStore> instead;
  if (!is_open || !fill_store(band, settings_in_force(band))) {
    report.problem({std::string("the store of ") + label_of(band) + " cannot take its old settings",
                    std::string("radio and dat file have them; wlanctl revert ") + label_of(band), about(band)});
    instead.emplace(band, settings_in_force(band));
  }
  if (applied_count != count_before) (void)wifimgr_lib_set_reloadFlag(wifi_type_of(band), "1");
  pre_wlan_state[number_of(band)] = std::max(applied_count, count_before);
  // The commit writes the dat file too, but with what the store keeps of it alone.
  const CommandRun run;
  const std::optional<Applied> applied = bring_into_force(band, true, report);
  const bool in_force = applied.has_value();
  if (applied && !is_told(band)) {
    report.problem({std::string("the driver did not take all of the settings before of ") + label_of(band) +
                        because(cause_of_driver(*applied)),
                    std::string("wlanctl apply ") + label_of(band) + " tells it again", about(band)});
  }
  if (applied) keep_lacks(band, applied->lacks, report);
  const std::vector<std::string> missing = applied ? interfaces_to_come(band) : std::vector<std::string>();
  note_missing(band, missing, false, report);
  const bool file_is_back = restore_dat_file(band, pending.dat, report);
  const bool is_done = in_force && file_is_back && settle(pending, by, reason, report);
  finish(std::move(entry), is_done, applied && applied->lacks.empty() && is_told(band), missing.empty(), report);
  return is_done;
}

bool is_back_in_force(Band band) {
  return is_told(band) && lacks_of(band).empty();
}

std::vector<std::string> interfaces_to_come(Band band) {
  if (!is_back_in_force(band)) return {};
  // The store may have gone, or not have taken them.
  const PrivateStore put_back(band, settings_in_force(band));
  return missing_interfaces(band);
}

bool undo(const Pending& pending, By by, TakenFor reason, Report& report, const Settings& booted) {
  return pending.phase == Phase::kPrepared ? remove_pending(pending.band, report)
                                           : roll_back(pending, by, reason, report, booted);
}

}  // namespace wlanctl

#include "wlanctl/watch/file_watch.h"

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/watch/link_watch.h"

namespace wlanctl {
namespace {

std::string applied_path(Band band) {
  return std::string(place::kApplied) + label_of(band);
}

}  // namespace

FileMark mark_of(const std::string& path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return {};
  return {true, status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

FileWatch::FileWatch(Band band) : band_(band) {}

std::string FileWatch::folder_of_state() {
  return place::kFolder;
}

std::string FileWatch::folder_of_dat() const {
  const std::string path = dat_path_of(band_);
  return path.substr(0, path.rfind('/') + 1);
}

void FileWatch::look(const std::set<std::string>& finished, const LinkWatch& links, Events& events) {
  look_at_dat(finished, events);
  look_at_pending(events);
  look_at_applied(links, events);
  is_first_ = false;
}

void FileWatch::look_at_dat(const std::set<std::string>& finished, Events& events) {
  const FileMark now = mark_of(dat_path_of(band_));
  // It is written in place: half of it may be there.
  const std::string path = dat_path_of(band_);
  const bool is_done = finished.contains(path.substr(path.rfind('/') + 1)) || now == dat_seen_;
  dat_seen_ = now;
  if (is_first_) dat_ = now;
  if (is_first_ && !now.is_there) {
    events.push_back({kOfFile, band_, "there is no dat file", {{"file", dat_path_of(band_)}, {"bytes", nullptr}}});
  }
  if (now == dat_ || !is_done) return;
  dat_ = now;
  events.push_back({kOfFile,
                    band_,
                    now.is_there ? "written, " + std::to_string(now.size) + " bytes" : "it is gone",
                    {{"file", dat_path_of(band_)}, {"bytes", now.is_there ? Json(now.size) : Json()}}});
}

void FileWatch::look_at_pending(Events& events) {
  const FileMark now = mark_of(pending_path(band_));
  if (!is_first_ && now == pending_) return;
  pending_ = now;
  const FileMark applied = mark_of(applied_path(band_));
  if (now.is_there) {
    const std::optional<Pending> pending = read_pending(band_);
    // One that is not for this user is not told, but its end is.
    const Phase phase = pending ? pending->phase : Phase::kWaiting;
    if (phase == Phase::kWaiting) {
      applied_at_waiting_ = applied;
      dat_before_ = pending ? sum_of(pending->dat) : "";
    }
    if (pending && phase == Phase::kWaiting && phase_ != Phase::kWaiting) {
      const unsigned seconds = pending->seconds_left();
      events.push_back(
          {"apply-waiting", band_, std::to_string(seconds) + " s for wlanctl confirm", {{"seconds", seconds}}});
    }
    phase_ = phase;
    return;
  }
  if (!phase_) return;
  if (is_confirmed()) {
    events.push_back({"confirmed", band_, "the apply is confirmed"});
  } else if (phase_ != Phase::kPrepared) {
    events.push_back({"rolled-back", band_, "the apply is rolled back"});
  }
  phase_.reset();
  // Told already.
  if (const auto text = kept_in_force(band_)) in_force_ = text->sum;
  applied_ = applied;
}

// By how it is when nothing waits any more: a roll back leaves its own word on what is in force, and the old dat file.
bool FileWatch::is_confirmed() const {
  if (phase_ != Phase::kWaiting && phase_ != Phase::kGoingBack) return false;
  if (mark_of(applied_path(band_)) == applied_at_waiting_) return true;
  return !dat_before_.empty() && sum_of(read_bytes(dat_path_of(band_)).value_or("")) != dat_before_;
}

void FileWatch::look_at_applied(const LinkWatch& links, Events& events) {
  const FileMark now = mark_of(applied_path(band_));
  if (!is_first_ && now == applied_) return;
  applied_ = now;
  const auto kept = kept_in_force(band_);
  // Written once before an apply, with what was in force till then, and once behind it.
  const bool is_done = kept && kept->file == FileIs::kSettled;
  const bool is_another = !in_force_.empty() && kept && kept->sum != in_force_;
  const bool is_restarted = is_changing_ && links.changes_of(band_) != changes_;
  if (kept) in_force_ = kept->sum;
  is_changing_ = kept && !is_done;
  changes_ = links.changes_of(band_);
  if (!is_done) return;
  // While an apply is to be confirmed, that tells its end.
  if (!is_first_ && !phase_ && (is_another || is_restarted)) {
    events.push_back({"applied", band_, "applied"});
  }
}

}  // namespace wlanctl

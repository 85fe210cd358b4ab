#include "wlanctl/watch/monitor.h"

#include <poll.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <memory>
#include <set>

#include "wlanctl/base/clock.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/watch/driver_watch.h"
#include "wlanctl/watch/file_watch.h"
#include "wlanctl/watch/folder_notice.h"
#include "wlanctl/watch/in_force_watch.h"
#include "wlanctl/watch/line_output.h"
#include "wlanctl/watch/link_watch.h"
#include "wlanctl/watch/lock_watch.h"
#include "wlanctl/watch/store_watch.h"

namespace wlanctl {
namespace {

// What belongs to one band.
struct BandWatch {
  explicit BandWatch(Band which)
      : band(which), store(which), lock(which), files(which), driver(which), in_force(which) {}

  Band band;
  StoreWatch store;
  LockWatch lock;
  FileWatch files;
  DriverWatch driver;
  InForceWatch in_force;
};

// "2026-03-01T12:00:00.250+01:00".
std::string local_time() {
  timeval now = {};
  (void)gettimeofday(&now, nullptr);
  tm parts = {};
  (void)localtime_r(&now.tv_sec, &parts);
  char day[32] = "";
  char zone[8] = "";
  (void)std::strftime(day, sizeof day, "%Y-%m-%dT%H:%M:%S", &parts);
  (void)std::strftime(zone, sizeof zone, "%z", &parts);
  char text[64];
  (void)std::snprintf(text, sizeof text, "%s.%03d%.3s:%s", day, static_cast<int>(now.tv_usec / 1000), zone,
                      zone[0] == '\0' ? "" : zone + 3);
  return text;
}

class Monitor {
 public:
  Monitor(const std::vector<Band>& bands, const MonitorLimits& limits, bool as_json, Report& report)
      : limits_(limits),
        as_json_(as_json),
        report_(report),
        end_ms_(limits.seconds == 0 ? 0 : ms_since_boot() + limits.seconds * kMsPerSecond) {
    for (const Band band : bands) bands_.push_back(std::make_unique<BandWatch>(band));
    notice_ = std::make_unique<FolderNotice>(folders());
  }

  int run() {
    look();
    say_ready();
    int64_t next_ms = ms_since_boot() + kMsPerSecond;
    while (tell() && !is_over()) {
      const Woken woken = wait(end_ms_ == 0 ? next_ms : std::min(next_ms, end_ms_));
      if (woken == Woken::kEnd) break;
      links_.take(events_);
      const std::set<std::string> finished = notice_->take();
      const bool is_applied = !finished.empty() && look_at_files(finished);
      if (!is_applied && ms_since_boot() < next_ms) continue;
      look();
      next_ms = ms_since_boot() + kMsPerSecond;
    }
    return exit_code_;
  }

 private:
  enum class Woken { kSomething, kEnd };

  std::vector<std::string> folders() const {
    std::vector<std::string> folders = {FileWatch::folder_of_state()};
    for (const auto& one : bands_) folders.push_back(one->files.folder_of_dat());
    return folders;
  }

  void look() {
    DriverTime::renew();
    (void)look_at_files(notice_->take());
    for (const auto& one : bands_) {
      one->lock.look(events_);
      one->store.look(events_);
      one->driver.look(links_, one->store, events_);
    }
    // What came while the driver was asked.
    links_.take(events_);
    std::move(applies_.begin(), applies_.end(), std::back_inserter(events_));
    applies_.clear();
    for (const auto& one : bands_) one->in_force.look(events_);
  }

  // Whether there is news of an apply, which is told behind what it has brought about: values, channels, interfaces.
  bool look_at_files(const std::set<std::string>& finished) {
    Events seen;
    for (const auto& one : bands_) one->files.look(finished, links_, seen);
    for (Event& event : seen) {
      const bool is_of_file = std::string(event.kind) == FileWatch::kOfFile;
      (is_of_file ? events_ : applies_).push_back(std::move(event));
    }
    return !applies_.empty();
  }

  // From here on nothing is missed: who starts it may make things happen now.
  void say_ready() const {
    std::string names;
    for (const auto& one : bands_) names += (names.empty() ? "" : " and ") + std::string(label_of(one->band));
    (void)std::fputs(("wlanctl: watching " + names + "\n").c_str(), stderr);
  }

  bool is_over() const { return end_ms_ != 0 && ms_since_boot() >= end_ms_; }

  Woken wait(int64_t until_ms) const {
    pollfd waits[] = {{signals_.file(), POLLIN, 0},
                      {STDOUT_FILENO, 0, 0},  // only whether its reader has gone
                      {links_.file(), POLLIN, 0},
                      {notice_->file(), POLLIN, 0}};
    (void)poll(waits, std::size(waits), wait_until(until_ms));
    const bool is_closed = (waits[1].revents & (POLLERR | POLLNVAL)) != 0;
    return (waits[0].revents & POLLIN) != 0 || is_closed ? Woken::kEnd : Woken::kSomething;
  }

  // False when it is time to end.
  bool tell() {
    Events events;
    events.swap(events_);
    // When they were seen: whoever reads them may let them wait.
    const std::string time = local_time();
    for (const Event& event : events) {
      if (event.band &&
          std::none_of(bands_.begin(), bands_.end(), [&](const auto& one) { return one->band == *event.band; })) {
        continue;
      }
      if (!tell_one(event, time)) return false;
    }
    return true;
  }

  bool tell_one(const Event& event, const std::string& time) {
    std::string line;
    if (as_json_) {
      report_.data() = {{"time", time},
                        {"event", event.kind},
                        {"band", event.band ? Json(label_of(*event.band)) : Json()},
                        {"text", event.text}};
      report_.data().update(event.details);
      line = report_.take_line(kDone);
    } else {
      line = time + "  " + (event.band ? label_of(*event.band) : "-") + "  " + event.kind + "  " +
             printable(on_one_line(event.text)) + "\n";
    }
    switch (write_line(line, signals_, end_ms_)) {
      case Written::kDone:
        break;
      case Written::kFailed:
        report_.problem({"the output could not be written", "is there room?"});
        exit_code_ = kRefused;
        return false;
      case Written::kEnded:
      case Written::kClosed:
        return false;
    }
    return limits_.events == 0 || ++told_ < limits_.events;
  }

  const DriverTime limited_;
  MonitorLimits limits_;
  bool as_json_;
  Report& report_;
  int64_t end_ms_;
  const PipeHold pipe_hold_;
  const EndingSignals signals_;
  LinkWatch links_;
  std::unique_ptr<FolderNotice> notice_;
  std::vector<std::unique_ptr<BandWatch>> bands_;
  Events events_;
  Events applies_;
  unsigned told_ = 0;
  int exit_code_ = kDone;
};

}  // namespace

int monitor(const std::vector<Band>& bands, const MonitorLimits& limits, bool as_json, Report& report) {
  report.begin_lines();
  return Monitor(bands, limits, as_json, report).run();
}

}  // namespace wlanctl

// unlock: frees the lock of a band's store from a process that is gone.
#include <cerrno>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/process.h"
#include "wlanctl/store/lock_holder.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

using Is = LockHolder::Is;

int refuse(Band band, const LockHolder& holder, Report& report) {
  const std::string lock = std::string("the lock of ") + label_of(band) + " is held by " + printable(name_of(holder));
  if (holder.is == Is::kUnknown) {
    report.problem({lock, "stop the management processes, and insist with --force", about(band)});
  } else {
    const std::string number = std::to_string(holder.process);
    report.problem({lock + (is_stopped(holder.process) ? ", which is stopped" : ", which is alive"),
                    is_stopped(holder.process) ? "kill -CONT " + number + " lets it go on" : "wait, or end it",
                    about(band)});
  }
  return kRefused;
}

int run(const Words& words, Report& report) {
  const Band band = *parse_band(words.band);
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  const LockHolder holder = lock_holder(band);
  report.data() = {
      {"band", label_of(band)}, {"holder", holder.process > 0 ? Json(holder.process) : Json()}, {"freed", false}};
  const bool is_gone = semaphore_of(band) < 0 && errno == ENOENT;
  if (is_gone && segment_of(band) >= 0) {
    report.problem({std::string("there is no lock of ") + label_of(band) +
                        " to be freed: its semaphore is gone, and the store goes on without",
                    "start the process that makes the store, by init_shm and init, anew", about(band)});
    return kRefused;
  }
  if (is_gone) {
    report.text() << label_of(band) << ": there is no store yet, and no lock that anybody could hold\n";
    return kDone;
  }
  if (holder.is == Is::kNone) {
    report.text() << label_of(band) << ": the lock is free\n";
    return kDone;
  }
  if (holder.is == Is::kRunning || (holder.is == Is::kUnknown && !words.force)) return refuse(band, holder, report);
  if (!free_lock(band, holder)) {
    report.problem(
        {std::string("the lock of ") + label_of(band) + " cannot be freed: " + std::strerror(errno),
         errno == EBUSY ? "somebody has taken it meanwhile; try again" : "run as the user of the management processes",
         about(band)});
    return kRefused;
  }
  report.data()["freed"] = true;
  report.text() << label_of(band) << ": freed; the lock was held by " << printable(name_of(holder))
                << (holder.is == Is::kGone ? ", which is gone\n" : "\n");
  return kDone;
}

constexpr Word kWords[] = {
    word::kOneBand, {"--force", &Words::force, "Also when nobody knows who holds it"}, word::kWait};

}  // namespace

const Verb kUnlock = {"unlock", "Free the store's lock from a process that is gone",
                      "The kernel gives the lock back when its holder ends, except to who took it\n"
                      "without asking for that. A holder that is alive keeps it.\n\n"
                      "Examples:\n  wlanctl unlock 2.4g",
                      kWords, run};

}  // namespace wlanctl

// An apply that waits for its confirmation, with what comes back when none is given. It lies in a file, so that neither
// the end of the apply nor that of its guardian loses it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "wlanctl/base/band.h"
#include "wlanctl/confirm/taken_back.h"

namespace wlanctl {

class Report;
struct Problem;

enum class Phase {
  kPrepared,   // nothing was changed yet
  kApplying,   // at work or, when the tool lock is free, ended in the middle
  kWaiting,    // applied; rolled back at the deadline
  kGoingBack,  // its roll back has begun: what is there now may be of either
};

struct Pending {
  Band band = Band::k2_4G;
  Phase phase = Phase::kPrepared;
  int64_t deadline_ms = 0;                     // on the clock since boot; the apply itself must be done by then, too
  std::string boot;                            // which boot that is
  int64_t applied_at = 0;                      // when it began, on the clock on the wall
  std::string applied;                         // what was in force, as applied_text
  std::string dat;                             // the dat file's bytes
  TakenFor back_for = TakenFor::kUnconfirmed;  // why it is going back
  bool is_tried = false;                       // by a verb that made up for its guardian, and no verb does so again

  bool is_over() const;  // waiting, and the time is over

  // Whether it is to be undone: an apply without its confirmation or, once its process is gone, without its end.
  bool is_lost(bool is_starter_gone) const;
  unsigned seconds_left() const;
};

// As text for a file, and back; none when it is not believable.
std::string text_of(const Pending& pending);
std::optional<Pending> parse_pending(Band band, const std::string& text);
inline constexpr char kPendingFormat[] = "wlanctl-pending";
inline constexpr int kPendingVersion = 3;

// With what is in force now; none with a problem when the dat file cannot be read.
std::optional<Pending> prepare_pending(Band band, Report& report);

// To be rolled back that many seconds from now.
void set_deadline(Pending* pending, unsigned seconds);

// Says that an apply waits for its confirmation, where one does: what is changed meanwhile goes when it is rolled back.
void note_waiting(Band band, Report& report);

// Whether there is such a file, be it damaged.
bool is_pending(Band band);
std::string pending_path(Band band);
std::optional<Pending> read_pending(Band band);

// Where it is not damaged as far as this user can tell, but cannot be read now; likewise for the copy over a boot.
std::optional<Problem> unreadable_pending(Band band);
std::optional<Problem> unreadable_kept(Band band, const std::string& path);
bool write_pending(const Pending& pending, Report& report);

// With what of it would outlive a boot.
bool remove_pending(Band band, Report& report);

// Only under /var/run.
void drop_pending(Band band);

// The right to watch over a band's pending apply; it goes with the process that has it and with its children. None while
// another process has it. Kept apart from the pending file, which is replaced as the apply goes on.
class Guard {
 public:
  explicit Guard(Band band);
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;
  ~Guard();

  explicit operator bool() const { return file_ >= 0; }
  int file() const { return file_; }

  // Names this process in it, for who finds it stopped.
  void sign() const;

  // Ends a guardian that is stopped. True when there was one.
  static bool take_from_stopped(Band band);

  // Waits for a guardian that is about to end.
  static void wait_until_free(Band band);

 private:
  int file_;
};

}  // namespace wlanctl

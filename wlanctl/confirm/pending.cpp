#include "wlanctl/confirm/pending.h"

#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <utility>
#include <vector>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/base/clock.h"
#include "wlanctl/base/report.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/store/dat_file.h"

namespace wlanctl {
namespace {

constexpr const char* kPhases[] = {"prepared", "applying", "waiting"};
constexpr char kBackFor[] = "back-for-";
constexpr char kTriedFor[] = "tried-for-";

// "waiting"; "back-for-asked".
std::string word_of(const Pending& pending) {
  if (pending.phase != Phase::kGoingBack) return kPhases[static_cast<int>(pending.phase)];
  return std::string(pending.is_tried ? kTriedFor : kBackFor) + name_of(pending.back_for);
}

std::optional<Phase> parse_phase(const std::string& word) {
  for (const Phase phase : {Phase::kPrepared, Phase::kApplying, Phase::kWaiting}) {
    if (word == kPhases[static_cast<int>(phase)]) return phase;
  }
  const bool is_going_back = word.starts_with(kBackFor) || word.starts_with(kTriedFor);
  return is_going_back ? std::optional(Phase::kGoingBack) : std::nullopt;
}

int open_guard(Band band) {
  return open_lock_file(std::string(place::kGuard) + label_of(band));
}

}  // namespace

bool Pending::is_over() const {
  return phase == Phase::kWaiting && ms_since_boot() >= deadline_ms;
}

bool Pending::is_lost(bool is_starter_gone) const {
  return is_over() || (is_starter_gone && phase != Phase::kWaiting);
}

unsigned Pending::seconds_left() const {
  const int64_t left = deadline_ms - ms_since_boot();
  return left <= 0 ? 0 : static_cast<unsigned>((left + kMsPerSecond - 1) / kMsPerSecond);
}

std::optional<Pending> prepare_pending(Band band, Report& report) {
  std::optional<std::string> dat = read_bytes(dat_path_of(band));
  if (!dat) {
    report.problem({unreadable_dat_file(band) + "; it is to come back without a confirmation",
                    "is it there, and readable?", about(band)});
    return std::nullopt;
  }
  Pending pending;
  pending.band = band;
  pending.boot = this_boot();
  pending.applied_at = std::time(nullptr);
  pending.applied = applied_text(band);
  pending.dat = std::move(*dat);
  return pending;
}

void set_deadline(Pending* pending, unsigned seconds) {
  pending->deadline_ms = ms_since_boot() + seconds * kMsPerSecond;
}

void note_waiting(Band band, Report& report) {
  const std::optional<Pending> pending = read_pending(band);
  note_interrupted(band, report);
  if (!pending || pending->phase != Phase::kWaiting || pending->is_over()) return;
  const std::string label = label_of(band);
  report.note(label + " waits " + std::to_string(pending->seconds_left()) + " more seconds for wlanctl confirm " +
              label + "; without it, what was before the apply comes back");
}

std::string pending_path(Band band) {
  return std::string(place::kPending) + label_of(band);
}

bool is_pending(Band band) {
  return is_state_file_there(pending_path(band));
}

std::optional<Pending> read_pending(Band band) {
  const std::optional<std::string> text = read_state_file(pending_path(band), kPendingFormat, kPendingVersion);
  return text ? parse_pending(band, *text) : std::nullopt;
}

std::optional<Problem> unreadable_kept(Band band, const std::string& path) {
  const std::optional<Unreadable> unreadable = unreadable_state_file(path);
  if (!unreadable) return std::nullopt;
  Json details = about(band);
  details["file"] = path;
  return Problem{std::string("what an apply of ") + label_of(band) + " kept for its roll back, in " + path +
                     ", cannot be read" + because(unreadable->reason),
                 unreadable->next, std::move(details)};
}

std::optional<Problem> unreadable_pending(Band band) {
  return unreadable_kept(band, pending_path(band));
}

std::optional<Pending> parse_pending(Band band, const std::string& text) {
  const size_t end = text.find('\n');
  if (end == std::string::npos) return std::nullopt;
  const std::vector<std::string> head = words_of(text.substr(0, end));
  if (head.size() != 6 || head[0] != label_of(band)) return std::nullopt;
  const std::optional<Phase> phase = parse_phase(head[1]);
  const std::optional<int64_t> deadline = number_in(head[2]);
  const std::optional<int64_t> applied_at = number_in(head[4]);
  const std::optional<int64_t> applied = number_in(head[5]);
  const auto rest = static_cast<int64_t>(text.size() - end - 1);
  const bool is_tried = head[1].starts_with(kTriedFor);
  const size_t begin_of_reason = (is_tried ? sizeof kTriedFor : sizeof kBackFor) - 1;
  const std::optional<TakenFor> back_for =
      phase == Phase::kGoingBack ? parse_taken_for(head[1].substr(begin_of_reason)) : TakenFor::kUnconfirmed;
  if (!phase || !back_for || !deadline || !applied_at || !applied || *applied < 0 || *applied > rest)
    return std::nullopt;
  const size_t begin_of_dat = end + 1 + static_cast<size_t>(*applied);
  return Pending{.band = band,
                 .phase = *phase,
                 .deadline_ms = *deadline,
                 .boot = head[3],
                 .applied_at = *applied_at,
                 .applied = text.substr(end + 1, static_cast<size_t>(*applied)),
                 .dat = text.substr(begin_of_dat),
                 .back_for = *back_for,
                 .is_tried = is_tried};
}

std::string text_of(const Pending& pending) {
  Text text;
  text << label_of(pending.band) << ' ' << word_of(pending) << ' ' << pending.deadline_ms << ' ' << pending.boot << ' '
       << pending.applied_at << ' ' << pending.applied.size() << '\n'
       << pending.applied << pending.dat;
  return text.str();
}

bool write_pending(const Pending& pending, Report& report) {
  return write_state_file(pending_path(pending.band), kPendingFormat, kPendingVersion, text_of(pending), report);
}

void drop_pending(Band band) {
  (void)unlink(pending_path(band).c_str());
}

bool remove_pending(Band band, Report& report) {
  // The other way round, a power cut between the two would bring back what was confirmed.
  if (!forget_over_boot(band, report)) return false;
  if (unlink(pending_path(band).c_str()) == 0 || errno == ENOENT) return true;
  report.problem({"cannot remove " + pending_path(band) + ": " + std::strerror(errno),
                  "remove it, or the settings are rolled back", about(band)});
  return false;
}

Guard::Guard(Band band) : file_(open_guard(band)) {
  if (file_ < 0 || flock(file_, LOCK_EX | LOCK_NB) == 0) return;
  close(file_);
  file_ = -1;
}

Guard::~Guard() {
  if (file_ >= 0) close(file_);
}

void Guard::sign() const {
  sign_lock_file(file_);
}

bool Guard::take_from_stopped(Band band) {
  const int file = open_guard(band);
  if (file < 0) return false;
  const bool ended = flock(file, LOCK_EX | LOCK_NB) != 0 && end_stopped_guardian(file);
  close(file);
  if (ended) wait_until_free(band);
  return ended;
}

void Guard::wait_until_free(Band band) {
  constexpr int kPollMs = 20;
  constexpr int kTries = 250;
  const int file = open_guard(band);
  for (int i = 0; file >= 0 && i < kTries && flock(file, LOCK_EX | LOCK_NB) != 0; ++i) poll(nullptr, 0, kPollMs);
  if (file >= 0) close(file);
}

}  // namespace wlanctl

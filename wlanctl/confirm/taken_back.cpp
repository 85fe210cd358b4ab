#include "wlanctl/confirm/taken_back.h"

#include <unistd.h>

#include <ctime>
#include <iterator>
#include <vector>

#include "wlanctl/base/report.h"
#include "wlanctl/base/time_text.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"

namespace wlanctl {
namespace {

constexpr char kFormat[] = "wlanctl-taken-back";
constexpr int kVersion = 1;

struct Reason {
  const char* name;
  const char* words;
};
constexpr Reason kReasons[] = {
    {"unconfirmed", "because nobody confirmed it"},  {"ended", "because it ended in the middle"},
    {"interrupted", "because it was interrupted"},   {"late", "because it was not done in time"},
    {"not-in-force", "because it was not in force"}, {"asked", "by wlanctl rollback"},
};

const Reason& about(TakenFor reason) {
  return kReasons[static_cast<size_t>(reason)];
}

std::string path_of(Band band) {
  return std::string(place::kTakenBack) + label_of(band);
}

bool keep(Band band, const TakenBack& taken) {
  const std::string text = joined({this_boot(), std::to_string(taken.applied_at), std::to_string(taken.taken_back_at),
                                   about(taken.reason).name, taken.is_told ? "told" : "untold"},
                                  " ") +
                           "\n";
  Report unheard;
  return write_state_file(path_of(band), kFormat, kVersion, text, unheard);
}

}  // namespace

const char* name_of(TakenFor reason) {
  return about(reason).name;
}

std::optional<TakenFor> parse_taken_for(const std::string& name) {
  for (size_t i = 0; i < std::size(kReasons); ++i) {
    if (name == kReasons[i].name) return static_cast<TakenFor>(i);
  }
  return std::nullopt;
}

TakenFor reason_for(const Pending& pending) {
  if (pending.phase == Phase::kGoingBack) return pending.back_for;
  return pending.phase == Phase::kWaiting ? TakenFor::kUnconfirmed : TakenFor::kEnded;
}

bool keep_taken_back(const Pending& pending, TakenFor reason, bool is_heard) {
  const bool is_told = is_heard && reason != TakenFor::kUnconfirmed && reason != TakenFor::kEnded;
  return keep(pending.band, {pending.applied_at, std::time(nullptr), reason, is_told});
}

std::optional<TakenBack> taken_back(Band band) {
  const std::vector<std::string> words = words_of(read_state_file(path_of(band), kFormat, kVersion).value_or(""));
  if (words.size() != 5 || words[0] != this_boot()) return std::nullopt;
  const std::optional<int64_t> applied_at = number_in(words[1]);
  const std::optional<int64_t> taken_back_at = number_in(words[2]);
  const std::optional<TakenFor> reason = parse_taken_for(words[3]);
  if (!applied_at || !taken_back_at || !reason) return std::nullopt;
  return TakenBack{*applied_at, *taken_back_at, *reason, words[4] == "told"};
}

bool is_taken_back_damaged(Band band) {
  const std::string path = path_of(band);
  // Not for who may not read it.
  return is_state_file_there(path) && access(path.c_str(), R_OK) == 0 &&
         words_of(read_state_file(path, kFormat, kVersion).value_or("")).size() != 5;
}

Problem damaged_taken_back(Band band) {
  const std::string label = label_of(band);
  Json details = about(band);
  details["file"] = path_of(band);
  return {"what was kept of an apply of " + label + " that was taken back, in " + path_of(band) +
              ", is damaged: nobody knows whether the last one was",
          "wlanctl log " + label + " lists what was done, wlanctl diff " + label +
              " shows what is in force; the next apply or save removes the file",
          std::move(details)};
}

void forget_taken_back(Band band) {
  (void)remove_state_file(path_of(band));
}

void acknowledge_taken_back(Band band) {
  std::optional<TakenBack> taken = taken_back(band);
  if (!taken || taken->is_told) return;
  taken->is_told = true;
  (void)keep(band, *taken);
}

std::string words_of(Band band, const TakenBack& taken) {
  return std::string("the apply of ") + label_of(band) + " of " + local_time(taken.applied_at) + " was taken back at " +
         local_time(taken.taken_back_at) + ", " + about(taken.reason).words;
}

Json json_of(const std::optional<TakenBack>& taken) {
  if (!taken) return {};
  return {{"applied_at", utc_time(taken->applied_at)},
          {"taken_back_at", utc_time(taken->taken_back_at)},
          {"reason", about(taken->reason).name}};
}

std::optional<TakenBack> note_taken_back(Band band, Report& report) {
  if (is_taken_back_damaged(band)) {
    const Problem damaged = damaged_taken_back(band);
    report.note(damaged.message + "; " + damaged.next);
    return std::nullopt;
  }
  const std::optional<TakenBack> taken = taken_back(band);
  if (!taken || taken->is_told) return std::nullopt;
  report.note(words_of(band, *taken));
  return taken;
}

}  // namespace wlanctl

// An apply that was taken back while nobody looked: its operator learns of it from the next call, not from the log.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "wlanctl/base/band.h"
#include "wlanctl/base/json.h"

namespace wlanctl {

class Report;
struct Pending;
struct Problem;

enum class TakenFor {
  kUnconfirmed,  // nobody confirmed it in time
  kEnded,        // it was killed in the middle
  // The rest is told by the call that does it.
  kInterrupted,
  kLate,
  kNotInForce,
  kAsked,
};

struct TakenBack {
  int64_t applied_at = 0;  // both on the clock on the wall, in seconds
  int64_t taken_back_at = 0;
  TakenFor reason = TakenFor::kUnconfirmed;
  bool is_told = false;
};

// "unconfirmed", and back.
const char* name_of(TakenFor reason);
std::optional<TakenFor> parse_taken_for(const std::string& name);

// Why one that is lost is taken back.
TakenFor reason_for(const Pending& pending);

// `is_heard`: somebody waits for the call that does it. False when it cannot be written.
bool keep_taken_back(const Pending& pending, TakenFor reason, bool is_heard);

// Of this boot; none once an apply or a save has come after it.
std::optional<TakenBack> taken_back(Band band);
void forget_taken_back(Band band);

// Whether what was kept of one cannot be read: nobody knows then whether the last apply was taken back. And a problem that
// says so.
bool is_taken_back_damaged(Band band);
Problem damaged_taken_back(Band band);

// From now on it is not said any more.
void acknowledge_taken_back(Band band);

// "the apply of 2.4g of TIME was taken back at TIME, because nobody confirmed it".
std::string words_of(Band band, const TakenBack& taken);
Json json_of(const std::optional<TakenBack>& taken);

// Says so, unless its operator knows. Returns it, where it is said.
std::optional<TakenBack> note_taken_back(Band band, Report& report);

}  // namespace wlanctl

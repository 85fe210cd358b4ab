// What the history says of one apply, save, revert, roll back or undo.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "wlanctl/history/changes.h"

namespace wlanctl {

enum class Deed { kApply, kSave, kRevert, kRollback, kUndo };

// Who began it.
enum class By {
  kOperator,
  kApply,     // an apply that did not come into force
  kGuardian,  // no confirmation came
  kRecovery,  // the next wlanctl, in place of a lost guardian
};

enum class State {
  kBegun,    // under way or, once its process is gone, ended in the middle
  kDone,     // whatever its exit code says
  kFailed,   // nothing came of it
  kWaiting,  // for wlanctl confirm
  kConfirmed,
};

struct Entry {
  unsigned number = 0;  // 0 while it is in no folder
  Band band = Band::k2_4G;
  Deed deed = Deed::kApply;
  By by = By::kOperator;
  int64_t when = 0;  // seconds since 1970 on the gateway's clock; those of one apply have the same
  std::string user;
  std::string terminal;            // "" for none
  std::string weight = "nothing";  // what it meant for the radio, as word_for_apply has it
  State state = State::kBegun;
  int exit_code = 0;
  bool is_in_force = false;
  unsigned about = 0;   // the entry that a roll back takes back, or an undo undoes
  size_t left_out = 0;  // changes that found no room
  std::vector<SettingChange> changes;
};

const char* word_for(Deed deed);
const char* word_for(By by);
const char* word_for(State state);

// As text for a file, and back; none when it is not believable.
std::string text_of(const Entry& entry);
std::optional<Entry> parse_entry(const std::string& text);

// Of entries from the oldest to the newest. The one that took it back or undid it, and was not undone itself; null for
// none.
const Entry* taken_back_by(const std::vector<Entry>& entries, const Entry& entry);

// The one of the other band that the same operation left beside this one; null for none.
const Entry* left_beside(const std::vector<Entry>& entries, const Entry& entry);

// Who is at work, and where, and when unless that is known.
void sign(Entry* entry);

}  // namespace wlanctl

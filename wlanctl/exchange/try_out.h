// Whether values can be stored, all of them: judged on a private copy of the store, so that nothing happens where one of
// them cannot.
#pragma once

#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/store/storing_note.h"

namespace wlanctl {

// A value that somebody wants to be stored, and where it is written.
struct Wish {
  Target target;
  std::string value;
  std::string file;  // "" on the command line
  int line = 0;      // 0 for what no line says
};

enum class Order {
  kAsGiven,   // each is stored, the last one of a setting counts
  kAsNeeded,  // as they depend on each other; what is in the store already is left alone
  kAsBefore,  // likewise, with what was stored for SSIDs that go
};

// How a band's store gets there.
struct StorePlan {
  Band band = Band::k2_4G;
  Order order = Order::kAsGiven;
  std::vector<wifimgr_attr_record> records;  // that the store lacks for SSIDs which it will serve; they come first
  std::vector<Wish> steps;
  std::vector<Wish> unasked;       // what the library refuses and a file takes all the same; they come last
  std::vector<NotedField> fields;  // what they change, with all that the setters change besides
  bool loses_ssids = false;        // whether an apply asks twice then, see save_loses_ssids
};

// By the library's own setter. False when that refuses it; why, messages.h has.
bool is_stored(Band band, const Wish& wish);

// A problem with a wish: where it is written, what it is, why not.
void refuse(Report& report, Band band, const Wish& wish, const std::string& reason, const std::string& next);

// Every refusal is a problem. With `force` only the library's own are; what else speaks against a value is a note.
StorePlan try_out(Band band, const std::vector<Wish>& wishes, Order order, bool force, Report& report);

// As needed, of values for a dat file, which holds what no setter takes: with `force` the library's refusals are notes too.
StorePlan try_for_file(Band band, const std::vector<Wish>& wishes, bool force, Report& report);

// Carries such a plan out, without a word to the driver. False with a problem.
bool put_into_file_store(const StorePlan& plan, Report& report);

}  // namespace wlanctl

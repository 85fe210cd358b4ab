// A change of SSIDs takes many setters. What it changes is noted in a file before the first of them: where its process
// ends in the middle, the next wlanctl puts everything back.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// One field of a band's store, by how the library's update_attr takes it.
struct FieldChange {
  Band band = Band::k2_4G;
  std::string dat_key;
  int field = -1;  // -1 for a key of one value
  std::string before;
  std::string after;
};

// False with a problem when it cannot be written.
bool note_unfinished(const std::vector<FieldChange>& changes, Report& report);

// All is done, or put back.
bool forget_unfinished(Report& report);

// Those that are as the change left them; what others have set since stays.
void put_back(const std::vector<FieldChange>& changes);

bool is_in_store(const FieldChange& change);

// For who opens a band: puts back what another wlanctl left in the middle, on both bands, with a note. Does nothing while
// that one is still at work.
void finish_unfinished(Report& report);

// For who only looks.
void tell_unfinished(Band band, Report& report);

}  // namespace wlanctl

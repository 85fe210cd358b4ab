// Several values that are being stored, noted in a file for as long as they are not all there: whoever is killed in
// between leaves the note behind, and the next wlanctl puts back what was set.
#pragma once

#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// One field of a record, with what it was and all that it becomes on the way.
struct NotedField {
  std::string key;  // of the dat file
  int field = 0;    // from 0
  std::string before;
  std::vector<std::string> becomes;
};

struct NotedBand {
  Band band = Band::k2_4G;
  std::vector<NotedField> fields;
};

// Adds what is different in the later table. Both have the same records.
void add_changes(const std::vector<wifimgr_attr_record>& from, const std::vector<wifimgr_attr_record>& to,
                 std::vector<NotedField>* fields);

// Whether each field of the store has the last of its values.
bool are_all_stored(Band band, const std::vector<NotedField>& fields);

// Gives what belongs to SSIDs behind the first `served` ones the last of its values, where nobody else has changed it
// since, in one step for everybody else. Before the SSID count grows: whoever serves the new ones then, even if this
// process is killed, serves no half of one.
void store_unserved(Band band, const std::vector<NotedField>& fields, int served);

// Puts each field back that has a value which it was to get; what somebody else has set since stays. In one step for
// everybody else. How many it were; -1 when the store cannot be had.
int put_back_noted(Band band, const std::vector<NotedField>& fields);

// The note. All bands of a change are in one, so that it ends for all of them at once.
bool note_storing(const std::string& verb, const std::vector<NotedBand>& changes, Report& report);
bool forget_storing(Report& report);

// For who changes things: puts back what an earlier wlanctl left, and tells it. Needs the tool's lock, and does nothing
// where another one has it.
void finish_storing(Report& report);

// For who has put another content into the band's store: nothing of it is to be put back any more.
void drop_storing(Band band);

// For who only looks.
void tell_storing(Band band, Report& report);

}  // namespace wlanctl

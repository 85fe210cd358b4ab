// What an apply of a band would come to, found out on private copies.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/apply/adjustment.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// A value that a shell would act on when the driver's script is run.
struct Danger {
  std::string key;  // "SSID:1"
  std::string reason;
};

struct Plan {
  bool nothing = false;     // the store, the dat file and what is in force agree, and driver and kernel know for sure
  std::vector<Lack> lacks;  // what did not come into force: another apply restarts the interfaces for it
  bool is_file_in_force = true;
  int weight = 0;  // with dependent settings made consistent, as an apply does
  std::vector<Danger> dangers;
  std::vector<Adjustment> adjustments;
  std::optional<std::string> text;  // of the dat file that it would write; none where it cannot
  // An SSID count in the store that no band can have: nothing else is found out then, as the library would count to it.
  std::optional<std::string> senseless_count;
};

// "nothing" where there is nothing to apply; else "save", which restarts nothing, "radio" or "reboot".
const char* word_for_apply(bool nothing, int weight);

// Says that the count of SSIDs in the band's store is none.
void tell_senseless_count(Band band, const std::string& count, Report& report);

// The same as a note, for who shows the rest.
void note_senseless_count(Band band, Report& report);

// The band's store must be open, and restore_applied comes first.
Plan plan_apply(Band band);

// Whether the dat file is as a save of what is in force makes it.
bool is_file_in_force(Band band);

// The lists of the whole band that are not as they were applied, by their dat keys. What a save would make of them does not
// tell, as it keeps but a part. restore_applied comes first.
std::vector<std::string> lists_not_in_force(Band band);

}  // namespace wlanctl

// What this tool last applied, per band, and thereby what a change is compared with. The library keeps it in process
// memory; here it outlives the process.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;
struct Problem;

// Puts what is in force into store_global and pre_wlan_state: what was last applied or, where that is not known or not
// believable, what the dat file says, with a note. The band's store must be open. False with a problem when neither is
// to be had.
bool restore_applied(Band band, Report& report);

// Why it is the dat file that counts as what is in force.
enum class Doubt {
  kNone,
  kUnknown,  // nothing is known of what was last applied
  kChanged,  // others have changed the dat file since
  kCutOff,   // the apply since has ended in the middle
};

// The same, with the doubt instead of its note; and that note.
bool restore_applied(Band band, Doubt* doubt, Report& report);
void note_doubt(Band band, Doubt doubt, Report& report);

// Whether others have changed the dat file since, or what was kept is damaged: nobody knows then what of the file the
// driver has, until an apply has restarted the interfaces. What is kept meanwhile stays in doubt.
bool is_doubted(Band band);

// For who writes a dat file whose settings nobody has applied, and what is in force is not known.
void doubt_applied(Band band);

// The settings in force, where it is known what was last applied; changes nothing, and says nothing.
std::optional<std::vector<wifimgr_attr_record>> last_applied(Band band);

// The same, and whether the driver took all of it; where that is not known it counts as told.
struct LastApplied {
  std::optional<std::vector<wifimgr_attr_record>> settings;
  bool is_told = true;
};
LastApplied read_last_applied(Band band);

// What was last applied in this boot, also where others have changed the dat file since, and may have applied that.
std::optional<std::vector<wifimgr_attr_record>> applied_by_tool(Band band);

// Whether what was kept of it cannot be read: nothing is known then.
bool is_applied_damaged(Band band);

// Whether it is known, without its settings.
bool is_in_force_known(Band band);

// Whether it is not, as the apply since has ended in the middle: the dat file may be as that one has written it.
bool is_apply_cut_off(Band band);

// How the dat file stands to what is in force. Once settled, a file that has changed was changed by somebody else, who
// may have applied it too: nothing is known of what is in force then.
// While an apply is at work, what is in force is what was: once that one is gone without its end, nobody knows.
enum class FileIs { kChanging, kApplying, kSettled };

// Keeps what is in force. False with a problem when it cannot be written.
bool keep_applied(Band band, FileIs file, Report& report);

// Forgets it: the dat file counts as what is in force then.
void forget_applied(Band band);

// What the file says of that, for who only looks: which settings are in force, as a sum of them. None when there is no
// such file, or it is somebody else's.
struct KeptInForce {
  FileIs file = FileIs::kSettled;
  std::string sum;
};
std::optional<KeptInForce> kept_in_force(Band band);

// Whether the driver took all of it.
bool is_told(Band band);
void set_told(Band band, bool told);

// The same of what was last applied, where that is known, as last_applied; and what is wrong where it did not.
bool was_told(Band band);
Problem untold(Band band);

// Takes what the store says for what is in force from now on.
void take_applied(Band band);

// All settings in force, those that no comparison watches too; restore_applied or take_applied comes first.
const std::vector<wifimgr_attr_record>& settings_in_force(Band band);

// What is in force as a text, and back; false when it is not believable, and nothing is changed then.
std::string applied_text(Band band);
bool adopt_applied(Band band, const std::string& text);

// How heavy an apply would be; restore_applied comes first. The library says so, which watches the switch of SSID 1 only:
// where that of another served SSID differs, the interfaces have to be restarted all the same.
int weigh(Band band);

// The same, where `before` is in force and the library's snapshot was taken of it.
int weigh(Band band, const std::vector<wifimgr_attr_record>& before);

}  // namespace wlanctl

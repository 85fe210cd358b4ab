// The library's calls that bring a band's store into force, in their order. A dry run makes the same ones, on a copy.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// The driver's script of an SSID.
struct Script {
  int ssid = 1;
  std::string path;
  std::string text;
  int status = 0;     // of the last line that failed, as a shell says it
  std::string cause;  // how the first one did
  bool may_fail = false;
};

struct Applied {
  int weight = 0;
  bool committed = false;  // else only saved
  std::vector<Script> scripts;
  std::vector<Lack> lacks;         // what the kernel says is not in force
  bool has_lacked_before = false;  // all of these, too
};

std::string script_path_of(Band band);

// Runs the normalisation, once, on the store that the library works on. What it complains about becomes a note.
void make_consistent(Band band, Report& report);

// With the commands run (library/command.h) as one CommandRun of the caller's:
// writes the dat file, restarts the interfaces when what is watched changed, tells the driver the rest SSID by SSID, and
// takes for what is in force what the store had when that began: what another process sets meanwhile is a note. Then it
// looks whether it is, unless the run was broken off. None with a problem when the dat file cannot be written; nothing
// was restarted then. restore_applied comes first, make_consistent too where settings are new.
std::optional<Applied> bring_into_force(Band band, bool always_commit, Report& report);

}  // namespace wlanctl

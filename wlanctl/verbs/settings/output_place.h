// Where an operator may have a file written: not where files of the system's or the tool's own are.
#pragma once

#include <string>

namespace wlanctl {

class Report;

// The file that a path means, behind all links; where there is none yet, the one that would come into being.
std::string place_of_output(const std::string& path);

// True with a problem, for one of the dat files, by whichever name, and for the tool's own files.
bool refuse_output(const std::string& path, Report& report);

}  // namespace wlanctl

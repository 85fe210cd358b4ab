// Dat files of both bands that are written together. They are noted for as long as they are not all there: whoever is
// killed in between leaves the note behind, and the next wlanctl puts back the one that was written.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

struct FileToCome {
  Band band = Band::k2_4G;
  std::string text;  // as it will stand there
};

// Of a single file nothing is noted: it is there or not. False with a problem; then nothing is to be written.
bool begin_filing(const std::string& verb, const std::vector<FileToCome>& files, Report& report);

// All of them are there. False with a problem.
bool end_filing(Report& report);

// Puts back what was written, for who cannot write another one, and for the next one that changes things. What somebody
// else has written since stays. Needs the tool's lock, and does nothing where another one has it.
void take_back_filing(Report& report);

// For who only looks.
void tell_filing(Band band, Report& report);

}  // namespace wlanctl

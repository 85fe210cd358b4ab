// The lines of a dat file, cut as the loader cuts them, with what it would silently make of them.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/check/finding.h"

namespace wlanctl {

struct DatLine {
  int number;                       // from 1
  std::string key;                  // whole, also where the loader cuts it
  std::vector<std::string> fields;  // those that are not empty, all of them
  bool is_judged = true;            // false where the loader sees another value than the file's reader
};

struct DatText {
  std::vector<DatLine> lines;  // without comments and what is no setting
  std::vector<DatFinding> findings;
};

// Why the loader keeps but one of a line's values, though its key has several; "" where it does not.
std::string second_value_reason(const DatLine& line);
bool is_access_list(const std::string& dat_key);

DatText read_dat_text(const std::string& bytes);

// Lines of a key that a line above them has.
std::vector<DatFinding> repeated_lines(const std::vector<DatLine>& lines);

}  // namespace wlanctl

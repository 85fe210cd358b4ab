// What is wrong with a dat file: what the loader would take otherwise than it is written, what a save would lose, and
// what the library's setters would refuse. Touches nothing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

enum class Finding {
  kUnknownKey,
  kNoKey,
  kLongKey,
  kDuplicateKey,
  kNoEquals,
  kSecondEquals,
  kLongLine,
  kLineEnd,
  kNulByte,
  kEmptyField,
  kExcessField,
  kLongField,
  kLeftOut,
  kSsidCount,
  kRefused,
  kShell,
};

const char* word_for(Finding kind);  // "unknown-key" ...

struct DatFinding {
  Finding kind;
  int line;         // from 1; 0 for the file as a whole
  std::string key;  // as the file has it; "" for a line without one
  int field = 0;    // from 1; 0 for the whole value
  bool has_value = false;
  std::string value;  // what was refused; masked for a secret
  std::string reason;
  std::string accepted;  // what the setter takes, for a refused value
};

// In the order of the lines. A value counts as good when one of the bands takes it.
std::vector<DatFinding> check_dat(const std::string& bytes, const std::vector<Band>& bands);

// The band whose folder of dat files the file stands in, wherever it is named from; none for other folders. A file that
// is named after 5G's folder is 5G's.
std::optional<Band> band_of_dat_path(const std::string& path);

}  // namespace wlanctl

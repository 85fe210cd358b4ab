// What can be wrong with a dat file, and where.
#pragma once

#include <string>

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
  kSecondValue,
  kAccessList,
  kLongField,
  kLeftOut,
  kSsidCount,
  kRefused,
  kUnserved,
  kShell,
};

// An error would be lost, misread or refused, or reaches a shell; a warning is taken, and may not be what was meant; a
// note is harmless.
enum class Severity { kNote, kWarning, kError };
Severity severity_of(Finding kind);
const char* word_for(Severity severity);      // "error" ...
std::string painted_word(Severity severity);  // the same, as a terminal shows it

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

}  // namespace wlanctl

#include "wlanctl/check/finding.h"

#include "wlanctl/base/colour.h"

namespace wlanctl {

const char* word_for(Finding kind) {
  switch (kind) {
    case Finding::kUnknownKey:
      return "unknown-key";
    case Finding::kNoKey:
      return "no-key";
    case Finding::kLongKey:
      return "long-key";
    case Finding::kDuplicateKey:
      return "duplicate-key";
    case Finding::kNoEquals:
      return "no-equals";
    case Finding::kSecondEquals:
      return "second-equals";
    case Finding::kLongLine:
      return "long-line";
    case Finding::kLineEnd:
      return "line-end";
    case Finding::kNulByte:
      return "nul-byte";
    case Finding::kEmptyField:
      return "empty-field";
    case Finding::kExcessField:
      return "excess-field";
    case Finding::kSecondValue:
      return "second-value";
    case Finding::kAccessList:
      return "access-list";
    case Finding::kLongField:
      return "long-field";
    case Finding::kLeftOut:
      return "left-out";
    case Finding::kSsidCount:
      return "ssid-count";
    case Finding::kRefused:
      return "refused";
    case Finding::kUnserved:
      return "unserved";
    case Finding::kShell:
      return "shell";
  }
  return "";
}

Severity severity_of(Finding kind) {
  switch (kind) {
    case Finding::kExcessField:
    case Finding::kLeftOut:
      return Severity::kNote;
    case Finding::kUnknownKey:
    case Finding::kDuplicateKey:
    case Finding::kAccessList:
    case Finding::kUnserved:
      return Severity::kWarning;
    case Finding::kNoKey:
    case Finding::kLongKey:
    case Finding::kNoEquals:
    case Finding::kSecondEquals:
    case Finding::kLongLine:
    case Finding::kLineEnd:
    case Finding::kNulByte:
    case Finding::kEmptyField:
    case Finding::kSecondValue:
    case Finding::kLongField:
    case Finding::kSsidCount:
    case Finding::kRefused:
    case Finding::kShell:
      break;
  }
  return Severity::kError;
}

std::string painted_word(Severity severity) {
  std::string word = word_for(severity);
  if (severity == Severity::kNote) return word;
  return painted(severity == Severity::kError ? Paint::kRed : Paint::kYellow, word);
}

const char* word_for(Severity severity) {
  if (severity == Severity::kError) return "error";
  return severity == Severity::kWarning ? "warning" : "note";
}

}  // namespace wlanctl

#include "wlanctl/check/finding.h"

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
    case Finding::kLongField:
      return "long-field";
    case Finding::kLeftOut:
      return "left-out";
    case Finding::kSsidCount:
      return "ssid-count";
    case Finding::kRefused:
      return "refused";
    case Finding::kShell:
      return "shell";
  }
  return "";
}

}  // namespace wlanctl

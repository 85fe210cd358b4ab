#include "wlanctl/completion/completion.h"

namespace wlanctl {

std::string shell_quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

std::string bands_with(const Key& key) {
  std::string bands;
  for (const Band band : kBands) {
    if (key.is_on(band)) bands += (bands.empty() ? "" : ",") + std::string(label_of(band));
  }
  return bands;
}

std::vector<std::string> offers_of(const Key& key) {
  if (key.secret) return {"-"};
  return choices_of(key.accepted);
}

}  // namespace wlanctl

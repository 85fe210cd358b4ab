#include "wlanctl/completion/completion.h"

#include "wlanctl/base/text.h"
#include "wlanctl/keys/value_rule.h"

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
  std::vector<std::string> bands;
  for (const Band band : kBands) {
    if (key.is_on(band)) bands.emplace_back(label_of(band));
  }
  return joined(bands, ",");
}

std::vector<std::string> offers_of(const Key& key) {
  if (key.secret) return {"-"};
  return choices_of(served(key));
}

}  // namespace wlanctl

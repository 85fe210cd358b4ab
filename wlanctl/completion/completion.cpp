#include "wlanctl/completion/completion.h"

#include <utility>

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

std::vector<Offer> offers_of(const Key& key) {
  std::vector<Offer> offers;
  for (const Band band : kBands) {
    if (!key.is_on(band)) continue;
    std::vector<std::string> values = key.secret ? std::vector<std::string>{"-"} : choices_on(key, band);
    if (!offers.empty() && offers.back().values == values) {
      offers.back().bands += std::string(",") + label_of(band);
    } else {
      offers.push_back({label_of(band), std::move(values)});
    }
  }
  return offers;
}

}  // namespace wlanctl

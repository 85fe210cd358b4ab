#include "wlanctl/apply/adjustment.h"

#include "wlanctl/apply/run.h"
#include "wlanctl/base/report.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

std::vector<Adjustment> values_of(Band band) {
  std::vector<Adjustment> values;
  for (const Key& key : all_keys()) {
    if (!key.is_on(band) || key.scope == Scope::kLink) continue;
    const int last = key.scope == Scope::kBand ? 1 : ssid_count(band);
    for (int i = 1; i <= last; ++i) {
      const Target target = {&key, key.scope == Scope::kBand ? -1 : i};
      values.push_back({target, read_value(band, key, target.index).value_or(""), ""});
    }
  }
  return values;
}

}  // namespace

std::string Adjustment::words() const {
  const std::string shown = to == "0" ? to : shown_value(*target.key, to);
  const std::string name = target.key->name;
  const bool is_passphrase = name == "WPAPSK" && to == "0";
  return "an apply will make it " + (shown.empty() ? std::string("empty") : shown) +
         (is_passphrase ? ": an open network keeps no passphrase" : "");
}

std::vector<Adjustment> adjustments_of(Band band) {
  if (senseless_count(band)) return {};
  std::vector<Adjustment> adjusted;
  std::vector<Adjustment> values = values_of(band);
  const PrivateStore copy(band);
  Report unheard;
  make_consistent(band, unheard);
  for (Adjustment& value : values) {
    value.to = read_value(band, *value.target.key, value.target.index).value_or("");
    if (value.to != value.from) adjusted.push_back(value);
  }
  return adjusted;
}

}  // namespace wlanctl

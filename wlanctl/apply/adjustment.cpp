#include "wlanctl/apply/adjustment.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "wlanctl/apply/run.h"
#include "wlanctl/base/report.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

// The keys whose records are others.
std::set<std::string> changed_keys(const std::vector<wifimgr_attr_record>& before,
                                   const std::vector<wifimgr_attr_record>& after) {
  std::set<std::string> keys;
  for (size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
    if (std::memcmp(&before[i], &after[i], sizeof before[i]) == 0) continue;
    keys.emplace(before[i].key, strnlen(before[i].key, sizeof before[i].key));
  }
  return keys;
}

// The settings that those keys hold.
std::vector<Target> targets_of(Band band, const std::set<std::string>& dat_keys) {
  std::vector<Target> targets;
  const int ssids = ssid_count(band);
  for (const Key& key : all_keys()) {
    if (!key.is_on(band) || key.scope == Scope::kLink) continue;
    const int last = key.scope == Scope::kBand ? 1 : ssids;
    for (int i = 1; i <= last; ++i) {
      const int index = key.scope == Scope::kBand ? -1 : i;
      if (dat_keys.contains(dat_key_of(key, index))) targets.push_back({&key, index});
    }
  }
  return targets;
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
  const PrivateStore before(band);
  std::vector<Adjustment> adjusted;
  {
    const std::vector<wifimgr_attr_record> table = table_of_store(band);
    const PrivateStore after(band);
    Report unheard;
    make_consistent(band, unheard);
    for (const Target& target : targets_of(band, changed_keys(table, table_of_store(band)))) {
      adjusted.push_back({target, "", read_value(band, *target.key, target.index).value_or("")});
    }
  }
  for (Adjustment& one : adjusted) one.from = read_value(band, *one.target.key, one.target.index).value_or("");
  std::erase_if(adjusted, [](const Adjustment& one) { return one.from == one.to; });
  return adjusted;
}

}  // namespace wlanctl

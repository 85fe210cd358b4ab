#include "wlanctl/apply/effect.h"

#include <algorithm>
#include <cstring>

#include "wifimgr_lib.h"
#include "wlanctl/apply/applied_state.h"
#include "wlanctl/keys/value_rule.h"
#include "wlanctl/library/output.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

// Values for the rules that are told in words only: the setter says which are its own.
constexpr const char* kTried[] = {
    "0",
    "1",
    "2",
    "3",
    "5",
    "8",
    "9",
    "36",
    "40",
    "12345",
    "changed-value",
    "FR",
    "192.0.2.7",
    "1;1;1;1",
    "2;2;2;2",
    "TKIP;TKIP;TKIP;TKIP",
    "AES;AES;AES;AES",
    "CCK;CCK;CCK;CCK",
    "OFDM;OFDM;OFDM;OFDM",
    "02:00:5e:00:53:01;02:00:5e:00:53:02;02:00:5e:00:53:03;02:00:5e:00:53:04",
};

std::vector<std::string> values_for(const Key& key) {
  const Accepted& accepted = served(key);
  std::vector<std::string> values = choices_of(accepted);
  if (values.empty() && accepted.kind == Accepted::Kind::kNumber) {
    for (const long number : {accepted.lowest, accepted.lowest + 1, accepted.highest}) {
      values.push_back(std::to_string(number));
    }
  }
  if (values.empty()) values.assign(std::begin(kTried), std::end(kTried));
  return values;
}

int first_index(const Key& key) {
  return key.scope == Scope::kBand ? -1 : 1;
}

// What the comparison keeps in this process, put back at the end.
class ComparedState {
 public:
  explicit ComparedState(Band band)
      : band_(number_of(band)), snapshot_(store_global[band_]), interfaces_(pre_wlan_state[band_]) {}
  ComparedState(const ComparedState&) = delete;
  ComparedState& operator=(const ComparedState&) = delete;
  ~ComparedState() {
    store_global[band_] = snapshot_;
    pre_wlan_state[band_] = interfaces_;
  }

 private:
  int band_;
  wifimgr_band_snapshot snapshot_;
  int interfaces_;
};

// Stored on the copy that the library works on, when the library takes it and the gateway can serve it.
bool is_taken(Band band, const Key& key, int index, const std::string& value) {
  const auto sibling = [&](const char* name) { return read_value(band, *find_key(name), index); };
  if (!unserved_reason(key, band, value, sibling).empty()) return false;
  if (key.setter(wifi_type_of(band), index, value.c_str()) != 0) return false;
  spread_list(band, key, value);
  return true;
}

struct Condition {
  const char* key;
  int index;
  const char* value;
};

void set_all(Band band, const std::vector<Condition>& conditions) {
  for (const Condition& one : conditions) write_value(band, *find_key(one.key), one.index, one.value);
}

std::string text_of(const std::vector<Condition>& conditions) {
  std::string text;
  for (const Condition& one : conditions) {
    text += (text.empty() ? "" : " ") + Target{find_key(one.key), one.index}.name() + "=" + one.value;
  }
  return text;
}

std::optional<ChangeEffect> ask(Band band, const Key& key, int index, const std::vector<Condition>& conditions) {
  constexpr uint32_t kTakeSnapshot = 0;
  const std::optional<std::string> current = read_value(band, key, index);
  if (!current || !key.is_on(band)) return std::nullopt;
  const ComparedState as_before(band);
  const PrivateStore copy(band);
  const ShellScope recorder(ShellMode::kRecord);
  const CaughtOutput unheard;
  set_all(band, conditions);
  (void)wifimgr_lib_wifi_config_oper(wifi_type_of(band), kTakeSnapshot);
  const std::vector<wifimgr_attr_record> before = table_of_store(band);
  for (const std::string& value : values_for(key)) {
    ShellScope::lines().clear();
    if (value == *current || !is_taken(band, key, index, value)) continue;
    return ChangeEffect{text_of(conditions), index, weigh(band, before), !ShellScope::lines().empty(), value};
  }
  return std::nullopt;
}

// Under which the table says that a change weighs more.
std::vector<Condition> conditions_of(const Key& key) {
  if (key.effect != Effect::kRadioWithWds) return {};
  std::vector<Condition> conditions = {{"WdsEnable", -1, "1"}};
  if (key.scope == Scope::kSsid) conditions.push_back({"AuthMode", 1, "WEP"});
  return conditions;
}

bool is_same(const ChangeEffect& left, const ChangeEffect& right) {
  return left.weight == right.weight && left.is_at_once == right.is_at_once;
}

int table_weight(Band band, const Key& key) {
  switch (key.effect) {
    case Effect::kSaved:
    case Effect::kAtOnce:
    case Effect::kRadioWithWds:
      return 0;
    case Effect::kRadio:
      return 1;
    case Effect::kRadioOn5G:
      return band == Band::k5G ? 1 : 0;
    case Effect::kReboot:
      return 2;
  }
  return 0;
}

}  // namespace

std::vector<ChangeEffect> table_effects_of(Band band, const Key& key) {
  std::vector<ChangeEffect> effects = {
      {"", first_index(key), table_weight(band, key), key.effect == Effect::kAtOnce, std::nullopt}};
  const std::vector<Condition> conditions = conditions_of(key);
  if (!conditions.empty()) effects.push_back({text_of(conditions), first_index(key), 1, false, std::nullopt});
  return effects;
}

std::vector<ChangeEffect> effects_of(Band band, const Key& key) {
  const auto first = ask(band, key, first_index(key), {});
  if (!first) return table_effects_of(band, key);
  std::vector<ChangeEffect> effects = {*first};
  const bool has_second = key.scope == Scope::kLink || (key.scope == Scope::kSsid && ssid_count(band) > 1);
  if (has_second) {
    const auto second = ask(band, key, 2, {});
    if (second && !is_same(*first, *second)) effects.push_back(*second);
  }
  if (const std::vector<Condition> conditions = conditions_of(key); !conditions.empty()) {
    const auto then = ask(band, key, first_index(key), conditions);
    if (then && !is_same(*first, *then)) effects.push_back(*then);
  }
  return effects;
}

std::vector<Consequence> consequences_of(Band band, const Key& key) {
  std::vector<Consequence> found;
  const int index = first_index(key);
  if (!key.is_on(band) || !read_value(band, key, index)) return found;
  const ComparedState as_before(band);
  const std::vector<Adjustment> usual = adjustments_of(band);
  for (const std::string& value : values_for(key)) {
    std::vector<Adjustment> adjustments;
    {
      const PrivateStore copy(band);
      const ShellScope nothing_runs(ShellMode::kDrop);
      const CaughtOutput unheard;
      if (!is_taken(band, key, index, value)) continue;
      adjustments = adjustments_of(band);
    }
    std::erase_if(adjustments, [&](const Adjustment& one) {
      return one.target != Target{&key, index} && std::find(usual.begin(), usual.end(), one) != usual.end();
    });
    if (adjustments.empty()) continue;
    // The value that is changed is not part of what all have in common.
    const auto same = std::find_if(found.begin(), found.end(), [&](const Consequence& other) {
      return std::equal(adjustments.begin(), adjustments.end(), other.adjustments.begin(), other.adjustments.end(),
                        [](const Adjustment& a, const Adjustment& b) { return a.target == b.target && a.to == b.to; });
    });
    if (same == found.end()) {
      found.push_back({{value}, std::move(adjustments)});
    } else {
      same->values.push_back(value);
    }
  }
  return found;
}

}  // namespace wlanctl

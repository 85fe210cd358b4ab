#include "wlanctl/ssid/plan.h"

#include <cstring>
#include <optional>

#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

constexpr size_t kLongestName = 32;

// Keys of an SSID whose value is the operator's, or follows from the security that was chosen.
std::optional<std::string> chosen_value(const std::string& key, const NewSsid& fresh) {
  const Security& security = *fresh.security;
  if (key == "SSID") return fresh.name;
  if (key == "WscDefaultSSID") return fresh.name.substr(0, kLongestName);
  if (key == "EnableSSID") return "1";
  if (key == "HideSSID") return fresh.is_hidden ? "1" : "0";
  if (key == "NoForwarding") return fresh.is_isolated ? "1" : "0";
  if (key == "AuthMode") return security.mode;
  if (key == "EncrypType") return security.cipher;
  if (key == "DefaultKeyID") return security.wep_key;
  if (key == "PMFMFPC") return security.pmf_capable;
  if (key == "PMFMFPR") return security.pmf_required;
  if (key == "WPAPSK") return fresh.passphrase.empty() ? "0" : fresh.passphrase;
  // Nobody presses a button for a network that was not there before.
  if (key == "WscConfMode") return "0";
  return std::nullopt;
}

// A gateway's identifiers differ in their last digit, which is the SSID's number.
std::string identifier_for(Band band, const Key& key, int ssid) {
  std::string text = read_value(band, key, 1).value_or("");
  if (!text.empty()) text.back() = static_cast<char>('0' + ssid);
  return text;
}

std::string value_for(Band band, const Key& key, int ssid, const NewSsid& fresh) {
  if (const auto chosen = chosen_value(key.name, fresh)) return *chosen;
  const std::string name = key.name;
  if (name == "WSC_UUID_E" || name == "WSC_UUID_Str") return identifier_for(band, key, ssid);
  return default_of(key, band, ssid).value_or("");
}

bool is_of_ssid(const Key& key, Band band) {
  return key.scope == Scope::kSsid && key.is_on(band);
}

// Whether a list ends before the SSID: a save would lose what is put behind its end.
bool ends_before(Band band, const Key& key, int ssid) {
  for (int i = 1; key.numbering == Numbering::kShared && i < ssid; ++i) {
    if (read_value(band, key, i).value_or("").empty()) return true;
  }
  return false;
}

bool is_essential(const std::string& key) {
  return key == "EnableSSID" || key == "AuthMode" || key == "EncrypType";
}

SsidWrite count_write(int count) {
  return {{find_key(kSsidCount), -1}, std::to_string(count)};
}

// Values of SSIDs, perhaps, in a record that the table does not know.
std::vector<std::string> unsure_keys(Band band) {
  std::vector<std::string> keys;
  for (const StoreRecord& record : records_of(table_of_store(band))) {
    int index = 0;
    if (record.fields.size() < 2 || find_dat_key(record.key, &index) != nullptr || keeps_list_whole(record.key)) {
      continue;
    }
    keys.push_back(record.key);
  }
  return keys;
}

}  // namespace

SsidPlan plan_to_add(Band band, const NewSsid& fresh) {
  SsidPlan plan;
  plan.band = band;
  plan.ssid = plan.count = ssid_count(band) + 1;
  plan.name = fresh.name;
  plan.records = missing_records(band, plan.ssid);
  plan.writes.push_back(count_write(plan.count));
  for (const Key& key : all_keys()) {
    if (!is_of_ssid(key, band)) continue;
    const Target target = {&key, plan.ssid};
    // The driver's file need not have every key.
    if (std::strcmp(key.name, "SSID") != 0 && !read_value(band, key, 1)) continue;
    std::string value = value_for(band, key, plan.ssid, fresh);
    // What the driver takes anyway need not be said where it is not said of the others.
    const bool is_left_out =
        value == default_of(key, band, plan.ssid) && !is_essential(key.name) && ends_before(band, key, plan.ssid);
    if (is_left_out) value = "";
    const bool is_chosen = chosen_value(key.name, fresh) && (!value.empty() || std::strcmp(key.name, "SSID") == 0);
    plan.writes.push_back({target, value, !is_chosen});
  }
  return plan;
}

SsidPlan plan_to_remove(Band band, int ssid) {
  SsidPlan plan;
  plan.band = band;
  plan.ssid = ssid;
  plan.name = name_of_ssid(band, ssid);
  const int last = ssid_count(band);
  plan.count = last - 1;
  for (int to = ssid; to < last; ++to) {
    const std::vector<wifimgr_attr_record> records = missing_records(band, to);
    plan.records.insert(plan.records.end(), records.begin(), records.end());
    plan.moved.push_back({name_of_ssid(band, to + 1), to + 1, to});
    for (const Key& key : all_keys()) {
      if (!is_of_ssid(key, band)) continue;
      const std::optional<std::string> value = read_value(band, key, to + 1);
      if (!value && !read_value(band, key, to)) continue;
      plan.writes.push_back({{&key, to}, value.value_or(""), true});
    }
  }
  plan.writes.push_back(count_write(plan.count));
  if (!plan.moved.empty()) plan.unsure = unsure_keys(band);
  return plan;
}

SsidPlan plan_to_set(Band band, int ssid, const char* key, const std::string& value) {
  SsidPlan plan;
  plan.band = band;
  plan.ssid = ssid;
  plan.name = name_of_ssid(band, ssid);
  plan.count = ssid_count(band);
  plan.writes.push_back({{find_key(key), ssid}, value});
  return plan;
}

int find_ssid(Band band, const std::string& word) {
  const int count = ssid_count(band);
  if (word.size() == 1 && word[0] >= '1' && word[0] <= '0' + count) return word[0] - '0';
  for (int ssid = 1; ssid <= count; ++ssid) {
    if (name_of_ssid(band, ssid) == word) return ssid;
  }
  return 0;
}

std::string name_of_ssid(Band band, int ssid) {
  return read_value(band, *find_key("SSID"), ssid).value_or("");
}

}  // namespace wlanctl

#include "wlanctl/keys/dat_key.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "wifimgr_lib.h"
#include "wlanctl/base/text.h"
#include "wlanctl/keys/key.h"

namespace wlanctl {
namespace {

template <typename Copy>
void take_names(Copy copy, std::set<std::string>* names) {
  // The largest of the tables.
  wifimgr_key_setter rows[sizeof wlan_ac_common_default_parm / sizeof wlan_ac_common_default_parm[0]];
  for (const Band band : kBands) {
    const int count = copy(number_of(band), rows);
    for (int i = 0; i < count; ++i) names->insert(rows[i].name);
  }
}

// Keys that have no setter a caller could use, and are nevertheless the library's.
const std::set<std::string>& names_without_setter() {
  static const std::set<std::string> names = [] {
    std::set<std::string> found = {"ReloadFlag"};
    take_names(wifimgr_lib_get_wlan_attr, &found);
    take_names(wifimgr_lib_get_wlan_entry_attr, &found);
    take_names(wifimgr_lib_get_wlan_script_com_attr_config, &found);
    return found;
  }();
  return names;
}

}  // namespace

bool is_known_dat_key(const std::string& dat_key) {
  int index = 0;
  return find_dat_key(dat_key, &index) != nullptr || names_without_setter().count(dat_key) != 0;
}

bool keeps_list_whole(const std::string& dat_key) {
  char list[] = "1;2";
  unsigned count = 0;
  char* fields[WIFIMGR_FIELDS] = {};
  return attr_value_parser(dat_key.c_str(), list, &count, fields) == 0 && std::strcmp(fields[0], "1;2") == 0;
}

bool is_split_list(const Key& key) {
  return std::strcmp(key.name, kAddressList) == 0 || std::strcmp(key.name, "AutoChannelSkipList") == 0;
}

bool is_list_of_band(const std::string& dat_key) {
  int index = 0;
  const Key* const key = find_dat_key(dat_key, &index);
  return key != nullptr && key->scope == Scope::kBand && is_split_list(*key);
}

bool is_numbered_dat_key(const std::string& dat_key) {
  unsigned number = 0;
  return get_attr_num(dat_key.c_str(), dat_key.c_str(), &number) == 0 ||
         get_attr_num_extended(dat_key.c_str(), dat_key.c_str(), &number) == 0;
}

bool is_left_out(const std::string& dat_key, int ssids) {
  const unsigned count = ssids > 0 ? static_cast<unsigned>(ssids) : 0;
  unsigned number = 0;
  if (get_attr_num(dat_key.c_str(), dat_key.c_str(), &number) == 0) return number > count;
  return get_attr_num_extended(dat_key.c_str(), dat_key.c_str(), &number) == 0 && number >= count;
}

bool is_repeated_for_ssids(const Key& key) {
  return key.scope == Scope::kBand && key.holds_numbers();
}

std::string without_repetition(const std::string& value) {
  const std::vector<std::string> parts = split_at(value, ';');
  const bool is_repeated = !parts.empty() && std::all_of(parts.begin(), parts.end(),
                                                         [&](const auto& part) { return part == parts.front(); });
  return is_repeated && value.back() != ';' ? parts.front() : value;
}

}  // namespace wlanctl

#include "wlanctl/apply/three_states.h"

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/base/text.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/difference.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

using Records = std::vector<StoreRecord>;

std::optional<Records> records_in(const std::optional<std::vector<wifimgr_attr_record>>& table) {
  return table ? std::optional<Records>(records_of(*table)) : std::nullopt;
}

std::optional<size_t> apart(const std::optional<Records>& left, const std::optional<Records>& right,
                            DatFile dat_file = DatFile::kNeither) {
  if (!left || !right) return std::nullopt;
  return served_differences(*left, *right, dat_file).size();
}

}  // namespace

std::optional<bool> ThreeStates::agree() const {
  if (is_lacking()) return false;
  bool is_known = has_store;
  for (const std::optional<size_t>& one : {store_from_file, store_from_in_force, file_from_in_force}) {
    if (one && *one > 0) return false;
    is_known = is_known && one.has_value();
  }
  return is_known ? std::optional<bool>(true) : std::nullopt;
}

std::string ThreeStates::line() const {
  if (agree() == true) return "store, dat file and what is in force agree";
  std::vector<std::string> apart;
  std::vector<std::string> alike;
  const auto add = [&](const char* pair, const std::optional<size_t>& values) {
    if (values && *values > 0) apart.push_back(std::string(pair) + " " + std::to_string(*values));
    if (values && *values == 0) alike.emplace_back(pair);
  };
  add("store/file", store_from_file);
  add("store/in force", store_from_in_force);
  add("file/in force", file_from_in_force);
  std::vector<std::string> words;
  if (!has_store) words.emplace_back("no store");
  if (!apart.empty()) words.push_back("values apart: " + joined(apart, ", "));
  if (!alike.empty()) words.push_back("alike: " + joined(alike, ", "));
  if (!file_from_in_force && !store_from_in_force) words.emplace_back("in force is not known");
  if (is_lacking()) words.emplace_back("not all that was applied is in force");
  return joined(words, "; ");
}

ThreeStates three_states_of(Band band) {
  ThreeStates states;
  states.has_store = !is_store_detached(band);
  const LastApplied applied = read_last_applied(band);
  states.lacks = lacks_of(band);
  states.is_told = applied.is_told;
  std::optional<Records> store;
  if (states.has_store) store = records_of(table_of_store(band));
  const std::optional<Records> file = records_in(parse_dat_file(band));
  const std::optional<Records> in_force = records_in(applied.settings);
  states.store_from_file = apart(store, file, DatFile::kRight);
  states.store_from_in_force = apart(store, in_force);
  states.file_from_in_force = apart(file, in_force, DatFile::kLeft);
  return states;
}

}  // namespace wlanctl

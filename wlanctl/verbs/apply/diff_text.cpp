#include "wlanctl/verbs/apply/diff_text.h"

#include <algorithm>
#include <iterator>

#include "wlanctl/base/colour.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"

namespace wlanctl {

namespace {

// An SSID that the store alone has differs in every value that an SSID has.
constexpr size_t kMostOfNewSsid = 8;
constexpr const char* kTellingKeys[] = {"SSID", "AuthMode", "EncrypType", "WPAPSK", "HideSSID", "EnableSSID"};

// How many values of each SSID, by its number, only the store has; 0 where the other side has that SSID.
std::vector<size_t> values_of_new_ssids(const std::vector<Difference>& found, size_t others) {
  std::vector<size_t> values(WIFIMGR_FIELDS + 1);
  for (const Difference& one : found) ++values[std::min(ssid_of(one.dat_key, one.field), values.size() - 1)];
  for (size_t ssid = 0; ssid < values.size(); ++ssid) {
    if (ssid <= others || values[ssid] <= kMostOfNewSsid) values[ssid] = 0;
  }
  return values;
}

bool is_telling(const std::string& name) {
  const std::string key = name.substr(0, name.find(':'));
  return std::find(std::begin(kTellingKeys), std::end(kTellingKeys), key) != std::end(kTellingKeys);
}

}  // namespace

std::string verb_for(size_t count) {
  return count_of(count, "value") + (count == 1 ? " differs" : " differ");
}

std::string table_of(const std::vector<ShownChange>& changes) {
  Rows rows;
  size_t widest = 0;
  for (const ShownChange& change : changes) {
    rows.push_back({"  " + printable(change.name), painted(Paint::kRed, printable(change.from)) + " -> " +
                                                       painted(Paint::kGreen, printable(change.to))});
    widest = std::max(widest, rows.back()[0].size());
  }
  constexpr char kArrow[] = "-> ";
  for (size_t i = 0; i < rows.size(); ++i) {
    const std::string from = painted(Paint::kRed, printable(changes[i].from));
    const std::string to = kArrow + painted(Paint::kGreen, printable(changes[i].to));
    if (widest + 2 + std::max(width_of(from), width_of(to)) > kColumns) {
      rows[i] = {rows[i][0] + "\n    " + from + "\n    " + to};
      continue;
    }
    std::string& values = rows[i][1];
    if (widest + 2 + width_of(values) > kColumns)
      values.replace(painted(Paint::kRed, printable(changes[i].from)).size(), 1, "\n" + std::string(widest + 2, ' '));
  }
  return table(rows);
}

void mask(const std::string& dat_key, bool secrets, std::string* left, std::string* right) {
  if (secrets || !is_secret_dat_key(dat_key)) return;
  if (!left->empty()) *left = std::string(kMasked) + (right->empty() ? "" : " (new)");
  if (!right->empty()) *right = kMasked;
}

Json tell_changes(const std::vector<Difference>& found, const OtherSide& other, bool secrets, Text& text) {
  Json changes = Json::array();
  std::vector<ShownChange> rows;
  const std::vector<size_t> new_values = values_of_new_ssids(found, other.ssids);
  std::vector<size_t> untold(new_values.size());
  for (const Difference& one : found) {
    std::string left = one.left;
    std::string right = one.right;
    mask(one.dat_key, secrets, &left, &right);
    changes.push_back(
        {{"key", one.name()}, {"live", json_value(one.dat_key, left)}, {other.name, json_value(one.dat_key, right)}});
    const size_t ssid = std::min(ssid_of(one.dat_key, one.field), untold.size() - 1);
    if (new_values[ssid] > 0 && !is_telling(one.name())) {
      ++untold[ssid];
    } else {
      rows.push_back({one.name(), right, left});
    }
  }
  text << table_of(rows);
  for (size_t ssid = 0; ssid < untold.size(); ++ssid) {
    if (untold[ssid] == 0) continue;
    text << "  SSID " << ssid << " is new: " << count_of(untold[ssid], "more value") << ", which --json lists\n";
  }
  return changes;
}

}  // namespace wlanctl

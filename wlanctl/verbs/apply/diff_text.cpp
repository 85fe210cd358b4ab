#include "wlanctl/verbs/apply/diff_text.h"

#include <algorithm>

#include "wlanctl/base/colour.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"

namespace wlanctl {

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
  for (size_t i = 0; i < rows.size(); ++i) {
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

Json tell_changes(const std::vector<Difference>& found, const char* other, bool secrets, Text& text) {
  Json changes = Json::array();
  std::vector<ShownChange> rows;
  for (const Difference& one : found) {
    std::string left = one.left;
    std::string right = one.right;
    mask(one.dat_key, secrets, &left, &right);
    changes.push_back(
        {{"key", one.name()}, {"live", json_value(one.dat_key, left)}, {other, json_value(one.dat_key, right)}});
    rows.push_back({one.name(), right, left});
  }
  text << table_of(rows);
  return changes;
}

}  // namespace wlanctl

#include "wlanctl/keys/key.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <sstream>

namespace wlanctl {
namespace {

using enum Scope;
using enum Numbering;

constexpr long kNoUpperLimit = INT_MAX;  // the library's own limit for such numbers
constexpr long kMostChoices = 16;

constexpr Accepted number(long lowest, long highest) {
  return {Accepted::Kind::kNumber, lowest, highest, ""};
}
constexpr Accepted digits() {
  return {Accepted::Kind::kDigits, 0, kNoUpperLimit, ""};
}
constexpr Accepted any_text() {
  return {Accepted::Kind::kText, 0, 0, ""};
}
constexpr Accepted at_most_characters(long count) {
  return {Accepted::Kind::kLength, 0, count, ""};
}
constexpr Accepted words(const char* list) {
  return {Accepted::Kind::kWords, 0, 0, list};
}
constexpr Accepted rule(const char* prose) {
  return {Accepted::Kind::kRule, 0, 0, prose};
}
// Every value is refused.
constexpr Accepted nothing() {
  return {Accepted::Kind::kNothing, 0, 0, ""};
}

struct Bands {
  bool on[2];
};
constexpr Bands kOnBoth = {{true, true}};
constexpr Bands kOn2_4G = {{true, false}};
constexpr Bands kOn5G = {{false, true}};

constexpr bool kSecret = true;
constexpr bool kOpen = false;

const Key kKeys[] = {
#define KEY(name, dat_key, scope, numbering, bands, setter, accepted, meaning, secrecy) \
  {name, dat_key, scope, numbering, {bands.on[0], bands.on[1]}, setter, accepted, meaning, secrecy},
#include "wlanctl/keys/key.def"
};

std::vector<std::string> split(const char* text) {
  std::istringstream stream(text);
  std::vector<std::string> parts;
  for (std::string part; stream >> part;) parts.push_back(part);
  return parts;
}

// How many characters must be added, left out or changed to make one of the other; capitals do not matter.
size_t typos_between(const std::string& left, const std::string& right) {
  std::vector<size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 1; i <= left.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= right.size(); ++j) {
      const bool same = std::tolower(static_cast<unsigned char>(left[i - 1])) ==
                        std::tolower(static_cast<unsigned char>(right[j - 1]));
      const size_t changed = diagonal + (same ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row[right.size()];
}

}  // namespace

std::span<const Key> all_keys() {
  return kKeys;
}

const Key* find_key(const std::string& name) {
  for (const Key& key : kKeys) {
    if (strcasecmp(key.name, name.c_str()) == 0) return &key;
  }
  return nullptr;
}

const Key* find_dat_key(const std::string& dat_key, int* index) {
  *index = 0;
  for (const Key& key : kKeys) {
    if (key.numbering == kShared) {
      if (dat_key == key.dat_key) return &key;
      continue;
    }
    const int last = key.scope == kLink ? kLinks : WIFIMGR_FIELDS;
    for (int i = 1; i <= last; ++i) {
      if (dat_key != dat_key_of(key, i)) continue;
      *index = i;
      return &key;
    }
  }
  return nullptr;
}

std::vector<std::string> similar_keys(const std::string& name) {
  std::vector<std::string> found;
  for (const Key& key : kKeys) {
    if (!name.empty() && strcasestr(key.name, name.c_str()) != nullptr) found.emplace_back(key.name);
  }
  if (!found.empty()) return found;
  constexpr size_t kTypos = 2;
  for (const Key& key : kKeys) {
    if (name.size() > kTypos && typos_between(key.name, name) <= kTypos) found.emplace_back(key.name);
  }
  return found;
}

std::string dat_key_of(const Key& key, int index) {
  if (key.numbering == kShared) return key.dat_key;
  char text[64];
  std::snprintf(text, sizeof text, key.dat_key, key.numbering == kFromZero ? index - 1 : index);
  return text;
}

const char* word_for(Scope scope) {
  if (scope == kBand) return "band";
  return scope == kSsid ? "ssid" : "link";
}

std::string words_for(const Accepted& what) {
  switch (what.kind) {
    case Accepted::Kind::kNumber:
      return std::to_string(what.lowest) + (what.highest == what.lowest + 1 ? " or " : " to ") +
             std::to_string(what.highest);
    case Accepted::Kind::kDigits:
      return "digits";
    case Accepted::Kind::kWords: {
      std::string text = "one of";
      for (const std::string& word : split(what.words)) text += (text.size() == 6 ? " " : ", ") + word;
      return text;
    }
    case Accepted::Kind::kLength:
      return "at most " + std::to_string(what.highest) + " characters";
    case Accepted::Kind::kText:
      return "any text";
    case Accepted::Kind::kRule:
      return what.words;
    case Accepted::Kind::kNothing:
      return "nothing: read-only";
  }
  return "";
}

std::vector<std::string> choices_of(const Accepted& what) {
  if (what.kind == Accepted::Kind::kWords) return split(what.words);
  std::vector<std::string> choices;
  if (what.kind == Accepted::Kind::kNumber && what.highest - what.lowest < kMostChoices) {
    for (long i = what.lowest; i <= what.highest; ++i) choices.push_back(std::to_string(i));
  }
  return choices;
}

}  // namespace wlanctl

#include "wlanctl/key.h"

#include <strings.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <sstream>

namespace wlanctl {
namespace {

using enum Scope;
using enum Numbering;

constexpr long kNoUpperLimit = LONG_MAX;
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
#include "wlanctl/key.def"
};

std::vector<std::string> split(const char* text) {
  std::istringstream stream(text);
  std::vector<std::string> parts;
  for (std::string part; stream >> part;) parts.push_back(part);
  return parts;
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
    for (int i = 1; i <= WIFIMGR_FIELDS; ++i) {
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
      if (what.highest == kNoUpperLimit) return "a number from " + std::to_string(what.lowest);
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

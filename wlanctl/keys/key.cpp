#include "wlanctl/keys/key.h"

#include <strings.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <deque>
#include <sstream>
#include <utility>

#include "wlanctl/base/similar.h"
#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

using enum Scope;
using enum Numbering;

constexpr long kMostChoices = 16;

// What stands for the number in the dat key of a row.
constexpr char kNumber[] = "%d";

// The table's words, in the tool's.
constexpr Scope SCOPE_BAND = kBand;
constexpr Scope SCOPE_SSID = kSsid;
constexpr Scope SCOPE_LINK = kLink;
constexpr Numbering NUMBERING_SHARED = kShared;
constexpr Numbering NUMBERING_FROM_ONE = kFromOne;
constexpr Numbering NUMBERING_FROM_ZERO = kFromZero;
constexpr bool SECRECY_SECRET = true;
constexpr bool SECRECY_OPEN = false;
constexpr Effect EFFECT_SAVED = Effect::kSaved;
constexpr Effect EFFECT_AT_ONCE = Effect::kAtOnce;
constexpr Effect EFFECT_RADIO = Effect::kRadio;
constexpr Effect EFFECT_RADIO_ON_5G = Effect::kRadioOn5G;
constexpr Effect EFFECT_RADIO_WITH_WDS = Effect::kRadioWithWds;
constexpr Effect EFFECT_REBOOT = Effect::kReboot;

struct Bands {
  bool on[2];
};
constexpr Bands BANDS_BOTH = {{true, true}};
constexpr Bands BANDS_ONLY_2_4G = {{true, false}};
constexpr Bands BANDS_ONLY_5G = {{false, true}};

constexpr Accepted::Kind ACCEPTS_TEXT = Accepted::Kind::kText;
constexpr Accepted::Kind ACCEPTS_DIGITS = Accepted::Kind::kDigits;
constexpr Accepted::Kind ACCEPTS_NUMBER = Accepted::Kind::kNumber;
constexpr Accepted::Kind ACCEPTS_TEN_DIGITS = Accepted::Kind::kNumber;
constexpr Accepted::Kind ACCEPTS_ONE_DIGIT = Accepted::Kind::kNumber;
constexpr Accepted::Kind ACCEPTS_LEADING_NUMBER = Accepted::Kind::kNumber;
constexpr Accepted::Kind ACCEPTS_LENGTH = Accepted::Kind::kLength;
constexpr Accepted::Kind ACCEPTS_WORDS = Accepted::Kind::kWords;
constexpr Accepted::Kind ACCEPTS_ADDRESS = Accepted::Kind::kRule;
constexpr Accepted::Kind ACCEPTS_PASSPHRASE = Accepted::Kind::kRule;
constexpr Accepted::Kind ACCEPTS_KEY_FORMAT = Accepted::Kind::kRule;
constexpr Accepted::Kind ACCEPTS_LIST = Accepted::Kind::kRule;
constexpr Accepted::Kind ACCEPTS_RULE = Accepted::Kind::kRule;
constexpr Accepted::Kind ACCEPTS_NOTHING = Accepted::Kind::kNothing;

// The rows as the table has them: their names are dat keys, and their meanings leave the unit out.
constexpr Key kRows[] = {
#define WIFIMGR_SETTING(key, scope, numbering, bands, reads, getter, writes, setter, accepts, low, high, words, \
                        refusal, meaning, unit, on_2_4g, on_5g, secrecy, effect)                                \
  {key,                                                                                                         \
   key,                                                                                                         \
   SCOPE_##scope,                                                                                               \
   NUMBERING_##numbering,                                                                                       \
   {BANDS_##bands.on[0], BANDS_##bands.on[1]},                                                                  \
   setter,                                                                                                      \
   {ACCEPTS_##accepts, low, high, words},                                                                       \
   meaning,                                                                                                     \
   SECRECY_##secrecy,                                                                                           \
   unit,                                                                                                        \
   {on_2_4g, on_5g},                                                                                            \
   EFFECT_##effect,                                                                                             \
   #getter,                                                                                                     \
   #setter},
#include <wifimgr_settings.h>
};

// "Wds%dKey" is WdsKey to the user, whichever link it is of.
std::string name_of(const Key& row) {
  std::string name = row.dat_key;
  const size_t number = name.find(kNumber);
  if (number != std::string::npos) name.erase(number, sizeof kNumber - 1);
  return name;
}

// The unit follows what is measured: "TX power in percent; on 2.4G ...".
std::string meaning_of(const Key& row) {
  std::string meaning = row.meaning;
  if (*row.unit != '\0') meaning.insert(std::min(meaning.find(';'), meaning.size()), std::string(" in ") + row.unit);
  return meaning;
}

// Keeps a text for as long as the program runs.
const char* kept(std::string text) {
  static std::deque<std::string> texts;
  return texts.emplace_back(std::move(text)).c_str();
}

std::vector<Key> make_keys() {
  std::vector<Key> keys(std::begin(kRows), std::end(kRows));
  for (Key& key : keys) {
    key.name = kept(name_of(key));
    key.meaning = kept(meaning_of(key));
  }
  std::sort(keys.begin(), keys.end(), [](const Key& left, const Key& right) {
    return left.scope != right.scope ? left.scope < right.scope : strcasecmp(left.name, right.name) < 0;
  });
  return keys;
}

// Every line of a dat file is looked for, more than once.
const std::vector<const Key*>& keys_by_dat_key() {
  static const std::vector<const Key*> sorted = [] {
    std::vector<const Key*> keys;
    for (const Key& key : all_keys()) keys.push_back(&key);
    std::sort(keys.begin(), keys.end(),
              [](const Key* left, const Key* right) { return std::strcmp(left->dat_key, right->dat_key) < 0; });
    return keys;
  }();
  return sorted;
}

// The row whose dat key this is, its "%d" included.
const Key* with_dat_key(const std::string& dat_key) {
  const auto& keys = keys_by_dat_key();
  const auto found = std::lower_bound(keys.begin(), keys.end(), dat_key, [](const Key* key, const std::string& text) {
    return text.compare(key->dat_key) > 0;
  });
  return found != keys.end() && dat_key == (*found)->dat_key ? *found : nullptr;
}

std::vector<std::string> split(const char* text) {
  std::istringstream stream(text);
  std::vector<std::string> parts;
  for (std::string part; stream >> part;) parts.push_back(part);
  return parts;
}

}  // namespace

std::span<const Key> all_keys() {
  static const std::vector<Key> keys = make_keys();
  return keys;
}

const Key* find_key(const std::string& name) {
  for (const Key& key : all_keys()) {
    if (strcasecmp(key.name, name.c_str()) == 0) return &key;
  }
  return nullptr;
}

const Key* find_dat_key(const std::string& dat_key, int* index) {
  *index = 0;
  if (const Key* const key = with_dat_key(dat_key); key != nullptr && key->numbering == kShared) return key;
  // One of its digits may be the number, wherever in the key it stands.
  for (size_t at = 0; (at = dat_key.find_first_of("0123456789", at)) != std::string::npos; ++at) {
    std::string row = dat_key;
    const Key* const key = with_dat_key(row.replace(at, 1, kNumber));
    if (key == nullptr || key->numbering == kShared) continue;
    const int number = dat_key[at] - '0' + (key->numbering == kFromZero ? 1 : 0);
    if (number < 1 || number > (key->scope == kLink ? kLinks : WIFIMGR_FIELDS)) continue;
    *index = number;
    return key;
  }
  return nullptr;
}

std::vector<std::string> similar_keys(const std::string& name) {
  std::vector<std::string> found;
  for (const Key& key : all_keys()) {
    if (!name.empty() && strcasestr(key.name, name.c_str()) != nullptr) found.emplace_back(key.name);
  }
  if (!found.empty()) return found;
  for (const Key& key : all_keys()) {
    if (is_mistyped(key.name, name)) found.emplace_back(key.name);
  }
  return found;
}

std::string dat_key_of(const Key& key, int index) {
  if (key.numbering == kShared) return key.dat_key;
  char text[64];
  std::snprintf(text, sizeof text, key.dat_key, key.numbering == kFromZero ? index - 1 : index);
  return text;
}

std::optional<std::string> default_of(const Key& key, Band band, int index) {
  const char* const row = key.defaults[number_of(band)];
  if (row == nullptr) return std::nullopt;
  if (key.scope == kBand) return row;
  const std::vector<std::string> values = split_at(row, ';');
  if (values.empty()) return "";
  std::string value = values[std::min(values.size(), static_cast<size_t>(index)) - 1];
  if (const size_t number = value.find("%d"); number != std::string::npos) {
    value.replace(number, 2, std::to_string(index));
  }
  return value;
}

const char* word_for(Scope scope) {
  if (scope == kBand) return "band";
  return scope == kSsid ? "ssid" : "link";
}

const char* name_for(Scope scope) {
  if (scope == kBand) return "band";
  return scope == kSsid ? "SSID" : "WDS link";
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

// The settings, with what an operator wants to know of each.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

enum class Scope { kBand, kSsid, kLink };

inline constexpr int kLinks = 4;

// How the dat key of an index is made of Key::dat_key.
enum class Numbering { kShared, kFromOne, kFromZero };

// What a setter takes, told rather than judged.
struct Accepted {
  enum class Kind { kNumber, kDigits, kWords, kLength, kText, kRule, kNothing };
  Kind kind;
  long lowest = 0;
  long highest = 0;
  const char* words = "";  // separated by blanks; a rule's words are prose
};

// What a change asks for, as the library judges it; of SSIDs and links it looks at the first.
enum class Effect { kSaved, kAtOnce, kRadio, kRadioOn5G, kRadioWithWds, kReboot };

struct Key {
  const char* name;
  const char* dat_key;
  Scope scope;
  Numbering numbering;
  bool on[2];  // by band
  wifimgr_setter_t setter;
  Accepted accepted;
  const char* meaning;  // with its unit
  bool secret;
  const char* unit;         // "" where there is none
  const char* defaults[2];  // by band, as wifimgr_settings.h writes them; null where the key is not in the band's file
  Effect effect;
  const char* getter_name;  // of the library's functions; "NULL" where there is none
  const char* setter_name;

  bool is_on(Band band) const { return on[number_of(band)]; }
  bool is_only_read() const { return accepted.kind == Accepted::Kind::kNothing; }
  bool holds_numbers() const {
    return accepted.kind == Accepted::Kind::kNumber || accepted.kind == Accepted::Kind::kDigits;
  }
};

// By scope and name.
std::span<const Key> all_keys();

// Null when there is none of that name; capitals do not matter.
const Key* find_key(const std::string& name);

// The key whose dat key this is, whichever index it names; null for others. `index` receives the index of a numbered
// key, else 0.
const Key* find_dat_key(const std::string& dat_key, int* index);

// Names that begin or look like `name`, for a hint.
std::vector<std::string> similar_keys(const std::string& name);

// The key in the dat file for an index (-1, an SSID or a link).
std::string dat_key_of(const Key& key, int index);

// The default of a band, or of one of its SSIDs or links; none where the key is not in the band's file.
std::optional<std::string> default_of(const Key& key, Band band, int index);

const char* word_for(Scope scope);            // "band", "ssid", "link"
const char* name_for(Scope scope);            // the same for a message: "SSID", "WDS link"
std::string words_for(const Accepted& what);  // "0 to 180", "one of TIME, PKT, DISABLE" ...

// Values worth offering on Tab; empty when there are none or too many.
std::vector<std::string> choices_of(const Accepted& what);

}  // namespace wlanctl

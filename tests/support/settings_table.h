// The settings' table as data, for tests that hold something for every row of it.
#pragma once

#include <string>
#include <string_view>

#include "wifimgr_lib.h"

namespace sandbox {

struct SettingRow {
  const char* key;
  std::string_view scope;
  std::string_view numbering;
  std::string_view bands;
  const char* getter;
  std::string_view reads;
  const char* setter;
  wifimgr_setter_t set;
  std::string_view writes;
  std::string_view accepts;
  long low;
  long high;
  const char* words;
  const char* refusal;
  const char* defaults[2];  // by band; null where the key is not in the band's file
  std::string_view secrecy;
  std::string_view effect;

  bool is_on(int band) const { return bands == "BOTH" || bands == (band == 0 ? "ONLY_2_4G" : "ONLY_5G"); }
  int first_index() const { return scope == "BAND" ? -1 : 1; }
};

inline constexpr SettingRow kSettings[] = {
#define WIFIMGR_SETTING(key, scope, numbering, bands, reads, getter, writes, setter, accepts, low, high, words, \
                        refusal, meaning, unit, on_2_4g, on_5g, secrecy, effect)                                \
  {key,      #scope, #numbering, #bands, #getter, #reads,           #setter,  setter, #writes,                  \
   #accepts, low,    high,       words,  refusal, {on_2_4g, on_5g}, #secrecy, #effect},
#include "wifimgr_settings.h"
};

// The key of an SSID or link in the dat file.
inline std::string dat_key_of(const SettingRow& row, int index) {
  std::string key = row.key;
  const size_t at = key.find("%d");
  if (at != std::string::npos) key.replace(at, 2, std::to_string(row.numbering == "FROM_ZERO" ? index - 1 : index));
  return key;
}

// The default of an SSID or link: of a list with a value for each, the last one counts for all that follow.
inline std::string default_of(const SettingRow& row, int band, int index) {
  std::string rest = row.defaults[band];
  if (row.scope == "BAND") return rest;
  for (int i = 1; i < index && rest.find(';') != std::string::npos; ++i) rest.erase(0, rest.find(';') + 1);
  std::string value = rest.substr(0, rest.find(';'));
  const size_t at = value.find("%d");
  if (at != std::string::npos) value.replace(at, 2, std::to_string(index));
  return value;
}

// The lines that a setting has in a dat file, with its defaults.
inline std::string default_lines(const SettingRow& row, int band) {
  const int count = row.scope == "LINK" ? 4 : WIFIMGR_FIELDS;
  std::string text;
  if (row.numbering != "SHARED") {
    for (int i = 1; i <= count; ++i) text += dat_key_of(row, i) + "=" + default_of(row, band, i) + "\n";
    return text;
  }
  text = std::string(row.key) + "=" + default_of(row, band, 1);
  for (int i = 2; i <= count && row.scope == "SSID"; ++i) text += ";" + default_of(row, band, i);
  return text + "\n";
}

}  // namespace sandbox

#include "wlanctl/exchange/wishes.h"

#include <algorithm>

#include "wlanctl/exchange/stored_settings.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

// The fields of another key of the dat file; none where the store does not have it.
std::optional<std::string> other_value(const std::vector<FileSetting>& stored, const std::string& dat_key) {
  for (const FileSetting& setting : stored) {
    if (!setting.is_setting() && setting.dat_key == dat_key) return setting.value;
  }
  return std::nullopt;
}

bool has_setting(const SettingsText& text, Band band, const Target& target) {
  return std::any_of(text.settings.begin(), text.settings.end(),
                     [&](const FileSetting& one) { return one.band == band && one.target == target; });
}

// How many SSIDs the band will have.
int coming_count(const SettingsText& text, Band band) {
  const Target target = {find_key(kSsidCount), -1};
  std::string count = default_of(*target.key, band, target.index).value_or("");
  for (const FileSetting& setting : text.settings) {
    if (setting.band == band && setting.target == target) count = setting.value;
  }
  return static_cast<int>(std::clamp<int64_t>(number_in(count).value_or(0), 0, WIFIMGR_FIELDS));
}

// A driver takes blanks in front of = for a part of the key, and so does the file's reader.
std::string meant_words(const FileSetting& setting) {
  const std::string bare = setting.dat_key.substr(0, setting.dat_key.find_last_not_of(" \t") + 1);
  int index = 0;
  if (bare == setting.dat_key || find_dat_key(bare, &index) == nullptr) return "";
  return "; a dat file has " + bare + " without a blank in front of =";
}

}  // namespace

Wishes wishes_of(const SettingsText& text, const std::string& file, Band band, const std::string& place) {
  Wishes found;
  const std::vector<FileSetting> stored = settings_of_store(band);
  for (const FileSetting& setting : text.settings) {
    if (setting.band != band || setting.is_left_out || setting.dat_key == kReloadFlag) continue;
    if (setting.is_setting() && !setting.target.key->is_only_read()) {
      found.wishes.push_back({setting.target, setting.value, file, setting.line});
      continue;
    }
    const std::optional<std::string> now =
        setting.is_setting() ? exact_value(band, setting.target) : other_value(stored, setting.dat_key);
    if (now == setting.value || (!now && setting.value.empty())) continue;
    const bool is_secret = setting.is_setting() ? setting.target.key->secret : is_secret_dat_key(setting.dat_key);
    const auto shown = [&](const std::string& value) { return is_secret ? std::string(kMasked) : "\"" + value + "\""; };
    const std::string here = now ? "is " + shown(*now) + " " + place : "is not " + place;
    found.left.push_back({setting.name(), file, setting.line,
                          setting.name() + " is " + shown(setting.value) + " there and " + here +
                              "; nothing sets it, and it stays as it is" + meant_words(setting)});
  }
  return found;
}

std::vector<Wish> default_wishes(const SettingsText& text, const std::string& file, Band band) {
  std::vector<Wish> wishes;
  for (const Key& key : all_keys()) {
    if (!key.is_on(band) || key.is_only_read()) continue;
    const int first = key.scope == Scope::kBand ? -1 : 1;
    const int last = key.scope == Scope::kSsid ? coming_count(text, band) : key.scope == Scope::kLink ? kLinks : -1;
    for (int index = first; index <= last; ++index) {
      const Target target = {&key, index};
      const std::optional<std::string> value = default_of(key, band, index);
      if (!value || has_setting(text, band, target) || !exact_value(band, target)) continue;
      wishes.push_back({target, *value, file, 0});
    }
  }
  return wishes;
}

}  // namespace wlanctl

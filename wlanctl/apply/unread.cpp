#include "wlanctl/apply/unread.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/difference.h"

namespace wlanctl {
namespace {

// A script has what goes with the SSID's mode; the rest of these nobody needs then.
constexpr const char* kInScripts[] = {
    "AccessPolicy", "AccessControlList", "HideSSID",     "SSID",       "AuthMode",     "EncrypType",
    "WPAPSK",       "IEEE8021X",         "DefaultKeyID", "Key1Str",    "Key2Str",      "Key3Str",
    "Key4Str",      "RADIUS_Server",     "RADIUS_Port",  "RADIUS_Key", "RekeyInterval"};

// WmmCapable and TxBurst depend on the wireless mode.
bool is_in(const std::vector<Script>& scripts, const std::string& name) {
  return std::any_of(scripts.begin(), scripts.end(),
                     [&](const Script& script) { return script.text.find(" set " + name + "=") != std::string::npos; });
}

constexpr char kFormat[] = "wlanctl-unread";
constexpr int kVersion = 1;

// A field of a key of the dat file.
using Place = std::pair<std::string, size_t>;

struct Unread {
  std::string name;      // as the command line has it
  std::string read_sum;  // of the value that the driver has read, which may be a secret
};

std::string path_of(Band band) {
  return std::string(place::kUnread) + label_of(band);
}

std::map<Place, Unread> read_unread(Band band) {
  const std::vector<std::string> lines = lines_of(read_state_file(path_of(band), kFormat, kVersion).value_or(""));
  std::map<Place, Unread> unread;
  if (lines.empty() || lines[0] != this_boot()) return unread;
  for (size_t i = 1; i < lines.size(); ++i) {
    const std::vector<std::string> words = split_at(lines[i], '\t');
    const std::optional<int64_t> field = words.size() == 4 ? number_in(words[1]) : std::nullopt;
    if (field && *field >= 0) unread[{words[0], static_cast<size_t>(*field)}] = {words[2], words[3]};
  }
  return unread;
}

void keep_unread(Band band, const std::map<Place, Unread>& unread, Report& report) {
  std::string text = this_boot() + "\n";
  for (const auto& [place, one] : unread) {
    text += joined({place.first, std::to_string(place.second), printable(one.name), one.read_sum}, "\t") + "\n";
  }
  (void)write_state_file(path_of(band), kFormat, kVersion, text, report);
}

std::string value_at(const std::vector<StoreRecord>& records, const Place& place) {
  for (const StoreRecord& record : records) {
    if (record.key == place.first && place.second < record.fields.size()) return record.fields[place.second];
  }
  return "";
}

std::string words_for(Band band, const std::vector<std::string>& names) {
  const std::string label = label_of(band);
  return label + ": saved, and read by the driver when the radio next starts: " + joined(names, ", ") +
         "; wlanctl apply " + label + " --again restarts it";
}

}  // namespace

bool is_told_without_restart(const Key& key) {
  const auto is_same = [&](const char* name) { return key.name == std::string(name); };
  return key.effect == Effect::kAtOnce || std::any_of(std::begin(kInScripts), std::end(kInScripts), is_same);
}

void note_unread(Band band, const std::vector<wifimgr_attr_record>& before, const std::vector<Script>& scripts,
                 Report& report) {
  std::map<Place, Unread> unread = read_unread(band);
  std::vector<std::string> names;
  for (const Difference& one : served_differences(records_of(settings_in_force(band)), records_of(before))) {
    int index = 0;
    const Key* const key = find_dat_key(one.dat_key, &index);
    if (one.dat_key == kReloadFlag || (key != nullptr && is_told_without_restart(*key))) continue;
    if (is_in(scripts, one.dat_key)) continue;
    names.push_back(one.name());
    // What the driver has read is what was in force at its start.
    unread.try_emplace({one.dat_key, one.field}, Unread{one.name(), sum_of(one.right)});
  }
  if (names.empty()) return;
  keep_unread(band, unread, report);
  report.note(words_for(band, names));
}

void note_kept_unread(Band band, Report& report) {
  const std::map<Place, Unread> unread = read_unread(band);
  if (unread.empty()) return;
  const std::vector<StoreRecord> records = records_of(settings_in_force(band));
  std::vector<std::string> names;
  for (const auto& [place, one] : unread) {
    if (sum_of(value_at(records, place)) != one.read_sum) names.push_back(one.name);
  }
  if (!names.empty()) report.note(words_for(band, names));
}

bool is_unread_damaged(Band band) {
  return is_state_file_damaged(path_of(band), kFormat, kVersion);
}

void forget_unread(Band band) {
  (void)remove_state_file(path_of(band));
}

}  // namespace wlanctl

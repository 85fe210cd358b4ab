#include "wlanctl/apply/unread.h"

#include <algorithm>
#include <iterator>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/base/report.h"
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

}  // namespace

bool is_told_without_restart(const Key& key) {
  const auto is_same = [&](const char* name) { return key.name == std::string(name); };
  return key.effect == Effect::kAtOnce || std::any_of(std::begin(kInScripts), std::end(kInScripts), is_same);
}

void note_unread(Band band, const std::vector<wifimgr_attr_record>& before, const std::vector<Script>& scripts,
                 Report& report) {
  std::vector<std::string> names;
  for (const Difference& one : served_differences(records_of(settings_in_force(band)), records_of(before))) {
    int index = 0;
    const Key* const key = find_dat_key(one.dat_key, &index);
    if (one.dat_key == kReloadFlag || (key != nullptr && is_told_without_restart(*key))) continue;
    if (!is_in(scripts, one.dat_key)) names.push_back(one.name());
  }
  if (names.empty()) return;
  const std::string label = label_of(band);
  report.note(label + ": saved, and read by the driver when the radio next starts: " + joined(names, ", ") +
              "; wlanctl apply " + label + " --again restarts it");
}

}  // namespace wlanctl

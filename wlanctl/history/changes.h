// What an operation changed of a band's settings.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/store/difference.h"

namespace wlanctl {

struct SettingChange {
  std::string name;  // as the command line names it, or the dat file where the tool has no such setting
  std::string from;
  std::string to;

  bool operator==(const SettingChange& other) const = default;

  std::string key() const;  // without its index
  int index() const;        // -1 for the whole band
  bool is_secret() const;

  // None where the tool has no such setting on the band.
  std::optional<Target> target(Band band) const;
};

// Of what was served before, or is served in both; what only marks a wish for a restart is no setting.
std::vector<SettingChange> changes_between(const std::vector<wifimgr_attr_record>& before,
                                           const std::vector<wifimgr_attr_record>& after,
                                           DatFile dat_file = DatFile::kNeither);

}  // namespace wlanctl

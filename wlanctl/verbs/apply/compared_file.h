// A file of settings that the live store is compared with: a dat file, or an export.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/exchange/settings_text.h"
#include "wlanctl/store/difference.h"

namespace wlanctl {

class Report;

struct ComparedFile {
  std::optional<std::vector<StoreRecord>> dat;  // of a dat file
  SettingsText settings;                        // else
  std::vector<Band> bands;                      // that it tells to be of
};

// None with a problem when it cannot be read, or has no settings.
std::optional<ComparedFile> read_compared_file(const std::string& path, Report& report);

// The band's store, which is open, against the file's settings. Of an export those that it has; secrets that it leaves
// out are not compared.
std::vector<Difference> differences_from(const ComparedFile& file, Band band);

// How many SSIDs the file has of the band; the most that there can be where it does not say.
size_t ssids_in(const ComparedFile& file, Band band);

}  // namespace wlanctl

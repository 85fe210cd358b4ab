#include "wlanctl/exchange/file_records.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/dat_file.h"

namespace wlanctl {
namespace {

struct Line {
  std::string dat_key;
  std::vector<std::string> fields;
};

std::string dat_key_in(const FileSetting& setting) {
  return setting.is_setting() ? dat_key_of(*setting.target.key, setting.target.index) : setting.dat_key;
}

// Where the value stands in its line, from 0: the SSIDs share one of them.
size_t place_of(const FileSetting& setting) {
  const bool is_field = setting.is_setting() && setting.target.key->scope == Scope::kSsid &&
                        setting.target.key->numbering == Numbering::kShared;
  return is_field ? static_cast<size_t>(setting.target.index) - 1 : 0;
}

std::vector<Line> lines_of(const SettingsText& text, Band band, const std::set<std::string>& there) {
  std::vector<Line> lines;
  for (const FileSetting& setting : text.settings) {
    const std::string dat_key = dat_key_in(setting);
    if (setting.band != band || there.contains(dat_key)) continue;
    auto line = std::find_if(lines.begin(), lines.end(), [&](const Line& one) { return one.dat_key == dat_key; });
    if (line == lines.end()) line = lines.insert(line, {dat_key, {}});
    if (setting.is_left_out || (setting.is_setting() && !setting.target.key->is_only_read())) continue;
    const size_t place = place_of(setting);
    line->fields.resize(std::max(line->fields.size(), place + 1));
    line->fields[place] = setting.value;
  }
  return lines;
}

// As the loader reads the line; which takes none without a value.
wifimgr_attr_record record_of(const Line& line) {
  const std::vector<wifimgr_attr_record> loaded = parse_dat_text(line.dat_key + "=" + joined(line.fields, ";") + "\n");
  if (!loaded.empty()) return loaded.front();
  wifimgr_attr_record record = {};
  (void)std::snprintf(record.key, sizeof record.key, "%s", line.dat_key.c_str());
  return record;
}

}  // namespace

std::vector<wifimgr_attr_record> lacking_records(const std::vector<wifimgr_attr_record>& content,
                                                 const SettingsText& text, Band band) {
  std::set<std::string> there;
  for (const wifimgr_attr_record& record : content) there.insert(key_of(record));
  std::vector<wifimgr_attr_record> lacking;
  for (const Line& line : lines_of(text, band, there)) lacking.push_back(record_of(line));
  const auto is_flag = [](const wifimgr_attr_record& record) { return key_of(record) == kReloadFlag; };
  if (!there.contains(kReloadFlag) && std::none_of(lacking.begin(), lacking.end(), is_flag)) {
    lacking.push_back(record_of({kReloadFlag, {"0"}}));
  }
  return lacking;
}

}  // namespace wlanctl

#include "wlanctl/store/dat_file.h"

#include <poll.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/plain_file.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/library/band_variables.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

// The loader takes the first address only of a list that has a record of its own. The library, and the file after a save,
// have all of it in the first field.
void keep_list_whole(const std::string& line, wifimgr_attr_record* record) {
  std::string value = line.substr(line.find('=') + 1);
  value.resize(std::min(value.find('='), value.size()));
  if (value.find(';') == std::string::npos) return;
  int index = 0;
  const Key* const key = find_dat_key(record->key, &index);
  if (key == nullptr || !is_split_list(*key) || key->numbering == Numbering::kShared) return;
  std::memset(record->field, 0, sizeof record->field);
  (void)std::snprintf(record->field[0], sizeof record->field[0], "%s", value.c_str());
}

std::vector<wifimgr_attr_record> parse_lines(std::FILE* file) {
  std::vector<wifimgr_attr_record> records;
  for (char line[WIFIMGR_DAT_LINE_SIZE]; std::fgets(line, sizeof line, file) != nullptr;) {
    wifimgr_attr_record record = {};
    const std::string text = line;
    if (parse_data_from_line(line, &record) != 0) continue;
    keep_list_whole(text, &record);
    records.push_back(record);
  }
  return records;
}

}  // namespace

std::string dat_path_of(Band band) {
  return dat_path_variable(band);
}

std::string unreadable_dat_file(Band band) {
  return "cannot read " + dat_path_of(band) + because(reason_against_file(dat_path_of(band)));
}

std::string reason_against_dat_file(Band band) {
  struct stat status = {};
  const std::string path = dat_path_of(band);
  return stat(path.c_str(), &status) == 0 ? because(reason_against_file(path)) : "";
}

std::optional<std::vector<wifimgr_attr_record>> look_at_dat_file(Band band, const StoreLock& /*lock*/) {
  const std::optional<std::string> bytes = read_bytes(dat_path_of(band));
  if (!bytes) return std::nullopt;
  return parse_dat_text(*bytes);
}

std::vector<wifimgr_attr_record> parse_dat_text(const std::string& bytes) {
  // Of no bytes there is no such file.
  std::FILE* const file = bytes.empty() ? nullptr : fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "r");
  if (file == nullptr) return {};
  std::vector<wifimgr_attr_record> records = parse_lines(file);
  (void)std::fclose(file);
  return records;
}

std::optional<std::vector<wifimgr_attr_record>> parse_dat_file(Band band) {
  for (int look = 1;; ++look) {
    auto file = look_at_dat_file(band, StoreLock(band));
    if (!file || !file->empty() || look == kMostLooks) return file;
    pause_between_looks();
  }
}

void pause_between_looks() {
  constexpr int kPauseMs = 30;
  poll(nullptr, 0, kPauseMs);
}

}  // namespace wlanctl

#include "wlanctl/verbs/apply/compared_file.h"

#include <algorithm>

#include "wlanctl/base/report.h"
#include "wlanctl/check/dat_check.h"
#include "wlanctl/check/dat_text.h"
#include "wlanctl/exchange/reader.h"
#include "wlanctl/exchange/stored_settings.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

bool is_export(const std::string& bytes) {
  const size_t first = bytes.find_first_not_of(" \t\r\n\xef\xbb\xbf");
  return first != std::string::npos && (bytes[first] == '{' || bytes[first] == '[');
}

std::optional<ComparedFile> read_export(const std::string& path, const std::string& bytes, Report& report) {
  ComparedFile file;
  file.settings = read_settings(bytes, std::nullopt);
  report_problems(path, file.settings, report);
  if (!file.settings.problems.empty()) return std::nullopt;
  for (const std::string& note : file.settings.notes) report.note(name_of_file(path) + ": " + note);
  file.bands = file.settings.bands;
  return file;
}

// Where not a single line of a text is one of the library's keys, it is no dat file.
std::optional<Problem> reason_against(const std::string& path, const std::string& bytes) {
  constexpr char kNext[] = "is it a dat file, or an export? wlanctl check judges a dat file";
  const DatText text = read_dat_text(bytes);
  const auto is_known = [](const DatLine& line) { return is_known_dat_key(line.key); };
  if (std::any_of(text.lines.begin(), text.lines.end(), is_known)) return std::nullopt;
  if (!text.findings.empty()) {
    const DatFinding& first = text.findings.front();
    return Problem{place_in(path, first.line) + ": " + first.reason, kNext, {{"file", path}, {"line", first.line}}};
  }
  if (text.lines.empty()) return Problem{path + " has no settings", kNext, {{"file", path}}};
  const int line = text.lines.front().number;
  return Problem{place_in(path, line) + ": no such key is in a dat file", kNext, {{"file", path}, {"line", line}}};
}

// Of a key without a setting.
std::optional<std::string> record_value(const std::vector<StoreRecord>& records, const std::string& dat_key) {
  const auto found = std::find_if(records.begin(), records.end(), [&](const auto& one) { return one.key == dat_key; });
  return found == records.end() ? std::nullopt : std::optional<std::string>(joined(found->fields, ";"));
}

Difference difference_of(const FileSetting& setting, const std::string& live) {
  if (!setting.is_setting()) return {setting.dat_key, 0, 1, live, setting.value};
  const Target& target = setting.target;
  const bool is_field = target.key->numbering == Numbering::kShared && target.index > 0;
  return {dat_key_of(*target.key, target.index), is_field ? static_cast<size_t>(target.index) - 1 : 0, WIFIMGR_FIELDS,
          live, setting.value};
}

}  // namespace

std::optional<ComparedFile> read_compared_file(const std::string& path, Report& report) {
  const std::optional<std::string> bytes = read_settings_file(path, report);
  if (!bytes) return std::nullopt;
  if (is_export(*bytes)) return read_export(path, *bytes, report);
  ComparedFile file;
  file.dat = records_of(parse_dat_text(*bytes));
  if (const std::optional<Band> band = band_of_dat_path(path)) file.bands = {*band};
  if (const std::optional<Problem> problem = reason_against(path, *bytes)) {
    report.problem(*problem);
    return std::nullopt;
  }
  return file;
}

std::vector<Difference> differences_from(const ComparedFile& file, Band band) {
  const std::vector<StoreRecord> live = records_of(table_of_store(band));
  if (file.dat) return served_differences(live, *file.dat, DatFile::kRight);
  std::vector<Difference> found;
  for (const FileSetting& setting : file.settings.settings) {
    if (setting.band != band || setting.is_left_out) continue;
    const std::optional<std::string> value =
        setting.is_setting() ? exact_value(band, setting.target) : record_value(live, setting.dat_key);
    if (value.value_or("") != setting.value) found.push_back(difference_of(setting, value.value_or("")));
  }
  return found;
}

size_t ssids_in(const ComparedFile& file, Band band) {
  if (file.dat) return ssids_in(*file.dat);
  for (const FileSetting& setting : file.settings.settings) {
    if (setting.band != band || !setting.is_setting() || setting.target.key->name != std::string(kSsidCount)) continue;
    return ssids_in({{kSsidCount, {setting.value}}});
  }
  return WIFIMGR_FIELDS;
}

}  // namespace wlanctl

#include <algorithm>
#include <cstring>

#include "fuzz/tool_stand.h"
#include "wifimgr_lib.h"
#include "wlanctl/base/json_print.h"
#include "wlanctl/base/text.h"
#include "wlanctl/exchange/edit_text.h"
#include "wlanctl/exchange/reader.h"
#include "wlanctl/exchange/stored_settings.h"
#include "wlanctl/exchange/writer.h"
#include "wlanctl/store/private_store.h"

namespace {

using fuzz::Bytes;
using fuzz::require;
using fuzz::Table;
using namespace wlanctl;
using Settings = std::vector<FileSetting>;

enum class Format { kJsonOrDat, kLines };

SettingsText read_as(Format format, const std::string& bytes, const std::optional<Band>& band) {
  return format == Format::kLines ? read_lines(bytes, band) : read_settings(bytes, band);
}

void require_setting(const FileSetting& setting, const SettingsText& text) {
  require(std::find(text.bands.begin(), text.bands.end(), setting.band) != text.bands.end(),
          "a setting is of one of the text's bands");
  require(setting.value.find('\0') == std::string::npos, "no value has a NUL");
  require(!setting.is_left_out || setting.value.empty() || setting.value == kSecretLeftOut,
          "what was left out has no value");
  if (!setting.is_setting()) return require(!setting.dat_key.empty(), "what is no setting has a dat key");
  const Target& target = setting.target;
  const int last = target.key->scope == Scope::kLink ? kLinks : WIFIMGR_FIELDS;
  require(target.key->is_on(setting.band), "a setting is one of its band");
  require(target.key->scope == Scope::kBand ? target.index == -1 : target.index >= 1 && target.index <= last,
          "an index is one of the setting's");
  require(!setting.is_left_out || target.key->secret, "only secrets are left out");
}

void require_text(const std::string& bytes, const SettingsText& text) {
  // A text without a line end is a line, too.
  const int lines = static_cast<int>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
  const auto is_line = [&](int line) { return line >= 0 && line <= lines; };
  for (const FileSetting& setting : text.settings) {
    require(is_line(setting.line) && setting.line > 0, "a setting has its line");
    require_setting(setting, text);
  }
  for (const TextProblem& problem : text.problems) {
    require(is_line(problem.line), "a problem has its line");
    require(!problem.message.empty() && !problem.next.empty(), "a problem says what to do next");
  }
}

// What is wrong elsewhere in the text does not tell a secret that is in it.
void require_untold(const std::string& bytes, const SettingsText& text, const std::string& told) {
  for (const FileSetting& setting : text.settings) {
    if (!setting.is_setting() || !setting.target.key->secret || !fuzz::is_telltale(setting.value)) continue;
    if (bytes.find(setting.value) != bytes.rfind(setting.value)) continue;
    require(told.find(setting.value) == std::string::npos, "no problem tells a secret");
  }
}

void try_text(Format format, const std::optional<Band>& band, const std::string& bytes) {
  const SettingsText text = read_as(format, bytes, band);
  require_text(bytes, text);
  require_untold(bytes, text, fuzz::told_by([&](Report& report) {
                   report_problems("fuzzed", text, report);
                   for (const std::string& note : text.notes) report.note(note);
                   return report.has_problems() ? kRefused : kDone;
                 }));
  require(without_problems(without_problems(bytes)) == without_problems(bytes), "problems are taken out once");
}

// A store in which others have written: where, and what.
Table foreign_table(Band band, Bytes bytes) {
  constexpr int kMost = 12;
  Table table = fuzz::open_full_store(band);
  for (int i = 0; i < kMost && !bytes.is_empty(); ++i) {
    const size_t which = static_cast<size_t>(bytes.byte()) * 2 % table.size();
    wifimgr_attr_record& record = table[which];
    const uint8_t where = bytes.byte();
    const std::string text = bytes.text();
    char* const place = where % 16 == 15 ? record.key : record.field[where % WIFIMGR_FIELDS];
    const size_t size = where % 16 == 15 ? sizeof record.key : sizeof record.field[0];
    if (place == record.key && text.empty()) continue;
    std::memset(place, 0, size);
    std::memcpy(place, text.data(), std::min(text.size(), size));
  }
  return table;
}

void require_same(const Settings& read, const Settings& stored) {
  require(read.size() == stored.size(), "as many settings are read as were written");
  for (size_t i = 0; i < read.size(); ++i) {
    require(read[i].band == stored[i].band && read[i].target == stored[i].target && !read[i].is_left_out,
            "a setting is read as the one that was written");
    require(read[i].dat_key == stored[i].dat_key, "a dat key is read as it was written");
    require(read[i].value == stored[i].value, "a value is read as it was written");
  }
}

void try_export(Band band, Bytes bytes) {
  const Table table = foreign_table(band, bytes);
  const PrivateStore store(band, table);
  const Settings stored = settings_of_store(band);

  Report noted;
  const std::string json = printed(json_of_settings({band}, Secrets::kShown, noted), Layout::kIndented);
  fuzz::require_json(json);
  const SettingsText read = read_settings(json, std::nullopt);
  require_text(json, read);
  require(read.problems.empty(), "exported JSON is read");
  Settings with_name = stored;
  std::erase_if(with_name, [](const FileSetting& setting) { return !fuzz::is_utf8(setting.name()); });
  require_same(read.settings, with_name);
  fuzz::require_json(printed(json_of_settings({band}, Secrets::kLeftOut, noted), Layout::kIndented));

  Report report;
  const std::string dat = dat_of_settings(band, Secrets::kShown, report);
  if (!report.has_problems()) {
    const SettingsText from_dat = read_settings(dat, band);
    require_text(dat, from_dat);
    require(from_dat.problems.empty(), "an exported dat file is read");
  }

  const std::string lines = edit_text_of({band}, true);
  fuzz::require_printable(lines);
  SettingsText edited = read_lines(lines, std::nullopt);
  require_text(lines, edited);
  require(without_problems(lines) == lines, "a text without problems stays as it is");
  require(changed_settings(&edited, stored).empty(), "a text that nobody has changed changes nothing");
  require(edited.problems.empty(), "what is shown in an editor is read");
}

}  // namespace

// A byte for what it is and for the band, and its bytes.
void fuzz::try_wlanctl_import(std::string_view input) {
  Bytes bytes(input);
  const uint8_t how = bytes.byte();
  const Band band = band_by(how);
  const std::optional<Band> said = how / 2 % 2 == 0 ? std::optional<Band>(band) : std::nullopt;
  switch (how / 4 % 3) {
    case 0:
      return try_text(Format::kJsonOrDat, said, std::string(bytes.rest()));
    case 1:
      return try_text(Format::kLines, said, std::string(bytes.rest()));
    default:
      return try_export(band, bytes);
  }
}

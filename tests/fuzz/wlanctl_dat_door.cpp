#include <algorithm>
#include <map>
#include <set>

#include "fuzz/tool_stand.h"
#include "support/sandbox.h"
#include "wifimgr_lib.h"
#include "wlanctl/apply/line_diff.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/base/text.h"
#include "wlanctl/check/dat_check.h"
#include "wlanctl/check/dat_text.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/library/detached_store.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace {

using fuzz::require;
using fuzz::Table;
using namespace wlanctl;
using Fields = std::vector<std::string>;

// The keys with their numbers, each as it is made of its row.
const std::map<std::string, std::pair<const Key*, int>>& dat_keys() {
  static const std::map<std::string, std::pair<const Key*, int>> all = [] {
    std::map<std::string, std::pair<const Key*, int>> found;
    for (const Key& key : all_keys()) {
      const int last = key.numbering == Numbering::kShared ? 0 : key.scope == Scope::kLink ? kLinks : WIFIMGR_FIELDS;
      for (int index = std::min(last, 1); index <= last; ++index) {
        found.try_emplace(dat_key_of(key, index), &key, index);
      }
    }
    return found;
  }();
  return all;
}

void require_found(const std::string& dat_key) {
  int index = -1;
  const Key* const key = find_dat_key(dat_key, &index);
  const auto known = dat_keys().find(dat_key);
  if (known == dat_keys().end()) {
    require(key == nullptr && index == 0, "what is no key of a dat file is not found");
  } else {
    require(key == known->second.first && index == known->second.second, "a key of a dat file is found");
  }
}

void require_lines(const std::string& bytes) {
  const Fields raw = lines_of(bytes);
  int last = 0;
  for (const DatLine& line : read_dat_text(bytes).lines) {
    require(line.number > last && line.number <= static_cast<int>(raw.size()), "lines are numbered in their order");
    last = line.number;
    const std::string& text = raw[static_cast<size_t>(line.number) - 1];
    require(!line.key.empty() && text.starts_with(line.key + "="), "a key stands in front of =");
    for (const std::string& field : line.fields) {
      require(!field.empty() && text.find(field, line.key.size() + 1) != std::string::npos,
              "a field is part of its line");
    }
    require_found(line.key);
  }
}

void require_findings(const std::string& bytes, const std::vector<Band>& bands) {
  const Fields raw = lines_of(bytes);
  int last = 0;
  for (const DatFinding& finding : check_dat(bytes, bands)) {
    require(finding.line >= last && finding.line <= static_cast<int>(raw.size()), "findings are in the order of lines");
    last = finding.line;
    require(*word_for(finding.kind) != '\0' && !finding.reason.empty(), "a finding tells what is wrong");
    const std::string* const line = finding.line == 0 ? nullptr : &raw[static_cast<size_t>(finding.line) - 1];
    require(line == nullptr || line->starts_with(finding.key), "a finding is about its line");
    if (line == nullptr || !is_secret_dat_key(finding.key)) continue;
    require(!finding.has_value || finding.value.empty() || finding.value == kMasked, "a secret is masked");
    const std::string secret = line->substr(std::min(finding.key.size() + 1, line->size()));
    for (const std::string& field : split_at(secret, ';')) {
      require(!fuzz::is_telltale(field) || finding.reason.find(field) == std::string::npos, "no reason tells a secret");
    }
  }
}

// What the verb says of the file, as text and as JSON.
void require_check_told(const std::string& bytes, const std::vector<Band>& bands) {
  Words words;
  words.files = {fuzz::file_with("fuzzed.dat", bytes)};
  if (bands.size() == 1) words.band = label_of(bands[0]);
  (void)fuzz::told_by([&](Report& report) { return kCheck.run(words, report); });
}

// The fields that the tool's own reader of the file has to come to.
Fields loaded_fields(const DatLine& line) {
  if (line.fields.empty()) return {};
  int index = 0;
  const Key* const key = find_dat_key(line.key, &index);
  if (is_numbered_dat_key(line.key)) {
    if (key == nullptr || !is_split_list(*key)) return {line.fields[0]};
    return {joined(line.fields, ";").substr(0, WIFIMGR_FIELD_SIZE - 1)};
  }
  Fields fields = line.fields;
  fields.resize(std::min<size_t>(fields.size(), WIFIMGR_FIELDS));
  return fields;
}

// What is said to be lost nowhere is loaded as it is written.
void require_whole_load(const std::string& bytes, const Table& table) {
  if (!losses_at_load(bytes).empty()) return;
  const std::vector<StoreRecord> records = records_of(table);
  const std::vector<DatLine> lines = read_dat_text(bytes).lines;
  require(records.size() == lines.size(), "each line is a record");
  for (size_t i = 0; i < lines.size(); ++i) {
    require(records[i].key == lines[i].key, "a record has its line's key");
    require(records[i].fields == loaded_fields(lines[i]), "a record has its line's values");
  }
}

// What a save keeps of a record, where nothing is said of a loss.
Fields saved_fields(const StoreRecord& record, int ssids) {
  Fields fields = record.fields;
  const bool is_one = is_numbered_dat_key(record.key) || keeps_list_whole(record.key);
  fields.resize(std::min(fields.size(), is_one ? size_t{1} : static_cast<size_t>(ssids)));
  while (!fields.empty() && fields.back().empty()) fields.pop_back();
  return fields;
}

// What is said to be lost nowhere is in the dat file after a save, and comes back from it.
void require_whole_save(Band band, Table table) {
  // A record without a key ends the store.
  const auto is_end = [](const wifimgr_attr_record& record) { return record.key[0] == '\0'; };
  table.erase(std::find_if(table.begin(), table.end(), is_end), table.end());
  if (table.empty()) return;
  std::string saved;
  int ssids = 0;
  {
    const DetachedStore store(band, table);
    ssids = ssid_count(band);
    if (senseless_count(band)) return;
    const std::optional<std::string> text = saved_text(band);
    if (!text) return;
    saved = *text;
  }
  const std::vector<StoreRecord> before = records_of(table);
  if (!losses_at_save(before, ssids).empty() || !losses_at_load(saved).empty()) return;
  const std::vector<StoreRecord> after = records_of(fuzz::loaded(band, saved));
  size_t next = 0;
  for (const StoreRecord& record : before) {
    if (is_left_out(record.key, ssids)) continue;
    require(next < after.size() && after[next].key == record.key, "a save keeps a record that counts");
    require(after[next++].fields == saved_fields(record, ssids), "a save keeps the values that count");
  }
  require(next == after.size(), "a save adds nothing");
}

// As many of each line on both sides, and none without a difference.
void require_diff(const std::string& before, const std::string& after) {
  const Fields left = lines_of(before);
  const Fields right = lines_of(after);
  std::map<std::string, int> surplus;
  for (const std::string& line : left) --surplus[line];
  for (const std::string& line : right) ++surplus[line];
  const std::vector<LineChange> changes = changed_lines(left, right);
  require(changes.empty() == (left == right), "texts differ where lines do");
  for (const LineChange& change : changes) surplus[change.line] -= change.added ? 1 : -1;
  for (const auto& [line, count] : surplus) require(count == 0, "changed lines make the one text of the other");
}

// Files far larger than a band's are compared, too, and need no more memory than they have lines.
void require_large_diff() {
  std::string before;
  std::string after;
  for (int i = 0; i < 200000; ++i) {
    before += std::to_string(i) + '\n';
    after += std::to_string(-i) + '\n';
  }
  require_diff(before, after);
}

void require_masks(const std::string& bytes) {
  for (const std::string& line : lines_of(bytes)) {
    const std::string masked = masked_dat_line(line);
    require(masked_dat_line(masked) == masked, "a mask is put on once");
    const size_t equals = line.find('=');
    const std::string key = line.substr(0, equals);
    if (equals == std::string::npos || equals + 1 == line.size() || !is_secret_dat_key(key)) {
      require(masked == line, "only secrets are masked");
    } else {
      require(masked == key + "=" + kMasked, "a secret is masked whole");
    }
  }
  const std::string script = masked_script(bytes);
  require(masked_script(script) == script, "a script is masked once");
}

void require_shown(const std::string& bytes) {
  const std::string shown = printable(bytes);
  fuzz::require_printable(shown);
  require(shown.find('\n') == std::string::npos && printable(shown) == shown, "what can be printed stays as it is");
  require(shown.size() == bytes.size() || shown.size() < bytes.size(), "what is shown is no longer");
  // Blanks become line ends and an indentation, nothing else changes.
  std::string lines = message_lines(shown);
  require(lines.ends_with('\n'), "a message ends its line");
  lines.pop_back();
  constexpr char kFurther[] = "\n         ";
  for (size_t at = 0; (at = lines.find(kFurther, at)) != std::string::npos;)
    lines.replace(at, sizeof kFurther - 1, " ");
  require(lines == shown, "a message keeps its words");
}

}  // namespace

// A byte for the bands, and the dat file.
void fuzz::try_wlanctl_dat(std::string_view input) {
  Bytes bytes(input);
  static const bool is_large_done = (require_large_diff(), true);
  require(is_large_done, "large files are compared");
  const uint8_t how = bytes.byte();
  const Band band = band_by(how);
  const std::vector<Band> bands = how / 2 % 2 == 0 ? std::vector<Band>{band} : bands_of("");
  const std::string text(bytes.rest());
  require_lines(text);
  require_findings(text, bands);
  require_check_told(text, bands);
  const Table table = fuzz::loaded(band, text);
  require_whole_load(text, table);
  require_whole_save(band, table);
  require_diff(text, sandbox::read_file(sandbox::dat_path(number_of(band))));
  require_diff("", text);
  require_masks(text);
  require_shown(text);
}

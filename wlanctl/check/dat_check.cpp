#include "wlanctl/check/dat_check.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <set>

#include "wlanctl/base/terminal.h"
#include "wlanctl/base/text.h"
#include "wlanctl/check/dat_text.h"
#include "wlanctl/keys/danger.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/keys/value_rule.h"
#include "wlanctl/library/detached_store.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/dat_file.h"

namespace wlanctl {
namespace {

void add_if_missing(const std::string& key, const std::string& value, std::vector<wifimgr_attr_record>* table) {
  for (const wifimgr_attr_record& record : *table) {
    if (key == record.key) return;
  }
  std::string line = key + "=" + value + "\n";
  wifimgr_attr_record record = {};
  if (parse_data_from_line(line.data(), &record) == 0) table->push_back(record);
}

// The file as the setters see it: without what the loader would stumble over, what they do not look at, and further lines
// of a key, so that a file of many lines is judged soon. All SSIDs are served: whether a value is good does not depend on
// whether its SSID is.
std::vector<wifimgr_attr_record> table_of(const std::vector<DatLine>& lines) {
  std::vector<wifimgr_attr_record> table;
  std::set<std::string> taken;
  for (const DatLine& line : lines) {
    if (!line.is_judged || !is_known_dat_key(line.key) || !taken.insert(line.key).second) continue;
    const std::string value = line.key == kSsidCount ? std::to_string(WIFIMGR_FIELDS) : joined(line.fields, ";");
    std::string text = line.key + "=" + value + "\n";
    wifimgr_attr_record record = {};
    if (parse_data_from_line(text.data(), &record) == 0) table.push_back(record);
  }
  // Without these the setters refuse everything, whatever it is.
  add_if_missing(kSsidCount, std::to_string(WIFIMGR_FIELDS), &table);
  add_if_missing("ReloadFlag", "0", &table);
  return table;
}

std::string quoted(const Key& key, const std::string& value) {
  return key.secret && !value.empty() ? shown_value(key, value) : "\"" + value + "\"";
}

// One file against the rules that need more than a line.
class Check {
 public:
  Check(const std::vector<Band>& bands, DatText text)
      : bands_(bands), text_(std::move(text)), table_(table_of(text_.lines)) {}

  std::vector<DatFinding> run() {
    find_ssid_count();
    const std::vector<DatFinding> repeated = repeated_lines(text_.lines);
    text_.findings.insert(text_.findings.end(), repeated.begin(), repeated.end());
    for (const DatLine& line : text_.lines) check_line(line);
    std::stable_sort(text_.findings.begin(), text_.findings.end(),
                     [](const DatFinding& left, const DatFinding& right) { return left.line < right.line; });
    return std::move(text_.findings);
  }

 private:
  void find_ssid_count() {
    const auto line =
        std::find_if(text_.lines.begin(), text_.lines.end(), [](const DatLine& one) { return one.key == kSsidCount; });
    if (line == text_.lines.end()) {
      text_.findings.push_back({Finding::kSsidCount, 0, kSsidCount, 0, false, "",
                                "there is no such line; without it the library finds no SSID", ""});
      return;
    }
    const std::string value = line->fields.empty() ? "" : line->fields[0];
    const long count = std::strtol(value.c_str(), nullptr, 10);
    if (count < 1 || count > WIFIMGR_FIELDS || value.find_first_not_of("0123456789") != std::string::npos) {
      text_.findings.push_back({Finding::kSsidCount, line->number, kSsidCount, 0, true, value,
                                "\"" + value + "\" is no count of SSIDs", "1 to " + std::to_string(WIFIMGR_FIELDS)});
      return;
    }
    ssids_ = static_cast<size_t>(count);
  }

  void check_line(const DatLine& line) {
    if (ssids_ && is_left_out(line.key, static_cast<int>(*ssids_))) {
      add(line, Finding::kLeftOut, "of an SSID beyond BssidNum=" + std::to_string(*ssids_) + "; a save leaves it out");
    } else if (!is_known_dat_key(line.key)) {
      add(line, Finding::kUnknownKey, "the library knows no such key" + hint_for(line.key));
    }
    check_field_count(line);
    check_values(line);
  }

  static std::string hint_for(const std::string& key) {
    std::string word = key.substr(0, key.find_last_not_of(" \t") + 1);
    word.erase(0, word.find_first_not_of(" \t"));
    if (const Key* const other = find_key(word)) return std::string("; do you mean ") + other->dat_key + "?";
    const std::vector<std::string> similar = similar_keys(word);
    return similar.empty() ? "" : "; do you mean " + similar.front() + "?";
  }

  void check_field_count(const DatLine& line) {
    if (line.fields.size() <= 1) return;
    const std::string count = std::to_string(line.fields.size()) + " values";
    if (const std::string reason = second_value_reason(line); !reason.empty()) {
      add(line, is_access_list(line.key) ? Finding::kAccessList : Finding::kSecondValue, reason);
    } else if (ssids_ && line.fields.size() > *ssids_) {
      add(line, Finding::kExcessField,
          count + ", but BssidNum=" + std::to_string(*ssids_) + "; a save keeps the first " + std::to_string(*ssids_));
    }
  }

  void check_values(const DatLine& line) {
    int index = 0;
    const Key* const key = find_dat_key(line.key, &index);
    if (key == nullptr || !line.is_judged || key->is_only_read()) return;
    const std::vector<std::string> fields = line.fields.empty() ? std::vector<std::string>{""} : line.fields;
    if (key->numbering != Numbering::kShared) return check_value(line, *key, index, fields[0], 0);
    const size_t judged = std::min<size_t>(fields.size(), WIFIMGR_FIELDS);
    for (size_t i = 0; i < judged; ++i) {
      const int field = static_cast<int>(i) + 1;
      check_value(line, *key, key->scope == Scope::kSsid ? field : -1, fields[i], fields.size() > 1 ? field : 0);
    }
  }

  void check_value(const DatLine& line, const Key& key, int index, const std::string& value, int field) {
    DatFinding finding = {Finding::kRefused,       line.number, line.key,         field, true,
                          shown_value(key, value), "",          served_words(key)};
    if (const std::optional<std::string> refusal = refusal_of(key, index, value)) {
      finding.reason = quoted(key, value) +
                       " is refused: " + (refusal->empty() ? "it takes " + finding.accepted : on_one_line(*refusal));
    } else if (const std::string danger = shell_danger_of(key, value); !danger.empty()) {
      finding.kind = Finding::kShell;
      finding.reason = quoted(key, value) + " is dangerous: " + danger;
    } else if (const std::string unserved = unserved_reason_of(line, key, index, value); !unserved.empty()) {
      finding.kind = Finding::kUnserved;
      finding.reason = quoted(key, value) + " cannot be served: " + unserved;
    } else {
      return;
    }
    text_.findings.push_back(std::move(finding));
  }

  // "" when one of the bands serves the value. What is empty, or of an SSID that is not served, serves nobody anyway.
  std::string unserved_reason_of(const DatLine& line, const Key& key, int index, const std::string& value) const {
    if (value.empty() || line.key == kSsidCount ||
        (ssids_ && (is_left_out(line.key, static_cast<int>(*ssids_)) || index > static_cast<int>(*ssids_))))
      return "";
    const auto sibling = [&](const char* name) { return value_in(*find_key(name), index); };
    std::string reason;
    for (const Band band : bands_) {
      reason = unserved_reason(key, band, value, sibling);
      if (reason.empty()) return "";
    }
    return reason;
  }

  std::optional<std::string> value_in(const Key& key, int index) const {
    const std::string dat_key = dat_key_of(key, index);
    const bool is_shared = key.numbering == Numbering::kShared;
    const size_t field = is_shared && index > 0 ? static_cast<size_t>(index) - 1 : 0;
    for (const DatLine& line : text_.lines) {
      if (line.key == dat_key) return field < line.fields.size() ? line.fields[field] : "";
    }
    return std::nullopt;
  }

  // None when the setter takes the value on one of the bands that have the key.
  std::optional<std::string> refusal_of(const Key& key, int index, const std::string& value) {
    std::vector<Band> asked;
    for (const Band band : bands_) {
      if (key.is_on(band)) asked.push_back(band);
    }
    // Dat files have the other band's region, too.
    if (asked.empty()) asked = {key.is_on(Band::k2_4G) ? Band::k2_4G : Band::k5G};
    std::string reason;
    for (const Band band : asked) {
      std::optional<DetachedStore>& store = stores_[number_of(band)];
      if (!store) store.emplace(band, table_);
      const ShellScope nothing_runs(ShellMode::kDrop);
      clear_messages();
      const bool is_taken = key.setter(wifi_type_of(band), index, value.c_str()) == 0;
      store->restore();
      if (is_taken) return std::nullopt;
      if (reason.empty()) reason = first_reason();
    }
    return reason;
  }

  void add(const DatLine& line, Finding kind, const std::string& reason) {
    text_.findings.push_back({kind, line.number, line.key, 0, false, "", reason, ""});
  }

  const std::vector<Band>& bands_;
  DatText text_;
  std::vector<wifimgr_attr_record> table_;
  std::optional<DetachedStore>
      stores_[kBandCount];  // by band, made for the first value; as the table has it in between
  std::optional<size_t> ssids_;
};

std::string name_in(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

// The name of the folder that a file is in.
std::string folder_of(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? "" : name_in(path.substr(0, slash));
}

// The file's name without what follows the last dot.
std::string stem_of(const std::string& path) {
  const std::string name = name_in(path);
  return name.substr(0, name.rfind('.'));
}

}  // namespace

std::vector<DatFinding> check_dat(const std::string& bytes, const std::vector<Band>& bands) {
  return Check(bands, read_dat_text(bytes)).run();
}

std::optional<Band> band_of_dat_path(const std::string& path) {
  // Both bands' files have the same name; it is their folders that differ.
  char* const whole = realpath(path.c_str(), nullptr);
  const std::string file = whole == nullptr ? path : whole;
  std::free(whole);
  for (const Band band : kBands) {
    if (folder_of(file) == folder_of(dat_path_of(band))) return band;
  }
  if (stem_of(file) == folder_of(dat_path_of(Band::k5G))) return Band::k5G;
  return std::nullopt;
}

}  // namespace wlanctl

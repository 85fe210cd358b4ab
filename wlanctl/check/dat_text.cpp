#include "wlanctl/check/dat_text.h"

#include <algorithm>
#include <map>

#include "wifimgr_lib.h"
#include "wlanctl/base/text.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/key.h"

namespace wlanctl {
namespace {

constexpr size_t kLongestLine = WIFIMGR_DAT_LINE_SIZE - 1;  // its line end included
constexpr size_t kLongestKey = WIFIMGR_KEY_SIZE - 1;
constexpr size_t kLongestField = WIFIMGR_FIELD_SIZE - 1;

struct RawLine {
  int number;
  std::string text;  // without its line end
  bool ends_in_cr = false;
};

std::vector<RawLine> split_lines(const std::string& bytes) {
  std::vector<RawLine> lines;
  int number = 0;
  for (const std::string& line : lines_of(bytes)) lines.push_back({++number, line, line.ends_with('\r')});
  return lines;
}

// A file from another system has them in every line: one finding for all.
void judge_line_ends(std::vector<RawLine>& lines, std::vector<DatFinding>& findings) {
  int first = 0;
  size_t count = 0;
  for (RawLine& line : lines) {
    if (!line.ends_in_cr) continue;
    if (count++ == 0) first = line.number;
    line.text.pop_back();
  }
  if (count == 0) return;
  const std::string others = count == 1 ? "" : ", like " + count_of(count - 1, "line") + " more";
  findings.push_back({Finding::kLineEnd, first, "", 0, false, "",
                      "the line ends in CR LF" + others + "; the CR becomes part of the value", ""});
}

// Empty lines, comments and the word that such a file begins with.
bool is_no_setting(const std::string& text) {
  return text.empty() || text[0] == '#' || text == "Default";
}

std::vector<std::string> split_fields(const std::string& value) {
  std::vector<std::string> fields;
  for (size_t at = 0;;) {
    const size_t end = value.find(';', at);
    fields.push_back(value.substr(at, end - at));
    if (end == std::string::npos) return fields;
    at = end + 1;
  }
}

class LineReader {
 public:
  LineReader(const RawLine& raw, std::vector<DatFinding>& findings) : raw_(raw), findings_(findings) {}

  DatLine read() {
    line_.number = raw_.number;
    std::string text = raw_.text;
    if (text.size() + 1 > kLongestLine) {
      refuse(Finding::kLongLine, std::to_string(text.size() + 1) + " characters with the line end; the loader takes " +
                                     std::to_string(kLongestLine) + " for a line");
    }
    if (const size_t nul = text.find('\0'); nul != std::string::npos) {
      text.resize(nul);
      refuse(Finding::kNulByte, "the loader ends the line at a NUL byte");
    }
    if (text.find('\r') != std::string::npos) refuse(Finding::kLineEnd, "a CR in the middle of the line");
    read_setting(text);
    // Findings made before the key was known.
    for (size_t i = first_; i < findings_.size(); ++i) findings_[i].key = line_.key;
    return line_;
  }

 private:
  void read_setting(const std::string& text) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos) {
      // Its text is not shown: it may be the rest of a passphrase.
      return refuse(Finding::kNoEquals, "there is no = in the line");
    }
    line_.key = text.substr(0, equals);
    if (line_.key.empty()) return refuse(Finding::kNoKey, "nothing in front of =; all lines below it are lost");
    if (line_.key.size() > kLongestKey) {
      refuse(Finding::kLongKey, "the loader cuts a key behind " + std::to_string(kLongestKey) + " characters");
    }
    std::string value = text.substr(equals + 1);
    if (const size_t second = value.find('='); second != std::string::npos) {
      value.resize(second);
      refuse(Finding::kSecondEquals, "the loader ends the value at the second =");
    }
    read_value(value);
  }

  void read_value(const std::string& value) {
    std::vector<std::string> fields = {value};
    if (!keeps_list_whole(line_.key)) fields = split_fields(value);
    const auto last = std::find_if(fields.rbegin(), fields.rend(), [](const auto& field) { return !field.empty(); });
    fields.erase(last.base(), fields.end());
    const size_t all = fields.size();
    fields.erase(std::remove(fields.begin(), fields.end(), ""), fields.end());
    if (fields.size() < all) {
      refuse(Finding::kEmptyField,
             count_of(all - fields.size(), "empty field") + " between others; the loader moves the later ones up");
    }
    for (size_t i = 0; i < fields.size(); ++i) {
      if (fields[i].size() <= kLongestField) continue;
      refuse(Finding::kLongField, "the loader cuts a field behind " + std::to_string(kLongestField) + " characters");
      if (fields.size() > 1) findings_.back().field = static_cast<int>(i) + 1;
    }
    line_.fields = std::move(fields);
  }

  void refuse(Finding kind, const std::string& reason) {
    // Empty fields only move values.
    if (kind != Finding::kEmptyField) line_.is_judged = false;
    findings_.push_back({kind, raw_.number, "", 0, false, "", reason, ""});
  }

  const RawLine& raw_;
  std::vector<DatFinding>& findings_;
  const size_t first_ = findings_.size();
  DatLine line_ = {};
};

}  // namespace

bool is_access_list(const std::string& dat_key) {
  int index = 0;
  const Key* const key = find_dat_key(dat_key, &index);
  return key != nullptr && key->name == std::string(kAddressList);
}

std::string second_value_reason(const DatLine& line) {
  if (line.fields.size() <= 1 || !is_numbered_dat_key(line.key)) return "";
  const std::string count = std::to_string(line.fields.size());
  return is_access_list(line.key) ? count + " addresses; the driver gets the first one only"
                                  : count + " values for one SSID; the loader keeps the first one only";
}

std::vector<DatFinding> repeated_lines(const std::vector<DatLine>& lines) {
  std::vector<DatFinding> findings;
  std::map<std::string, int> first_lines;
  for (const DatLine& line : lines) {
    const auto [known, is_new] = first_lines.try_emplace(line.key.substr(0, kLongestKey), line.number);
    if (is_new) continue;
    findings.push_back({Finding::kDuplicateKey, line.number, line.key, 0, false, "",
                        "line " + std::to_string(known->second) + " has it already, and that one counts", ""});
  }
  return findings;
}

DatText read_dat_text(const std::string& bytes) {
  DatText text;
  std::vector<RawLine> lines = split_lines(bytes);
  judge_line_ends(lines, text.findings);
  for (const RawLine& raw : lines) {
    if (is_no_setting(raw.text)) continue;
    DatLine line = LineReader(raw, text.findings).read();
    if (!line.key.empty()) text.lines.push_back(std::move(line));
  }
  return text;
}

}  // namespace wlanctl

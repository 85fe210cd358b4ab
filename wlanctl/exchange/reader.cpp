#include "wlanctl/exchange/reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <span>

#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/exchange/dat_reader.h"
#include "wlanctl/exchange/json_reader.h"
#include "wlanctl/files/bytes.h"

namespace wlanctl {
namespace {

constexpr char kStandardInput[] = "-";

const char* word_for_mode(mode_t mode) {
  if (S_ISDIR(mode)) return "a folder";
  if (S_ISFIFO(mode)) return "a pipe";
  if (S_ISSOCK(mode)) return "a socket";
  return "a device";
}

// Why it cannot be read; "" when it could.
std::string read_file(const std::string& path, std::string* bytes) {
  const bool is_input = path == kStandardInput;
  const int file = is_input ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (file < 0) return std::strerror(errno);
  std::string reason;
  struct stat status = {};
  if (fstat(file, &status) != 0) {
    reason = std::strerror(errno);
  } else if (!is_input && !S_ISREG(status.st_mode)) {
    reason = std::string("it is ") + word_for_mode(status.st_mode) + ", no file";
  } else if (const std::optional<std::string> read = read_open_file(file)) {
    *bytes = *read;
  } else {
    reason = errno == EFBIG ? "it is larger than " + std::to_string(kLargestSettingsText >> 20) + " MiB"
                            : std::string(std::strerror(errno));
  }
  if (!is_input) (void)close(file);
  return reason;
}

int line_at(const std::string& bytes, size_t at) {
  int line = 1;
  for (size_t i = 0; i < at; ++i) line += bytes[i] == '\n' ? 1 : 0;
  return line;
}

// The problem that ends the reading before it begins.
std::optional<SettingsText> hopeless_text(const std::string& bytes, const char* format) {
  SettingsText text;
  text.format = format;
  const auto lines = std::count(bytes.begin(), bytes.end(), '\n');
  if (const size_t nul = bytes.find('\0'); nul != std::string::npos) {
    text.problems.push_back({line_at(bytes, nul), "there is a NUL byte in the line", "settings are text"});
  } else if (lines > static_cast<std::ptrdiff_t>(kMostLines)) {
    text.problems.push_back({0, "it has more than " + std::to_string(kMostLines) + " lines", "is it the right file?"});
  } else {
    return std::nullopt;
  }
  return text;
}

constexpr char kBlanks[] = " \t";

// Whether blanks around it are a part of the value. An address, a list and the like are no more than their words.
bool is_free_text(const Key& key) {
  switch (key.accepted.kind) {
    case Accepted::Kind::kText:
    case Accepted::Kind::kLength:
      return true;
    case Accepted::Kind::kRule:
      return key.secret;
    case Accepted::Kind::kNumber:
    case Accepted::Kind::kDigits:
    case Accepted::Kind::kWords:
    case Accepted::Kind::kNothing:
      break;
  }
  return false;
}

std::string without_blanks_around(const std::string& text) {
  const size_t first = text.find_first_not_of(kBlanks);
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

class LineReader {
 public:
  explicit LineReader(const std::optional<Band>& band) : only_(band), band_(band) {
    text_.format = "lines";
    if (band) text_.bands = {*band};
  }

  SettingsText read(const std::string& bytes) {
    for (const std::string& line : lines_of(bytes)) {
      ++number_;
      if (!text_.is_hopeless()) read_line(line);
    }
    return std::move(text_);
  }

 private:
  void refuse(const std::string& message, const std::string& next, Json details = Json::object()) {
    text_.problems.push_back({number_, message, next, std::move(details)});
  }

  void read_line(std::string line) {
    if (line.ends_with('\r')) line.pop_back();
    line.erase(0, line.find_first_not_of(kBlanks));
    if (line.empty() || line[0] == '#') return;
    if (line[0] == '[') {
      read_heading(line);
    } else if (!band_) {
      refuse("there is no band above the line", "write [2.4g] or [5g] above it");
    } else {
      read_assignment(line);
    }
  }

  void read_heading(const std::string& line) {
    const size_t end = line.find(']');
    const std::optional<Band> band = end == std::string::npos ? std::nullopt : parse_band(line.substr(1, end - 1));
    if (!band || line.find_first_not_of(kBlanks, end + 1) != std::string::npos) {
      refuse("this is no band", "write [2.4g] or [5g]");
    } else if (only_ && *band != *only_) {
      refuse(std::string("these are settings of ") + label_of(*band) + ", not of " + label_of(*only_),
             "leave them out");
    } else {
      band_ = band;
      if (std::find(text_.bands.begin(), text_.bands.end(), *band) == text_.bands.end()) text_.bands.push_back(*band);
    }
  }

  void read_assignment(const std::string& line) {
    const size_t equals = line.find('=');
    if (equals == std::string::npos) {
      // Not repeated: it may be the rest of a passphrase.
      refuse("there is no = in the line", "write KEY=VALUE or KEY:SSID=VALUE", about(*band_));
      return;
    }
    Report said;
    const std::string name = without_blanks_around(line.substr(0, equals));
    const std::optional<Target> target = parse_target(name, *band_, said);
    for (const Problem& problem : said.problems()) refuse(problem.message, problem.next, problem.details);
    if (!target) return;
    FileSetting setting;
    setting.band = *band_;
    setting.target = *target;
    setting.written = line.substr(equals + 1);
    const std::string bare = without_blanks_around(setting.written);
    setting.is_left_out = target->key->secret && bare == kSecretLeftOut;
    setting.value = is_free_text(*target->key) && !setting.is_left_out ? setting.written : bare;
    // Who sets = apart does so for his eyes, or not: edit and export do not.
    const bool is_apart = name.size() < equals && setting.value.find_first_of(kBlanks) == 0;
    if (is_apart && bare.empty()) {
      setting.value.clear();
    } else if (is_apart) {
      refuse(target->name() + ": a blank behind = is a part of this value, and there is one in front of =, too",
             "write " + target->name() + "=VALUE, or " + target->name() + "= VALUE where it begins with a blank",
             about_key(target->name(), *band_));
      return;
    }
    setting.line = number_;
    text_.settings.push_back(std::move(setting));
  }

  std::optional<Band> only_;
  std::optional<Band> band_;
  int number_ = 0;
  SettingsText text_;
};

}  // namespace

std::optional<std::string> read_settings_file(const std::string& path, Report& report) {
  std::string bytes;
  const std::string reason = read_file(path, &bytes);
  if (reason.empty()) return bytes;
  report.problem({"cannot read " + name_of_file(path) + ": " + reason,
                  "name a file with settings",
                  {{"file", name_of_file(path)}}});
  return std::nullopt;
}

SettingsText read_settings(const std::string& bytes, const std::optional<Band>& band) {
  const size_t first = bytes.find_first_not_of(" \t\r\n\xef\xbb\xbf");
  const bool is_json = first != std::string::npos && (bytes[first] == '{' || bytes[first] == '[');
  if (auto text = hopeless_text(bytes, is_json ? "json" : "dat")) return *text;
  if (is_json) return read_json_settings(bytes);
  const bool has_setting = has_dat_setting(bytes);
  if (band) {
    SettingsText text = read_dat_settings(bytes, *band);
    // A store without a setting can be exported, too.
    if (has_setting || text.problems.empty()) return text;
  }
  SettingsText text;
  text.format = "dat";
  if (has_setting) {
    text.problems.push_back({0, "which band this dat file is for is not known", "name the band behind the file"});
  } else {
    const bool is_empty = bytes.find_first_not_of(" \t\r\n") == std::string::npos;
    text.problems.push_back({0,
                             is_empty ? "there are no settings in it"
                                      : "it is no settings file: none of its lines begins with a setting and =",
                             "name what export wrote, or a dat file"});
  }
  return text;
}

SettingsText read_lines(const std::string& bytes, const std::optional<Band>& band) {
  if (auto text = hopeless_text(bytes, "lines")) return *text;
  return LineReader(band).read(bytes);
}

void report_problems(const std::string& file, const SettingsText& text, Report& report, size_t most) {
  if (text.is_hopeless()) {
    report.problem({place_in(file, 0) + ": so much is wrong that the rest is not looked at",
                    "is it the right file?",
                    {{"file", name_of_file(file)}}});
  }
  const size_t told = std::min(text.problems.size(), most);
  for (const TextProblem& problem : std::span(text.problems).first(told)) {
    Json details = problem.details;
    details["file"] = name_of_file(file);
    if (problem.line != 0) details["line"] = problem.line;
    report.problem({place_in(file, problem.line) + ": " + problem.message, problem.next, std::move(details)});
  }
  if (told < text.problems.size()) {
    report.problem({place_in(file, 0) + ": " + count_of(text.problems.size() - told, "more line") +
                        (text.problems.size() - told == 1 ? " is" : " are") + " wrong",
                    "mend the others first",
                    {{"file", name_of_file(file)}}});
  }
}

std::string name_of_file(const std::string& file) {
  return file == kStandardInput ? "standard input" : file;
}

std::string place_in(const std::string& file, int line) {
  return name_of_file(file) + (line == 0 ? "" : ":" + std::to_string(line));
}

}  // namespace wlanctl

#include "wlanctl/keys/assignment.h"

#include <termios.h>
#include <unistd.h>

#include <fstream>
#include <iostream>

#include "wlanctl/base/signal_hold.h"
#include "wlanctl/keys/dat_key.h"

namespace wlanctl {
namespace {

Json details_of(Band band) {
  return {{"band", label_of(band)}};
}

Json details_of(const std::string& key, Band band) {
  return {{"band", label_of(band)}, {"key", json_text(key)}};
}

std::string hint_for(const std::string& name) {
  const std::vector<std::string> similar = similar_keys(name);
  if (similar.empty()) return "wlanctl keys lists all";
  std::string hint = "do you mean";
  for (size_t i = 0; i < similar.size() && i < 4; ++i) hint += (i == 0 ? " " : " or ") + similar[i];
  return hint + "?";
}

int highest_index(const Key& key) {
  return key.scope == Scope::kLink ? kLinks : WIFIMGR_FIELDS;
}

std::optional<int> parse_index(const std::string& text, const Key& key) {
  if (text.size() != 1 || text[0] < '1' || text[0] > '0' + highest_index(key)) return std::nullopt;
  return text[0] - '0';
}

std::optional<std::string> first_line(std::istream& stream) {
  std::string line;
  if (!std::getline(stream, line)) return std::nullopt;
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

// Asks for it at a terminal, where a passphrase is not to be seen.
std::optional<std::string> line_of_input(const Target& target) {
  termios settings = {};
  if (isatty(STDIN_FILENO) == 0 || tcgetattr(STDIN_FILENO, &settings) != 0) return first_line(std::cin);
  termios unseen = settings;
  if (target.key->secret) unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  std::optional<std::string> line;
  {
    // An interruption must not leave the terminal without its echo: it waits for the line.
    const SignalHold hold;
    (void)tcsetattr(STDIN_FILENO, TCSAFLUSH, &unseen);
    std::cerr << target.name() << ": " << std::flush;
    line = first_line(std::cin);
    (void)tcsetattr(STDIN_FILENO, TCSAFLUSH, &settings);
  }
  if (target.key->secret) std::cerr << '\n';
  return line;
}

std::optional<Assignment> split(const std::string& text, Band band, Report& report) {
  const size_t equals = text.find('=');
  if (equals == std::string::npos) {
    // Not repeated unless it is a key: a passphrase may have come here by mistake.
    const bool is_key = find_key(text.substr(0, text.find(':'))) != nullptr;
    const std::string shown = text.substr(0, text.find(':'));
    report.problem({(is_key ? "\"" + shown + "\"" : std::string("a word without =")) + " sets nothing",
                    "write KEY=VALUE or KEY:SSID=VALUE", is_key ? details_of(shown, band) : details_of(band)});
    return std::nullopt;
  }
  const std::optional<Target> target = parse_target(text.substr(0, equals), band, report);
  if (!target) return std::nullopt;
  return Assignment{*target, text.substr(equals + 1)};
}

// How the library puts a value into the script that brings an SSID's settings into force. The authentication mode is not
// here: only the modes that the library knows are written as they stand.
enum class InScript { kNowhere, kQuoted, kBare };

InScript place_in_script(const std::string& name) {
  static constexpr const char* kQuoted[] = {"SSID", "WPAPSK", "Key1Str", "Key2Str", "Key3Str", "Key4Str"};
  static constexpr const char* kBare[] = {"AccessControlList", "AccessPolicy", "DefaultKeyID", "EncrypType",
                                          "HideSSID",          "RADIUS_Key",   "RADIUS_Port",  "RADIUS_Server",
                                          "RekeyInterval",     "WmmCapable"};
  for (const char* const quoted : kQuoted) {
    if (name == quoted) return InScript::kQuoted;
  }
  for (const char* const bare : kBare) {
    if (name == bare) return InScript::kBare;
  }
  return InScript::kNowhere;
}

bool is_mac_address(const std::string& text) {
  constexpr size_t kLength = 17;
  if (text.size() != kLength) return false;
  for (size_t i = 0; i < kLength; ++i) {
    if (i % 3 == 2 ? text[i] != ':' : doHexCheck(text[i]) != 1) return false;
  }
  return true;
}

// What follows a ';' is run as a command of its own. An address is none that exists.
bool is_address_list(const std::string& value) {
  for (size_t at = 0; at != std::string::npos;) {
    const size_t end = value.find(';', at);
    if (!is_mac_address(value.substr(at, end - at))) return false;
    at = end == std::string::npos ? end : end + 1;
  }
  return true;
}

// What the library makes of any other word is an open network.
constexpr const char* kModes[] = {"OPEN",          "WEPAUTO", "WEPRadius",      "WPAPSK",  "WPA2PSK",
                                  "WPAPSKWPA2PSK", "WPA3PSK", "WPA2PSKWPA3PSK", "WPA",     "WPA2",
                                  "WPA1WPA2",      "WPA3",    "WPA3-192Bit",    "WPA3-192"};

std::string unknown_mode(const std::string& value) {
  // Whatever else stands in such a word, the library takes it for WEP.
  if (value.find("WEP") != std::string::npos) return "";
  std::string known;
  for (const char* const mode : kModes) {
    if (value == mode) return "";
    known += (known.empty() ? "" : ", ") + std::string(mode);
  }
  return "it would open the network, as every mode does but " + known;
}

// Empty, or "0" as the library itself has it, where there is none.
bool is_passphrase(const std::string& value) {
  constexpr size_t kShortest = 8;
  return value.empty() || value == "0" || value.size() >= kShortest;
}

}  // namespace

std::string Target::name() const {
  return index == -1 ? key->name : std::string(key->name) + ":" + std::to_string(index);
}

std::optional<Target> parse_target(const std::string& word, Band band, Report& report) {
  // A value behind = would be repeated in what is said.
  const std::string text = word.substr(0, word.find('='));
  const size_t colon = text.find(':');
  const std::string name = text.substr(0, colon);
  const Key* const key = find_key(name);
  if (key == nullptr) {
    report.problem({std::string("there is no key \"") + name + "\"", hint_for(name), details_of(text, band)});
    return std::nullopt;
  }
  if (!key->is_on(band)) {
    report.problem({std::string(key->name) + " is no setting of " + label_of(band),
                    std::string("set it on ") + label_of(band == Band::k2_4G ? Band::k5G : Band::k2_4G),
                    details_of(text, band)});
    return std::nullopt;
  }
  const std::string index_word = word_for(key->scope);
  if (colon == std::string::npos) {
    if (key->scope == Scope::kBand) return Target{key, -1};
    report.problem({std::string(key->name) + " belongs to one " + index_word, "write " + std::string(key->name) + ":1",
                    details_of(text, band)});
    return std::nullopt;
  }
  if (key->scope == Scope::kBand) {
    report.problem({std::string(key->name) + " belongs to the whole band",
                    std::string("leave out \"") + text.substr(colon) + "\"", details_of(text, band)});
    return std::nullopt;
  }
  const std::optional<int> index = parse_index(text.substr(colon + 1), *key);
  if (!index) {
    // What stands there may be a passphrase, with a colon by mistake.
    const bool is_shown = !key->secret || text.size() - colon <= 2;
    report.problem({(is_shown ? "\"" + text.substr(colon + 1) + "\"" : std::string("that")) + " is no " + index_word +
                        " of " + key->name,
                    index_word + "s are 1 to " + std::to_string(highest_index(*key)),
                    details_of(is_shown ? text : key->name, band)});
    return std::nullopt;
  }
  return Target{key, *index};
}

std::optional<Assignment> parse_assignment(const std::string& text, Band band, bool literal, Report& report) {
  std::optional<Assignment> assignment = split(text, band, report);
  if (!assignment || assignment->value != "-" || literal) return assignment;
  const std::optional<std::string> line = line_of_input(assignment->target);
  if (!line) {
    report.problem({"standard input has no line for " + assignment->target.name(), "give one line for each \"-\"",
                    details_of(assignment->target.name(), band)});
    return std::nullopt;
  }
  assignment->value = *line;
  return assignment;
}

std::optional<Assignment> parse_file_assignment(const std::string& text, Band band, Report& report) {
  std::optional<Assignment> assignment = split(text, band, report);
  if (!assignment) return std::nullopt;
  std::ifstream file(assignment->value);
  const std::optional<std::string> line = file ? first_line(file) : std::nullopt;
  if (!line) {
    // A passphrase in the place of its file is not repeated.
    const std::string place = assignment->target.key->secret ? "the file" : assignment->value;
    report.problem({"cannot read a value for " + assignment->target.name() + " from " + place,
                    "is the file there, and does it have a line?", details_of(assignment->target.name(), band)});
    return std::nullopt;
  }
  assignment->value = *line;
  return assignment;
}

std::string shell_danger_of(const Key& key, const std::string& value) {
  const std::string name = key.name;
  const InScript place = place_in_script(name);
  if (place == InScript::kQuoted && value.find_first_of("$`") != std::string::npos) {
    return "a shell acts on $ and ` when the driver's script runs";
  }
  if (place != InScript::kBare || (name == "AccessControlList" && is_address_list(value))) return "";
  constexpr char kHarmless[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789:._-,+@%/";
  if (value.find_first_not_of(kHarmless) == std::string::npos) return "";
  return std::string(
             "a shell acts on what is neither letter nor digit nor one of : . _ - , + @ % / when the driver's ") +
         "script runs" + (name == "AccessControlList" ? "; addresses are joined by ;" : "");
}

std::string danger_of(const Key& key, const std::string& value) {
  const std::string in_shell = shell_danger_of(key, value);
  if (!in_shell.empty()) return in_shell;
  if (value.find_first_of("\r\n") != std::string::npos) return "a line end makes lines of their own in the dat file";
  if (value.find('=') != std::string::npos) return "the dat file ends a value at =";
  if (value.size() >= WIFIMGR_FIELD_SIZE) {
    return "the store cuts a value behind " + std::to_string(WIFIMGR_FIELD_SIZE - 1) + " characters";
  }
  const std::string name = key.name;
  if (name == "BssidNum" && (value.size() != 1 || value[0] < '1' || value[0] > '0' + WIFIMGR_FIELDS)) {
    return "a band has 1 to " + std::to_string(WIFIMGR_FIELDS) + " SSIDs";
  }
  constexpr size_t kLongestName = 32;
  if (name == "SSID" && value.size() > kLongestName) return "on the air a network's name has 32 bytes at most";
  if (name == "AuthMode") return unknown_mode(value);
  if (name == "WPAPSK" && !is_passphrase(value)) return "a passphrase has 8 characters at least";
  if (!keeps_list_whole(key.dat_key) && !is_split_list(key) && value.find(';') != std::string::npos)
    return "the dat file takes ; for the next SSID's value";
  return "";
}

}  // namespace wlanctl

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

#include "fuzz/tool_stand.h"
#include "support/sandbox.h"
#include "wifimgr_lib.h"
#include "wlanctl/base/json_print.h"
#include "wlanctl/base/text.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/danger.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/keys/value_rule.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace {

using fuzz::require;
using namespace wlanctl;

constexpr char kInFile = '@';
constexpr size_t kMostWords = 12;

struct Input {
  Band band = Band::k2_4G;
  bool literal = false;
  std::vector<std::string> words;
};

Input input_of(std::string_view bytes) {
  fuzz::Bytes rest(bytes);
  const uint8_t how = rest.byte();
  Input input = {fuzz::band_by(how), how / 2 % 2 != 0, {}};
  while (!rest.is_empty() && input.words.size() < kMostWords) input.words.push_back(rest.text());
  return input;
}

std::string first_line_of(const std::string& bytes) {
  std::string line = bytes.substr(0, bytes.find('\n'));
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

// A word as it stands on the command line or, behind an @, one whose value stands in a file.
std::optional<Assignment> parse(const Input& input, const std::string& word, Report& report) {
  if (!word.starts_with(kInFile)) {
    const std::optional<Assignment> parsed = parse_assignment(word, input.band, input.literal, report);
    const std::string value = word.substr(std::min(word.find('='), word.size() - 1) + 1);
    if (parsed) require(parsed->value == value, "a value is all behind the first =");
    return parsed;
  }
  const size_t equals = word.find('=');
  if (equals == std::string::npos) return parse_file_assignment(word.substr(1), input.band, report);
  const std::string bytes = word.substr(equals + 1);
  const std::string path = fuzz::file_with("value", bytes);
  const std::optional<Assignment> parsed = parse_file_assignment(word.substr(1, equals) + path, input.band, report);
  if (parsed) require(parsed->value == first_line_of(bytes), "a file's value is its first line");
  return parsed;
}

void require_target(const Target& target, Band band) {
  require(target.key->is_on(band), "a target is a setting of the band");
  const int last = target.key->scope == Scope::kLink ? kLinks : WIFIMGR_FIELDS;
  require(target.key->scope == Scope::kBand ? target.index == -1 : target.index >= 1 && target.index <= last,
          "an index is one of the setting's");
  Report unheard;
  require(parse_target(target.name(), band, unheard) == target, "a target's name is that target");
  int index = 0;
  require(find_dat_key(dat_key_of(*target.key, target.index), &index) == target.key, "a target's dat key is its own");
}

std::vector<Assignment> assignments_of(const Input& input, Report& report) {
  std::vector<Assignment> assignments;
  for (const std::string& word : input.words) {
    const size_t problems = report.problems().size();
    const std::optional<Assignment> parsed = parse(input, word, report);
    require(report.problems().size() == problems + (parsed ? 0 : 1),
            "a word is taken, or there is one problem with it");
    if (!parsed) continue;
    require_target(parsed->target, input.band);
    assignments.push_back(*parsed);
  }
  return assignments;
}

// What is said of a word that is wrong has nothing of its value, which may be a secret in the wrong place.
void require_untold(const Input& input, const std::string& told) {
  std::string keys;
  for (const std::string& word : input.words) keys += word.substr(0, word.find('=')) + '\n';
  for (const std::string& word : input.words) {
    const size_t equals = word.find('=');
    if (equals == std::string::npos || word.starts_with(kInFile)) continue;
    const std::string value = word.substr(equals + 1);
    if (!fuzz::is_telltale(value) || keys.find(value) != std::string::npos) continue;
    require(told.find(value) == std::string::npos, "no problem tells a value");
  }
}

bool is_stored(Band band, const Assignment& assignment) {
  clear_messages();
  const Key& key = *assignment.target.key;
  uint64_t result = 0;
  fuzz::quietly([&] { result = key.setter(wifi_type_of(band), assignment.target.index, assignment.value.c_str()); });
  if (result != 0) return false;
  spread_list(band, key, assignment.value);
  return true;
}

// What is said of a value does not tell a secret, and can be printed.
void require_judged(Band band, const Assignment& assignment) {
  const Key& key = *assignment.target.key;
  const PrivateStore store(band, fuzz::open_full_store(band));
  const bool stored = is_stored(band, assignment);
  const auto sibling = [&](const char* name) { return read_value(band, *find_key(name), assignment.target.index); };
  const std::string said = first_reason() + danger_of(key, assignment.value) + served_words(key) +
                           unserved_reason(key, band, assignment.value, sibling);
  require(
      stored || !key.secret || !fuzz::is_telltale(assignment.value) || said.find(assignment.value) == std::string::npos,
      "no refusal tells a secret");
  require(!served_words(key).empty(), "it can be told what a setting takes");
  fuzz::require_json(printed({{"value", json_value(key, assignment.value)}}, Layout::kIndented));
}

bool is_kept_by_save(const Target& target, int ssids) {
  const Key& key = *target.key;
  if (is_left_out(dat_key_of(key, target.index), ssids)) return false;
  return key.scope != Scope::kSsid || key.numbering != Numbering::kShared || target.index <= ssids;
}

// The values of a store that a save and a load must bring back.
std::map<std::string, std::string> values_of(Band band, const std::vector<Target>& targets) {
  std::map<std::string, std::string> values;
  for (const Target& target : targets) {
    const std::optional<std::string> value = read_value(band, *target.key, target.index);
    if (value) values[target.name()] = *value;
  }
  return values;
}

bool is_list_of_addresses(const std::string& command) {
  return command.find(" set ACLAddEntry=") != std::string::npos;
}

// Each line is one command for the driver's tool, and nothing in it has a meaning for the shell.
void require_harmless(const std::string& script) {
  static constexpr char kCommand[] = "/userfs/bin/iwpriv ";
  static constexpr char kMeaningful[] = "|&;<>()$`\\'*?[]#~";
  std::string command;
  bool is_quoted = false;
  for (size_t at = 0; at < script.size(); ++at) {
    const char character = script[at];
    if (character == '\n' && !is_quoted) {
      require(command.empty() || command.starts_with(kCommand), "a script runs the driver's tool and nothing else");
      command.clear();
      continue;
    }
    command += character;
    if (character == '"') {
      is_quoted = !is_quoted;
    } else if (is_quoted && character == '\\') {
      require(++at < script.size(), "a script does not end in a backslash");
    } else if (is_quoted) {
      require(character != '$' && character != '`', "nothing between quotation marks has a meaning");
    } else if (character != ';' || !is_list_of_addresses(command)) {
      require(std::strchr(kMeaningful, character) == nullptr, "nothing outside quotation marks has a meaning");
    }
  }
  require(!is_quoted && command.empty(), "a script is whole");
}

// Of the SSIDs that were set; what is of the whole band stands in each.
void require_harmless_scripts(Band band, const std::vector<Target>& targets) {
  static constexpr const char* kScripts[] = {"/etc/Wireless/RT2860AP/WLAN_exec.sh",
                                             "/etc/Wireless/RT2860AP_AC/WLAN_exec.sh"};
  fuzz::quietly([&] { (void)wifimgr_lib_wifi_config_oper(wifi_type_of(band), 0); });
  std::set<int> ssids;
  for (const Target& target : targets) ssids.insert(std::max(target.index, 1));
  for (const int ssid : ssids) {
    fuzz::quietly(
        [&] { (void)wifimgr_lib_write_wifi_execute_sh(wifi_type_of(band), static_cast<uint32_t>(ssid) - 1); });
    require_harmless(sandbox::read_file(kScripts[number_of(band)]));
  }
}

// What is taken without a word comes back from the dat file, and no shell acts on it.
void require_kept(Band band, const std::vector<Assignment>& assignments) {
  std::map<std::string, std::string> before;
  std::vector<Target> targets;
  std::string saved;
  {
    const PrivateStore store(band, fuzz::open_full_store(band));
    for (const Assignment& assignment : assignments) {
      if (!danger_of(*assignment.target.key, assignment.value).empty() || !is_stored(band, assignment)) continue;
      targets.push_back(assignment.target);
    }
    if (targets.empty()) return;
    require_harmless_scripts(band, targets);
    const int ssids = ssid_count(band);
    const std::optional<std::string> text = saved_text(band);
    if (senseless_count(band) || !text) return;
    if (!losses_at_save(records_of(table_of_store(band)), ssids).empty()) return;
    std::erase_if(targets, [&](const Target& target) { return !is_kept_by_save(target, ssids); });
    before = values_of(band, targets);
    saved = *text;
  }
  if (!losses_at_load(saved).empty()) return;
  const PrivateStore store(band, fuzz::loaded(band, saved));
  require(values_of(band, targets) == before, "what is taken comes back from the dat file");
}

}  // namespace

// A byte for the band and --literal, and words, each ended by a NUL.
void fuzz::try_wlanctl_set(std::string_view bytes) {
  const Input input = input_of(bytes);
  Report unheard;
  const std::vector<Assignment> assignments = assignments_of(input, unheard);
  require_untold(input, told_by([&](Report& report) {
                   (void)assignments_of(input, report);
                   return report.has_problems() ? kRefused : kDone;
                 }));
  for (const Assignment& assignment : assignments) require_judged(input.band, assignment);
  require_kept(input.band, assignments);
}

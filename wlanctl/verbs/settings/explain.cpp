// explain: one setting, with all that the table knows of it and all that the library answers when it is asked.
#include <algorithm>

#include "wlanctl/apply/effect.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/apply/unread.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/keys/trap.h"
#include "wlanctl/keys/value_rule.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr size_t kHead = 12;  // of a line: what it is about

// A list of addresses is longer than a line: it goes on behind a ; then, or wherever it must.
std::vector<std::string> cut(const std::string& line, size_t width) {
  std::vector<std::string> parts;
  size_t at = 0;
  while (line.size() - at > width) {
    const size_t semicolon = line.rfind(';', at + width - 1);
    size_t end = semicolon != std::string::npos && semicolon > at ? semicolon + 1 : at + width;
    while (end > at + 1 && (static_cast<unsigned char>(line[end]) & 0xc0U) == 0x80) --end;
    parts.push_back(line.substr(at, end - at));
    at = end;
  }
  parts.push_back(line.substr(at));
  return parts;
}

// A line, with what does not fit below where it began.
void print_line(Text& text, const std::string& indentation, const std::string& name, const std::string& words) {
  std::string head = indentation + name;
  head.append(head.size() < kHead ? kHead - head.size() : 1, ' ');
  const size_t width = kColumns - head.size();
  const std::vector<std::string> lines = wrapped(printable(words), width);
  for (const std::string& line : lines.empty() ? std::vector<std::string>{""} : lines) {
    for (const std::string& part : cut(line, width)) {
      const std::string whole = head + part;
      text << whole.substr(0, whole.find_last_not_of(' ') + 1) << '\n';
      head.assign(head.size(), ' ');
    }
  }
}

int last_index(const Key& key) {
  return key.scope == Scope::kLink ? kLinks : WIFIMGR_FIELDS;
}

std::vector<std::string> dat_keys_of(const Key& key) {
  if (key.numbering == Numbering::kShared) return {key.dat_key};
  std::vector<std::string> keys;
  for (int i = 1; i <= last_index(key); ++i) keys.push_back(dat_key_of(key, i));
  return keys;
}

std::string words_for_dat_keys(const Key& key) {
  const std::vector<std::string> keys = dat_keys_of(key);
  if (keys.size() > 1) return keys.front() + " to " + keys.back() + ", one for each " + name_for(key.scope);
  return keys.front() + (key.scope == Scope::kBand ? "" : ", a value for each SSID joined by ;");
}

std::string words_for_owner(Scope scope) {
  if (scope == Scope::kBand) return "the band";
  return scope == Scope::kSsid ? "each SSID" : "each WDS link";
}

// A value for each SSID or link, those alike told once: "1; 2", or "32".
std::string words_for_values(const Key& key, const std::vector<std::string>& values) {
  if (values.empty()) return "-";
  std::vector<std::string> shown;
  for (const std::string& value : values) shown.push_back(value.empty() ? "(empty)" : shown_value(key, value));
  if (std::equal(shown.begin() + 1, shown.end(), shown.begin())) return shown.front();
  for (size_t i = 0; i < shown.size(); ++i) shown[i] = std::to_string(i + 1) + ": " + shown[i];
  return joined(shown, "; ");
}

Json json_of(const Key& key, const std::vector<std::string>& values) {
  Json shown = Json::array();
  for (const std::string& value : values) shown.push_back(json_value(key, shown_value(key, value)));
  return shown;
}

std::vector<std::string> defaults_of(const Key& key, Band band) {
  std::vector<std::string> values;
  const bool is_of_band = key.scope == Scope::kBand;
  for (int i = 1; i <= (is_of_band ? 1 : last_index(key)); ++i) {
    const auto value = default_of(key, band, is_of_band ? -1 : i);
    if (value) values.push_back(*value);
  }
  return values;
}

std::vector<std::string> values_in_store(const Key& key, Band band) {
  std::vector<std::string> values;
  const int last = key.scope == Scope::kSsid ? ssid_count(band) : key.scope == Scope::kLink ? kLinks : 1;
  for (int i = 1; i <= last; ++i) {
    const auto value = read_value(band, key, key.scope == Scope::kBand ? -1 : i);
    if (value) values.push_back(*value);
  }
  return values;
}

std::string words_for(const Key& key, const ChangeEffect& effect) {
  constexpr const char* kApply[] = {"an apply saves it without a restart", "an apply restarts the radio",
                                    "an apply restarts the radio and recommends a reboot"};
  std::string words = effect.is_at_once ? "at once, the setter tells the driver; " : "";
  words += kApply[std::clamp(effect.weight, 0, 2)];
  if (key.scope != Scope::kBand && effect.index > 1) {
    words = std::string(name_for(key.scope)) + " " + std::to_string(effect.index) + " and on: " + words;
  }
  if (!effect.condition.empty()) words = "with " + effect.condition + ": " + words;
  words += effect.asked_with ? " (asked with " + shown_value(key, *effect.asked_with) + ")"
                             : " (the table's word: it could not be asked)";
  const bool is_read_later = effect.weight == 0 && !is_told_without_restart(key);
  return words + (is_read_later ? "; the driver reads it at the radio's next start" : "");
}

Json json_of(const Key& key, const ChangeEffect& effect) {
  return {{"index", effect.index},
          {"condition", effect.condition},
          {"apply", word_for_apply(false, effect.weight)},
          {"at_once", effect.is_at_once},
          {"source", effect.asked_with ? "library" : "table"},
          {"asked_with", effect.asked_with ? json_value(key, shown_value(key, *effect.asked_with)) : Json()}};
}

std::string shown_target(const Adjustment& one) {
  if (one.to.empty()) return "empty";
  return one.to == "0" ? one.to : shown_value(*one.target.key, one.to);
}

std::string words_for(const Key& key, const Consequence& consequence) {
  const std::vector<std::string> values = key.secret ? std::vector<std::string>{kMasked} : consequence.values;
  std::vector<std::string> made;
  for (const Adjustment& one : consequence.adjustments) made.push_back(one.target.name() + "=" + shown_target(one));
  return "makes of " + joined(values, ", ") + ": " + joined(made, ", ");
}

Json json_of(const Key& key, const Consequence& consequence) {
  Json made = Json::array();
  for (const Adjustment& one : consequence.adjustments) {
    made.push_back({{"key", one.target.key->name},
                    {"index", one.target.index},
                    {"to", json_value(*one.target.key, shown_target(one))}});
  }
  return {{"values", json_of(key, consequence.values)}, {"makes", std::move(made)}};
}

// A store that cannot be had is no problem here: the setting is what was asked for.
bool can_look(Band band) {
  Report unheard;
  return look_at_band(band, unheard) && !senseless_count(band);
}

Json explain_band(const Key& key, Band band, Report& report) {
  Text& text = report.text();
  const std::vector<std::string> defaults = defaults_of(key, band);
  const bool is_live = has_store(band);
  const bool is_open = can_look(band);
  if (is_live && !is_open) {
    report.note(std::string("the store of ") + label_of(band) + " cannot be asked; wlanctl diff " + label_of(band) +
                " tells more");
  }
  const std::vector<std::string> values = is_open ? values_in_store(key, band) : std::vector<std::string>();
  const char* const source = !is_open ? "none" : is_live ? "store" : "file";
  const std::vector<ChangeEffect> effects = is_open ? effects_of(band, key) : table_effects_of(band, key);
  const std::vector<Consequence> consequences = is_open ? consequences_of(band, key) : std::vector<Consequence>();

  text << label_of(band) << '\n';
  print_line(text, "  ", "default", defaults.empty() ? "-" : words_for_values(key, defaults));
  const std::string where = source == std::string("file") ? " (in the dat file)" : "";
  print_line(text, "  ", "value",
             is_open   ? words_for_values(key, values) + where
             : is_live ? "-"
                       : "- (there is no store)");
  Json told = Json::array();
  for (const ChangeEffect& effect : effects) {
    print_line(text, "  ", "change", words_for(key, effect));
    told.push_back(json_of(key, effect));
  }
  Json made = Json::array();
  for (const Consequence& one : consequences) {
    print_line(text, "  ", "apply", words_for(key, one));
    made.push_back(json_of(key, one));
  }
  return {{"band", label_of(band)}, {"defaults", json_of(key, defaults)}, {"values", json_of(key, values)},
          {"values_from", source},  {"effects", std::move(told)},         {"normalisation", std::move(made)}};
}

// Also as the dat file names it, or with an index.
const Key* asked_key(const std::string& word) {
  const Key* const key = find_key(word.substr(0, word.find(':')));
  int index = 0;
  return key != nullptr ? key : find_dat_key(word, &index);
}

Json name_or_null(const std::string& name) {
  return name == "NULL" ? Json() : Json(name);
}

int run(const Words& words, Report& report) {
  const Key* const found = asked_key(words.key);
  if (found == nullptr) {
    report.problem({"there is no key \"" + words.key + "\"", hint_for_key(words.key), {{"key", words.key}}});
    return kRefused;
  }
  const Key& key = *found;
  const std::string getter = key.getter_name;
  std::vector<std::string> labels;
  for (const Band band : kBands) {
    if (key.is_on(band)) labels.emplace_back(label_of(band));
  }
  Text& text = report.text();
  text << key.name << '\n';
  print_line(text, "  ", "means", key.meaning);
  print_line(text, "  ", "of", words_for_owner(key.scope) + (key.secret ? ", and secret" : ""));
  print_line(text, "  ", "bands", joined(labels, ", "));
  if (*key.unit != '\0') print_line(text, "  ", "unit", key.unit);
  print_line(text, "  ", "accepts", served_words(key));
  print_line(text, "  ", "dat key", words_for_dat_keys(key));
  print_line(text, "  ", "getter", getter == "NULL" ? "none" : getter);
  print_line(text, "  ", "setter", key.setter_name);
  Json bands = Json::array();
  for (const Band band : kBands) {
    if (key.is_on(band)) bands.push_back(explain_band(key, band, report));
  }
  const std::vector<std::string> traps = traps_of(key);
  if (!traps.empty()) text << "traps\n";
  for (const std::string& trap : traps) {
    std::string mark = "  - ";
    for (const std::string& line : wrapped(trap, kColumns - mark.size())) {
      text << mark << line << '\n';
      mark.assign(mark.size(), ' ');
    }
  }
  report.data() = {{"key", key.name},
                   {"meaning", key.meaning},
                   {"unit", key.unit},
                   {"scope", word_for(key.scope)},
                   {"secret", key.secret},
                   {"accepted", served_words(key)},
                   {"choices", choices_of(served(key))},
                   {"dat_keys", dat_keys_of(key)},
                   {"getter", name_or_null(getter)},
                   {"setter", key.setter_name},
                   {"bands", std::move(bands)},
                   {"traps", traps}};
  return kDone;
}

constexpr Word kWords[] = {{"KEY",
                            &Words::key,
                            "A setting, as keys lists it or as the dat file names it",
                            {.required = true, .offers = "key"}}};

}  // namespace

const Verb kExplain = {"explain",
                       "Tell all about one setting",
                       "What a change means, and what an apply makes of values, the library is asked on\n"
                       "a private copy of each band's store or dat file; nothing is changed.\n\n"
                       "Examples:\n  wlanctl explain Channel\n  wlanctl explain AuthMode --json",
                       kWords,
                       run,
                       {},
                       true};

}  // namespace wlanctl

#include "wlanctl/exchange/edit_text.h"

#include <algorithm>

#include "wlanctl/base/terminal.h"
#include "wlanctl/exchange/reader.h"
#include "wlanctl/exchange/stored_settings.h"
#include "wlanctl/keys/value_rule.h"

namespace wlanctl {
namespace {

constexpr char kHead[] =
    "Change what stands behind =, save, and leave the editor. All of it is stored, or nothing. Lines that are not "
    "changed, or taken out, leave the setting as it is; an empty file changes nothing.";
constexpr char kMark[] = "#! ";

std::string comment(const std::string& text, const std::string& mark) {
  std::string lines;
  for (const std::string& line : wrapped(on_one_line(text), kColumns - mark.size())) {
    lines += mark + line + '\n';
  }
  return lines;
}

std::string line_of(const FileSetting& setting, bool secrets) {
  const Key& key = *setting.target.key;
  if (key.is_only_read()) {
    return comment(setting.name() + " is " + printable(setting.value) + ", and only read", "# ");
  }
  if (printable(setting.value) != setting.value) {
    return comment(setting.name() + " has bytes that a line of text cannot hold; it stays as it is", "# ");
  }
  const bool is_masked = key.secret && !secrets && !setting.value.empty();
  return setting.name() + "=" + (is_masked ? kSecretLeftOut : setting.value) + '\n';
}

int line_in(const Problem& problem) {
  Json details = problem.details;
  return static_cast<int>(details["line"].number());  // 0 where there is none
}

std::string message_of(const Problem& problem, const std::string& file) {
  const std::string place = place_in(file, line_in(problem)) + ": ";
  const std::string message =
      problem.message.starts_with(place) ? problem.message.substr(place.size()) : problem.message;
  return printable(on_one_line(message + "; " + problem.next));
}

}  // namespace

std::string edit_text_of(const std::vector<Band>& bands, bool secrets) {
  std::string text = comment(kHead, "# ");
  if (!secrets)
    text += comment(std::string("A passphrase or key is ") + kSecretLeftOut + " until it is changed.", "# ");
  for (const Band band : bands) {
    text += std::string("\n[") + label_of(band) + "]\n";
    const Key* above = nullptr;
    for (const FileSetting& setting : settings_of_store(band)) {
      if (!setting.is_setting()) continue;
      const Key* const key = setting.target.key;
      if (key != above) text += '\n' + comment(std::string(key->meaning) + ": " + served_words(*key), "# ");
      above = key;
      text += line_of(setting, secrets);
    }
  }
  return text;
}

std::string with_problems(const std::string& text, const std::vector<Problem>& problems, const std::string& file) {
  std::string marked;
  for (const Problem& problem : problems) {
    if (line_in(problem) == 0) marked += comment(message_of(problem, file), kMark);
  }
  int number = 0;
  for (const std::string& line : lines_of(text)) {
    ++number;
    if (line.starts_with(kMark)) continue;
    for (const Problem& problem : problems) {
      if (line_in(problem) == number) marked += comment(message_of(problem, file), kMark);
    }
    marked += line + '\n';
  }
  return marked;
}

std::string without_problems(const std::string& text) {
  return with_problems(text, {}, "");
}

std::vector<FileSetting> changed_settings(SettingsText* text, const std::vector<FileSetting>& shown) {
  std::vector<FileSetting> changed;
  for (auto setting = text->settings.begin(); setting != text->settings.end(); ++setting) {
    const auto is_same = [&](const FileSetting& one) {
      return one.band == setting->band && one.target == setting->target;
    };
    if (const auto first = std::find_if(text->settings.begin(), setting, is_same); first != setting) {
      text->problems.push_back({setting->line,
                                setting->name() + " stands in line " + std::to_string(first->line) + " already",
                                "take out one of the two", about_key(setting->name(), setting->band)});
      continue;
    }
    const auto known = std::find_if(shown.begin(), shown.end(), is_same);
    const std::string before = known == shown.end() ? "" : known->value;
    // A line that was not touched has changed nothing, be it that its blanks would not be taken from anybody else.
    const bool is_same_text = setting->value == before || setting->written == before;
    if (!setting->is_left_out && !is_same_text) changed.push_back(*setting);
  }
  return changed;
}

}  // namespace wlanctl

#include "wlanctl/exchange/json_reader.h"

#include <algorithm>
#include <map>

#include "wlanctl/base/hex.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/exchange/json_tree.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/keys/value_rule.h"

namespace wlanctl {
namespace {

using Kind = JsonNode::Kind;

constexpr char kForm[] = "compare it with what wlanctl export prints";

// The text, its bands, one of these, its settings, a value of bytes.
constexpr size_t kDepth = 5;

bool takes_numbers(const Key& key) {
  const Accepted::Kind kind = served(key).kind;
  return key.holds_numbers() || kind == Accepted::Kind::kNumber || kind == Accepted::Kind::kDigits;
}

class Reader {
 public:
  SettingsText read(const JsonNode& root) {
    text_.format = "json";
    if (root.kind != Kind::kObject) {
      refuse(root.line, std::string("settings are an object, and here is ") + root.word(), kForm);
      return std::move(text_);
    }
    if (!has_right_version(root)) return std::move(text_);
    const JsonNode* bands = nullptr;
    visit(root, "", [&](const JsonMember& member) {
      if (member.name == settings_json::kVersion) return true;
      if (member.name != settings_json::kBands) return false;
      bands = &member.node;
      return true;
    });
    if (bands == nullptr) {
      refuse(root.line, std::string("there are no \"") + settings_json::kBands + "\" in it", kForm);
    } else if (is_object(*bands, settings_json::kBands)) {
      visit(*bands, settings_json::kBands, [&](const JsonMember& member) { return read_band(member); });
    }
    return std::move(text_);
  }

 private:
  void refuse(int line, const std::string& message, const std::string& next, Json details = Json::object()) {
    text_.problems.push_back({line, message, next, std::move(details)});
  }

  bool is_object(const JsonNode& node, const std::string& name) {
    if (node.kind == Kind::kObject) return true;
    refuse(node.line, "\"" + name + "\" is an object, and here is " + node.word(), kForm);
    return false;
  }

  // Hands on the members, once each; what the reader knows nothing of is refused.
  template <typename Read>
  void visit(const JsonNode& object, const std::string& where, Read read) {
    std::map<std::string, int> seen;
    if (object.members.size() > kMostLines) {
      refuse(object.line, "there are more than " + std::to_string(kMostLines) + " names in it", kForm);
      return;
    }
    for (const JsonMember& member : object.members) {
      if (text_.is_hopeless()) return;
      const std::string name = "\"" + member.name + "\"";
      const auto [first, is_new] = seen.try_emplace(member.name, member.line);
      if (!is_new) {
        refuse(member.line, name + " stands in line " + std::to_string(first->second) + " already",
               "leave out one of the two");
      } else if (!read(member)) {
        refuse(member.line, "there is no " + name + (where.empty() ? "" : " in \"" + where + "\""), kForm);
      }
    }
  }

  bool has_right_version(const JsonNode& root) {
    for (const JsonMember& member : root.members) {
      if (member.name != settings_json::kVersion) continue;
      if (member.node.kind == Kind::kWhole && member.node.text == std::to_string(kSettingsVersion)) return true;
      const std::string said = member.node.kind == Kind::kWhole ? member.node.text : member.node.word();
      refuse(
          member.node.line,
          "the version of the settings is " + said + "; this wlanctl reads version " + std::to_string(kSettingsVersion),
          "export them with a wlanctl of that version");
      return false;
    }
    const bool is_report = std::any_of(root.members.begin(), root.members.end(),
                                       [](const JsonMember& member) { return member.name == "exit_code"; });
    refuse(root.line,
           std::string("there is no \"") + settings_json::kVersion + "\" in it" +
               (is_report ? ": this is what a verb says with --json" : ": these are no settings of wlanctl"),
           is_report ? "wlanctl export without --json prints settings" : kForm);
    return false;
  }

  bool read_band(const JsonMember& member) {
    const std::optional<Band> band = parse_band(member.name);
    if (!band || member.name != label_of(*band)) {
      refuse(member.line, "there is no band \"" + member.name + "\"", "bands are 2.4g and 5g");
      return true;
    }
    text_.bands.push_back(*band);
    if (!is_object(member.node, member.name)) return true;
    visit(member.node, member.name, [&](const JsonMember& part) {
      if (part.name != settings_json::kSettings && part.name != settings_json::kOther) return false;
      if (!is_object(part.node, part.name)) return true;
      const bool are_others = part.name == settings_json::kOther;
      visit(part.node, part.name, [&](const JsonMember& value) {
        are_others ? read_other(*band, value) : read_setting(*band, value);
        return true;
      });
      return true;
    });
    return true;
  }

  void read_setting(Band band, const JsonMember& member) {
    Report said;
    const std::optional<Target> target = parse_target(member.name, band, said);
    if (!target || member.name.find_first_of(std::string("=\0", 2)) != std::string::npos) {
      if (said.problems().empty()) refuse(member.line, "\"" + member.name + "\" is no setting", kForm);
      for (const Problem& problem : said.problems())
        refuse(member.line, problem.message, problem.next, problem.details);
      return;
    }
    // Capitals do not matter, so the same one can be named twice.
    const auto same = std::find_if(text_.settings.begin(), text_.settings.end(),
                                   [&](const FileSetting& one) { return one.band == band && one.target == *target; });
    if (same != text_.settings.end()) {
      refuse(member.line, target->name() + " stands in line " + std::to_string(same->line) + " already",
             "leave out one of the two", about_key(target->name(), band));
      return;
    }
    FileSetting setting;
    setting.band = band;
    setting.target = *target;
    setting.line = member.node.line;
    if (read_value(member.node, target->name(), &setting)) text_.settings.push_back(std::move(setting));
  }

  void read_other(Band band, const JsonMember& member) {
    FileSetting setting;
    setting.band = band;
    setting.dat_key = member.name;
    setting.line = member.node.line;
    int index = 0;
    const Key* const key = find_dat_key(member.name, &index);
    if (key != nullptr && key->is_on(band)) {
      refuse(member.line, "\"" + member.name + "\" belongs to the settings, as " + key->name,
             "others are what no setting of the band has", about_key(member.name, band));
    } else if (member.name.empty() || member.name.find('\0') != std::string::npos) {
      refuse(member.line, "this is no key of a dat file", kForm);
    } else if (read_value(member.node, member.name, &setting)) {
      text_.settings.push_back(std::move(setting));
    }
  }

  bool read_value(const JsonNode& node, const std::string& name, FileSetting* setting) {
    const auto refuse_value = [&](const std::string& reason, const std::string& next) {
      refuse(node.line, name + ": " + reason, next, about_key(name, setting->band));
      return false;
    };
    const bool is_secret = setting->is_setting() ? setting->target.key->secret : is_secret_dat_key(setting->dat_key);
    std::string next = "write a text";
    if (setting->is_setting() && takes_numbers(*setting->target.key)) next += " or a number";
    switch (node.kind) {
      case Kind::kNull:
        if (!is_secret) return refuse_value("null stands for a secret that was left out, and this is none", next);
        setting->is_left_out = true;
        return true;
      case Kind::kWhole:
        if (setting->is_setting() && !takes_numbers(*setting->target.key))
          return refuse_value("a number where a text belongs", next);
        [[fallthrough]];
      case Kind::kText:
        setting->value = node.text;
        break;
      case Kind::kObject: {
        const bool is_hex = node.members.size() == 1 && node.members[0].name == settings_json::kHex &&
                            node.members[0].node.kind == Kind::kText;
        const std::optional<std::string> bytes =
            is_hex ? bytes_of_hex(node.members[0].node.text) : std::optional<std::string>();
        if (!bytes) return refuse_value("an object that is not {\"hex\": \"...\"} with two digits for each byte", next);
        setting->value = *bytes;
        break;
      }
      case Kind::kTruth:
      case Kind::kFraction:
      case Kind::kArray:
        return refuse_value(std::string("it cannot be ") + node.word(), next);
    }
    if (setting->value.find('\0') != std::string::npos) return refuse_value("a NUL byte is in the value", next);
    return true;
  }

  SettingsText text_;
};

}  // namespace

SettingsText read_json_settings(const std::string& bytes) {
  const JsonText json = parse_json(bytes, kDepth);
  if (json.error.empty()) return Reader().read(json.root);
  SettingsText text;
  text.format = "json";
  text.problems.push_back({json.error_line, "this is no JSON that can be read: " + on_one_line(json.error), kForm});
  return text;
}

}  // namespace wlanctl

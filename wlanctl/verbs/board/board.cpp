// led and button: the gateway's front.
#include <array>

#include "wifimgr_lib.h"
#include "wlanctl/command_line/command.h"
#include "wlanctl/library/query.h"
#include "wlanctl/library/shell.h"

namespace wlanctl {
namespace {

struct LedWords {
  std::string text;
};

// Why the board cannot be given the text; "" when it can. The library puts it into a command line as it is, where the
// first word could also be an option, and cuts the line.
std::string led_refusal(const std::string& text) {
  constexpr size_t kMost = 32;
  constexpr char kHarmless[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 -_";
  if (text.empty()) return "it is empty";
  if (text.size() > kMost) return "it has more than 32 characters";
  const size_t at = text.find_first_not_of(kHarmless);
  if (at != std::string::npos) return std::string("it has a '") + text[at] + "'";
  if (text.front() == '-') return "it begins with '-'";
  if (text.front() == ' ' || text.back() == ' ' || text.find("  ") != std::string::npos) {
    return "it has blanks that do not stand between words";
  }
  return "";
}

int light(const LedWords& words, Context& context) {
  Report& report = context.report;
  const std::string refusal = led_refusal(words.text);
  report.data() = {{"text", json_text(words.text)}};
  if (!refusal.empty()) {
    report.problem({"the LED cannot be told \"" + words.text + "\": " + refusal,
                    "use letters, digits, - and _ in words with one blank between, at most 32 characters",
                    {{"value", json_text(words.text)}, {"reason", json_text(refusal)}}});
    return kRefused;
  }
  std::string reason;
  const auto tell = [&] { return wifimgr_lib_set_LED_WLAN(words.text.c_str()) == 0 && last_shell_status() == 0; };
  if (!call_quietly(tell, &reason)) {
    report.problem({std::string("the LED was not told") + (reason.empty() ? "" : ": ") + reason,
                    "is this the gateway, and are you root?",
                    {{"value", json_text(words.text)}, {"reason", json_text(reason)}}});
    return kNoAnswer;
  }
  report.text() << "WLAN LED: " << words.text << '\n';
  return kDone;
}

struct Button {
  const char* name;
  const char* file;
};
constexpr std::array kButtons = {
    Button{"wlan", "/proc/zq2810/wlan_button"},         Button{"wps", "/proc/zq2810/wps_button"},
    Button{"wps5g", "/proc/zq2810/wps_5g_button"},      Button{"wlan11ac", "/proc/zq2810/wlan11ac_button"},
    Button{"wlan-wps", "/proc/zq2810/wlan_wps_button"},
};

struct ButtonWords {
  std::string name;
};

std::string text_of(const char* buffer, int length) {
  std::string text(buffer, static_cast<size_t>(length));
  return text.substr(0, text.find_first_of(std::string("\n\0", 2)));
}

// None with a problem when the board does not tell.
std::optional<std::string> read_button(const Button& button, Report& report) {
  constexpr int kReadMode = 1;
  char buffer[64] = "";
  int length = -1;
  const Asked asked = {std::string("the ") + button.name + " button",
                       {{"button", button.name}, {"file", button.file}},
                       "is this the gateway, and are you root?"};
  const auto read = [&] {
    length = wifimgr_lib_get_button_state(kReadMode, button.file, buffer, sizeof buffer);
    return length >= 0;
  };
  if (!ask(report, asked, "whether it was pressed", read)) return std::nullopt;
  return text_of(buffer, length);
}

int look_at_buttons(const ButtonWords& words, Context& context) {
  Report& report = context.report;
  Json buttons = Json::array();
  std::vector<std::vector<std::string>> rows;
  for (const Button& button : kButtons) {
    if (!words.name.empty() && words.name != button.name) continue;
    const std::optional<std::string> text = read_button(button, report);
    const Json pressed = text ? Json(!text->empty()) : Json();
    buttons.push_back({{"button", button.name}, {"pressed", pressed}, {"text", text ? json_text(*text) : Json()}});
    rows.push_back({button.name, !text           ? "-"
                                 : text->empty() ? "not pressed"
                                                 : "pressed (" + printable(*text) + "), and used up by this look"});
  }
  report.text() << table(rows);
  report.data() = {{"buttons", std::move(buttons)}};
  return report.has_problems() ? kNoAnswer : kDone;
}

std::string button_names() {
  std::string names;
  for (const Button& button : kButtons) names += (names.empty() ? "" : ", ") + std::string(button.name);
  return names;
}

std::string check_name(const std::string& name) {
  for (const Button& button : kButtons) {
    if (name == button.name) return "";
  }
  return "there is no button \"" + name + "\"; say one of " + button_names();
}

}  // namespace

void add_board(CLI::App& app, Context& context) {
  add_verb<LedWords>(
      app, context, "led", "Tell the WLAN LED what to show",
      [](CLI::App& verb, LedWords& words) {
        verb.add_option("TEXT", words.text, "Letters, digits, blanks, - and _; at most 32")->required();
        verb.footer("Examples:\n  wlanctl led 0\n  wlanctl led \"1 on\"");
      },
      light);
  add_verb<ButtonWords>(
      app, context, "button", "Show which buttons were pressed",
      [](CLI::App& verb, ButtonWords& words) {
        verb.add_option("NAME", words.name, "One of them alone")
            ->check(CLI::Validator([](std::string& name) { return check_name(name); }, "{" + button_names() + "}"));
        verb.footer(
            "A look uses the press up: a management process that waits for the same button\n"
            "does not see it any more.\n\n"
            "Examples:\n  wlanctl button\n  wlanctl button wps");
      },
      look_at_buttons);
}

}  // namespace wlanctl

// led and button: the gateway's front.
#include "wifimgr_lib.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/library/query.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

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

int light(const Words& words, Report& report) {
  const std::string refusal = led_refusal(words.led_text);
  report.data() = {{"text", words.led_text}};
  if (!refusal.empty()) {
    report.problem({"the LED cannot be told \"" + words.led_text + "\": " + refusal,
                    "use letters, digits, - and _ in words with one blank between, at most 32 characters",
                    {{"value", words.led_text}, {"reason", refusal}}});
    return kRefused;
  }
  std::string reason;
  const auto tell = [&] { return wifimgr_lib_set_LED_WLAN(words.led_text.c_str()) == 0 && last_shell_status() == 0; };
  if (!call_quietly(tell, &reason)) {
    report.problem({std::string("the LED was not told") + because(reason),
                    "is this the gateway, and are you root?",
                    {{"value", words.led_text}, {"reason", reason}}});
    return kNoAnswer;
  }
  report.text() << "WLAN LED: " << words.led_text << '\n';
  return kDone;
}

struct Button {
  const char* name;
  const char* file;
};
constexpr Button kButtons[] = {
    {"wlan", "/proc/zq2810/wlan_button"},         {"wps", "/proc/zq2810/wps_button"},
    {"wps5g", "/proc/zq2810/wps_5g_button"},      {"wlan11ac", "/proc/zq2810/wlan11ac_button"},
    {"wlan-wps", "/proc/zq2810/wlan_wps_button"},
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

int look_at_buttons(const Words& words, Report& report) {
  Json buttons = Json::array();
  Rows rows;
  for (const Button& button : kButtons) {
    if (!words.button.empty() && words.button != button.name) continue;
    const std::optional<std::string> text = read_button(button, report);
    const Json pressed = text ? Json(!text->empty()) : Json();
    buttons.push_back({{"button", button.name}, {"pressed", pressed}, {"text", json_or_null(text)}});
    rows.push_back({button.name, !text           ? "-"
                                 : text->empty() ? "not pressed"
                                                 : "pressed (" + printable(*text) + "), and used up by this look"});
  }
  report.text() << table(rows);
  report.data() = {{"buttons", std::move(buttons)}};
  return report.has_problems() ? kNoAnswer : kDone;
}

std::string button_names() {
  std::vector<std::string> names;
  for (const Button& button : kButtons) names.emplace_back(button.name);
  return joined(names, ", ");
}

std::string button_refusal(const std::string& name) {
  for (const Button& button : kButtons) {
    if (name == button.name) return "";
  }
  return "there is no button \"" + name + "\"; say one of " + button_names();
}

constexpr Word kLedWords[] = {
    {"TEXT", &Words::led_text, "Letters, digits, blanks, - and _; at most 32", {.required = true}}};
constexpr Word kButtonWords[] = {
    {"NAME", &Words::button, "One of them alone", {.choices = button_names, .refusal = button_refusal}}};

}  // namespace

const Verb kLed = {"led", "Tell the WLAN LED what to show", "Examples:\n  wlanctl led 0\n  wlanctl led \"1 on\"",
                   kLedWords, light};
const Verb kButton = {"button", "Show which buttons were pressed",
                      "A look uses the press up: a management process that waits for the same button\n"
                      "does not see it any more.\n\n"
                      "Examples:\n  wlanctl button\n  wlanctl button wps",
                      kButtonWords, look_at_buttons};

}  // namespace wlanctl

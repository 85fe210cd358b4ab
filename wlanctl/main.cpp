// wlanctl: shows, changes, checks and applies the settings of both radios, and shows the live radio.
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>

#include "wlanctl/base/wrap.h"
#include "wlanctl/command_line/command.h"

namespace wlanctl {
namespace {

constexpr char kFooter[] =
    "Exit codes: 0 done; 1 refused, failed, or check found something; 2 wrong usage\n"
    "or a file that cannot be read; 3 no store that can be had; 4 another wlanctl is\n"
    "busy; 5 the driver does not answer.\n\n"
    "Examples:\n"
    "  wlanctl status\n"
    "  wlanctl set 2.4g SSID:1=Kitchen\n"
    "  wlanctl diff 2.4g && wlanctl apply 2.4g --confirm 60\n\n"
    "wlanctl VERB --help has the words of a verb.";

using CommandLine = std::vector<std::string>;

// Else the first file that is opened, such as a dat file, would get what is printed.
void open_standard_files() {
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(file, F_GETFD) < 0 && errno == EBADF) (void)open("/dev/null", O_RDWR);
  }
}

// Any user may list the processes with their words, where a value may be a passphrase. A guardian keeps them long.
CommandLine taken_words(int argc, char** argv) {
  CommandLine words(argv + std::min(argc, 1), argv + argc);
  for (int i = 1; i < argc; ++i) {
    char* const equals = std::strchr(argv[i], '=');
    if (equals != nullptr) std::memset(equals + 1, '*', std::strlen(equals + 1));
  }
  return words;
}

std::string without_values(std::string message, const CommandLine& words) {
  for (const std::string& word : words) {
    const size_t equals = word.find('=');
    if (equals == std::string::npos || equals + 1 == word.size()) continue;
    const std::string shown = word.substr(0, equals + 1) + "...";
    for (size_t at = 0; (at = message.find(word, at)) != std::string::npos; at += shown.size()) {
      message.replace(at, word.size(), shown);
    }
  }
  return message;
}

// The first word, where it is no verb and no option.
std::string unknown_verb(const CLI::App& app, const CommandLine& words) {
  const auto is_option = [](const std::string& word) { return word.starts_with('-'); };
  const auto word = std::find_if_not(words.begin(), words.end(), is_option);
  if (word == words.end()) return "";
  for (const CLI::App* const verb : app.get_subcommands(nullptr)) {
    if (verb->get_name() == *word) return "";
  }
  return word->substr(0, word->find('='));
}

// What the program says of itself, which is no verb's.
int tell(const std::string& what, const std::string& text, Context& context) {
  context.report.begin(what, context.common.json);
  context.report.data() = {{"text", text}};
  context.report.text() << text;
  return context.report.finish(kDone);
}

int refuse_usage(const CLI::ParseError& error, const CLI::App& app, const CommandLine& words, Context& context) {
  const auto chosen = app.get_subcommands();
  context.report.begin(chosen.empty() ? "" : chosen.front()->get_name(), context.common.json);
  const std::string unknown = unknown_verb(app, words);
  context.report.problem(
      {unknown.empty() ? without_values(error.what(), words) : "there is no verb \"" + unknown + "\"",
       chosen.empty() ? "wlanctl --help lists the verbs"
                      : "wlanctl " + chosen.front()->get_name() + " --help has the words"});
  return context.report.finish(kWrongUsage);
}

int run(int argc, char** argv) {
  Context context;
  const CommandLine words = taken_words(argc, argv);
  context.common.json = std::find(words.begin(), words.end(), "--json") != words.end();
  CLI::App app("Shows, changes, checks and applies the settings of both radios.", "wlanctl");
  app.footer(kFooter);
  app.set_version_flag("--version", WLANCTL_VERSION);
  app.require_subcommand(1);
  for (const auto add :
       {add_show, add_get, add_set, add_keys, add_diff, add_check, add_apply, add_confirm, add_status, add_stations,
        add_neighbours, add_wps, add_radio, add_board, add_calibration, add_debug, add_completion})
    add(app, context);
  try {
    app.parse(CommandLine(words.rbegin(), words.rend()));
  } catch (const CLI::CallForHelp&) {
    return tell("help", wrapped_help(app.help()), context);
  } catch (const CLI::CallForVersion&) {
    return tell("version", WLANCTL_VERSION "\n", context);
  } catch (const CLI::ParseError& error) {
    return refuse_usage(error, app, words, context);
  }
  return context.report.finish(context.exit_code);
}

}  // namespace
}  // namespace wlanctl

int main(int argc, char** argv) {
  try {
    wlanctl::open_standard_files();
    return wlanctl::run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "wlanctl: %s; this is a fault of the tool\n", error.what());
    return wlanctl::kRefused;
  }
}

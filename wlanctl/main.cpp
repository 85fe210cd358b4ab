// wlanctl: shows, changes, checks and applies the settings of both radios, and shows the live radio.
#include <algorithm>
#include <cstring>
#include <exception>

#include "wlanctl/command.h"

namespace wlanctl {
namespace {

constexpr char kFooter[] =
    "Exit codes: 0 done; 1 refused, failed, or check found something; 2 wrong usage or a file\n"
    "that cannot be read; 3 no store; 4 another wlanctl is busy; 5 the driver does not answer.\n\n"
    "Examples:\n"
    "  wlanctl status\n"
    "  wlanctl set 2.4g SSID:1=Kitchen && wlanctl diff 2.4g && wlanctl apply 2.4g\n\n"
    "wlanctl VERB --help has the words of a verb.";

bool wants_json(int argc, char** argv) {
  return std::any_of(argv, argv + argc, [](const char* word) { return std::strcmp(word, "--json") == 0; });
}

int refuse_usage(const CLI::ParseError& error, const CLI::App& app, Context& context) {
  const auto chosen = app.get_subcommands();
  context.report.begin(chosen.empty() ? "" : chosen.front()->get_name(), context.common.json);
  context.report.problem({error.what(), chosen.empty()
                                            ? "wlanctl --help lists the verbs"
                                            : "wlanctl " + chosen.front()->get_name() + " --help has the words"});
  return context.report.finish(kWrongUsage);
}

int run(int argc, char** argv) {
  Context context;
  context.common.json = wants_json(argc, argv);
  CLI::App app("Shows, changes, checks and applies the settings of both radios.", "wlanctl");
  app.footer(kFooter);
  app.set_version_flag("--version", WLANCTL_VERSION);
  app.require_subcommand(1);
  for (const auto add :
       {add_show, add_get, add_set, add_keys, add_diff, add_check, add_apply, add_confirm, add_status, add_stations,
        add_neighbours, add_wps, add_radio, add_board, add_calibration, add_debug, add_completion})
    add(app, context);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::CallForVersion& version) {
    return app.exit(version);
  } catch (const CLI::ParseError& error) {
    return refuse_usage(error, app, context);
  }
  return context.report.finish(context.exit_code);
}

}  // namespace
}  // namespace wlanctl

int main(int argc, char** argv) {
  try {
    return wlanctl::run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "wlanctl: %s; this is a fault of the tool\n", error.what());
    return wlanctl::kRefused;
  }
}

// What the verbs share: the options of every verb, and how a verb is registered.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <string>

#include "wlanctl/base/band.h"
#include "wlanctl/base/report.h"

namespace wlanctl {

// Options that every verb takes.
struct Common {
  bool json = false;
  unsigned wait_seconds = 10;  // for another wlanctl
};

struct Context {
  Common common;
  Report report;
  int exit_code = kDone;
};

// Adds a verb: `configure` describes its words on the command line and keeps them in Words, `run` carries it out and
// returns the exit code.
template <typename Words>
CLI::App* add_verb(CLI::App& app, Context& context, const std::string& name, const std::string& description,
                   const std::function<void(CLI::App&, Words&)>& configure,
                   const std::function<int(const Words&, Context&)>& run) {
  CLI::App* const verb = app.add_subcommand(name, description);
  const auto words = std::make_shared<Words>();
  configure(*verb, *words);
  verb->add_flag("--json", context.common.json, "Print one JSON document, on errors too");
  verb->callback([=, &context] {
    context.report.begin(
        verb->get_parent()->get_parent() == nullptr ? name : verb->get_parent()->get_name() + " " + name,
        context.common.json);
    context.exit_code = run(*words, context);
  });
  return verb;
}

// Describes a BAND argument.
CLI::Option* add_band(CLI::App& verb, std::string& band);

// For an argument that add_band has checked; both bands when it is empty.
std::vector<Band> bands_of(const std::string& text);

// The verbs, by the file that has them.
void add_keys(CLI::App& app, Context& context);
void add_show(CLI::App& app, Context& context);
void add_get(CLI::App& app, Context& context);
void add_set(CLI::App& app, Context& context);
void add_diff(CLI::App& app, Context& context);  // diff, save, revert
void add_check(CLI::App& app, Context& context);
void add_apply(CLI::App& app, Context& context);
void add_confirm(CLI::App& app, Context& context);
void add_status(CLI::App& app, Context& context);
void add_stations(CLI::App& app, Context& context);
void add_neighbours(CLI::App& app, Context& context);
void add_wps(CLI::App& app, Context& context);
void add_radio(CLI::App& app, Context& context);
void add_board(CLI::App& app, Context& context);  // led, button
void add_calibration(CLI::App& app, Context& context);
void add_debug(CLI::App& app, Context& context);  // dump, trace
void add_completion(CLI::App& app, Context& context);

}  // namespace wlanctl

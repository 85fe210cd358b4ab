// Runs wlanctl inside the simulated gateway, and holds every JSON document that it prints against its verb's schema.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "simulation.h"

namespace wlanctl_test {

using sim_test::build_folder;
using sim_test::built;
using sim_test::library_probe_program;
using sim_test::lines_of;
using sim_test::read_file;
using sim_test::Result;
using sim_test::Simulation;
using sim_test::source_folder;
using sim_test::TestFolder;
using sim_test::wlanctl_program;
using sim_test::Words;
using sim_test::write_file;

using Json = nlohmann::ordered_json;

// In the results below, messages that were wrapped for a terminal stand on one line each again.

// Runs a shell script in a fresh gateway, in a folder of its own, with `wlanctl` and the programs of the build on the
// path. The test fails where a --json output of the script is no document of its verb, or says another exit code than
// wlanctl had. `options` are gateway-sim's.
Result run(const std::string& script, const Words& options = {});

// The same, a shell each for several scripts in one gateway.
std::vector<Result> run_steps(const Words& steps, const Words& options = {});

// What one call printed: `words` go behind "wlanctl", --json is added. `before` is a script that runs first.
Json json_of(const std::string& words, const std::string& before = "", const Words& options = {});

// The document in a text, such as the output of one of run_steps's; null, and a failed test, when there is none.
Json document_in(const std::string& text);

// For tests that steer a simulation themselves: what a script there starts with, and the check when it has ended. The
// folder is the simulation's current one. `status --watch` and killed calls leave nothing to be checked.
std::string prelude(const TestFolder& folder);
void validate_documents(const TestFolder& folder);

// Validates one document, or several one after another, that came by another way.
void validate_text(const std::string& documents);

// Whether that would find nothing to say of a document.
bool is_valid(const Json& document);

// As the tool's own help lists them.
Words verbs();

}  // namespace wlanctl_test

// Runs gateway-sim from tests.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "programs.h"

namespace sim_test {

using Words = std::vector<std::string>;

struct Result {
  int status = -1;  // As a shell reports it: 128+N for signal N.
  std::string out;
  std::string err;
};

// A folder for one test, gone with it, also when the test is interrupted or killed. The real one, also inside a
// simulation that has it as its current directory.
class TestFolder {
 public:
  TestFolder();
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
  int end_ = -1;  // closed when this process ends, however it does
  pid_t janitor_ = -1;
};

// gateway-sim under way, with its standard output and error on pipes.
class Simulation {
 public:
  struct Setting {
    std::string folder;
    bool as_nobody = false;
    std::string program = gateway_sim_program();
  };

  explicit Simulation(const Words& arguments) : Simulation(arguments, Setting()) {}
  Simulation(const Words& arguments, const Setting& setting);
  ~Simulation();
  Simulation(const Simulation&) = delete;
  Simulation& operator=(const Simulation&) = delete;

  pid_t pid() const { return pid_; }

  // Reads standard output up to and including `text`.
  void wait_for_output(const std::string& text);

  // Reads until every process that holds an output pipe has ended, then waits for gateway-sim.
  Result finish();

 private:
  pid_t pid_ = -1;
  int out_ = -1;
  int err_ = -1;
  Result result_;
};

Result run(const Words& arguments);
Result run_in(const std::string& folder, const Words& arguments);

// Runs a shell script inside, after `options`. The current directory is the test's own folder.
Result run_script(const std::string& script, const Words& options = {});

// Runs a shell command outside; its standard error is the test's own.
Result shell(const std::string& command);

// Root, and not only within a user namespace.
bool is_machines_root();

std::string read_file(const std::string& path);
void write_file(const std::string& path, const std::string& text);

Words lines_of(const std::string& text);

// Fields of the journal's lines: time stamp, command line, changes.
std::vector<Words> journal_of(const std::string& path);

// A dat file whose lines say what is given, and nothing else.
std::string dat_text(int ssid_count, const std::string& enabled, const std::string& more = "");

}  // namespace sim_test

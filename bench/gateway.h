// The gateway that is measured: namespaces of its own, so that no key of the machine is touched, and one loaded band.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Size {
  int keys = 256;
  int ssids = 2;
  int processes = 8;
};
extern Size size;

// Moves this process into namespaces of its own, writes the dat file and loads it. Ends the process when that fails.
void set_up();

// The dat file's text, and the place of another file beside it.
extern std::string dat_text;
std::string other_file();

// Which command lines the library wanted to be run since this was last cleared; they are not.
extern std::vector<std::string> commands;

// Runs one as the library would.
void run(const std::string& command);

}  // namespace bench

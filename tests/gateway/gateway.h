// Runs the library probe in a simulated gateway: the commands that ran, and what the kernel says of the interfaces
// afterwards.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "simulation.h"

namespace sim_test {

// Name, state and bridge of each radio interface, from the kernel's own folders.
inline constexpr char kShow[] =
    "for i in $(ls /sys/class/net | grep -E '^(ra|wds)'); do"
    " b=-; [ -e /sys/class/net/$i/master ] && b=$(basename $(readlink /sys/class/net/$i/master));"
    " s=down; [ $(( $(cat /sys/class/net/$i/flags) & 1 )) = 1 ] && s=up; echo $i $s $b; done";

struct Outcome {
  Words steps;       // what the library's calls returned
  Words interfaces;  // afterwards
  Words calls;       // the command lines, in order
};

class Gateway : public testing::Test {
 protected:
  // Runs the probe's steps in a gateway whose bands have these dat texts.
  Outcome apply(const std::string& steps, const std::string& dat_2_4g, const std::string& dat_5g,
                const std::string& chips = "7603,7612") {
    write_file(folder_ / "24.dat", dat_2_4g);
    write_file(folder_ / "5.dat", dat_5g);
    const std::string script = std::string("wc -l </run/gateway-sim/journal; ") + library_probe_program() + " " +
                               steps + " 2>/dev/null; echo ==; " + kShow +
                               "; echo ==; cut -f2 /run/gateway-sim/journal";
    const Result result =
        run_script(script, {"--dat24", folder_ / "24.dat", "--dat5", folder_ / "5.dat", "--chips", chips});
    EXPECT_EQ(0, result.status) << result.err;
    Outcome outcome;
    Words* section = &outcome.steps;
    size_t calls_before = 0;
    bool first = true;
    for (const std::string& line : lines_of(result.out)) {
      if (first) {
        calls_before = std::stoul(line);
        first = false;
      } else if (line == "==") {
        section = section == &outcome.steps ? &outcome.interfaces : &outcome.calls;
      } else {
        section->push_back(line);
      }
    }
    EXPECT_GE(outcome.calls.size(), calls_before);
    outcome.calls.erase(outcome.calls.begin(), outcome.calls.begin() + static_cast<std::ptrdiff_t>(calls_before));
    return outcome;
  }

  TestFolder folder_;
};

}  // namespace sim_test

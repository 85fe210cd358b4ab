// The gateway's command-line tools, as stand-ins that do what they can inside the simulation and journal their calls.
// One program holds them all; the name it is called by chooses the tool.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace gateway::tools {

// The command line, with the name that the tool was called by in front.
using Words = std::vector<std::string>;

int iwpriv(const Words& words);
int mtd(const Words& words);
int insmod(const Words& words);
int rmmod(const Words& words);
int reboot(const Words& words);
int sys(const Words& words);
int wscd(const Words& words);
int killall(const Words& words);

// The simulation's own: sets what the driver and the board answer.
int run_simctl(const Words& words);

// ifconfig and brctl: runs the machine's own and records what it did.
int record_real_tool(const Words& words);

// What a boot would not have left is taken away, then comes the boot. Returns what changed, `why` first.
Words boot_again(const std::string& why);

// Whether a tool of that name is here that can be told to fail: all but the simulation's own.
bool can_fail(const std::string& name);

// Goes wrong as simctl has said, which may be never to return; the exit status, or none when the tool is to do its work.
std::optional<int> fail_as_told(const Words& words);

}  // namespace gateway::tools

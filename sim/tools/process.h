// Processes of the simulation, by name.
#pragma once

#include <signal.h>
#include <sys/types.h>

#include <string>
#include <vector>

namespace gateway::tools {

// The signal's number for "9", "KILL" or "SIGKILL"; -1 when there is none.
int signal_from(std::string text);

// Processes with that name, this one and process 1 left out.
std::vector<pid_t> processes_named(const std::string& name);

// Sends the signal to all of them; returns those that took it.
std::vector<pid_t> kill_processes(const std::string& name, int signal_number);

// Ends all processes but process 1, this one and those above it, which look on as from outside. With a moment to end by
// themselves, or at once, so that none of them sees another one end.
void end_processes(bool with_grace);

}  // namespace gateway::tools

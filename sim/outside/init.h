// Process 1 of the simulation.
#pragma once

#include "sim/outside/options.h"
#include "sim/root/proc_overlay.h"

namespace gateway {

// Starts the command, or the shell, adopts and reaps whatever processes are left behind, and returns the exit status
// of the simulation once the command has ended. SIGTERM, SIGINT and SIGHUP from another process are passed on to the
// command, which then has a moment to end by itself.
// A shell finds what is in the folder `programs`, too.
int run_command(const Options& options, const std::string& folder, const std::string& programs, ProcOverlay* proc);

// Signals that process 1 and gateway-sim wait for instead of being interrupted by them.
void block_signals();

}  // namespace gateway

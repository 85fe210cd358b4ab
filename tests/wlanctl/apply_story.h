// What the tests of apply and confirm share.
#pragma once

#include <string>

#include "wlanctl.h"

namespace wlanctl_test {

inline constexpr char kDat[] = "/etc/Wireless/RT2860AP/RT2860AP.dat";

// Shell functions for a script in the simulation:
//   commands      the journal's command lines
//   segment BAND  the bytes of a band's store
//   gone BAND     waits until the band's apply no longer waits for a confirmation
//   overdue BAND  makes the time of the band's apply be over
//   guardian      the process numbers of guardians
//   stop PID      stops a process, and waits until it is
//   no_guardian   waits until there is none
//   killed_at, killed_in WISH  runs a command that is killed when it writes files, see kill_at_rename.c
//   with_pid FILE runs a command that finds its own process number in a file from its start on
//   stand_in NAME puts a script, standard input, in front of a command; the command itself is /real/NAME then
std::string functions();

// With these first.
Result run_story(const std::string& script, const Words& options = {});

// The part of a text behind a line that says `mark`, up to the next line that begins with "== ".
std::string behind(const std::string& text, const std::string& mark);

}  // namespace wlanctl_test

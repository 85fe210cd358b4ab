#include "sim/outside/options.h"

#include <getopt.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace gateway {
namespace {

constexpr char kHelp[] =
    R"(usage: gateway-sim [OPTION]... [--] COMMAND [ARGUMENT]...
       gateway-sim [OPTION]... --shell

Runs COMMAND inside a simulated home gateway with two WLAN radios. The gateway
lives in namespaces of its own and is gone without trace when COMMAND ends, or
the process that started gateway-sim; started with setsid or nohup it goes on
without that one.

Options:
  --chips LIST    the WLAN chips on the PCI bus, separated by commas
                  (default: 7915,7916)
                  known: 7603, 7612, 7615, 7663, 7915, 7916, 7905
  --dat2.4g FILE  the dat file of the 2.4G radio, in place of the supplied one
  --dat5g FILE    the same of the 5G radio (--dat24 and --dat5 do as well)
  --journal FILE  write the journal of commands to FILE, which is replaced
  --shell         open an interactive shell instead of running COMMAND
  --verbose       say on standard error what is being set up, and how long it
                  took
  --version       print the version
  --help          print this text

Inside, the gateway has
  - network interfaces ra0.. and wds0..3 (2.4G), rai0.. and wdsi0..3 (5G), as
    many BSSs as the dat files' BssidNum says, and the bridges br-lan
    (192.168.1.1) and br0 (192.168.2.1)
  - the machine's own ifconfig, brctl and shell, and System V IPC of its own
  - stand-ins for iwpriv, mtd, insmod, rmmod, reboot, sys, wscd and killall, in
    /userfs/bin
  - /etc/Wireless with the dat files, /proc/zq2810, /proc/bus/pci/devices,
    /lib/modules/4.4.115
  - a driver that answers wireless requests on ra* and rai*, as iwpriv left it,
    and simctl, which sets what it answers, what the board does and what goes
    wrong (simctl --help)
Everything written is private and lost at the end, except in the current
directory, in the build tree that gateway-sim was started from, and in the
journal. A shell (--shell) has gateway-sim's own folder on its path.

The journal has one line for each call of ifconfig, brctl and the stand-ins:
time stamp, command line and what it changed, separated by tabs. Without
--journal it can be read as /run/gateway-sim/journal while the simulation runs.

Exit codes: that of COMMAND, 128+N when signal N ended it, and
    2  the options make no sense, or a file they name cannot be used
  125  this machine refuses to run the simulation; standard error says why
  126  COMMAND cannot be run
  127  COMMAND was not found

Examples:
  gateway-sim --shell
  gateway-sim -- ifconfig -a
  gateway-sim --chips 7603,7663 --journal calls.log -- ./manager --apply
)";

[[noreturn]] void refuse(const std::string& reason) {
  std::fprintf(stderr, "gateway-sim: %s\nTry 'gateway-sim --help'.\n", reason.c_str());
  std::exit(kUsageError);
}

[[noreturn]] void print_and_end(const char* text) {
  std::fputs(text, stdout);
  std::exit(std::fflush(stdout) == 0 ? 0 : 1);
}

}  // namespace

Options parse_options(int argc, char** argv) {
  enum { kChips = 256, kDat24, kDat5, kJournal, kShell, kVerbose, kVersion, kHelpText };
  static const option kLong[] = {
      {"chips", required_argument, nullptr, kChips},
      {"dat2.4g", required_argument, nullptr, kDat24},
      {"dat24", required_argument, nullptr, kDat24},
      {"dat5g", required_argument, nullptr, kDat5},
      {"dat5", required_argument, nullptr, kDat5},
      {"journal", required_argument, nullptr, kJournal},
      {"shell", no_argument, nullptr, kShell},
      {"verbose", no_argument, nullptr, kVerbose},
      {"version", no_argument, nullptr, kVersion},
      {"help", no_argument, nullptr, kHelpText},
      {nullptr, 0, nullptr, 0},
  };
  Options options;
  std::string chips = gateway::kDefaultChips;
  opterr = 0;
  // The leading '+' leaves the command's own options to the command.
  for (int choice; (choice = getopt_long(argc, argv, "+:", kLong, nullptr)) != -1;) {
    if (choice != '?' && optarg != nullptr && *optarg == '\0') choice = ':';
    switch (choice) {
      case kChips:
        chips = optarg;
        break;
      case kDat24:
        options.dat_2_4g = optarg;
        break;
      case kDat5:
        options.dat_5g = optarg;
        break;
      case kJournal:
        options.journal = optarg;
        break;
      case kShell:
        options.shell = true;
        break;
      case kVerbose:
        options.verbose = true;
        break;
      case kVersion:
        print_and_end("gateway-sim " GATEWAY_SIM_VERSION "\n");
      case kHelpText:
        print_and_end(kHelp);
      case ':':
        refuse(std::string("option '") + argv[optind - 1] + "' needs a value");
      default:
        refuse(std::string("unknown option '") + argv[optind - 1] + "'");
    }
  }
  try {
    options.chips = parse_chips(chips);
  } catch (const std::invalid_argument& error) {
    refuse(error.what());
  }
  options.command.assign(argv + optind, argv + argc);
  if (options.shell && !options.command.empty()) refuse("--shell takes no command");
  if (!options.shell && options.command.empty()) refuse("no command given");
  return options;
}

}  // namespace gateway

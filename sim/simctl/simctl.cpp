#include "sim/simctl/simctl.h"

#include <cstdio>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/records/journal.h"

namespace gateway::tools {
namespace {

constexpr char kHelp[] =
    R"(usage: simctl COMMAND [WORD]...

Sets what the simulated gateway's WLAN driver answers, what its board does and
what goes wrong. Works inside the simulation only. BAND is 2.4g or 5g, IF an
interface such as ra0 or rai1, MAC and BSSID are written 02:5a:10:24:00:11. A
reading (VALUE) is exactly what is given; after '~' (quote it) it wanders a
little around it, as it does at first.

Commands:
  show [BAND|IF]                     what there is
  channel BAND NUMBER                move the radio, 0 for its own choice
  noise|load|temperature BAND VALUE  in dBm, percent, degrees Celsius
  station add IF MAC [KEY=VALUE]...  associate a station, or change one
      aid=N signal=VALUE rate=MBIT
      rrm=HEX16 btm=HEX2 (802.11k and 802.11v capabilities)
      valid=N marker=N (bytes 7 and 8..9 of its entry in the driver's table)
  station remove IF MAC|all
  wps IF state N [peer MAC]          0 off, 1 idle, 2 open, 3 enrolling,
                                     4 done, 5 failed
  wps IF pin N                       a number, its check digit is not looked at
  wps IF status N                    the radio's WPS status word
  wps IF access MAC[,MAC]...|none    the access list of the session
  neighbour add BAND BSSID [KEY=VALUE]...
      channel=N signal=VALUE ssid=TEXT security=TEXT wps=0|1
  neighbour remove BAND BSSID|all
  process add NAME PID [running=0|1] a process that helps the driver
  process remove NAME|all
  press BUTTON [TEXT]                wlan, wps, wps5g, wlan11ac or wlan-wps;
                                     TEXT is 1
  calibration BAND FILE|chip=HEX     put an image into flash, or make one for
                                     that chip
  chip-id N                          the package id on the board
  fail REQUEST HOW... [IF] [COUNT]   make a request go wrong, COUNT times
      HOW, in this order:
      ERRNO         fail, with an errno's name or number
      slow=SECONDS  answer, or fail, that late; 60 at most
      cut=BYTES     answer with no more than that, the length field saying so
      REQUEST is 0x8B05, oid:0x0752 or a name: )";

constexpr char kHelpEnd[] = R"(
  fail TOOL HOW... [WORD]... [COUNT] make a command go wrong, COUNT times, in
                                     calls that have each WORD among theirs
      TOOL is ifconfig, brctl, iwpriv, insmod, rmmod, wscd, mtd, sys, killall or
      reboot; HOW, the first three in this order:
      print=TEXT    a line on standard error
      slow=SECONDS  wait that long
      exit=STATUS, signal=NAME or hang, in place of its work
      call=N        begin with the Nth of these calls
  fail none                          let all of them succeed
  power-cut                          end all processes at once, then boot
  reset                              all this as after a boot; the flash stays

Exit codes: 0 done, 1 the gateway cannot have that, 2 the words make no sense.

Examples:
  simctl station add ra0 02:aa:bb:cc:dd:01 signal=-61 rate=300
  simctl noise 5g -88
  simctl wps ra0 state 3 peer 02:aa:bb:cc:dd:01
  simctl press wps
  simctl calibration 2.4g chip=7915
  simctl fail channel EIO ra0 1
  simctl fail stations slow=0.5 cut=48 ra0
  simctl fail ifconfig exit=1 print='SIOCSIFFLAGS: Input/output error' ra0 up 1
)";

struct Command {
  const char* name;
  simctl::Changes (*run)(const Words& words);
};

constexpr Command kCommands[] = {
    {"show", simctl::show},   {"channel", simctl::channel},         {"noise", simctl::noise},
    {"load", simctl::load},   {"temperature", simctl::temperature}, {"station", simctl::station},
    {"wps", simctl::wps},     {"neighbour", simctl::neighbour},     {"process", simctl::process},
    {"press", simctl::press}, {"calibration", simctl::calibration}, {"chip-id", simctl::chip_id},
    {"fail", simctl::faults}, {"power-cut", simctl::power_cut},     {"reset", simctl::reset},
};

enum { kRefused = 1, kUsage = 2 };

int complain(const Words& words, const std::string& reason, int status) {
  std::fprintf(stderr, "simctl: %s\n", reason.c_str());
  if (status == kUsage) std::fputs("Try 'simctl --help'.\n", stderr);
  if (path_exists(place::kJournal)) record_call(words, {});
  return status;
}

}  // namespace

int run_simctl(const Words& words) {
  const std::string name = words.size() > 1 ? words[1] : "";
  if (name == "--help" || name == "help") {
    std::fputs((kHelp + simctl::request_names() + kHelpEnd).c_str(), stdout);
    return 0;
  }
  if (!path_exists(place::kLists)) {
    return complain(words, "works inside a simulated gateway only; gateway-sim starts one", kRefused);
  }
  const StateLock lock;
  try {
    for (const Command& command : kCommands) {
      if (name != command.name) continue;
      record_call(words, command.run({words.begin() + 2, words.end()}));
      return 0;
    }
    return complain(words, name.empty() ? "a command is missing" : "no command " + name, kUsage);
  } catch (const simctl::UsageError& error) {
    return complain(words, name + ": " + error.what(), kUsage);
  } catch (const simctl::Refusal& error) {
    return complain(words, name + ": " + error.what(), kRefused);
  } catch (const std::invalid_argument& error) {
    return complain(words, name + ": the driver says: " + error.what(), kRefused);
  }
}

}  // namespace gateway::tools

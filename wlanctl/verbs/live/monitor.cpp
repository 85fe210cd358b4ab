// monitor: what happens on the gateway, line by line, as it happens.
#include "wlanctl/watch/monitor.h"

#include "wlanctl/base/report.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr unsigned kMostSeconds = 366 * 24 * 3600;
constexpr unsigned kMostEvents = 1000000000;

int run(const Words& words, Report& report) {
  return monitor(bands_of(words.band), {words.for_seconds, words.events}, words.json, report);
}

constexpr Word kWords[] = {
    word::kBand,
    {"--for",
     &Words::for_seconds,
     "End after so many seconds",
     {.lowest = 1, .highest = kMostSeconds, .value_name = "SECONDS"}},
    {"-n,--events",
     &Words::events,
     "End after so many events",
     {.lowest = 1, .highest = kMostEvents, .value_name = "EVENTS"}},
};

}  // namespace

const Verb kMonitor = {"monitor", "Tell what happens, line by line, as it happens",
                       "A line has time, band, kind and what happened: stations that join and leave,\n"
                       "channels, interfaces and their bridges, WPS sessions, values of the store, the\n"
                       "dat files, applies and their confirmation, whether what was applied is in\n"
                       "force, a lock that is held, a driver that is gone. With --json each line is a\n"
                       "document; without an event nothing is printed. It changes nothing and takes no\n"
                       "lock; the driver is asked once a second. Interrupted or hung up (SIGINT,\n"
                       "SIGTERM, SIGHUP unless that is ignored), or when nobody reads any more, it ends\n"
                       "with exit code 0.\n\n"
                       "Examples:\n"
                       "  wlanctl monitor\n"
                       "  wlanctl monitor 5g --for 60\n"
                       "  wlanctl monitor -n 1 --json | jq .data.event",
                       kWords, run};

}  // namespace wlanctl

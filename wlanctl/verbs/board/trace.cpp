// trace: what the library's users write to the debug log.
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "wifimgr_lib.h"
#include "wlanctl/base/report.h"
#include "wlanctl/library/query.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// The debug library's switch; the level has a file of its own, which matters with the switch only.
constexpr char kTraceSwitch[] = "/tmp/wifi_lib_dbg_enable";
constexpr int kEverything = 8;

int trace_at(int level, Report& report) {
  std::string reason;
  if (!call_quietly([&] { return wifimgr_lib_set_dbg_level(std::to_string(level).c_str()) == 0; }, &reason)) {
    report.problem({std::string("the trace cannot be switched on: ") + kTraceSwitch + " cannot be written",
                    "run as root, and is there room in /tmp?",
                    {{"file", kTraceSwitch}, {"reason", reason}}});
    return kRefused;
  }
  report.data() = {{"trace", "on"}, {"level", level}};
  report.text() << "trace: on, level " << level << '\n';
  return kDone;
}

int trace_on(const Words& /*words*/, Report& report) {
  return trace_at(kEverything, report);
}

int trace_level(const Words& words, Report& report) {
  return trace_at(words.level, report);
}

int trace_off(const Words& /*words*/, Report& report) {
  if (unlink(kTraceSwitch) != 0 && errno != ENOENT) {
    report.problem({std::string("the trace cannot be switched off: ") + kTraceSwitch + ": " + std::strerror(errno),
                    "run as root",
                    {{"file", kTraceSwitch}}});
    return kRefused;
  }
  report.data() = {{"trace", "off"}, {"level", nullptr}};
  report.text() << "trace: off\n";
  return kDone;
}

constexpr Word kLevelWords[] = {
    {"N",
     &Words::level,
     "1 for reasons of failures to 8 for all",
     {.required = true, .lowest = 1, .highest = kEverything}},
};

constexpr Verb kTraceOn = {"on", "Everything: level 8", "Examples:\n  wlanctl trace on", {}, trace_on};
constexpr Verb kTraceOff = {"off", "Nothing", "Examples:\n  wlanctl trace off", {}, trace_off};
constexpr Verb kTraceLevel = {"level", "On, up to a level", "Examples:\n  wlanctl trace level 1", kLevelWords,
                              trace_level};
constexpr const Verb* kVerbs[] = {&kTraceOn, &kTraceOff, &kTraceLevel};

}  // namespace

const Verb kTrace = {.name = "trace",
                     .help = "Switch the trace of all processes",
                     .footer =
                         "Where the trace goes is the platform's business. It names settings, and may hold\n"
                         "their values: switch it off again.\n\n"
                         "Examples:\n  wlanctl trace on\n  wlanctl trace level 1\n  wlanctl trace off",
                     .verbs = kVerbs};

}  // namespace wlanctl

#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr char kFooter[] =
    "Exit codes: 0 done; 1 refused, failed, or check found errors; 2 wrong usage or a\n"
    "file that cannot be read; 3 no store that can be had; 4 another wlanctl is busy;\n"
    "5 the driver does not answer; 6 applied, but not in force; 7 check found\n"
    "warnings.\n\n"
    "Examples:\n"
    "  wlanctl status\n"
    "  wlanctl set 2.4g SSID:1=Kitchen\n"
    "  wlanctl diff 2.4g && wlanctl apply 2.4g --confirm 60\n\n"
    "wlanctl VERB --help explains a verb.";

// As the help lists them.
constexpr const Verb* kVerbs[] = {&kShow,       &kGet,    &kSet,     &kKeys,      &kDiff,   &kSave,        &kRevert,
                                  &kCheck,      &kApply,  &kConfirm, &kRollback,  &kStatus, &kMonitor,     &kStations,
                                  &kNeighbours, &kWps,    &kRadio,   &kLed,       &kButton, &kCalibration, &kDump,
                                  &kTrace,      &kUnlock, &kDoctor,  &kCompletion};

constexpr Program kProgram = {{.name = "wlanctl",
                               .help = "Shows, changes, checks and applies the settings of both radios.",
                               .footer = kFooter,
                               .verbs = kVerbs},
                              WLANCTL_VERSION};

}  // namespace

const Program& program() {
  return kProgram;
}

}  // namespace wlanctl

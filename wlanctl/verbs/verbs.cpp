#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr char kFooter[] =
    "Exit codes: 0 done; 1 refused, failed, check or doctor found errors, or diff\n"
    "--exit-code differences; 2 wrong usage or a file that cannot be read; 3 no store\n"
    "that can be had; 4 another wlanctl is busy; 5 the driver does not answer;\n"
    "6 applied, but not in force; 7 check or doctor found warnings.\n\n"
    "Examples:\n"
    "  wlanctl status\n"
    "  wlanctl set 2.4g SSID:1=Kitchen\n"
    "  wlanctl diff 2.4g && wlanctl apply 2.4g --confirm 60\n\n"
    "wlanctl help VERB explains a verb.";

// As the help lists them.
constexpr const Verb* kVerbs[] = {&kShow,       &kGet,      &kSet,    &kEdit,       &kKeys,   &kExplain,     &kSsid,
                                  &kDiff,       &kSave,     &kRevert, &kExport,     &kImport, &kCheck,       &kApply,
                                  &kConfirm,    &kRollback, &kLog,    &kUndo,       &kStatus, &kMonitor,     &kStations,
                                  &kNeighbours, &kWps,      &kRadio,  &kLed,        &kButton, &kCalibration, &kDump,
                                  &kTrace,      &kUnlock,   &kDoctor, &kCompletion, &kHelp};

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

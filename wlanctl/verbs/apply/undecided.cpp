#include "wlanctl/verbs/apply/undecided.h"

#include "wlanctl/base/report.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"

namespace wlanctl {

bool refuse_undecided(Band band, Report& report) {
  const std::string label = label_of(band);
  if (interrupted(band)) {
    report.problem(
        {"the gateway went down before the apply of " + label + " was confirmed",
         "wlanctl confirm " + label + " keeps its settings; wlanctl rollback " + label + " puts back those before",
         about(band)});
    return true;
  }
  if (!is_pending(band)) return false;
  report.problem({"an apply of " + label + " waits for its confirmation",
                  "wlanctl confirm " + label + " keeps it; without, it is rolled back when its time is over",
                  about(band)});
  return true;
}

}  // namespace wlanctl

// What a dry run shows.
#pragma once

#include "wlanctl/apply/plan.h"
#include "wlanctl/base/report.h"

namespace wlanctl {

// Adds a band's part to the report, passphrases and keys masked unless `secrets`. False with a problem when the apply
// would fail.
bool tell_dry_run(Band band, const Plan& plan, bool always_commit, bool secrets, Report& report);

}  // namespace wlanctl

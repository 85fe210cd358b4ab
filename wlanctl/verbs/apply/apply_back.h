// An apply that is not left to its confirmation: it is put back at once.
#pragma once

#include "wlanctl/verbs/apply/apply_text.h"

namespace wlanctl {

// Whether it was broken off or is not in force, and the operator has not said to keep it all the same.
bool was_in_vain(const Words& words, const Job& job);

// At once, as nobody could want to confirm that.
void roll_back_job(const Words& words, Job& job, Report& report);

}  // namespace wlanctl

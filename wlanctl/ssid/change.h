// A plan for an SSID, judged on a private copy of the store and then carried out: all of it or nothing, on one band or on
// several.
#pragma once

#include <optional>
#include <vector>

#include "wlanctl/apply/adjustment.h"
#include "wlanctl/ssid/plan.h"
#include "wlanctl/store/storing_note.h"

namespace wlanctl {

class Report;

struct JudgedPlan {
  SsidPlan plan;
  std::vector<NotedField> fields;          // what it changes
  std::vector<Adjustment> adjustments;     // what an apply will then make of values by itself, and did not before
  std::vector<wifimgr_attr_record> table;  // of the copy, with all of it done
};

// None with problems. `force` lets through what the library takes and the tool would refuse.
std::optional<JudgedPlan> judge(const SsidPlan& plan, bool force, Report& report);

// False with a problem; the stores are as before then. What was begun and could not be ended, the next wlanctl puts back.
bool carry_out(const std::vector<JudgedPlan>& plans, Report& report);

// Puts the plan's values into the store that the library works on, as far as it takes them; no driver is told, as it has
// no such interface before the next apply. The first write that was refused; null when all is done. `fields` receives what
// they change, with all that it becomes on the way.
const SsidWrite* make_changes(const SsidPlan& plan, std::vector<NotedField>* fields = nullptr);

}  // namespace wlanctl

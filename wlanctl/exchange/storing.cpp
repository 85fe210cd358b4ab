#include "wlanctl/exchange/storing.h"

#include <algorithm>

#include "wlanctl/base/interrupt.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/exchange/stored_settings.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/library/command.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

void take_back(const std::vector<StorePlan>& plans) {
  for (const StorePlan& plan : plans) (void)put_back_noted(plan.band, plan.fields);
}

// The store has what the driver has not: whoever looks for what differs finds nothing to do.
Problem not_taken(Band band, const Wish& step) {
  const std::string name = step.target.name();
  const std::string cause = commands_run().empty() ? "" : account_of(commands_run().back());
  Json details = about_key(name, band);
  details["reason"] = cause;
  return {"the driver did not take " + name + ", which is in the store now" + because(cause),
          std::string("when that is mended, wlanctl set ") + label_of(band) + " " + name + "=" +
              shown_value(*step.target.key, step.value) +
              " tells it again; an import of the same value does not, nor an apply without a restart",
          std::move(details)};
}

int coming_count(const StorePlan& plan) {
  int count = ssid_count(plan.band);
  for (const Wish& step : plan.steps) {
    if (step.target.key->name == std::string(kSsidCount)) count = static_cast<int>(number_in(step.value).value_or(0));
  }
  return count;
}

bool store_plan(const StorePlan& plan, Report& report) {
  if (!plan.records.empty() && add_records(plan.band, plan.records) != Adding::kDone) {
    report.problem({std::string("the store of ") + label_of(plan.band) + " does not take the keys of more SSIDs",
                    "another process changed the store; try again", about(plan.band)});
    return false;
  }
  const int before = ssid_count(plan.band);
  const int coming = coming_count(plan);
  const int served = std::min(before, coming);
  if (coming > before) store_unserved(plan.band, plan.fields, before);
  for (const Wish& step : plan.steps) {
    // The driver has no such interface before the next apply, or loses it with that.
    const bool is_untold =
        plan.order != Order::kAsGiven && step.target.key->scope == Scope::kSsid && step.target.index > served;
    const ShellScope driver_is_told(is_untold ? ShellMode::kDrop : ShellScope::mode());
    if (!is_stored(plan.band, step)) {
      refuse(report, plan.band, step, first_reason(), "another process changed the store; try again");
      return false;
    }
    if (last_shell_status() != 0) {
      report.problem(not_taken(plan.band, step));
    }
  }
  if (plan.order == Order::kAsGiven) return true;
  // Of several steps of a setting the last one counts.
  for (auto step = plan.steps.rbegin(); step != plan.steps.rend(); ++step) {
    const auto is_same = [&](const Wish& later) { return later.target == step->target; };
    if (std::any_of(plan.steps.rbegin(), step, is_same)) continue;
    if (exact_value(plan.band, step->target) == step->value) continue;
    refuse(report, plan.band, *step, "it is another one in the store now",
           "another process changed the store; try again");
    return false;
  }
  return true;
}

void note_lists(const StorePlan& plan, Report& report) {
  for (const Wish& step : plan.steps) {
    if (std::string(step.target.key->name) != kAddressList || step.value.find(';') == std::string::npos) continue;
    report.note(step.target.name() + ": " + kOnlyFirstAddress);
  }
}

}  // namespace

std::vector<ValueChange> changes_of(const StorePlan& plan) {
  std::vector<ValueChange> changes;
  std::vector<Wish> steps = plan.steps;
  steps.insert(steps.end(), plan.unasked.begin(), plan.unasked.end());
  for (const Wish& step : steps) {
    const auto known = std::find_if(changes.rbegin(), changes.rend(),
                                    [&](const ValueChange& one) { return one.target == step.target; });
    if (known != changes.rend() && plan.order != Order::kAsGiven) {
      known->after = step.value;
      continue;
    }
    const std::string before = known != changes.rend()
                                   ? known->after
                                   : read_value(plan.band, *step.target.key, step.target.index).value_or("");
    changes.push_back({step.target, before, step.value});
  }
  return changes;
}

bool store_plans(const std::string& verb, const std::vector<StorePlan>& plans, Report& report) {
  std::vector<NotedBand> changes;
  size_t fields = 0;
  for (const StorePlan& plan : plans) {
    changes.push_back({plan.band, plan.fields});
    fields += plan.fields.size();
  }
  const SignalHold hold;
  const InterruptAnswer answer("interrupted; the values are stored first, and the result told");
  // All of them are stored then. A command that tells the driver of one may hang.
  const CommandRun run(0, AtInterrupt::kEnd);
  // A single field is stored or not.
  const bool is_noted = fields > 1;
  if (is_noted && !note_storing(verb, changes, report)) return false;
  bool is_done = true;
  for (const StorePlan& plan : plans) is_done = is_done && store_plan(plan, report);
  if (!is_done) take_back(plans);
  if (is_noted && !forget_storing(report) && is_done) {
    take_back(plans);
    is_done = false;
  }
  if (is_done) {
    for (const StorePlan& plan : plans) note_lists(plan, report);
  }
  return is_done;
}

std::string text_of(Band band, const std::vector<ValueChange>& changes) {
  Text text;
  for (const ValueChange& change : changes) {
    const Key& key = *change.target.key;
    text << change_lines(label_of(band) + (' ' + change.target.name()), printable(shown_value(key, change.after)),
                         printable(shown_value(key, change.before)));
  }
  return text.str();
}

Json json_of(const std::vector<ValueChange>& changes) {
  Json shown = Json::array();
  for (const ValueChange& change : changes) {
    const Key& key = *change.target.key;
    shown.push_back({{"key", key.name},
                     {"index", change.target.index},
                     {"before", json_value(key, shown_value(key, change.before))},
                     {"after", json_value(key, shown_value(key, change.after))}});
  }
  return shown;
}

}  // namespace wlanctl

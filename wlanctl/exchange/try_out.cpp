#include "wlanctl/exchange/try_out.h"

#include <algorithm>

#include "wlanctl/apply/adjustment.h"
#include "wlanctl/base/report.h"
#include "wlanctl/check/bare_ssid.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/exchange/reader.h"
#include "wlanctl/exchange/stored_settings.h"
#include "wlanctl/keys/danger.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/keys/value_rule.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/library/output.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

constexpr char kChangedByOther[] = "another of the values changes it";
constexpr char kOrForce[] = "choose another value, or insist with --force";

std::string next_of(const Wish& wish) {
  return "it takes " + served_words(*wish.target.key);
}

// What depends on all values together, before and after they are set.
struct Outlook {
  std::optional<std::string> text;  // of the dat file that a save would make
  std::vector<DatFinding> losses;
  std::vector<Adjustment> adjustments;
};

Outlook outlook_of(Band band) {
  const std::optional<std::string> text = saved_text(band);
  return {text, losses_of_save(band, text), adjustments_of(band)};
}

// Asks the library's own setter, and only that. Some tell the driver too, whose tool prints.
bool is_taken_by_setter(Band band, const Wish& wish) {
  clear_messages();
  clear_shell_status();
  const CaughtOutput unheard;
  return wish.target.key->setter(wifi_type_of(band), wish.target.index, wish.value.c_str()) == 0;
}

enum class Insist {
  kNo,
  kOnDoubts,    // not on what the library refuses
  kOnRefusals,  // on that too
};

class Try {
 public:
  Try(Band band, Insist insist, Report& report)
      : band_(band), force_(insist != Insist::kNo), is_past_setters_(insist == Insist::kOnRefusals), report_(report) {
    plan_.band = band;
  }

  StorePlan run(const std::vector<Wish>& wishes, Order order) {
    plan_.order = order;
    const Outlook before = outlook_of(band_);
    const std::vector<Wish> stood = values_of(wishes);
    const std::vector<int> on_before = ssids_switched_on(band_);
    const PrivateStore copy(band_);
    const ShellScope nothing_runs(ShellMode::kDrop);
    table_ = table_of_store(band_);
    if (order == Order::kAsGiven) {
      for (const Wish& wish : wishes) {
        add_missing_records(wish);
        if (take(wish)) continue;
        const std::string reason = reason_or_default();
        const bool lacks_record = has_own_record(wish.target) && !missing_records(band_, wish.target.index).empty();
        if (!lacks_record || has_record(wish)) refuse(report_, band_, wish, reason, next_of(wish));
      }
    } else {
      take_as_needed(wishes);
    }
    const bool is_taken = !report_.has_problems();
    // All that is wrong at once; but nothing is insisted on of what is not stored.
    if (is_taken || !force_) judge_dangerous_and_unserved();
    if (is_taken) judge_bare_ssids(on_before);
    if (!is_taken) return std::move(plan_);
    const Outlook after = outlook_of(band_);
    judge_losses(before, after);
    judge_empty_fields();
    if (report_.has_problems()) return std::move(plan_);
    note_adjustments(before, after);
    note_cut_lists();
    note_changes_of(stood);
    plan_.loses_ssids = save_loses_ssids(band_, after.text);
    return std::move(plan_);
  }

 private:
  static std::string reason_or_default() {
    const std::string reason = first_reason();
    return reason.empty() ? "the library refuses it" : reason;
  }

  bool take(const Wish& wish) {
    if (!is_taken_by_setter(band_, wish)) return false;
    note_changes();
    spread_list(band_, *wish.target.key, wish.value);
    note_changes();
    plan_.steps.push_back(wish);
    return true;
  }

  // What stood there in between counts too: somebody may be killed right then.
  void note_changes() {
    std::vector<wifimgr_attr_record> table = table_of_store(band_);
    add_changes(table_, table, &plan_.fields);
    table_ = std::move(table);
  }

  bool is_there(const Wish& wish) const { return exact_value(band_, wish.target) == wish.value; }

  // A setter may ask for another value first, or change one: as long as that gets further, what is left is tried again.
  void take_as_needed(const std::vector<Wish>& wishes) {
    constexpr int kMostRounds = 4;
    // Which SSIDs there are comes first.
    std::vector<const Wish*> left;
    const auto count = std::find_if(wishes.begin(), wishes.end(),
                                    [](const Wish& wish) { return wish.target.key->name == std::string(kSsidCount); });
    // But the last values of one that goes come while it is there.
    const bool are_fewer = plan_.order == Order::kAsBefore && count != wishes.end() &&
                           number_in(count->value).value_or(0) < ssid_count(band_);
    if (count != wishes.end() && !are_fewer && !is_there(*count)) (void)take(*count);
    for (const Wish& wish : wishes) add_missing_records(wish);
    const auto is_last = [&](const Wish& wish) { return are_fewer && &wish == &*count; };
    for (const Wish& wish : wishes) {
      if (!is_there(wish) && !is_last(wish)) left.push_back(&wish);
    }
    std::erase_if(left, [&](const Wish* wish) { return !has_record(*wish); });
    for (int round = 0; round < kMostRounds && !left.empty(); ++round) {
      bool has_moved = false;
      for (const Wish* wish : left) has_moved = is_there(*wish) || take(*wish) || has_moved;
      left.clear();
      for (const Wish& wish : wishes) {
        if (!is_there(wish) && !is_last(wish) && exact_value(band_, wish.target)) left.push_back(&wish);
      }
      if (!has_moved) break;
    }
    if (are_fewer && !take(*count)) left.push_back(&*count);
    for (const Wish* wish : left) refuse_what_is_left(*wish);
  }

  // Past the setter, where its refusal is insisted against.
  bool is_put_unasked(const Wish& wish) {
    if (!is_past_setters_) return false;
    write_value(band_, *wish.target.key, wish.target.index, wish.value);
    if (!is_there(wish)) return false;
    plan_.unasked.push_back(wish);
    return true;
  }

  std::string reason_against(const Wish& wish) {
    if (!is_stored(band_, wish)) return reason_or_default();
    const std::string stands = exact_value(band_, wish.target).value_or("");
    if (stands == wish.value) return kChangedByOther;
    return "the library makes \"" + shown_value(*wish.target.key, stands) + "\" of it";
  }

  void refuse_what_is_left(const Wish& wish) {
    const std::string reason = reason_against(wish);
    if (is_put_unasked(wish)) {
      report_.note(wish.target.name() + " is taken all the same: " + reason);
    } else {
      refuse(report_, band_, wish, reason, reason == kChangedByOther ? "leave out one of the two" : next_of(wish));
    }
  }

  static bool has_own_record(const Target& target) {
    return target.key->scope == Scope::kSsid && target.key->numbering != Numbering::kShared;
  }

  // A setter finds the record of a key, it makes none. A save drops those of SSIDs behind the count.
  void add_missing_records(const Wish& wish) {
    const int ssid = wish.target.index;
    if (!has_own_record(wish.target) || ssid > ssid_count(band_) || exact_value(band_, wish.target)) return;
    const std::vector<wifimgr_attr_record> records = missing_records(band_, ssid);
    if (records.empty() || add_records(band_, records) != Adding::kDone) return;
    plan_.records.insert(plan_.records.end(), records.begin(), records.end());
    table_ = table_of_store(band_);
  }

  bool has_record(const Wish& wish) {
    const Target& target = wish.target;
    if (exact_value(band_, target)) return true;
    const std::string label = label_of(band_);
    const std::string dat_key = dat_key_of(*target.key, target.index);
    if (has_own_record(target) && target.index > ssid_count(band_)) {
      (void)is_stored(band_, wish);
      refuse(report_, band_, wish, reason_or_default(), "set " + std::string(kSsidCount) + " too");
    } else if (has_own_record(target) && !missing_records(band_, target.index).empty()) {
      refuse(report_, band_, wish,
             "the store of " + label + " has no room for the keys of SSID " + std::to_string(target.index),
             "wlanctl ssid add " + label + " NAME --to-file makes room");
    } else {
      refuse(report_, band_, wish, dat_key + " is not in the dat file of " + label,
             "add the line " + dat_key + "= to it and load it anew");
    }
    return false;
  }

  // One word insists on whatever there is to insist on: all of it is told then.
  void judge(const Wish& wish, const std::string& reason) {
    judged_.push_back(wish.target);
    if (force_) {
      report_.note(wish.target.name() + " is taken all the same: " + reason);
    } else {
      refuse(report_, band_, wish, reason, kOrForce);
    }
  }

  void judge_dangerous_and_unserved() {
    std::vector<const Wish*> storable;
    for (const Wish& step : plan_.steps) {
      const std::string danger = danger_of(*step.target.key, step.value);
      if (danger.empty() || is_shell_danger(step)) storable.push_back(&step);
      if (danger.empty()) continue;
      if (plan_.order == Order::kAsGiven || &step == last_step_of(step.target)) judge(step, danger);
    }
    for (const Wish* step : storable) {
      const auto same = [&](const Wish* other) { return other->target == step->target; };
      const bool is_last = step == *std::find_if(storable.rbegin(), storable.rend(), same);
      if (is_last || plan_.order == Order::kAsGiven) judge_unserved(*step, is_last);
    }
  }

  // The step that puts an SSID on the air: its switch, or the count.
  const Wish* step_to_air(int ssid) const {
    const Wish* found = nullptr;
    for (const Wish& step : plan_.steps) {
      const std::string name = step.target.key->name;
      if ((name == "EnableSSID" && step.target.index == ssid) || (name == kSsidCount && found == nullptr))
        found = &step;
    }
    return found;
  }

  void judge_bare_ssids(const std::vector<int>& on_before) {
    for (const int ssid : ssids_switched_on(band_)) {
      const Wish* const step = step_to_air(ssid);
      if (step == nullptr || std::find(on_before.begin(), on_before.end(), ssid) != on_before.end()) continue;
      const std::string reason = reason_against_air(band_, ssid);
      if (reason.empty()) continue;
      if (force_) {
        report_.note(step->target.name() + " is taken all the same: " + reason);
      } else {
        refuse(
            report_, band_, *step, reason,
            std::string("set that too, or wlanctl ssid add ") + label_of(band_) + " NAME sets one up; --force insists");
      }
    }
  }

  const Wish* last_step_of(const Target& target) const {
    const auto is_same = [&](const Wish& step) { return step.target == target; };
    return &*std::find_if(plan_.steps.rbegin(), plan_.steps.rend(), is_same);
  }

  // A value that another one takes the place of is judged alone.
  void judge_unserved(const Wish& wish, bool is_last) {
    const Target& target = wish.target;
    const auto sibling = [&](const char* name) {
      return is_last ? read_value(band_, *find_key(name), target.index) : std::nullopt;
    };
    const std::string reason = unserved_reason(*target.key, band_, wish.value, sibling);
    if (!reason.empty()) judge(wish, reason);
  }

  // What the values would lose in the dat file that was not lost before; why not, may be said already.
  void judge_losses(const Outlook& before, const Outlook& after) {
    for (const DatFinding& loss : added_losses(before.losses, after.losses)) {
      for (const Wish& step : plan_.steps) {
        if (dat_key_of(*step.target.key, step.target.index) != loss.key) continue;
        const bool is_judged = std::find(judged_.begin(), judged_.end(), step.target) != judged_.end();
        if (!is_judged || is_shell_danger(step)) judge(step, "in the dat file, " + loss.reason);
        break;
      }
    }
  }

  // Behind which there is nothing to lose.
  void judge_empty_fields() {
    for (const Wish& step : plan_.steps) {
      const std::string reason = reason_against_none(*step.target.key, band_, step.value);
      const bool is_judged = std::find(judged_.begin(), judged_.end(), step.target) != judged_.end();
      const bool stands = step.value.empty() && read_value(band_, *step.target.key, step.target.index) == step.value;
      if (!reason.empty() && !is_judged && stands) judge(step, reason);
    }
  }

  // Which says nothing of the dat file.
  static bool is_shell_danger(const Wish& step) { return !shell_danger_of(*step.target.key, step.value).empty(); }

  // An apply or a save of it is refused then.
  void note_cut_lists() {
    for (const DatFinding& cut : lists_cut_at_save(records_of(table_of_store(band_)), ssid_count(band_))) {
      for (const Wish& step : plan_.steps) {
        if (dat_key_of(*step.target.key, step.target.index) != cut.key) continue;
        report_.note(step.target.name() + ": " + cut.reason);
        break;
      }
    }
  }

  // What stands in the store for each wish.
  std::vector<Wish> values_of(const std::vector<Wish>& wishes) const {
    std::vector<Wish> values;
    for (const Wish& wish : wishes)
      values.push_back({wish.target, exact_value(band_, wish.target).value_or(""), "", 0});
    return values;
  }

  // What there is to know of a value that comes in the place of `stood`.
  void note_changes_of(const std::vector<Wish>& stood) {
    std::vector<Target> noted;
    for (const Wish& one : stood) {
      if (std::find(noted.begin(), noted.end(), one.target) != noted.end()) continue;
      noted.push_back(one.target);
      const std::string told = told_of_change(*one.target.key, one.value, exact_value(band_, one.target).value_or(""));
      if (!told.empty()) report_.note(one.target.name() + ": " + told);
    }
  }

  // What an apply makes of values by itself, where that is not as it was, or about a value that is set now.
  void note_adjustments(const Outlook& before, const Outlook& after) {
    for (const Adjustment& one : after.adjustments) {
      const bool is_new =
          std::find(before.adjustments.begin(), before.adjustments.end(), one) == before.adjustments.end();
      const bool is_set = std::any_of(plan_.steps.begin(), plan_.steps.end(),
                                      [&](const Wish& step) { return step.target == one.target; });
      if (is_new || is_set) report_.note(one.target.name() + ": " + one.words());
    }
  }

  Band band_;
  bool force_;
  bool is_past_setters_;
  Report& report_;
  std::vector<wifimgr_attr_record> table_;
  std::vector<Target> judged_;  // that are refused, or noted
  StorePlan plan_;
};

}  // namespace

bool is_stored(Band band, const Wish& wish) {
  if (!is_taken_by_setter(band, wish)) return false;
  spread_list(band, *wish.target.key, wish.value);
  return true;
}

void refuse(Report& report, Band band, const Wish& wish, const std::string& reason, const std::string& next) {
  const Key& key = *wish.target.key;
  const std::string shown = shown_value(key, wish.value);
  Json details = {{"band", label_of(band)},
                  {"key", wish.target.name()},
                  {"value", shown},
                  {"reason", reason},
                  {"accepted", served_words(key)}};
  std::string place;
  if (!wish.file.empty()) {
    place = place_in(wish.file, wish.line) + ": ";
    details["file"] = name_of_file(wish.file);
    if (wish.line != 0) details["line"] = wish.line;
  }
  report.problem({place + wish.target.name() + " cannot be \"" + shown + "\": " + reason, next, std::move(details)});
}

namespace {

// Whether the setters take all of it.
bool is_smooth(const StorePlan& plan, const Report& said) {
  return !said.has_problems() && plan.unasked.empty();
}

StorePlan best_plan(Band band, const std::vector<Wish>& wishes, Order order, Insist insist, Report& report) {
  Report said;
  StorePlan plan = Try(band, insist, said).run(wishes, order);
  if (order != Order::kAsGiven && !is_smooth(plan, said)) {
    // A value may be taken only as long as another one is what it was: a key goes with the cipher before.
    Report said_of_other;
    const std::vector<Wish> backwards(wishes.rbegin(), wishes.rend());
    StorePlan other = Try(band, insist, said_of_other).run(backwards, order);
    if (is_smooth(other, said_of_other)) {
      plan = std::move(other);
      said = std::move(said_of_other);
    }
  }
  for (const Problem& problem : said.problems()) report.problem(problem);
  for (const std::string& note : said.notes()) report.note(note);
  return plan;
}

}  // namespace

StorePlan try_out(Band band, const std::vector<Wish>& wishes, Order order, bool force, Report& report) {
  return best_plan(band, wishes, order, force ? Insist::kOnDoubts : Insist::kNo, report);
}

StorePlan try_for_file(Band band, const std::vector<Wish>& wishes, bool force, Report& report) {
  return best_plan(band, wishes, Order::kAsNeeded, force ? Insist::kOnRefusals : Insist::kNo, report);
}

bool put_into_file_store(const StorePlan& plan, Report& report) {
  const ShellScope nothing_runs(ShellMode::kDrop);
  for (const Wish& step : plan.steps) {
    if (is_stored(plan.band, step)) continue;
    refuse(report, plan.band, step, first_reason(), next_of(step));
    return false;
  }
  for (const Wish& wish : plan.unasked) write_value(plan.band, *wish.target.key, wish.target.index, wish.value);
  return true;
}

}  // namespace wlanctl

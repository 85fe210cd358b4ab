#include "wlanctl/verbs/ssid/report.h"

#include <algorithm>

#include "wlanctl/base/terminal.h"
#include "wlanctl/base/text.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

// A change of one field as the operator names it; none for what only the library has a use for.
struct NamedChange {
  Target target;
  std::string before;
  std::string after;
};

std::vector<NamedChange> named(const std::vector<NotedField>& fields) {
  std::vector<NamedChange> changes;
  for (const NotedField& field : fields) {
    const std::optional<Target> target = target_of_field(field.key, static_cast<size_t>(field.field));
    if (!target) continue;
    const std::string before = without_line_end(field.before);
    const std::string after = without_line_end(field.becomes.back());
    if (before != after)
      changes.push_back({*target, shown_value(*target->key, before), shown_value(*target->key, after)});
  }
  return changes;
}

std::string quoted(const std::string& name) {
  return "\"" + printable(name) + "\"";
}

}  // namespace

std::string title_of(Band band, int ssid, const std::string& name) {
  return "SSID " + std::to_string(ssid) + " " + quoted(name) + " (" + interface_of(band, ssid - 1) + ")";
}

std::string security_of(Band band, int ssid) {
  return read_value(band, *find_key("AuthMode"), ssid).value_or("-") + "/" +
         read_value(band, *find_key("EncrypType"), ssid).value_or("-");
}

std::string farewell(const SsidPlan& plan) {
  const Band band = plan.band;
  std::vector<std::string> values;
  for (const Key& key : all_keys()) {
    if (key.scope != Scope::kSsid || !key.is_on(band)) continue;
    const auto value = read_value(band, key, plan.ssid);
    if (value && !value->empty()) values.push_back(key.name + ("=" + printable(shown_value(key, *value))));
  }
  Text text;
  text << text_lines(label_of(band) + (": " + title_of(band, plan.ssid, plan.name)) + ", " +
                         printable(security_of(band, plan.ssid)) + ", goes with its values:",
                     2)
       << wrapped_below("   ", values);
  for (const MovedSsid& moved : plan.moved) {
    text << text_lines("  " + title_of(band, moved.from, moved.name) + " becomes SSID " + std::to_string(moved.to) +
                           " (" + interface_of(band, moved.to - 1) + ")",
                       4);
  }
  return text.str();
}

void tell_change(const JudgedPlan& judged, const std::string& done, ChangeIs is, Report& report) {
  const SsidPlan& plan = judged.plan;
  const std::string label = label_of(plan.band);
  Text& text = report.text();
  text << text_lines(label + ": " + title_of(plan.band, plan.ssid, plan.name) +
                         (is == ChangeIs::kTried ? " would be " : " is ") + done +
                         (is == ChangeIs::kInFile ? " in the dat file" : ""),
                     2);
  if (is == ChangeIs::kTried) {
    for (const NamedChange& change : named(judged.fields)) {
      text << change_lines("  " + change.target.name(), printable(change.after), printable(change.before));
    }
    for (const wifimgr_attr_record& record : plan.records) text << "  + " << key_of(record) << '\n';
  }
  for (const Adjustment& one : judged.adjustments) report.note(label + ": " + one.target.name() + ": " + one.words());
  for (const std::string& key : plan.unsure) {
    report.note(label + ": " + key + " has several values and is none of the settings; they stay where they are");
  }
  if (!plan.moved.empty() && is != ChangeIs::kTried) {
    report.note(label + ": the SSIDs behind it have other interfaces and MAC addresses after the apply");
  }
}

Json json_of(const JudgedPlan& judged) {
  const SsidPlan& plan = judged.plan;
  Json changes = Json::array();
  for (const NamedChange& change : named(judged.fields)) {
    changes.push_back({{"key", change.target.key->name},
                       {"index", change.target.index},
                       {"before", json_value(*change.target.key, change.before)},
                       {"after", json_value(*change.target.key, change.after)}});
  }
  Json moved = Json::array();
  for (const MovedSsid& one : plan.moved) moved.push_back({{"name", one.name}, {"from", one.from}, {"to", one.to}});
  Json records = Json::array();
  for (const wifimgr_attr_record& record : plan.records) records.push_back(key_of(record));
  return {{"band", label_of(plan.band)},
          {"ssid", plan.ssid},
          {"interface", interface_of(plan.band, plan.ssid - 1)},
          {"name", plan.name},
          {"count", plan.count},
          {"changes", std::move(changes)},
          {"moved", std::move(moved)},
          {"added_records", std::move(records)}};
}

}  // namespace wlanctl

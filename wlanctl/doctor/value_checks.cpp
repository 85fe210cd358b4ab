// What the band's store holds: whether a save would keep it, and whether the gateway can serve it.
#include <algorithm>
#include <cstdlib>
#include <set>

#include "wifimgr_lib.h"
#include "wlanctl/base/text.h"
#include "wlanctl/check/dat_check.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/doctor/checks.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/library/detached_store.h"
#include "wlanctl/library/query.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

constexpr char kStore[] = "store";
constexpr char kWps[] = "WPS";

// More at once help nobody.
constexpr size_t kMostShown = 8;

using Table = std::vector<wifimgr_attr_record>;

std::string value_of(const std::vector<StoreRecord>& records, const std::string& dat_key, size_t field) {
  const auto found =
      std::find_if(records.begin(), records.end(), [&](const StoreRecord& one) { return one.key == dat_key; });
  return found != records.end() && field < found->fields.size() ? found->fields[field] : "";
}

// As the library counts them: none where there is no count.
int served_ssids(const std::vector<StoreRecord>& records) {
  const long count = std::strtol(value_of(records, kSsidCount, 0).c_str(), nullptr, 10);
  return static_cast<int>(std::clamp(count, 0L, static_cast<long>(WIFIMGR_FIELDS)));
}

std::string first_of(const std::vector<std::string>& all) {
  std::vector<std::string> names(all.begin(), all.begin() + static_cast<ptrdiff_t>(std::min(kMostShown, all.size())));
  if (all.size() > kMostShown) names.push_back("and " + std::to_string(all.size() - kMostShown) + " more");
  return joined(names, ", ");
}

// What a save would write, made of a copy: nobody's lock is taken.
std::optional<std::string> text_of_save(Band band, const Table& table, std::string* reason) {
  const DetachedStore store(band, table);
  const ShellScope nothing_runs(ShellMode::kDrop);
  std::optional<std::string> text;
  (void)call_quietly(
      [&] {
        text = saved_text(band);
        return text.has_value();
      },
      reason);
  return text;
}

// Why a save is refused.
std::string long_lines(const std::vector<StoreRecord>& records, int served) {
  constexpr size_t kLongest = WIFIMGR_DAT_LINE_SIZE - 2;  // without the line's end and the text's
  const auto ssids = static_cast<size_t>(served);
  std::vector<std::string> keys;
  for (const StoreRecord& record : records) {
    const std::vector<std::string> saved(
        record.fields.begin(), record.fields.begin() + static_cast<ptrdiff_t>(std::min(ssids, record.fields.size())));
    const size_t length = record.key.size() + 1 + joined(saved, ";").size();
    if (length > kLongest) keys.push_back("the line of " + record.key + " would have " + count_of(length, "character"));
  }
  return keys.empty() ? "what a save would write" : first_of(keys);
}

// Told elsewhere, or of the file rather than of a value.
bool is_of_a_value(const DatFinding& finding) {
  return finding.kind != Finding::kDuplicateKey && finding.kind != Finding::kUnknownKey &&
         severity_of(finding.kind) != Severity::kNote;
}

// "AuthMode:2"; the file's word where no setting has it.
std::string name_of(const DatFinding& finding) {
  const std::optional<Target> target =
      target_of_field(finding.key, finding.field > 0 ? static_cast<size_t>(finding.field) - 1 : 0);
  if (!target) return finding.key;
  return finding.field > 0 || is_numbered_dat_key(finding.key) ? target->name() : target->key->name;
}

void tell(Ill ill, Band band, const std::vector<DatFinding>& findings, Diagnosis& diagnosis) {
  for (size_t i = 0; i < std::min(kMostShown, findings.size()); ++i) {
    diagnosis.ill(ill, kStore, band, name_of(findings[i]) + ": " + findings[i].reason);
  }
  if (findings.size() > kMostShown) {
    diagnosis.ill(ill, kStore, band, count_of(findings.size() - kMostShown, "more value"));
  }
}

// Those that a setter would look for. An SSID without a name was counted before its keys were made.
void check_keys(Band band, const std::vector<StoreRecord>& records, int ssids, Diagnosis& diagnosis) {
  static const Key* const kName = find_key("SSID");
  std::set<std::string> there;
  for (const StoreRecord& record : records) there.insert(record.key);
  std::vector<bool> is_made(static_cast<size_t>(ssids) + 1, true);
  for (int ssid = 1; ssid <= ssids; ++ssid) {
    is_made[static_cast<size_t>(ssid)] = there.contains(dat_key_of(*kName, ssid));
    if (!is_made[static_cast<size_t>(ssid)]) {
      diagnosis.ill(Ill::kStoreSsid, kStore, band, "SSID " + std::to_string(ssid));
    }
  }
  std::vector<std::string> missing;
  for (const Key& key : all_keys()) {
    if (!key.is_on(band)) continue;
    const bool is_numbered = key.numbering != Numbering::kShared;
    const int last = !is_numbered ? 1 : key.scope == Scope::kSsid ? ssids : kLinks;
    for (int i = 1; i <= last; ++i) {
      const std::string dat_key = dat_key_of(key, key.scope == Scope::kBand ? -1 : i);
      const bool is_told = key.scope == Scope::kSsid && is_numbered && !is_made[static_cast<size_t>(i)];
      if (!is_told && !there.contains(dat_key)) missing.push_back(dat_key);
    }
  }
  diagnosis.add(!missing.empty(), Ill::kStoreKeys, kStore, band,
                missing.empty() ? "its keys' names" : first_of(missing));
}

// The library's service writes a script in these modes and states only, and says nothing in the others.
void check_wps(Band band, const std::vector<StoreRecord>& records, int ssids, Diagnosis& diagnosis) {
  for (int ssid = 1; ssid <= ssids; ++ssid) {
    const auto field = static_cast<size_t>(ssid) - 1;
    const std::string mode = value_of(records, "WscConfMode", field);
    const std::string status = value_of(records, "WscConfStatus", field);
    const std::string which = "SSID " + std::to_string(ssid);
    if (mode.empty() || mode == "0") continue;
    const bool is_served = mode == "1" || mode == "2" || mode == "7";
    diagnosis.add(!is_served, Ill::kWpsMode, kWps, band, which + ", mode " + mode);
    if (is_served) {
      diagnosis.add(status != "1" && status != "2", Ill::kWpsStatus, kWps, band,
                    which + ", WscConfStatus " + (status.empty() ? "empty" : status));
    }
  }
}

}  // namespace

void check_values(Band band, const Table& table, Diagnosis& diagnosis) {
  const std::vector<StoreRecord> records = records_of(table);
  const int ssids = served_ssids(records);
  check_keys(band, records, ssids, diagnosis);
  check_wps(band, records, ssids, diagnosis);
  std::string reason;
  const std::optional<std::string> text = text_of_save(band, table, &reason);
  if (!text) return diagnosis.ill(Ill::kStoreUnsaved, kStore, band, long_lines(records, ssids) + because(reason));
  std::vector<DatFinding> errors = check_dat(*text, {band});
  std::erase_if(errors, [](const DatFinding& finding) { return !is_of_a_value(finding); });
  const std::vector<DatFinding> lost = losses_at_save(records, ssids);
  errors.insert(errors.end(), lost.begin(), lost.end());
  const auto are_errors = [](const DatFinding& finding) { return severity_of(finding.kind) == Severity::kError; };
  const auto end = std::stable_partition(errors.begin(), errors.end(), are_errors);
  const std::vector<DatFinding> doubts(end, errors.end());
  errors.erase(end, errors.end());
  const std::vector<StoreRecord> file = records_of(parse_dat_file(band).value_or(Table()));
  const std::vector<DatFinding> cut = lists_to_be_cut(records, file, ssids);
  tell(Ill::kStoreErrors, band, errors, diagnosis);
  tell(Ill::kStoreDoubts, band, doubts, diagnosis);
  tell(Ill::kStoreListCut, band, cut, diagnosis);
  if (errors.empty() && doubts.empty() && cut.empty())
    diagnosis.well(kStore, band, "the values of " + count_of(records.size(), "key"));
}

}  // namespace wlanctl

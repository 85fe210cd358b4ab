#include "wlanctl/check/loss.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <set>

#include "wifimgr_lib.h"
#include "wlanctl/base/text.h"
#include "wlanctl/check/dat_text.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

int ssid_count_in(const DatText& text) {
  for (const DatLine& line : text.lines) {
    if (line.key != kSsidCount) continue;
    const long count = line.fields.empty() ? 0 : std::strtol(line.fields[0].c_str(), nullptr, 10);
    return static_cast<int>(std::clamp(count, 0L, static_cast<long>(WIFIMGR_FIELDS)));
  }
  return 0;
}

bool has_values_behind(const DatLine& line, int ssids) {
  return is_left_out(line.key, ssids) ||
         (!is_numbered_dat_key(line.key) && line.fields.size() > static_cast<size_t>(ssids));
}

}  // namespace

std::vector<DatFinding> losses_at_load(const std::string& bytes) {
  DatText text = read_dat_text(bytes);
  for (const DatLine& line : text.lines) {
    if (const std::string reason = second_value_reason(line); !reason.empty() && !is_access_list(line.key)) {
      text.findings.push_back({Finding::kSecondValue, line.number, line.key, 0, false, "", reason, ""});
    }
  }
  return text.findings;
}

std::vector<DatFinding> losses_at_save(const std::vector<StoreRecord>& records, int ssids) {
  std::vector<DatFinding> findings;
  for (const StoreRecord& record : records) {
    if (is_numbered_dat_key(record.key) || keeps_list_whole(record.key)) continue;
    const auto end =
        record.fields.begin() + std::min(std::ssize(record.fields), static_cast<ptrdiff_t>(std::max(ssids, 0)));
    const auto empty = std::find(record.fields.begin(), end, "");
    const auto lost = std::find_if(empty, end, [](const std::string& field) { return !field.empty(); });
    if (lost == end) continue;
    const auto number_of_field = [&](auto field) { return std::to_string(field - record.fields.begin() + 1); };
    findings.push_back({Finding::kEmptyField, 0, record.key, 0, false, "",
                        "value " + number_of_field(empty) + " is empty, and a save loses all behind it, from value " +
                            number_of_field(lost) + " on",
                        ""});
  }
  return findings;
}

std::vector<DatFinding> losses_of_store(Band band) {
  return losses_at_save(records_of(table_of_store(band)), ssid_count(band));
}

std::vector<DatFinding> losses_of_save(Band band, const std::optional<std::string>& text) {
  std::vector<DatFinding> losses = text ? losses_at_load(*text) : std::vector<DatFinding>();
  const std::vector<DatFinding> at_save = losses_of_store(band);
  losses.insert(losses.end(), at_save.begin(), at_save.end());
  return losses;
}

std::vector<DatFinding> added_losses(const std::vector<DatFinding>& before, const std::vector<DatFinding>& after) {
  std::vector<DatFinding> added;
  for (const DatFinding& loss : after) {
    const auto is_same = [&](const DatFinding& one) { return one.key == loss.key && one.reason == loss.reason; };
    if (std::none_of(before.begin(), before.end(), is_same)) added.push_back(loss);
  }
  return added;
}

std::vector<DatFinding> lists_cut_at_save(const std::vector<StoreRecord>& records, int ssids) {
  std::vector<DatFinding> findings;
  for (const StoreRecord& record : records) {
    if (record.fields.size() <= static_cast<size_t>(std::max(ssids, 1)) || !is_list_of_band(record.key)) continue;
    findings.push_back({Finding::kExcessField, 0, record.key, 0, false, "",
                        "a save keeps the first " + std::to_string(ssids) + " of its " +
                            std::to_string(record.fields.size()) + " values, as many as there are SSIDs",
                        ""});
  }
  return findings;
}

std::vector<DatFinding> lists_to_be_cut(const std::vector<StoreRecord>& records, const std::vector<StoreRecord>& file,
                                        int ssids) {
  const auto record_of = [](const std::vector<StoreRecord>& all, const std::string& key) {
    return std::find_if(all.begin(), all.end(), [&](const StoreRecord& one) { return one.key == key; });
  };
  std::vector<DatFinding> findings = lists_cut_at_save(records, ssids);
  std::erase_if(findings, [&](const DatFinding& one) {
    const auto kept = record_of(file, one.key);
    return kept != file.end() && std::ssize(kept->fields) == ssids &&
           std::equal(kept->fields.begin(), kept->fields.end(), record_of(records, one.key)->fields.begin());
  });
  return findings;
}

std::vector<DatFinding> losses_behind_count(const std::string& before, const std::string& after) {
  const DatText file = read_dat_text(before);
  const int served = ssid_count_in(file);
  const int kept = ssid_count_in(read_dat_text(after));
  std::vector<std::string> lost;
  if (kept == 0 || kept >= served) return {};
  for (const DatLine& line : file.lines) {
    // What is left out anyway is nobody's.
    int index = 0;
    const Key* const key = find_dat_key(line.key, &index);
    if (key == nullptr || key->scope != Scope::kSsid || key->numbering == Numbering::kShared) continue;
    if (!is_left_out(line.key, served) && is_left_out(line.key, kept)) {
      lost.push_back(std::to_string(line.number) + " " + line.key);
    }
  }
  if (lost.empty()) return {};
  return {{Finding::kLeftOut, 0, kSsidCount, 0, false, "",
           "with " + std::to_string(kept) + " instead of " + std::to_string(served) +
               " SSIDs the values of those behind are lost, in lines " + joined(lost, ", "),
           ""}};
}

std::vector<DatFinding> lines_without_record(const std::string& file, const std::vector<StoreRecord>& records) {
  const DatText text = read_dat_text(file);
  const int served = ssid_count_in(text);
  std::set<std::string> known = {kReloadFlag};
  for (const StoreRecord& record : records) known.insert(record.key);
  std::vector<DatFinding> lost;
  for (const DatLine& line : text.lines) {
    // As the loader cuts it.
    const std::string key = line.key.substr(0, WIFIMGR_KEY_SIZE - 1);
    if (key.empty() || is_left_out(key, served) || !known.insert(key).second) continue;
    lost.push_back(
        {Finding::kLeftOut, line.number, key, 0, false, "", "the store has no such key, the line would be lost", ""});
  }
  return lost;
}

bool save_loses_ssids(Band band, const std::optional<std::string>& text) {
  return text && !losses_behind_count(read_bytes(dat_path_of(band)).value_or(""), *text).empty();
}

bool has_unused_values(const std::string& bytes) {
  const DatText text = read_dat_text(bytes);
  const int ssids = ssid_count_in(text);
  return std::any_of(text.lines.begin(), text.lines.end(),
                     [&](const DatLine& line) { return has_values_behind(line, ssids); });
}

}  // namespace wlanctl

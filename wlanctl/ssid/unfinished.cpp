#include "wlanctl/ssid/unfinished.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>

#include "wifimgr_lib.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/record_text.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

constexpr char kFormat[] = "wlanctl-ssids";
constexpr int kVersion = 1;

// A field's texts before and behind the change are the first two values of a record.
std::string line_of(const FieldChange& change) {
  wifimgr_attr_record record = {};
  (void)std::snprintf(record.key, sizeof record.key, "%s", change.dat_key.c_str());
  (void)std::snprintf(record.field[0], sizeof record.field[0], "%s", change.before.c_str());
  (void)std::snprintf(record.field[1], sizeof record.field[1], "%s", change.after.c_str());
  return label_of(change.band) + (" " + std::to_string(change.field)) + " " + text_of_records({record});
}

std::optional<FieldChange> parse_line(const std::string& line) {
  const size_t first = line.find(' ');
  const size_t second = first == std::string::npos ? first : line.find(' ', first + 1);
  if (second == std::string::npos) return std::nullopt;
  const std::optional<Band> band = parse_band(line.substr(0, first));
  const auto field = number_in(line.substr(first + 1, second - first - 1));
  const auto records = parse_records(line.substr(second + 1));
  if (!band || !records || records->size() != 1) return std::nullopt;
  const wifimgr_attr_record& record = records->front();
  const auto text = [](const char* at, size_t most) { return std::string(at, strnlen(at, most)); };
  return FieldChange{*band, text(record.key, sizeof record.key), field ? static_cast<int>(*field) : -1,
                     text(record.field[0], sizeof record.field[0]), text(record.field[1], sizeof record.field[1])};
}

// None when there is no such file, or none of this boot.
std::optional<std::vector<FieldChange>> read_unfinished() {
  const auto text = read_state_file(place::kUnfinished, kFormat, kVersion);
  if (!text) return std::nullopt;
  const std::vector<std::string> lines = lines_of(*text);
  if (lines.empty() || lines[0] != this_boot()) return std::nullopt;
  std::vector<FieldChange> changes;
  for (size_t i = 1; i < lines.size(); ++i) {
    const auto change = parse_line(lines[i]);
    if (!change) return std::nullopt;
    changes.push_back(*change);
  }
  return changes;
}

std::string field_in_store(const FieldChange& change) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  (void)read_attr(number_of(change.band), change.field, change.dat_key.c_str(), text, sizeof text);
  return std::string(text, strnlen(text, sizeof text));
}

std::vector<FieldChange> of_band(const std::vector<FieldChange>& changes, Band band) {
  std::vector<FieldChange> found;
  std::copy_if(changes.begin(), changes.end(), std::back_inserter(found),
               [&](const FieldChange& change) { return change.band == band; });
  return found;
}

// A store that is gone has been made anew of its dat file, or will be. False when the band's cannot be had.
bool put_back_band(Band band, const std::vector<FieldChange>& changes, Report& report) {
  if (changes.empty() || !has_store(band)) return true;
  Report unheard;
  if (!open_store(band, unheard)) {
    report.note(std::string("a change of SSIDs ended in the middle, and the store of ") + label_of(band) +
                " cannot be had to put it back; the next wlanctl tries again");
    return false;
  }
  put_back(changes);
  report.note(std::string("a change of the SSIDs of ") + label_of(band) +
              " ended in the middle; its store is as it was before");
  return true;
}

}  // namespace

bool note_unfinished(const std::vector<FieldChange>& changes, Report& report) {
  std::string text = this_boot() + '\n';
  for (const FieldChange& change : changes) text += line_of(change);
  return write_state_file(place::kUnfinished, kFormat, kVersion, text, report);
}

bool forget_unfinished(Report& report) {
  if (remove_state_file(place::kUnfinished)) return true;
  report.problem({std::string("cannot remove ") + place::kUnfinished + ": " + std::strerror(errno),
                  "remove it, or the next wlanctl puts the values back"});
  return false;
}

bool is_in_store(const FieldChange& change) {
  return field_in_store(change) == change.after;
}

void put_back(const std::vector<FieldChange>& changes) {
  for (const FieldChange& change : changes) {
    if (!is_in_store(change)) continue;
    (void)update_attr(number_of(change.band), change.field, change.dat_key.c_str(), change.before.c_str());
  }
}

void finish_unfinished(Report& report) {
  if (!read_unfinished()) return;
  std::optional<ToolLock> lock;
  if (!ToolLock::is_held_here()) {
    lock.emplace();
    if (!*lock) return;
  }
  const auto changes = read_unfinished();
  if (!changes) return;
  const SignalHold hold;
  std::vector<FieldChange> left;
  for (const Band band : kBands) {
    const std::vector<FieldChange> of_this = of_band(*changes, band);
    if (!put_back_band(band, of_this, report)) left.insert(left.end(), of_this.begin(), of_this.end());
  }
  (void)(left.empty() ? forget_unfinished(report) : note_unfinished(left, report));
}

void tell_unfinished(Band band, Report& report) {
  const auto changes = read_unfinished();
  if (!changes || of_band(*changes, band).empty()) return;
  report.note(std::string("a change of the SSIDs of ") + label_of(band) +
              " is under way or ended in the middle; then the next wlanctl that changes something puts the store back");
}

}  // namespace wlanctl

#include "wlanctl/verbs/apply/file_guard.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <set>
#include <string>
#include <vector>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/base/report.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/difference.h"
#include "wlanctl/store/kept_file.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

// A file from another system has hundreds; the first ones tell what it is about.
constexpr size_t kMostTold = 8;

void tell(Band band, const std::string& where, const std::vector<DatFinding>& findings, const std::string& next,
          Report& report) {
  for (size_t i = 0; i < findings.size() && i < kMostTold; ++i) {
    const DatFinding& finding = findings[i];
    const std::string line = finding.line == 0 ? "" : ", line " + std::to_string(finding.line);
    const std::string key = finding.key.empty() ? "" : finding.key + ": ";
    const size_t others = findings.size() - kMostTold;
    const bool is_last = i + 1 == kMostTold && findings.size() > kMostTold;
    report.problem({where + line + ": " + key + finding.reason +
                        (is_last ? "; and so on, in " + std::to_string(others) + " more places" : ""),
                    next,
                    {{"band", label_of(band)},
                     {"line", finding.line == 0 ? Json() : Json(finding.line)},
                     {"dat_key", finding.key},
                     {"reason", finding.reason}}});
  }
}

// A list that is longer than a save can keep, unless it is what was applied already, or the file has no more of it:
// nobody can help that any more.
std::vector<DatFinding> new_lists_cut(Band band, const std::string& file) {
  const std::vector<std::string> changed = lists_not_in_force(band);
  std::vector<DatFinding> cut =
      lists_to_be_cut(records_of(table_of_store(band)), records_of(parse_dat_text(file)), ssid_count(band));
  std::erase_if(
      cut, [&](const DatFinding& one) { return std::find(changed.begin(), changed.end(), one.key) == changed.end(); });
  return cut;
}

// Lines that the write leaves out, unless they are told as those of SSIDs behind its count.
std::vector<DatFinding> lines_left_out(Band band, const std::string& file, const std::optional<std::string>& text) {
  std::vector<DatFinding> lines = lines_without_record(file, records_of(table_of_store(band)));
  if (!lines.empty() && text && !losses_behind_count(file, *text).empty()) {
    std::erase_if(lines, [&](const DatFinding& line) { return is_left_out(line.key, ssid_count(band)); });
  }
  return lines;
}

// Which of them nobody knows: the store was made before.
bool is_younger_than_store(Band band) {
  struct stat file = {};
  const time_t made = store_made_at(band);
  return made != 0 && stat(dat_path_of(band).c_str(), &file) == 0 && file.st_mtim.tv_sec > made;
}

std::set<std::string> names_in(const std::vector<Difference>& found) {
  std::set<std::string> names;
  for (const Difference& one : found) names.insert(one.name());
  return names;
}

// Values that came into the file by another way than the store, and that nobody has applied: those of an import into the
// file, where the store has what was applied, and those of others. Where nothing is known of that, all that the file has
// got since the store was made. Those of SSIDs that are served come first.
std::vector<std::string> values_of_file_alone(Band band, const std::string& file) {
  const auto applied = applied_by_tool(band);
  if (!applied && !is_younger_than_store(band)) return {};
  const std::vector<StoreRecord> there = records_of(parse_dat_text(file));
  const std::vector<StoreRecord> store = records_of(table_of_store(band));
  const std::vector<StoreRecord> in_force = applied ? records_of(*applied) : store;
  const std::set<std::string> new_in_file = names_in(served_differences(there, in_force, DatFile::kLeft));
  const std::set<std::string> set_since =
      is_in_force_known(band) ? names_in(served_differences(store, in_force)) : std::set<std::string>();
  const auto served = static_cast<size_t>(std::max(ssid_count(band), 1));
  std::vector<std::string> alone;
  ptrdiff_t served_alone = 0;
  for (const Difference& one : served_differences(there, store, DatFile::kLeft)) {
    const std::string name = one.name();
    const bool has_record =
        std::any_of(store.begin(), store.end(), [&](const StoreRecord& record) { return record.key == one.dat_key; });
    if (!has_record || !new_in_file.contains(name) || set_since.contains(name)) continue;
    const bool is_served = ssid_of(one.dat_key, one.fields > 1 ? one.field : 0) <= served;
    alone.insert(is_served ? alone.begin() + served_alone++ : alone.end(), name);
  }
  return alone;
}

constexpr char kUnusedValues[] = "values of SSIDs behind BssidNum, which a save leaves out";

void note_overwritten(Band band, const std::vector<std::string>& values, Report& report) {
  const size_t named = std::min(values.size(), kMostTold);
  const std::vector<std::string> first(values.begin(), values.begin() + static_cast<ptrdiff_t>(named));
  report.note(dat_path_of(band) + " had values that the store does not have, of " + joined(first, ", ") +
              (values.size() > named ? " and " + std::to_string(values.size() - named) + " more" : "") +
              ": the store's are written in their place, and the file as it was is kept in " + kept_path_of(band));
}

}  // namespace

bool may_write_file(Band band, const std::optional<std::string>& text, Report& report, Writer writer) {
  const size_t before = report.problems().size();
  const std::string label = label_of(band);
  const std::string path = dat_path_of(band);
  const std::string insist = "or insist with --force: what cannot be loaded is lost";
  if (const std::string reason = reason_against_dat_file(band); !reason.empty()) {
    report.problem({path + " cannot be written" + reason, "put the dat file back in its place", about(band)});
    return false;
  }
  // Found here, and not by the first file of the tool's own in the same folder.
  if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT) {
    report.problem({path + " cannot be written: " + std::strerror(errno),
                    "is its file system mounted read-only? nothing was changed", about(band)});
    return false;
  }
  const std::string file = read_bytes(path).value_or("");
  tell(band, path, losses_at_load(file), "mend the line and wlanctl revert " + label + ", " + insist, report);
  if (writer == Writer::kLibrary) {
    tell(band, "the store of " + label, losses_of_store(band), "set a value for each SSID, " + insist, report);
    tell(band, "the store of " + label, new_lists_cut(band, file),
         "shorten the list, or insist with --force, and the file has it without the rest", report);
  }
  if (text) {
    tell(band, "the store of " + label, losses_at_load(*text), "set another value, " + insist, report);
    tell(band, path, losses_behind_count(file, *text), "set BssidNum back, or insist with --force", report);
  }
  tell(band, path, lines_left_out(band, file, text),
       "wlanctl revert " + label +
           " takes the file into the store, in place of what is set there; or insist with "
           "--force, and the file as it was is kept",
       report);
  return report.problems().size() == before;
}

bool may_go_on(const Report& objections, bool force, Report& report) {
  for (const Problem& problem : objections.problems()) {
    if (force) {
      report.note("all the same, by --force: " + problem.message);
    } else {
      report.problem(problem);
    }
  }
  return force || !objections.has_problems();
}

void refuse_unsound(Band band, const std::string& file, Report& report) {
  tell(band, dat_path_of(band), losses_at_load(file), "mend the line, or insist with --force", report);
}

void refuse_repeated(Band band, const std::vector<DatFinding>& lines, Report& report) {
  tell(band, dat_path_of(band), lines, "take the line out, and revert again", report);
}

bool keep_file_of_now(Band band, const std::optional<std::string>& text, Report& report) {
  const std::optional<std::string> file = read_bytes(dat_path_of(band));
  if (!file) return true;
  // What may_write_file tells was insisted on.
  const std::vector<DatFinding> told = new_lists_cut(band, *file);
  for (const DatFinding& cut : lists_cut_at_save(records_of(table_of_store(band)), ssid_count(band))) {
    const auto is_same = [&](const DatFinding& one) { return one.key == cut.key; };
    if (std::any_of(told.begin(), told.end(), is_same)) continue;
    report.note(cut.key + " of " + label_of(band) + ": " + cut.reason);
  }
  const bool loses = !losses_at_load(*file).empty() || !losses_of_store(band).empty() ||
                     (text && (!losses_at_load(*text).empty() || !losses_behind_count(*file, *text).empty())) ||
                     !lines_left_out(band, *file, text).empty();
  const std::vector<std::string> overwritten = values_of_file_alone(band, *file);
  if (!loses && overwritten.empty() && !has_unused_values(*file)) return true;
  if (!keep_file_anyway(band, *file, report)) return false;
  if (!overwritten.empty()) {
    note_overwritten(band, overwritten, report);
  } else if (loses) {
    report.note(dat_path_of(band) + " as it was is kept in " + kept_path_of(band));
  } else {
    report.note(dat_path_of(band) + " had " + kUnusedValues + "; as it was it is kept in " + kept_path_of(band));
  }
  return true;
}

void note_unused_values(Band band, Report& report) {
  if (!has_unused_values(read_bytes(dat_path_of(band)).value_or(""))) return;
  report.note(dat_path_of(band) + " has " + kUnusedValues + "; it is kept in " + kept_path_of(band) + " then");
}

bool keep_file_anyway(Band band, const std::string& file, Report& report) {
  if (!keep_dat_bytes(band, file)) {
    report.problem({"cannot keep the dat file of " + std::string(label_of(band)) + " as it is in " +
                        kept_path_of(band) + ": " + std::strerror(errno),
                    "is there room, and the right to? nothing was written", about(band)});
    return false;
  }
  return true;
}

}  // namespace wlanctl

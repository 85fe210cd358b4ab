#include "wlanctl/apply/dry_run_text.h"

#include <algorithm>
#include <map>
#include <set>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/dry_run.h"
#include "wlanctl/base/colour.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/keys/key.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/dat_file.h"

namespace wlanctl {
namespace {

constexpr const char* kWeights[] = {
    "an apply would save the dat file and tell the driver, without a restart",
    "an apply would restart the radio",
    "an apply would restart the radio; a reboot is recommended then",
};

Json changes_of(std::vector<LineChange>& changes) {
  Json shown = Json::array();
  for (const LineChange& change : changes) {
    shown.push_back({{"change", change.added ? "added" : "removed"}, {"line", change.line}});
  }
  return shown;
}

// Comments and blank lines go with every save: for a person they only stand in the way.
bool is_prose(const LineChange& change) {
  return !change.added && (change.line.empty() || change.line[0] == '#');
}

std::string key_in(const std::string& line) {
  return line.substr(0, line.find('='));
}

// Whether a line goes, or gets shorter, only because it is of SSIDs that the band does not have; the same goes with every
// save. `kept` is what becomes of it.
bool is_of_no_ssid(const std::string& line, const std::string* kept, int ssids) {
  int index = 0;
  const Key* const key = find_dat_key(key_in(line), &index);
  if (key == nullptr || key->scope != Scope::kSsid) return false;
  if (key->numbering != Numbering::kShared) return kept == nullptr && index > ssids;
  return kept != nullptr && line.starts_with(*kept + ';');
}

void print_changes(const std::vector<LineChange>& changes, int ssids, Text& text) {
  std::map<std::string, std::string> kept;
  for (const LineChange& change : changes) {
    if (change.added) kept[key_in(change.line)] = change.line;
  }
  size_t prose = 0;
  std::set<std::string> shortened;
  for (const LineChange& change : changes) {
    if (is_prose(change)) ++prose;
    if (change.added || is_prose(change)) continue;
    const auto found = kept.find(key_in(change.line));
    if (is_of_no_ssid(change.line, found == kept.end() ? nullptr : &found->second, ssids)) {
      shortened.insert(key_in(change.line));
    }
  }
  for (const LineChange& change : changes) {
    if (is_prose(change) || shortened.contains(key_in(change.line))) continue;
    text << "    "
         << painted(change.added ? Paint::kGreen : Paint::kRed, (change.added ? '+' : '-') + printable(change.line))
         << '\n';
  }
  if (changes.empty()) text << "    (stays as it is)\n";
  if (prose + shortened.size() > 0) {
    text << "    (--json shows too: " << prose << " comments and blank lines and, in " << shortened.size()
         << " lines,\n    values behind the last SSID, which a save leaves out)\n";
  }
}

void print_lines(const std::vector<std::string>& lines, Text& text) {
  for (const std::string& line : lines) text << "    " << printable(line) << '\n';
}

}  // namespace

bool tell_dry_run(Band band, const Plan& plan, bool always_commit, bool secrets, Report& report) {
  const std::string label = label_of(band);
  std::optional<DryRun> run = DryRun();
  if (!plan.nothing && !(run = dry_run(band, always_commit, report))) return false;
  const Applied& applied = run->applied;
  if (!secrets) {
    for (LineChange& change : run->dat_changes) change.line = masked_dat_line(change.line);
  }
  Json scripts = Json::array();
  Text& text = report.text();
  if (plan.nothing) {
    text << label << ": an apply would run nothing; the store, the dat file and what is in force\n  agree\n";
  } else {
    text << label << ": " << kWeights[std::min(applied.weight, 2)] << "\n  commands, in their order\n";
    print_lines(run->commands, text);
    text << "  changed lines of " << dat_path_of(band) << '\n';
    print_changes(run->dat_changes, static_cast<int>(applied.scripts.size()), text);
  }
  for (const Script& script : applied.scripts) {
    const std::vector<std::string> lines = lines_of(secrets ? script.text : masked_script(script.text));
    text << "  " << script.path << " for SSID " << script.ssid << '\n';
    print_lines(lines, text);
    scripts.push_back({{"ssid", script.ssid}, {"path", script.path}, {"lines", lines}});
  }
  const char* const action = plan.nothing ? "none" : applied.committed ? "commit" : "save";
  report.data()["bands"].push_back({{"band", label},
                                    {"apply", word_for_apply(plan.nothing, applied.weight)},
                                    {"action", action},
                                    {"commands", run->commands},
                                    {"dat", {{"path", dat_path_of(band)}, {"changes", changes_of(run->dat_changes)}}},
                                    {"scripts", std::move(scripts)}});
  return true;
}

}  // namespace wlanctl

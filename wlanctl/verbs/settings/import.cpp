// import: settings from a file into the live stores, all of them or nothing.
#include <algorithm>

#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/check/dat_check.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/exchange/reader.h"
#include "wlanctl/exchange/storing.h"
#include "wlanctl/exchange/wishes.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// A band's part of an import.
struct Part {
  Band band = Band::k2_4G;
  std::vector<LeftAlone> left;
  StorePlan plan;
  std::vector<ValueChange> changes;
};

void refuse_file(const std::string& file, const std::string& message, const std::string& next, Report& report) {
  report.problem({message, next, {{"file", name_of_file(file)}}});
}

// The bands to import; none with a problem.
std::vector<Band> wanted_bands(const SettingsText& text, const Words& words, Report& report) {
  const std::optional<Band> only = parse_band(words.band);
  const std::string file = name_of_file(words.file);
  if (!only) {
    if (text.bands.empty() && text.problems.empty()) {
      refuse_file(words.file, "there are no settings in " + file, "export some first", report);
    }
    return text.bands;
  }
  if (std::find(text.bands.begin(), text.bands.end(), *only) != text.bands.end()) return {*only};
  if (text.problems.empty()) {
    const std::string there = text.bands.empty() ? "no band" : std::string(label_of(text.bands.front())) + " only";
    refuse_file(words.file,
                "there are no settings of " + std::string(label_of(*only)) + " in " + file + ", but of " + there,
                "name the band that it has, or none", report);
  }
  return {};
}

// Both bands' dat files have the same name and keys.
void note_other_band(const Words& words, const SettingsText& text, Report& report) {
  const std::optional<Band> own = band_of_dat_path(words.file);
  if (!own || words.band.empty() || text.format != std::string("dat") || *own == parse_band(words.band)) return;
  report.note(words.file + " is a dat file of " + label_of(*own) + " by its path, and goes to " +
              label_of(*parse_band(words.band)));
}

Part judged(Band band, const SettingsText& text, const Words& words, Report& report) {
  Wishes wishes = wishes_of(text, words.file, band);
  if (words.replace) {
    for (Wish& wish : default_wishes(text, words.file, band)) wishes.wishes.push_back(std::move(wish));
  }
  Part part = {band, std::move(wishes.left), {}, {}};
  part.plan = try_out(band, wishes.wishes, Order::kAsNeeded, words.force, report);
  part.changes = changes_of(part.plan);
  return part;
}

std::string next_of(const Part& part) {
  if (part.changes.empty()) return "";
  return "wlanctl apply " + std::string(label_of(part.band)) + (part.plan.loses_ssids ? " --force" : "");
}

void tell_data(const Words& words, const SettingsText& text, const std::vector<Part>& parts, Report& report) {
  Json bands = Json::array();
  for (const Part& part : parts) {
    Json left = Json::array();
    for (const LeftAlone& one : part.left) left.push_back(one.name);
    bands.push_back({{"band", label_of(part.band)},
                     {"changes", json_of(part.changes)},
                     {"left", std::move(left)},
                     {"next", words.dry_run ? "" : next_of(part)}});
  }
  report.data() = {{"file", name_of_file(words.file)},
                   {"format", text.format},
                   {"dry_run", words.dry_run},
                   {"bands", std::move(bands)}};
}

std::string next_words(const Part& part) {
  if (!part.plan.loses_ssids) return "save or apply brings them to the dat file";
  return next_of(part) + " brings them\n  to the dat file, which has more SSIDs now";
}

void tell_done(const Words& words, const std::vector<Part>& parts, Report& report) {
  for (const Part& part : parts) {
    for (const LeftAlone& one : part.left) report.note(place_in(one.file, one.line) + ": " + one.reason);
    if (part.changes.empty()) {
      report.text() << label_of(part.band) << ": nothing changes; the store has it all\n";
    } else {
      report.text() << text_of(part.band, part.changes) << label_of(part.band) << ": "
                    << count_of(part.changes.size(), "value")
                    << (words.dry_run ? " would be stored\n" : " stored; " + next_words(part) + '\n');
    }
  }
}

int run(const Words& words, Report& report) {
  if (words.replace && words.merge) {
    report.problem({"--replace and --merge contradict each other", "say one of them; --merge is meant without"});
    return kWrongUsage;
  }
  const std::optional<std::string> bytes = read_settings_file(words.file, report);
  if (!bytes) return kWrongUsage;
  const std::optional<Band> band = words.band.empty() ? band_of_dat_path(words.file) : parse_band(words.band);
  const SettingsText text = read_settings(*bytes, band);
  const std::vector<Band> bands = wanted_bands(text, words, report);
  note_other_band(words, text, report);
  report_problems(words.file, text, report);
  if (bands.empty()) return kRefused;

  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  for (const Band one : bands) {
    if (!(words.dry_run ? look_at_band(one, report) : open_band(one, report))) return kNoStore;
    note_waiting(one, report);
  }
  for (const std::string& note : text.notes) report.note(place_in(words.file, 0) + ": " + note);
  std::vector<Part> parts;
  for (const Band one : bands) parts.push_back(judged(one, text, words, report));
  if (report.has_problems()) return kRefused;
  tell_data(words, text, parts, report);
  if (!words.dry_run) {
    std::vector<StorePlan> plans;
    for (const Part& part : parts) plans.push_back(part.plan);
    if (!store_plans("import", plans, report)) {
      report.data() = Json::object();
      return kRefused;
    }
  }
  tell_done(words, parts, report);
  return report.has_problems() ? kNoAnswer : kDone;
}

constexpr Word kWords[] = {
    {"FILE",
     &Words::file,
     "What export wrote, or a dat file; - is standard input",
     {.required = true, .offers = "file"}},
    {"BAND",
     &Words::band,
     "2.4g or 5g, of a file with both or a dat file",
     {.refusal = word::band_refusal, .offers = "band"}},
    {"--merge", &Words::merge, "Change only what the file has; so it is without this, too"},
    {"--replace", &Words::replace, "Set what the file lacks to its default"},
    {"--dry-run", &Words::dry_run, "Only judge, and show what would change"},
    {"--force", &Words::force, "Store what is dangerous, would be lost, or cannot be served"},
    word::kCommandTimeout,
    word::kWait,
};

}  // namespace

const Verb kImport = {"import", "Bring settings from a file into the live store",
                      "All of them or none, of both bands: every refusal is told with its line. What\n"
                      "nothing sets, such as MacAddress and keys of the dat file without a setting, is\n"
                      "compared; where it differs it stays as it is, and that is told. Secrets that the\n"
                      "export left out stay as they are. save or apply brings the settings to the dat\n"
                      "file.\n\n"
                      "Examples:\n"
                      "  wlanctl import gateway.json --dry-run\n"
                      "  wlanctl import radio.dat 5g --replace\n"
                      "  wlanctl export 2.4g | ssh other wlanctl import -",
                      kWords, run};

}  // namespace wlanctl

// import: settings from a file into the live stores, all of them or nothing.
#include <algorithm>

#include "wlanctl/base/report.h"
#include "wlanctl/check/dat_check.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/exchange/reader.h"
#include "wlanctl/exchange/storing.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/verbs/settings/import_part.h"
#include "wlanctl/verbs/settings/import_to_file.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

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

std::string next_words(const ImportPart& part) {
  if (!part.plan.loses_ssids) return "; save or apply brings them to the dat file";
  return "; " + part.next + " brings them\n  to the dat file, which has more SSIDs now";
}

void tell_done(const Words& words, const std::vector<ImportPart>& parts, Report& report) {
  for (const ImportPart& part : parts) {
    tell_left(part, report);
    if (part.changes.empty()) {
      report.text() << label_of(part.band) << ": nothing changes; the store has it all\n";
    } else {
      tell_changes(part, words, words.dry_run ? "" : next_words(part), report);
    }
  }
}

ImportPart judged(Band band, const SettingsText& text, const Words& words, Report& report) {
  ImportPart part = judged_import(band, text, words, report);
  for (const wifimgr_attr_record& record : part.plan.records) part.added.push_back(key_of(record));
  if (part.changes.empty()) return part;
  part.next = "wlanctl apply " + std::string(label_of(band)) + (part.plan.loses_ssids ? " --force" : "");
  return part;
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
  if (words.to_file) return import_to_file(text, bands, words, report);
  for (const Band one : bands) {
    if (!(words.dry_run ? look_at_band(one, report) : open_band(one, report))) return kNoStore;
    note_waiting(one, report);
  }
  note_all(text, words, report);
  std::vector<ImportPart> parts;
  for (const Band one : bands) parts.push_back(judged(one, text, words, report));
  if (report.has_problems()) return kRefused;
  tell_data(words, text, parts, report);
  if (!words.dry_run) {
    std::vector<StorePlan> plans;
    for (const ImportPart& part : parts) plans.push_back(part.plan);
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
    {"--to-file", &Words::to_file, "Into the dat file, with the lines that it lacks"},
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
                      "A store has only the keys of the dat file that it was made of. --to-file adds\n"
                      "the missing ones: it writes the dat file, a gateway's with no settings yet too,\n"
                      "and says how they come into the live store. With --force it holds also what the\n"
                      "library refuses, as a dat file may.\n\n"
                      "Examples:\n"
                      "  wlanctl import gateway.json --dry-run\n"
                      "  wlanctl import radio.dat 5g --replace\n"
                      "  wlanctl import gateway.json --to-file\n"
                      "  wlanctl export 2.4g | ssh other wlanctl import -",
                      kWords, run};

}  // namespace wlanctl

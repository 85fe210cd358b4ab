// export: the settings as text, to keep, to compare, and to bring them to another gateway.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "wlanctl/base/json_print.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/exchange/writer.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/settings/output_place.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr char kJsonFormat[] = "json";
constexpr char kDatFormat[] = "dat";

std::string formats() {
  return std::string(kJsonFormat) + "," + kDatFormat;
}

// A table without it is none that a dat file was loaded into: somebody wrote over it. Its export would take the place of
// a good one.
bool refuse_without_count(Band band, Report& report) {
  if (read_raw_value(band, *find_key(kSsidCount), -1)) return false;
  const std::string label = label_of(band);
  const bool is_file = is_store_detached(band);
  report.problem(
      {(is_file ? "the dat file of " : "the store of ") + label + " has no " + kSsidCount + ", and nothing is exported",
       is_file ? "wlanctl check " + dat_path_of(band) + " tells what is wrong with it"
               : "wlanctl doctor " + label + " tells what is wrong with it; wlanctl revert " + label +
                     " --force fills it anew",
       about_key(kSsidCount, band)});
  return true;
}

// Those of which there is something to export; where that is not all of them, the exit code says so.
std::vector<Band> look_at_all(const std::vector<Band>& bands, int* code, Report& report) {
  std::vector<Band> found = look_at_bands(bands, code, report);
  std::erase_if(found, [&](Band band) { return refuse_without_count(band, report); });
  if (found.size() < bands.size()) *code = kNoStore;
  for (const Band band : found) {
    const std::optional<std::string> count = senseless_count(band);
    if (!count) continue;
    report.note("the count of SSIDs of " + std::string(label_of(band)) + " is \"" + *count +
                "\", which is none; no SSID is in the export");
  }
  return found;
}

// A file is replaced as a whole, and a link's target rather than the link. What is no file stays as it is.
bool write_output(const std::string& path, const std::string& text, Report& report) {
  const std::string target = place_of_output(path);
  struct stat status = {};
  const bool is_there = stat(target.c_str(), &status) == 0;
  std::string reason;
  if (is_there && !S_ISREG(status.st_mode)) {
    reason = "it is no file";
  } else if (!write_own_file(target, text)) {
    reason = std::strerror(errno);
  }
  if (reason.empty()) return true;
  report.problem(
      {"cannot write " + path + ": " + reason, "name another file, in a folder that is there", {{"file", path}}});
  return false;
}

// At a terminal no byte of the store does what it likes.
std::string shown(const std::string& text) {
  if (isatty(STDOUT_FILENO) == 0) return text;
  std::string lines;
  for (const std::string& line : lines_of(text)) lines += printable(line) + '\n';
  return lines;
}

int run(const Words& words, Report& report) {
  const bool is_dat = words.format == kDatFormat;
  if (is_dat && words.band.empty()) {
    report.problem({"a dat file is of one band", "say export 2.4g or export 5g"});
    return kWrongUsage;
  }
  const bool is_in_file = !words.output.empty();
  if (is_in_file && refuse_output(words.output, report)) return kRefused;
  int code = kDone;
  const std::vector<Band> bands = look_at_all(bands_of(words.band), &code, report);
  if (bands.empty()) return code;
  if (is_in_file && code != kDone) {
    report.problem({printable(words.output) + " is not written, as not all of it can be had",
                    std::string("wlanctl export ") + label_of(bands.front()) + " --output FILE writes what there is",
                    {{"file", words.output}}});
    return code;
  }
  const size_t problems = report.problems().size();
  const Secrets secrets = words.no_secrets ? Secrets::kLeftOut : Secrets::kShown;
  Json document;
  std::string text;
  if (is_dat) {
    text = dat_of_settings(bands.front(), secrets, report);
    document = text;
  } else {
    document = json_of_settings(bands, secrets, report);
    text = printed(document, Layout::kIndented) + '\n';
  }
  if (report.problems().size() > problems) return kRefused;
  if (is_in_file && !write_output(words.output, text, report)) return kRefused;
  if (is_in_file) {
    report.text() << "the settings of " << (bands.size() == 1 ? label_of(bands.front()) : "both bands") << " are in "
                  << printable(words.output) << '\n';
  } else {
    report.text() << shown(text);
  }
  report.data() = {{"format", words.format},
                   {"output", is_in_file ? Json(words.output) : Json()},
                   {"settings", is_in_file ? Json() : std::move(document)}};
  return code;
}

constexpr Word kWords[] = {
    word::kBand,
    {"--format", &Words::format, "json, or dat of one band", {.choices = formats, .shows_default = true}},
    {"--no-secrets", &Words::no_secrets, "Leave out passphrases and keys; import keeps those that are there"},
    {"--output", &Words::output, "Write a file, for its owner alone", {.value_name = "FILE", .offers = "file"}},
};

}  // namespace

const Verb kExport = {"export",
                      "Print the settings, for a file or another gateway",
                      "Of the live store or, where there is none, of the dat file. Passphrases and keys\n"
                      "are in it unless --no-secrets is given. The SSIDs that are served, no others.\n"
                      "JSON keeps every byte; where a dat file cannot, it is refused. wlanctl import\n"
                      "takes both.\n\n"
                      "Examples:\n"
                      "  wlanctl export --output gateway.json\n"
                      "  wlanctl export 5g --format dat --no-secrets",
                      kWords,
                      run,
                      {},
                      true};

}  // namespace wlanctl

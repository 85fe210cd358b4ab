// check: dat files, without a store and without touching anything.
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/check/dat_check.h"
#include "wlanctl/files/input.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

Json shown(const DatFinding& finding) {
  const auto number_or_null = [](int number) { return number == 0 ? Json() : Json(number); };
  return {{"line", number_or_null(finding.line)},
          {"key", finding.key},
          {"field", number_or_null(finding.field)},
          {"severity", word_for(severity_of(finding.kind))},
          {"kind", word_for(finding.kind)},
          {"value", finding.has_value ? finding.value : Json()},
          {"reason", finding.reason},
          {"accepted", finding.accepted.empty() ? Json() : Json(finding.accepted)}};
}

constexpr size_t kIndentation = 4;  // of what a line has no room for

// Like a compiler's: an editor can jump to it.
std::string line_of(const std::string& file, const DatFinding& finding) {
  std::string text = file + ":";
  if (finding.line != 0) text += std::to_string(finding.line) + ":";
  if (!finding.key.empty()) {
    text += " " + finding.key;
    if (finding.field != 0) text += ":" + std::to_string(finding.field);
    text += ":";
  }
  return printable(text) + " " + painted_word(severity_of(finding.kind)) + ": " + printable(finding.reason);
}

struct Counts {
  size_t of[3] = {};
  size_t& operator[](Severity severity) { return of[static_cast<size_t>(severity)]; }

  int exit_code() {
    if ((*this)[Severity::kError] > 0) return kRefused;
    return (*this)[Severity::kWarning] > 0 ? kWarned : kDone;
  }
};

void tell_counts(const std::string& file, Counts& counts, Report& report) {
  std::vector<std::string> words;
  for (const Severity severity : {Severity::kError, Severity::kWarning}) {
    if (counts[severity] > 0) words.push_back(count_of(counts[severity], word_for(severity)));
  }
  if (words.empty()) return;
  report.problem({joined(words, " and ") + " in " + file, "mend the lines and check again", {{"file", file}}});
}

// Adds to the exit code.
void check(const std::string& file, const std::string& band_text, Report& report, Json& files, int* code) {
  const Input input = read_input(file);
  if (!input.bytes) {
    report.problem(
        {"cannot read " + file + ": " + input.reason, "is it there, a file, and readable?", {{"file", file}}});
    *code = worse_of(*code, kWrongUsage);
    return;
  }
  const std::optional<Band> band = band_text.empty() ? band_of_dat_path(file) : parse_band(band_text);
  if (!band) {
    report.note("which band " + file + " is for is not known: a value counts as good when one of them takes it; " +
                "say --band");
  }
  const std::vector<DatFinding> findings = check_dat(*input.bytes, band ? std::vector<Band>{*band} : bands_of(""));
  Json shown_findings = Json::array();
  Counts counts;
  for (const DatFinding& finding : findings) {
    const Severity severity = severity_of(finding.kind);
    ++counts[severity];
    shown_findings.push_back(shown(finding));
    if (severity != Severity::kNote) report.text() << text_lines(line_of(file, finding), kIndentation);
  }
  const std::string name = printable(file) + (band ? std::string(" (") + label_of(*band) + ")" : "");
  if (findings.empty()) report.text() << name << ": nothing found\n";
  if (const size_t notes = counts[Severity::kNote]; notes > 0) {
    for (const std::string& line : wrapped(name + ": " + count_of(notes, "line") + " with values behind the last " +
                                               "SSID; a save leaves them out, and --json lists them",
                                           kColumns)) {
      report.text() << line << '\n';
    }
  }
  tell_counts(file, counts, report);
  files.push_back(
      {{"file", file}, {"band", band ? Json(label_of(*band)) : Json()}, {"findings", std::move(shown_findings)}});
  *code = worse_of(*code, counts.exit_code());
}

int run(const Words& words, Report& report) {
  Json files = Json::array();
  int code = kDone;
  for (const std::string& file : words.files) check(file, words.band, report, files, &code);
  report.data() = {{"files", std::move(files)}};
  return code;
}

std::string bands() {
  return std::string(label_of(Band::k2_4G)) + "," + label_of(Band::k5G);
}

constexpr Word kWords[] = {
    {"FILE", &Words::files, "Dat files", {.required = true, .offers = "file"}},
    {"--band",
     &Words::band,
     "The files' band, 2.4g or 5g; else told by their names where it can be",
     {.choices = bands, .any_case = true}},
};

}  // namespace

const Verb kCheck = {"check",
                     "Look for mistakes in dat files, touching nothing",
                     "A finding is FILE:LINE: KEY: severity: reason, with what a line has no room for\n"
                     "indented below. The library's own setters judge the values, and then whether\n"
                     "the gateway can serve them. An error would be lost, misread or refused; a\n"
                     "warning may not be what was meant; notes are harmless, and --json alone lists\n"
                     "them. Exit codes: 0 notes or nothing, 1 errors, 2 a file cannot be read,\n"
                     "7 warnings.\n\n"
                     "Examples:\n"
                     "  wlanctl check /etc/Wireless/RT2860AP/RT2860AP.dat\n"
                     "  wlanctl check --band 5g new.dat",
                     kWords,
                     run,
                     {},
                     true};

}  // namespace wlanctl

// check: dat files, without a store and without touching anything.
#include <cerrno>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/check/dat_check.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

Json shown(const DatFinding& finding) {
  const auto number_or_null = [](int number) { return number == 0 ? Json() : Json(number); };
  return {{"line", number_or_null(finding.line)},
          {"key", finding.key},
          {"field", number_or_null(finding.field)},
          {"kind", word_for(finding.kind)},
          {"value", finding.has_value ? finding.value : Json()},
          {"reason", finding.reason},
          {"accepted", finding.accepted.empty() ? Json() : Json(finding.accepted)}};
}

// Like a compiler's: an editor can jump to it.
std::string line_of(const std::string& file, const DatFinding& finding) {
  std::string text = file + ":";
  if (finding.line != 0) text += std::to_string(finding.line) + ":";
  if (!finding.key.empty()) {
    text += " " + finding.key;
    if (finding.field != 0) text += ":" + std::to_string(finding.field);
    text += ":";
  }
  return printable(text + " " + finding.reason);
}

// False when the file cannot be read.
bool check(const std::string& file, const std::string& band_text, Report& report, Json& files, size_t& found) {
  const std::optional<std::string> bytes = read_bytes(file);
  if (!bytes) {
    report.problem(
        {"cannot read " + file + ": " + std::strerror(errno), "is it there, a file, and readable?", {{"file", file}}});
    return false;
  }
  const std::optional<Band> band = band_text.empty() ? band_of_dat_path(file) : parse_band(band_text);
  if (!band) {
    report.note("which band " + file + " is for is not known: a value counts as good when one of them takes it; " +
                "say --band");
  }
  const std::vector<DatFinding> findings = check_dat(*bytes, band ? std::vector<Band>{*band} : bands_of(""));
  Json shown_findings = Json::array();
  for (const DatFinding& finding : findings) {
    shown_findings.push_back(shown(finding));
    report.text() << line_of(file, finding) << '\n';
  }
  if (findings.empty()) {
    report.text() << printable(file) << (band ? std::string(" (") + label_of(*band) + ")" : "") << ": nothing found\n";
  } else {
    report.problem(
        {count_of(findings.size(), "finding") + " in " + file, "mend the lines and check again", {{"file", file}}});
  }
  files.push_back(
      {{"file", file}, {"band", band ? Json(label_of(*band)) : Json()}, {"findings", std::move(shown_findings)}});
  found += findings.size();
  return true;
}

int run(const Words& words, Report& report) {
  Json files = Json::array();
  size_t found = 0;
  bool all_read = true;
  for (const std::string& file : words.files) {
    all_read = check(file, words.band, report, files, found) && all_read;
  }
  report.data() = {{"files", std::move(files)}};
  if (!all_read) return kWrongUsage;
  return found == 0 ? kDone : kRefused;
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

const Verb kCheck = {"check", "Look for mistakes in dat files, touching nothing",
                     "One line per finding: FILE:LINE: KEY: reason. The library's own setters judge\n"
                     "the values. Exit codes: 0 nothing found, 1 findings, 2 a file cannot be read.\n\n"
                     "Examples:\n"
                     "  wlanctl check /etc/Wireless/RT2860AP/RT2860AP.dat\n"
                     "  wlanctl check --band 5g new.dat",
                     kWords, run};

}  // namespace wlanctl

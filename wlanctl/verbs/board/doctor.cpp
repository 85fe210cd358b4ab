// doctor: everything that an integrator would look at when something does not work, with the cure of what is wrong.
#include <algorithm>

#include "wlanctl/base/colour.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/doctor/checks.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr char kWell[] = "ok";
constexpr size_t kIndentation = 9;

const char* severity_word(const Row& row) {
  return row.ill ? word_for(kind_of(*row.ill).severity) : kWell;
}

std::string painted_severity(const Row& row) {
  return row.ill ? painted_word(kind_of(*row.ill).severity) : painted(Paint::kGreen, kWell);
}

std::string padded(const std::string& text, size_t width) {
  return text + std::string(width - std::min(width, width_of(text)), ' ');
}

// Below its severity.
void print_line(Text& text, const std::string& line) {
  for (const std::string& part : wrapped(printable(line), kColumns - kIndentation)) {
    text << std::string(kIndentation, ' ') << part << '\n';
  }
}

void print(Text& text, const Row& row) {
  const std::string about = (row.band ? std::string(label_of(*row.band)) + " " : "") + row.check;
  text << padded(painted_severity(row), kIndentation);
  if (!row.ill) {
    text << printable(about + ": " + row.looked_at) << '\n';
    return;
  }
  const IllKind& kind = kind_of(*row.ill);
  text << about << ": " << kind.finding << '\n';
  print_line(text, row.looked_at);
  print_line(text, "cure: " + row.cure());
}

Json json_of(const Row& row) {
  const auto or_null = [&](const std::string& text) { return row.ill ? Json(text) : Json(); };
  return {{"check", row.check},
          {"band", row.band ? Json(label_of(*row.band)) : Json()},
          {"looked_at", row.looked_at},
          {"severity", severity_word(row)},
          {"kind", row.ill ? Json(kind_of(*row.ill).identifier) : Json()},
          {"finding", row.ill ? Json(kind_of(*row.ill).finding) : Json()},
          {"cure", or_null(row.cure())}};
}

struct Counts {
  size_t of[3] = {};
  size_t well = 0;

  size_t with(Severity severity) const { return of[static_cast<size_t>(severity)]; }
  std::vector<std::string> words(std::initializer_list<Severity> severities) const {
    std::vector<std::string> words;
    for (const Severity severity : severities) {
      if (with(severity) > 0) words.push_back(count_of(with(severity), word_for(severity)));
    }
    return words;
  }
};

int judge(const Counts& counts, Report& report) {
  const std::vector<std::string> words = counts.words({Severity::kError, Severity::kWarning});
  if (words.empty()) return kDone;
  report.problem({joined(words, " and "), "begin with the first: it may be the cause of the others"});
  return counts.with(Severity::kError) > 0 ? kRefused : kWarned;
}

int run(const Words& words, Report& report) {
  const Diagnosis diagnosis = diagnose(bands_of(words.band));
  Counts counts;
  Json rows = Json::array();
  for (const Row& row : diagnosis.rows()) {
    if (row.ill) {
      ++counts.of[static_cast<size_t>(kind_of(*row.ill).severity)];
    } else {
      ++counts.well;
    }
    if (!row.ill && !words.all) continue;
    print(report.text(), row);
    rows.push_back(json_of(row));
  }
  std::vector<std::string> told = counts.words({Severity::kError, Severity::kWarning, Severity::kNote});
  told.push_back(std::to_string(counts.well) + " ok");
  report.text() << count_of(diagnosis.rows().size(), "check") << ": " << joined(told, ", ") << '\n';
  report.data() = {{"checks", diagnosis.rows().size()},
                   {"errors", counts.with(Severity::kError)},
                   {"warnings", counts.with(Severity::kWarning)},
                   {"notes", counts.with(Severity::kNote)},
                   {"ok", counts.well},
                   {"rows", std::move(rows)}};
  return judge(counts, report);
}

constexpr Word kWords[] = {word::kBand, {"--all", &Words::all, "Show what is well, too"}};

}  // namespace

const Verb kDoctor = {"doctor",
                      "Look for what keeps a gateway from working",
                      "Looks at dat files, stores and their values, locks, rights, tools, driver\n"
                      "modules, interfaces, the driver, folders and unconfirmed applies. Each finding\n"
                      "comes with what was looked at and its cure. Nothing is changed. Exit codes:\n"
                      "0 notes or nothing, 1 errors, 7 warnings.\n\n"
                      "Examples:\n"
                      "  wlanctl doctor\n"
                      "  wlanctl doctor 5g --all\n"
                      "  wlanctl doctor --json | jq -r '.data.rows[].cure'",
                      kWords,
                      run,
                      {},
                      true};

}  // namespace wlanctl

#include "wlanctl/report.h"

#include <algorithm>
#include <iostream>

namespace wlanctl {
namespace {

std::string on_one_line(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return printable(text);
}

}  // namespace

void Report::begin(const std::string& verb, bool as_json) {
  verb_ = verb;
  as_json_ = as_json;
}

void Report::problem(Problem problem) {
  problems_.push_back(std::move(problem));
}

int Report::finish(int exit_code) {
  if (as_json_) {
    Json problems = Json::array();
    for (const Problem& problem : problems_) {
      Json entry = {{"message", json_text(problem.message)}, {"next", json_text(problem.next)}};
      entry.update(problem.details);
      problems.push_back(std::move(entry));
    }
    const Json document = {{"version", 1},  {"verb", verb_},   {"exit_code", exit_code},
                           {"data", data_}, {"notes", notes_}, {"problems", std::move(problems)}};
    std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << std::endl;
    return exit_code;
  }
  std::cout << text_.str() << std::flush;
  for (const std::string& note : notes_) std::cerr << "wlanctl: note: " << on_one_line(note) << '\n';
  for (const Problem& problem : problems_) {
    std::cerr << "wlanctl: " << on_one_line(problem.message);
    if (!problem.next.empty()) std::cerr << "; " << on_one_line(problem.next);
    std::cerr << '\n';
  }
  return exit_code;
}

std::string table(const std::vector<std::vector<std::string>>& rows) {
  std::vector<size_t> widths;
  for (const auto& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size());
    for (size_t i = 0; i + 1 < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  std::string text;
  for (const auto& row : rows) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      if (i + 1 < row.size()) line.append(widths[i] - row[i].size() + 2, ' ');
    }
    text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
  }
  return text;
}

std::string printable(const std::string& text) {
  std::string shown = text;
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7f) c = '?';
  }
  return shown;
}

Json json_text(const std::string& text) {
  // The library replaces what is no UTF-8 when it prints.
  return Json(text);
}

}  // namespace wlanctl

#include "wlanctl/base/report.h"

#include <algorithm>
#include <iostream>

namespace wlanctl {
namespace {

std::string on_one_line(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return printable(text);
}

// The length of the UTF-8 character at `at`; 0 when there is none that a terminal can show. The second block of control
// characters comes as two bytes, and acts on some terminals as the first does.
size_t length_of_character(const std::string& text, size_t at) {
  const auto byte = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const unsigned lead = byte(at);
  if (lead < 0x80) return lead >= ' ' && lead != 0x7f ? 1 : 0;
  if (lead < 0xc2 || lead > 0xf4 || (lead == 0xc2 && byte(at + 1) < 0xa0)) return 0;
  const size_t length = lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
  for (size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xc0U) != 0x80) return 0;
  }
  return length;
}

bool is_printed() {
  if (std::cout) return true;
  std::cerr << "wlanctl: the output could not be written; is there room?\n";
  return false;
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
  constexpr int kIndentation = 2;
  const bool done = (refreshed_ && !has_problems()) || print(exit_code, kIndentation);
  return done || exit_code != kDone ? exit_code : static_cast<int>(kRefused);
}

bool Report::refresh(int exit_code) {
  constexpr int kOnOneLine = -1;
  const bool done = print(exit_code, kOnOneLine);
  text_.str("");
  data_ = Json::object();
  problems_.clear();
  notes_.clear();
  refreshed_ = true;
  return done;
}

bool Report::print(int exit_code, int indentation) const {
  if (as_json_) {
    Json problems = Json::array();
    for (const Problem& problem : problems_) {
      Json entry = {{"message", json_text(problem.message)}, {"next", json_text(problem.next)}};
      entry.update(problem.details);
      problems.push_back(std::move(entry));
    }
    const Json document = {{"version", 1},  {"verb", verb_},   {"exit_code", exit_code},
                           {"data", data_}, {"notes", notes_}, {"problems", std::move(problems)}};
    std::cout << document.dump(indentation, ' ', false, Json::error_handler_t::replace) << std::endl;
    return is_printed();
  }
  std::cout << text_.str() << std::flush;
  for (const std::string& note : notes_) std::cerr << "wlanctl: note: " << on_one_line(note) << '\n';
  for (const Problem& problem : problems_) {
    std::cerr << "wlanctl: " << on_one_line(problem.message);
    if (!problem.next.empty()) std::cerr << "; " << on_one_line(problem.next);
    std::cerr << '\n';
  }
  return is_printed();
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

std::string count_of(size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string printable(const std::string& text) {
  std::string shown;
  for (size_t at = 0; at < text.size();) {
    const size_t length = length_of_character(text, at);
    shown += length == 0 ? std::string("?") : text.substr(at, length);
    at += std::max(length, size_t{1});
  }
  return shown;
}

Json json_text(const std::string& text) {
  // The library replaces what is no UTF-8 when it prints.
  return Json(text);
}

}  // namespace wlanctl

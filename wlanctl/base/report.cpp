#include "wlanctl/base/report.h"

#include <cstdio>
#include <utility>

#include "wlanctl/base/json_print.h"
#include "wlanctl/base/pager.h"
#include "wlanctl/base/terminal.h"

namespace wlanctl {
namespace {

void put(const std::string& text) {
  (void)std::fwrite(text.data(), 1, text.size(), stdout);
  (void)std::fflush(stdout);
}

bool is_printed() {
  if (std::ferror(stdout) == 0) return true;
  (void)std::fputs("wlanctl: the output could not be written; is there room?\n", stderr);
  return false;
}

std::string line_of(const std::string& text) {
  return printable(on_one_line(text));
}

void say(const std::string& message) {
  (void)std::fputs(message_lines("wlanctl: " + message).c_str(), stderr);
}

}  // namespace

int worse_of(int left, int right) {
  const auto rank = [](int code) {
    return code == kNoStore ? 100 : code == kDone ? -2 : code == kWarned ? -1 : code == kNoAnswer ? 0 : code;
  };
  return rank(right) > rank(left) ? right : left;
}

Json about(Band band) {
  return {{"band", label_of(band)}};
}

Json about(Band band, const std::string& interface) {
  return {{"band", label_of(band)}, {"interface", interface}};
}

Json about(Band band, int ssid) {
  return {{"band", label_of(band)}, {"ssid", ssid}};
}

void Report::begin(const std::string& verb, bool as_json) {
  verb_ = verb;
  as_json_ = as_json;
}

void Report::problem(Problem problem) {
  problems_.push_back(std::move(problem));
}

int Report::finish(int exit_code) {
  const bool done = (refreshed_ && !has_problems()) || print(exit_code, false);
  return done || exit_code != kDone ? exit_code : static_cast<int>(kRefused);
}

bool Report::refresh(int exit_code) {
  const bool done = print(exit_code, true);
  start_over();
  return done;
}

std::string Report::take_line(int exit_code) {
  std::string line = printed(document(exit_code), Layout::kOnOneLine) + '\n';
  start_over();
  return line;
}

void Report::start_over() {
  text_.clear();
  data_ = Json::object();
  problems_.clear();
  notes_.clear();
  refreshed_ = true;
}

Json Report::document(int exit_code) const {
  Json problems = Json::array();
  for (const Problem& problem : problems_) {
    Json entry = {{"message", problem.message}, {"next", problem.next}};
    entry.update(problem.details);
    problems.push_back(std::move(entry));
  }
  return {{"version", 1},  {"verb", verb_},   {"exit_code", exit_code},
          {"data", data_}, {"notes", notes_}, {"problems", std::move(problems)}};
}

bool Report::print(int exit_code, bool on_one_line) const {
  if (as_json_) {
    put(printed(document(exit_code), on_one_line ? Layout::kOnOneLine : Layout::kIndented) + '\n');
    return is_printed();
  }
  if (!may_page_ || !show_in_pager(text_.str())) put(text_.str());
  for (const std::string& note : notes_) say("note: " + line_of(note));
  for (const Problem& problem : problems_) {
    const std::string next = problem.next.empty() ? "" : "; " + line_of(problem.next);
    say(line_of(problem.message) + next);
  }
  return is_printed();
}

}  // namespace wlanctl

#include "wlanctl.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace wlanctl_test {
namespace {

// validate.py, started when a program's first document asks for it, and ended with the program.
class Validator {
 public:
  Validator() {
    int asked[2];
    int answered[2];
    if (pipe2(asked, O_CLOEXEC) != 0 || pipe2(answered, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    const std::string script = source_folder() + "/tests/wlanctl/validate.py";
    const std::string schemas = source_folder() + "/wlanctl/schema";
    process_ = fork();
    if (process_ == 0) {
      dup2(asked[0], STDIN_FILENO);
      dup2(answered[1], STDOUT_FILENO);
      execl(PYTHON_PROGRAM, PYTHON_PROGRAM, script.c_str(), schemas.c_str(), nullptr);
      _exit(1);
    }
    close(asked[0]);
    close(answered[1]);
    questions_ = asked[1];
    answers_ = fdopen(answered[0], "r");
  }
  Validator(const Validator&) = delete;
  Validator& operator=(const Validator&) = delete;
  ~Validator() {
    close(questions_);
    std::fclose(answers_);
    waitpid(process_, nullptr, 0);
  }

  // Nothing when all is well with the file.
  std::string findings(const std::string& path) {
    const std::string question = path + "\n";
    const ssize_t written = write(questions_, question.data(), question.size());
    if (written != static_cast<ssize_t>(question.size())) throw std::runtime_error("validate.py has ended");
    std::string text;
    char* line = nullptr;
    size_t size = 0;
    ssize_t length = 0;
    while ((length = getline(&line, &size, answers_)) > 1) text += line;
    std::free(line);
    if (length < 0) throw std::runtime_error("validate.py has ended: " + text);
    return text;
  }

 private:
  pid_t process_ = -1;
  int questions_ = -1;
  FILE* answers_ = nullptr;
};

std::string findings_of(const std::string& path) {
  static Validator validator;
  return validator.findings(path);
}

void expect_valid(const std::string& path) {
  EXPECT_EQ("", findings_of(path));
}

// A word that is longer than a line has one of its own.
void expect_fits_terminal(const std::string& line, const std::string& head) {
  const auto starts_character = [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80; };
  const bool is_one_word = line.find(' ', head.size()) == std::string::npos;
  EXPECT_TRUE(is_one_word || std::count_if(line.begin(), line.end(), starts_character) <= 80) << line;
}

// The messages in a text, which were wrapped for a terminal, on one line each.
std::string unwrapped(const std::string& text) {
  const std::string start = "wlanctl: ";
  const std::string further(start.size(), ' ');
  std::string joined;
  bool is_message = false;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    const std::string line = text.substr(at, end - at);
    const bool is_further = is_message && line.starts_with(further) && line.size() > start.size() + 1;
    if (is_further || line.starts_with(start)) expect_fits_terminal(line.substr(0, line.find_first_of("\r\n")), start);
    if (is_further && joined.ends_with('\n')) joined.pop_back();
    joined += is_further ? line.substr(start.size() - 1) : line;
    is_message = is_further || line.starts_with(start);
    at = end;
  }
  return joined;
}

Result run_inside(const TestFolder& folder, const std::string& script, const Words& options) {
  Words arguments = options;
  arguments.insert(arguments.end(), {"--", "sh", "-c", prelude(folder) + script});
  Result result = sim_test::run_in(folder.path(), arguments);
  result.out = unwrapped(result.out);
  result.err = unwrapped(result.err);
  validate_documents(folder);
  return result;
}

}  // namespace

std::string prelude(const TestFolder& folder) {
  return std::string("PATH='") + built("tests/path") + "':'" + built("bin") + "':$PATH; WLANCTL_PROGRAM='" +
         wlanctl_program() + "'; WLANCTL_DOCUMENTS='" + folder.path() +
         "'; export PATH WLANCTL_PROGRAM WLANCTL_DOCUMENTS\n";
}

void validate_documents(const TestFolder& folder) {
  for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
    const std::string name = entry.path().filename();
    if (name.starts_with("document-") && name.ends_with(".json")) expect_valid(entry.path());
  }
}

void validate_text(const std::string& documents) {
  const TestFolder folder;
  write_file(folder / "text.json", documents);
  expect_valid(folder / "text.json");
}

bool is_valid(const Json& document) {
  const TestFolder folder;
  write_file(folder / "text.json", document.dump());
  return findings_of(folder / "text.json").empty();
}

Words verbs() {
  const std::string script =
      std::string("'") + wlanctl_program() + "' --help | sed -n '/^Subcommands:/,/^$/s/^  \\([a-z][a-z]*\\) .*/\\1/p'";
  return lines_of(sim_test::shell(script).out);
}

Result run(const std::string& script, const Words& options) {
  const TestFolder folder;
  return run_inside(folder, script, options);
}

std::vector<Result> run_steps(const Words& steps, const Words& options) {
  const TestFolder folder;
  std::string script;
  for (size_t i = 0; i < steps.size(); ++i) {
    const std::string step = "./step" + std::to_string(i);
    write_file(folder / ("step" + std::to_string(i)), steps[i] + "\n");
    script += "sh " + step + " >" + step + ".out 2>" + step + ".err; echo $? >" + step + ".status\n";
  }
  const Result all = run_inside(folder, script, options);
  EXPECT_EQ(0, all.status) << all.err;
  std::vector<Result> results;
  for (size_t i = 0; i < steps.size(); ++i) {
    const std::string step = folder / ("step" + std::to_string(i));
    const std::string status = read_file(step + ".status");
    results.push_back({status.empty() ? -1 : std::stoi(status), unwrapped(read_file(step + ".out")),
                       unwrapped(read_file(step + ".err"))});
  }
  return results;
}

Json document_in(const std::string& text) {
  Json document = Json::parse(text, nullptr, false);
  EXPECT_FALSE(document.is_discarded()) << "no document: " << text;
  return document.is_discarded() ? Json() : document;
}

Json json_of(const std::string& words, const std::string& before, const Words& options) {
  return document_in(run_steps({before, "wlanctl " + words + " --json"}, options).back().out);
}

}  // namespace wlanctl_test

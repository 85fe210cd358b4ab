#include "wlanctl.h"

#include <gtest/gtest.h>

namespace wlanctl_test {
namespace {

void expect_valid(const std::string& arguments) {
  const Result result = sim_test::shell(std::string("'") + PYTHON_PROGRAM + "' '" + VALIDATE_SCRIPT + "' '" +
                                        SCHEMA_FOLDER + "' " + arguments + " 2>&1");
  EXPECT_EQ(0, result.status) << result.out;
}

Result run_inside(const TestFolder& folder, const std::string& script, const Words& options) {
  Words arguments = options;
  arguments.insert(arguments.end(), {"--", "sh", "-c", prelude(folder) + script});
  const Result result = sim_test::run_in(folder.path(), arguments);
  validate_documents(folder);
  return result;
}

}  // namespace

std::string prelude(const TestFolder& folder) {
  return std::string("PATH='") + WLANCTL_PATH_FOLDER + "':'" + PROGRAM_FOLDER + "':$PATH; WLANCTL_PROGRAM='" +
         WLANCTL_PROGRAM + "'; WLANCTL_DOCUMENTS='" + folder.path() +
         "'; export PATH WLANCTL_PROGRAM WLANCTL_DOCUMENTS\n";
}

void validate_documents(const TestFolder& folder) {
  expect_valid("--folder '" + folder.path() + "'");
}

void validate_text(const std::string& documents) {
  const TestFolder folder;
  write_file(folder / "text.json", documents);
  expect_valid(folder / "text.json");
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
    results.push_back({status.empty() ? -1 : std::stoi(status), read_file(step + ".out"), read_file(step + ".err")});
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

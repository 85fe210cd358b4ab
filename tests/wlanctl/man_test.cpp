// The man page against the program's own help: every verb and every option is in it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

const std::string& help_of(const std::string& verb) {
  static std::map<std::string, std::string> texts;
  const auto [text, is_new] = texts.try_emplace(verb);
  if (is_new) text->second = sim_test::shell(std::string("'") + wlanctl_program() + "' " + verb + " --help").out;
  return text->second;
}

// The verbs that a help text lists.
Words verbs_in(const std::string& help) {
  Words verbs;
  bool listed = false;
  for (const std::string& line : lines_of(help)) {
    if (line == "Subcommands:") {
      listed = true;
    } else if (line.empty() || line[0] != ' ') {
      listed = false;
    } else if (std::smatch match; listed && std::regex_search(line, match, std::regex("^  ([a-z]+) "))) {
      verbs.push_back(match[1]);
    }
  }
  return verbs;
}

std::set<std::string> options_in(const std::string& help) {
  std::set<std::string> options;
  for (const std::string& line : lines_of(help)) {
    std::smatch match;
    if (std::regex_search(line, match, std::regex("^  (?:-[a-z],)?(--[a-z-]+)"))) options.insert(match[1]);
  }
  return options;
}

// The page as a reader sees its words, without marks.
std::string page() {
  std::string text = read_file(source_folder() + "/man/wlanctl.1");
  return std::regex_replace(text, std::regex("\\\\-"), "-");
}

// What stands under the headings that begin with these words.
std::string section(const std::string& mark, const std::string& words) {
  const std::string text = page();
  std::string found;
  size_t start = 0;
  while ((start = text.find('\n' + mark + words, start)) != std::string::npos) {
    const size_t end = text.find("\n.S", start + 1);
    found += text.substr(start, end - start);
    start = std::min(end, text.size() - 1);
  }
  return found;
}

TEST(ManPage, HasEveryVerb) {
  for (const std::string& verb : verbs_in(help_of(""))) {
    EXPECT_FALSE(section(".SS \"", verb).empty()) << verb;
    for (const std::string& below : verbs_in(help_of(verb))) {
      EXPECT_THAT(page(), testing::ContainsRegex("\n.SS \"(.*, )?" + verb + " " + below));
    }
  }
}

TEST(ManPage, HasNoVerbThatIsGone) {
  const Words verbs = verbs_in(help_of(""));
  for (const std::string& line : lines_of(page())) {
    std::smatch match;
    if (std::regex_search(line, match, std::regex("^\\.SS \"([a-z]+)"))) {
      EXPECT_THAT(verbs, testing::Contains(match[1].str()));
    }
  }
}

TEST(ManPage, HasEveryOption) {
  const std::string common = section(".SH ", "OPTIONS");
  for (const std::string& verb : verbs_in(help_of(""))) {
    std::set<std::string> options = options_in(help_of(verb));
    for (const std::string& below : verbs_in(help_of(verb))) options.merge(options_in(help_of(verb + " " + below)));
    EXPECT_FALSE(options.empty()) << verb;
    for (const std::string& option : options) {
      EXPECT_THAT(section(".SS \"", verb) + common, testing::ContainsRegex("\n\\.BI? " + option + "[ \n]")) << verb;
    }
  }
}

TEST(ManPage, HasEveryExitCode) {
  const std::string codes = section(".SH ", "\"EXIT STATUS\"");
  for (int code = 0; code <= 7; ++code) EXPECT_THAT(codes, HasSubstr("\n.B " + std::to_string(code) + "\n"));
}

TEST(ManPage, HasTheFilesUnderVarRun) {
  const std::string places = read_file(source_folder() + "/wlanctl/files/places.h");
  const std::string files = section(".SH ", "FILES");
  const std::regex path("\"(/var/run/[^\"]+)\"");
  for (std::sregex_iterator it(places.begin(), places.end(), path), end; it != end; ++it) {
    EXPECT_THAT(files, HasSubstr("\n.I " + (*it)[1].str()));
  }
}

TEST(ManPage, IsReadByManWithoutAWarning) {
  EXPECT_EQ(
      "", sim_test::shell(std::string("groff -man -ww -Tutf8 '") + source_folder() + "/man/wlanctl.1' 2>&1 >/dev/null")
              .out);
}

}  // namespace
}  // namespace wlanctl_test

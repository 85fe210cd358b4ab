// wlanctl help, and what is said of words that nobody knows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Result call(const std::string& words) {
  return sim_test::shell("'" + wlanctl_program() + "' " + words + " 2>&1");
}

// What is said of wrong words, on one line.
std::string said_of(const std::string& words) {
  const Result result = call(words);
  EXPECT_EQ(2, result.status) << words;
  std::string text;
  for (const std::string& line : lines_of(result.out)) {
    text += (text.empty() ? "" : " ") + line.substr(std::min(line.find_first_not_of(' '), line.size()));
  }
  return text;
}

TEST(HelpVerb, SaysWhatTheOptionSays) {
  for (const char* const verb : {"", "apply", "wps", "wps pbc", "monitor", "doctor", "help"}) {
    const Result help = call(std::string("help ") + verb);
    EXPECT_EQ(0, help.status);
    EXPECT_EQ(call(std::string(verb) + " --help").out, help.out) << verb;
    EXPECT_THAT(help.out, HasSubstr("Examples:\n"));
  }
}

TEST(HelpVerb, RefusesAVerbThatIsNone) {
  EXPECT_EQ("wlanctl: there is no verb \"aply\"; do you mean apply? wlanctl help lists the verbs",
            said_of("help aply"));
  EXPECT_EQ("wlanctl: there is no verb \"wps pcb\"; do you mean pbc? wlanctl help lists the verbs",
            said_of("help wps pcb"));
}

TEST(HelpVerb, IsADocumentToo) {
  const std::string document = call("help wps pbc --json").out;
  validate_text(document);
  EXPECT_THAT(document_in(document)["data"]["text"].get<std::string>(), HasSubstr("wlanctl wps pbc"));
  validate_text(call("help aply --json").out);
}

TEST(Version, HasAShortName) {
  EXPECT_EQ(call("--version").out, call("-V").out);
  EXPECT_EQ(0, call("-V").status);
}

TEST(Hint, NamesTheVerbThatIsMeant) {
  EXPECT_EQ("wlanctl: there is no verb \"shwo\"; do you mean show? wlanctl --help lists the verbs", said_of("shwo"));
  EXPECT_EQ("wlanctl: there is no verb \"wps stpo\"; do you mean stop? wlanctl wps --help shows what it takes",
            said_of("wps stpo 2.4g 1"));
  EXPECT_EQ("wlanctl: there is no verb \"xyzzy\"; wlanctl --help lists the verbs", said_of("xyzzy"));
}

TEST(Hint, TakesTheBeginningOfOneVerbForThatOne) {
  EXPECT_THAT(said_of("stat"), HasSubstr("do you mean status?"));
  EXPECT_THAT(said_of("mon"), HasSubstr("do you mean monitor?"));
  EXPECT_THAT(said_of("ssid ad"), HasSubstr("there is no verb \"ssid ad\"; do you mean add?"));
  EXPECT_THAT(said_of("sta"), testing::Not(HasSubstr("do you mean")));
}

TEST(Hint, SaysWhatAnOptionTakesBeforeItSpeaksOfTheArgumentBehindIt) {
  EXPECT_THAT(said_of("status --watch 5g"), HasSubstr("--watch takes a number, and \"5g\" is none"));
  EXPECT_THAT(said_of("status --watch=abc"), HasSubstr("--watch takes a number, and \"abc\" is none"));
  EXPECT_THAT(said_of("status --watch 1 6g"), HasSubstr("there is no band \"6g\""));
}

TEST(Hint, NamesTheNearestOfSeveral) {
  EXPECT_THAT(said_of("stauts"), HasSubstr("do you mean status?"));
  EXPECT_THAT(said_of("saev"), HasSubstr("do you mean save?"));
}

TEST(Hint, NamesTheOptionThatIsMeant) {
  EXPECT_EQ("wlanctl: apply has no option --dryrun; do you mean --dry-run? wlanctl apply --help shows what it takes",
            said_of("apply --dryrun"));
  EXPECT_EQ("wlanctl: there is no option --vrsion; do you mean --version? wlanctl --help lists the verbs",
            said_of("--vrsion"));
  EXPECT_THAT(said_of("wps pin 2.4g 1 --froce"),
              StartsWith("wlanctl: wps pin has no option --froce; do you mean --force?"));
  EXPECT_THAT(said_of("show --no-pagr"), HasSubstr("do you mean --no-pager?"));
  EXPECT_THAT(said_of("show --xyzzy"), testing::Not(HasSubstr("do you mean")));
}

std::vector<std::string> verbs_in(const std::string& help) {
  std::vector<std::string> verbs;
  const size_t begin = help.find("\nSubcommands:\n");
  if (begin == std::string::npos) return verbs;
  for (const std::string& line : lines_of(help.substr(begin + 14, help.find("\n\n", begin) - begin - 14))) {
    const size_t word = line.find_first_not_of(' ');
    if (word == 2) verbs.push_back(line.substr(word, line.find(' ', word) - word));
  }
  return verbs;
}

// An example that was cut is none that can be copied.
TEST(HelpVerb, KeepsItsParagraphsAndExamplesAsTheyWereWritten) {
  std::vector<std::string> paths = {""};
  for (size_t i = 0; i < paths.size(); ++i) {
    const std::string help = call("help " + paths[i]).out;
    for (const std::string& verb : verbs_in(help)) paths.push_back(paths[i] + (paths[i].empty() ? "" : " ") + verb);
    const size_t verbs = help.find("\nSubcommands:\n");
    const std::string prose =
        help.substr(help.find("\n\n", verbs == std::string::npos ? help.find("\nOptions:\n") : verbs));
    EXPECT_THAT(prose, HasSubstr("Examples:\n")) << paths[i];
    for (const std::string& line : lines_of(prose)) {
      EXPECT_LE(line.size(), 80u) << line;
      EXPECT_THAT(line, testing::Not(StartsWith("    "))) << paths[i];
      const bool is_example = prose.find("Examples:\n") < prose.find(line) && line.find("wlanctl") != std::string::npos;
      EXPECT_TRUE(!is_example || paths[i].empty() || line.starts_with("  ")) << paths[i];
    }
  }
  EXPECT_GT(paths.size(), 40u);
}

TEST(Hint, PutsAVerbThatStandsBehindItsBandInFrontOfIt) {
  EXPECT_EQ(
      "wlanctl: there is no verb \"radio 2.4g\"; do you mean wlanctl radio off 2.4g? wlanctl radio --help shows "
      "what it takes",
      said_of("radio 2.4g off"));
  EXPECT_THAT(said_of("ssid 2.4g list"), HasSubstr("do you mean wlanctl ssid list 2.4g?"));
  EXPECT_THAT(said_of("wps 5G pbc 1 --json"), HasSubstr("do you mean wlanctl wps pbc 5G 1 --json?"));
  EXPECT_THAT(said_of("2.4g ssid list"), HasSubstr("do you mean wlanctl ssid list 2.4g?"));
  EXPECT_THAT(said_of("ssid 5g rename 1 'My Home'"), HasSubstr("do you mean wlanctl ssid rename 5g 1 ...?"));
  EXPECT_THAT(said_of("radio 2.4g"), testing::Not(HasSubstr("do you mean")));
  EXPECT_THAT(said_of("radio 2.4g of"), testing::Not(HasSubstr("do you mean")));
}

TEST(Hint, TakesAnOptionWithNothingBehindItsEqualsSignForNoFlag) {
  EXPECT_THAT(said_of("status 5g --watch="), HasSubstr("--watch takes a number, and \"\" is none"));
}

TEST(Hint, NamesTheVerbBelowThatTakesTheWord) {
  EXPECT_EQ(
      "wlanctl: there is no band \"3\"; say 2.4g or 5g; do you mean wlanctl log show 3? wlanctl log --help shows "
      "what it takes",
      said_of("log 3"));
  EXPECT_THAT(said_of("log 6g"), testing::Not(HasSubstr("do you mean")));
}

TEST(Hint, NamesTheVerbBelowOneThatTakesABandToo) {
  EXPECT_EQ(
      "wlanctl: there is no band \"shwo\"; say 2.4g or 5g; do you mean show? wlanctl log --help shows what it takes",
      said_of("log shwo 1"));
  EXPECT_THAT(said_of("log sh"), HasSubstr("do you mean show?"));
  EXPECT_THAT(said_of("log 5g shwo"), testing::Not(HasSubstr("do you mean")));
}

TEST(Hint, NamesTheSettingsWhoseMeaningHasTheWord) {
  const std::string lists = "wlanctl keys --about passphrase lists WPAPSK";
  EXPECT_EQ("wlanctl: there is no key \"passphrase\"; wlanctl keys --about passphrase lists\n         WPAPSK\n",
            call("explain passphrase").out);
  EXPECT_EQ("wlanctl: no setting is like that: \"passphrase\"; " + lists, said_of("keys passphrase"));
  EXPECT_THAT(said_of("keys network"), HasSubstr("--about network lists HideSSID, SSID, WNMEnable, WscDefaultSSID"));
  EXPECT_THAT(said_of("keys most"), testing::ContainsRegex("wlanctl keys --about most lists [0-9]+ settings"));
  EXPECT_THAT(said_of("keys 'a b'"), HasSubstr("; wlanctl keys lists all"));
}

TEST(Hint, BlamesTheOptionAndNotTheWordBehindIt) {
  EXPECT_THAT(said_of("status --wacht 2"), StartsWith("wlanctl: status has no option --wacht; do you mean --watch?"));
}

TEST(Hint, NamesTheBandThatIsMeant) {
  for (const char* const text : {"2.4", "24g", "2g", "2.4ghz"}) {
    EXPECT_THAT(said_of(std::string("show ") + text), StartsWith(std::string("wlanctl: there is no band \"") + text +
                                                                 "\"; say 2.4g or 5g; do you mean 2.4g?"));
  }
  EXPECT_THAT(said_of("show 5"), HasSubstr("do you mean 5g?"));
  EXPECT_THAT(said_of("show 6g"), testing::Not(HasSubstr("do you mean")));
}

TEST(Hint, NamesTheWordThatIsMeant) {
  EXPECT_THAT(said_of("completion bas"), StartsWith("wlanctl: SHELL: \"bas\" is none of bash, zsh; do you mean bash?"));
  EXPECT_THAT(said_of("keys --color alwyas"), HasSubstr("do you mean always?"));
  EXPECT_THAT(said_of("keys --color=nver"), HasSubstr("do you mean never?"));
  EXPECT_THAT(said_of("check --band 2.4 file"), HasSubstr("do you mean 2.4g?"));
  EXPECT_THAT(said_of("button wpss"), HasSubstr("do you mean wps?"));
}

TEST(Hint, LeavesWhatNoWordIsToBlameForToTheParser) {
  EXPECT_THAT(said_of("get"), HasSubstr("required"));
  EXPECT_THAT(said_of("show 2.4g 9"), HasSubstr("not in range 1 to 8"));
  EXPECT_THAT(said_of("monitor -n0"), HasSubstr("not in range"));
}

TEST(Hint, HasNoValueInIt) {
  for (const char* const words :
       {"ste 2.4g WPAPSK:1=correct-horse", "WPAPSK:1=correct-horse", "set --fiel=WPAPSK:1=correct-horse",
        "set 2.4g WPAPSK:1=correct-horse --xyzzy=correct-horse"}) {
    EXPECT_THAT(said_of(words), testing::Not(HasSubstr("correct"))) << words;
  }
}

}  // namespace
}  // namespace wlanctl_test

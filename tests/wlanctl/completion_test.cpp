// What Tab does in a real shell.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "interactive_shell.h"

namespace wlanctl_test {
namespace {

std::string printed(const std::string& shell) {
  return sim_test::shell(std::string("'") + wlanctl_program() + "' completion " + shell).out;
}

std::string installed(const std::string& file) {
  return read_file(source_folder() + "/wlanctl/completion/" + file);
}

Json keys(const std::string& band = "") {
  const std::string document = sim_test::shell(std::string("'") + wlanctl_program() + "' keys --json " + band).out;
  validate_text(document);
  return document_in(document)["data"]["keys"];
}

const std::string kAll = kInsertAll;

TEST(Completion, InstalledBashScriptIsTheOneThatTheProgramPrints) {
  EXPECT_TRUE(printed("bash") == installed("wlanctl.bash"))
      << "bring it up to date: wlanctl completion bash >wlanctl/completion/wlanctl.bash";
}

TEST(Completion, InstalledZshScriptIsTheOneThatTheProgramPrints) {
  EXPECT_TRUE(printed("zsh") == installed("_wlanctl"))
      << "bring it up to date: wlanctl completion zsh >wlanctl/completion/_wlanctl";
}

TEST(Completion, IsADocumentWithJson) {
  const Json document = json_of("completion bash");
  EXPECT_EQ("bash", document["data"]["shell"]);
  EXPECT_EQ(printed("bash"), document["data"]["script"]);
}

TEST(Completion, RefusesAShellThatItDoesNotKnow) {
  EXPECT_EQ(2, json_of("completion fish")["exit_code"]);
}

// The rest runs in each shell.
class Tab : public testing::TestWithParam<Shell> {
 protected:
  void SetUp() override { ASSERT_TRUE(is_there(GetParam())) << "Debian packages bash and zsh"; }
  std::string typed(const std::string& line) const { return type(GetParam(), {line}).front(); }

  // All of its words, in the order of texts.
  std::string sorted(const std::string& line) const {
    return sim_test::shell("echo '" + typed(line) + "' | tr '|' '\\n' | LC_ALL=C sort | paste -sd '|' | tr -d '\\n'")
        .out;
  }

  // The words that zsh offers: bash has everything up to the last : or = in the line only once.
  std::string offers(const std::string& head, const Words& words) const {
    std::string text;
    for (const std::string& word : words) {
      text += (text.empty() ? "" : "|") + (GetParam() == Shell::kZsh || text.empty() ? head : std::string()) + word;
    }
    return text;
  }
};

INSTANTIATE_TEST_SUITE_P(Shells, Tab, testing::Values(Shell::kBash, Shell::kZsh),
                         [](const auto& shell) { return std::string(shell.param == Shell::kBash ? "Bash" : "Zsh"); });

TEST_P(Tab, CompletesAVerb) {
  EXPECT_EQ("neighbours", typed("wlanctl nei\t"));
}

TEST_P(Tab, OffersEveryVerbOfTheHelp) {
  const std::string help = sim_test::shell(std::string("'") + wlanctl_program() + "' --help").out;
  const Words offered = lines_of(sim_test::shell("echo '" + typed("wlanctl " + kAll) + "' | tr '|' '\\n'").out);
  EXPECT_GT(offered.size(), 10u);
  for (const std::string& verb : offered) EXPECT_THAT(help, testing::HasSubstr("\n  " + verb + " "));
  const std::string list = help.substr(help.find("Subcommands:\n"));
  EXPECT_EQ(offered.size(), lines_of(list.substr(0, list.find("\n\n"))).size() - 1);
}

TEST_P(Tab, CompletesAVerbToBeExplained) {
  EXPECT_EQ("help|neighbours", typed("wlanctl help nei\t"));
}

TEST_P(Tab, CompletesAVerbBelowToBeExplained) {
  EXPECT_EQ("help|ssid|add", typed("wlanctl help ssid a\t"));
  EXPECT_EQ("help|wps|pbc|pin|status|stop", typed("wlanctl help wps " + kAll));
  EXPECT_EQ("help|show", typed("wlanctl help show " + kAll));
  EXPECT_EQ("help|wps|pbc", typed("wlanctl help wps pbc " + kAll));
}

TEST_P(Tab, KnowsTheValuesOfOptionsThatEveryVerbHas) {
  EXPECT_EQ("keys|--color|never", typed("wlanctl keys --color nev\t"));
}

TEST_P(Tab, TakesNoOptionsValueForAnArgument) {
  EXPECT_EQ("monitor|-n|3|5g", typed("wlanctl monitor -n 3 5\t"));
  EXPECT_EQ("monitor|--for|3|5g", typed("wlanctl monitor --for 3 5\t"));
}

TEST_P(Tab, CompletesTheWordsOfAVerb) {
  EXPECT_EQ("wps|pbc|pin", typed("wlanctl wps p" + kAll));
}

TEST_P(Tab, OffersTheBands) {
  EXPECT_EQ("show|2.4g|5g", typed("wlanctl show " + kAll));
}

TEST_P(Tab, OffersTheSsidsBehindTheBand) {
  EXPECT_EQ("stations|5g|1|2|3|4|5|6|7|8", typed("wlanctl stations 5g " + kAll));
  EXPECT_EQ("ssid|remove|5g|1|2|3|4|5|6|7|8", typed("wlanctl ssid remove 5g " + kAll));
}

TEST_P(Tab, TakesBothForTheBand) {
  const std::string numbers = "1|2|3|4|5|6|7|8";
  EXPECT_EQ("ssid|rename|--both|" + numbers, typed("wlanctl ssid rename --both " + kAll));
  EXPECT_EQ("ssid|remove|--both|" + numbers, typed("wlanctl ssid remove --both " + kAll));
  EXPECT_EQ("ssid|rename|5g|" + numbers, typed("wlanctl ssid rename 5g " + kAll));
  EXPECT_EQ("ssid|rename|--both|1|2", typed("wlanctl ssid rename --both 1 2" + kAll));
  EXPECT_EQ("ssid|rename|2.4g|--both", typed("wlanctl ssid rename 2\t--both"));
  EXPECT_EQ("undo|--both|2", typed("wlanctl undo --both 2" + kAll));
}

TEST_P(Tab, OffersTheNamesOfTheKeysToBeListed) {
  EXPECT_EQ("keys|HideSSID", typed("wlanctl keys HideS\t"));
  EXPECT_EQ("keys|2.4g", typed("wlanctl keys 2\t"));
  EXPECT_EQ("Channel|keys", sorted("wlanctl keys Channel" + kAll));
  EXPECT_THAT(typed("wlanctl keys " + kAll), testing::AllOf(testing::HasSubstr("5g"), testing::HasSubstr("WPAPSK")));
}

TEST_P(Tab, OffersTheOptionsOfTheVerb) {
  EXPECT_EQ("diff|5g|--color|--exit-code|--help|--in-force|--json|--no-pager|--secrets",
            typed("wlanctl diff 5g --" + kAll));
}

TEST_P(Tab, OffersTheValuesOfAnOption) {
  EXPECT_EQ("check|--band|2.4g|5g", typed("wlanctl check --band " + kAll));
  EXPECT_EQ("check|" + offers("--band=", {"2.4g", "5g"}), typed("wlanctl check --band=" + kAll));
}

TEST_P(Tab, DoesNotTakeAnOptionsValueForAnArgument) {
  EXPECT_EQ("get|2.4g|Channel", typed("wlanctl get 2.4g Chan\t"));
  EXPECT_EQ("apply|--confirm|5|2.4g", typed("wlanctl apply --confirm 5 2\t"));
}

TEST_P(Tab, LeavesAKeyOfAnSsidOpenForItsNumber) {
  EXPECT_EQ("get|2.4g|HideSSID:3", typed("wlanctl get 2.4g HideSS\t3"));
}

TEST_P(Tab, OffersTheNumbersOfAKeysSsids) {
  EXPECT_EQ("get|2.4g|" + offers("HideSSID:", {"1", "2", "3", "4", "5", "6", "7", "8"}),
            typed("wlanctl get 2.4g HideSSID:" + kAll));
}

TEST_P(Tab, OffersTheKeysOfBothBandsWhereNoneIsNamed) {
  EXPECT_EQ("explain|Channel", typed("wlanctl explain Chan\t"));
}

TEST_P(Tab, OffersTheNumbersOfAKeysLinks) {
  EXPECT_EQ("get|2.4g|" + offers("WdsKey:", {"1", "2", "3", "4"}), typed("wlanctl get 2.4g WdsKey:" + kAll));
}

TEST_P(Tab, LeavesAnAssignmentOpenForItsValue) {
  EXPECT_EQ("set|2.4g|Channel=11", typed("wlanctl set 2.4g Chan\t11"));
  EXPECT_EQ("set|2.4g|HideSSID:1=1", typed("wlanctl set 2.4g HideSSID:1\t1"));
}

TEST_P(Tab, CompletesTheSecondAssignmentToo) {
  EXPECT_EQ("set|2.4g|Channel=1|BeaconPeriod=100", typed("wlanctl set 2.4g Channel=1 BeaconP\t100"));
}

TEST_P(Tab, OffersTheChannelsOfTheBand) {
  EXPECT_EQ("set|2.4g|" + offers("Channel=", {"1", "10", "11", "12", "13", "14"}),
            typed("wlanctl set 2.4g Channel=1" + kAll));
  EXPECT_EQ("set|5g|" + offers("Channel=", {"100", "104", "108", "112", "116", "120", "124", "128", "132", "136",
                                            "140", "144", "149", "153", "157", "161", "165", "169", "173", "177"}),
            typed("wlanctl set 5g Channel=1" + kAll));
}

TEST_P(Tab, OffersStandardInputForASecret) {
  EXPECT_EQ("set|2.4g|WPAPSK:1=-", typed("wlanctl set 2.4g WPAPSK:1=\t"));
}

TEST_P(Tab, OffersNothingWhereThereIsNoChoice) {
  EXPECT_EQ("set|2.4g|BeaconPeriod=", typed("wlanctl set 2.4g BeaconPeriod=" + kAll));
}

TEST_P(Tab, CompletesFiles) {
  EXPECT_EQ("check|a file", typed("wlanctl check a\t"));
}

TEST_P(Tab, OffersTheVerbBelowOneThatTakesWordsToo) {
  EXPECT_EQ("2.4g|5g|log|show", sorted("wlanctl log " + kAll));
  EXPECT_EQ("log|show", typed("wlanctl log sh\t"));
  EXPECT_EQ("log|5g|-n", typed("wlanctl log 5g -n\t"));
}

TEST_P(Tab, OffersTheHistorysEntries) {
  EXPECT_EQ("17|9|log|show", sorted("wlanctl log show " + kAll));
  EXPECT_EQ("17|2.4g|5g|9|undo", sorted("wlanctl undo " + kAll));
}

TEST_P(Tab, OffersBandsAndFilesToCompareWith) {
  EXPECT_THAT(sorted("wlanctl diff " + kAll), testing::HasSubstr("2.4g|5g|"));
  EXPECT_EQ("diff|2.4g|a file", typed("wlanctl diff 2.4g a\t"));
}

TEST_P(Tab, CompletesTheWordsOfAnExport) {
  EXPECT_EQ("export|2.4g|5g", typed("wlanctl export " + kAll));
  EXPECT_EQ("export|--color|--format|--help|--json|--no-pager|--no-secrets|--output",
            typed("wlanctl export --" + kAll));
  EXPECT_EQ("export|5g|--format|dat", typed("wlanctl export 5g --format d\t"));
  EXPECT_EQ("export|" + offers("--format=", {"dat", "json"}), typed("wlanctl export --format=" + kAll));
  EXPECT_EQ("export|--output|a file|5g", typed("wlanctl export --output a\t5\t"));
}

TEST_P(Tab, CompletesTheWordsOfAnImport) {
  EXPECT_EQ("import|a file|5g", typed("wlanctl import a\t5\t"));
  EXPECT_EQ("import|a file|2.4g|5g", typed("wlanctl import a\\ file " + kAll));
  EXPECT_EQ(
      "import|--color|--command-timeout|--dry-run|--force|--help|--json|--merge|--no-pager|--replace|--to-file|--wait",
      typed("wlanctl import --" + kAll));
  EXPECT_EQ("import|--to-file|a file", typed("wlanctl import --to\ta\t"));
}

TEST_P(Tab, CompletesTheWordsOfAnEdit) {
  EXPECT_EQ("edit|2.4g|5g", typed("wlanctl edit " + kAll));
  EXPECT_EQ("edit|--color|--command-timeout|--force|--from|--help|--json|--no-pager|--secrets|--wait",
            typed("wlanctl edit --" + kAll));
  EXPECT_EQ("edit|5g|--from|a file", typed("wlanctl edit 5g --from a\t"));
}

TEST_P(Tab, CompletesTheWordsOfADoctor) {
  EXPECT_EQ("doctor|2.4g|5g", typed("wlanctl doctor " + kAll));
  EXPECT_EQ("doctor|--all|--color|--help|--json|--no-pager", typed("wlanctl doctor --" + kAll));
  EXPECT_EQ("doctor|--all|5g", typed("wlanctl doctor --a\t5\t"));
}

TEST_P(Tab, OffersTheWaysToSecureAnSsid) {
  const Words names = {"open", "wpa-wpa2-psk", "wpa2-psk", "wpa2-wpa3", "wpa3"};
  EXPECT_EQ("ssid|add|--security|" + offers("", names), typed("wlanctl ssid add --security " + kAll));
  EXPECT_EQ("ssid|add|5g|Kitchen|" + offers("--security=", names),
            typed("wlanctl ssid add 5g Kitchen --security=" + kAll));
  EXPECT_EQ("ssid|add|--both|Kitchen|--security|open", typed("wlanctl ssid add --both Kitchen --security op\t"));
}

TEST_P(Tab, CompletesTheFileOfAnAssignment) {
  EXPECT_EQ("set|2.4g|--file|WPAPSK:1=a file", typed("wlanctl set 2.4g --file WPAPSK:1=a\t"));
}

TEST_P(Tab, KnowsTheBandsOfEveryKey) {
  for (const std::string band : {"2.4g", "5g"}) {
    std::string expected;
    std::vector<std::string> names;
    for (const Json& key : keys()) {
      const Json& bands = key["bands"];
      if (std::find(bands.begin(), bands.end(), band) == bands.end()) continue;
      names.push_back(key["key"].get<std::string>() + (key["scope"] == "band" ? "" : ":"));
    }
    Words offered = lines_of(
        sim_test::shell("echo '" + typed("wlanctl get " + band + " " + kAll) + "' | tr '|' '\\n' | tail -n +3").out);
    EXPECT_THAT(offered, testing::UnorderedElementsAreArray(names)) << band;
  }
}

TEST_P(Tab, OffersTheValuesOfEveryKeyThatHasFew) {
  Words lines, expected;
  for (const std::string band : {"2.4g", "5g"}) {
    for (const Json& key : keys(band)) {
      // What does not differ by band is tried on one.
      const bool is_tried =
          band == "5g" && key["bands"].size() == 2 && key["key"] != "Channel" && key["key"] != "WirelessMode";
      if (key["secret"] == true || key["choices"].empty() || is_tried) continue;
      const std::string target = key["key"].get<std::string>() + (key["scope"] == "band" ? "=" : ":1=");
      lines.push_back("wlanctl set " + band + " " + target + kAll);
      // Both shells sort what they offer as texts.
      Words choices = key["choices"].get<Words>();
      std::sort(choices.begin(), choices.end());
      expected.push_back("set|" + band + "|" + offers(target, choices));
    }
  }
  ASSERT_GT(lines.size(), 50u);
  EXPECT_EQ(expected, type(GetParam(), lines));
}

}  // namespace
}  // namespace wlanctl_test

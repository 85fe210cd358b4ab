// explain: a setting with what the table says of it, and what the library answers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <regex>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr char kInit[] = "library_probe init 0 init 1 >/dev/null; ";

Json explained(const std::string& words, const std::string& before = kInit) {
  return json_of("explain " + words, before)["data"];
}

// Several, in one gateway.
std::map<std::string, Json> all_explained(const Words& keys) {
  Words steps = {kInit + std::string("true")};
  for (const std::string& key : keys) steps.push_back("wlanctl explain " + key + " --json");
  const std::vector<Result> results = run_steps(steps);
  std::map<std::string, Json> answers;
  for (size_t i = 0; i < keys.size(); ++i) answers[keys[i]] = document_in(results[i + 1].out)["data"];
  return answers;
}

Json band_of(const Json& data, const std::string& label) {
  for (const Json& band : data["bands"]) {
    if (band["band"] == label) return band;
  }
  return Json();
}

// "radio" or, as it is asked of SSID 1 and 2, "radio 2:save".
std::string effects_of(const Json& band) {
  std::string text;
  for (const Json& effect : band["effects"]) {
    if (!text.empty()) text += ' ';
    if (effect["condition"] != "") text += effect["condition"].get<std::string>() + ":";
    if (effect["condition"] == "" && effect["index"] == 2) text += "2:";
    text += effect["at_once"] ? "at-once+" : "";
    text += effect["apply"].get<std::string>();
    EXPECT_EQ(effect["source"] == "table", effect["asked_with"].is_null());
  }
  return text;
}

TEST(Explain, TellsWhatTheTableKnows) {
  const Json data = explained("BeaconPeriod");
  EXPECT_EQ("Beacon interval in time units of 1.024 ms", data["meaning"]);
  EXPECT_EQ("time units of 1.024 ms", data["unit"]);
  EXPECT_EQ("20 to 1024", data["accepted"]);
  EXPECT_EQ("band", data["scope"]);
  EXPECT_EQ(Json::parse(R"(["BeaconPeriod"])"), data["dat_keys"]);
  EXPECT_EQ("wifimgr_lib_get_beaconPeriod", data["getter"]);
  EXPECT_EQ("wifimgr_lib_set_beaconPeriod", data["setter"]);
  EXPECT_EQ(Json::parse("[100]"), band_of(data, "5g")["defaults"]);
}

// Column by column against the rows that other programs read.
TEST(Explain, AgreesWithTheSettingsTableOnEveryKey) {
  const Words rows = lines_of(sim_test::shell("sh '" + source_folder() + "/scripts/settings.sh' rows").out);
  EXPECT_LT(100u, rows.size());
  for (const std::string& row : rows) {
    Words cells;
    for (size_t at = 0; at != std::string::npos;) {
      const size_t tab = row.find('\t', at);
      cells.push_back(row.substr(at, tab - at));
      at = tab == std::string::npos ? tab : tab + 1;
    }
    SCOPED_TRACE(cells[0]);
    const std::string name = std::regex_replace(cells[0], std::regex("%d"), "");
    const Json document =
        document_in(sim_test::shell(std::string("'") + wlanctl_program() + "' explain " + name + " --json").out);
    const Json& data = document["data"];
    EXPECT_EQ(name, data["key"]);
    EXPECT_THAT(cells, testing::Contains(data["setter"].get<std::string>()));
    EXPECT_THAT(cells, testing::Contains(data["getter"].is_null() ? "NULL" : data["getter"].get<std::string>()));
    EXPECT_THAT(cells, testing::Contains(data["unit"].get<std::string>()));
  }
}

TEST(Explain, TellsTheKeysOfTheDatFileAndTheValueOfEachSsid) {
  const Json ssid = explained("SSID", std::string(kInit) + "wlanctl set 2.4g SSID:2=Visitors >/dev/null");
  EXPECT_EQ("SSID8", ssid["dat_keys"][7]);
  EXPECT_EQ(Json::parse(R"(["Gateway-Home","Visitors"])"), band_of(ssid, "2.4g")["values"]);
  EXPECT_EQ("Gateway-3-5G", band_of(ssid, "5g")["defaults"][2]);
  EXPECT_EQ("AccessPolicy0", explained("AccessPolicy")["dat_keys"][0]);
  EXPECT_EQ(Json::parse(R"(["Wds0Key","Wds1Key","Wds2Key","Wds3Key"])"), explained("WdsKey")["dat_keys"]);
}

constexpr struct {
  const char* key;
  const char* on_2_4g;
  const char* on_5g;
} kEffects[] = {
    {"Channel", "radio", "radio"},
    {"HideSSID", "save", "save"},
    {"BssidNum", "reboot", "reboot"},
    {"EnableSSID", "radio", "radio"},
    {"VHT_BW", "save", "radio"},
    {"WscConfMode", "at-once+save", "at-once+save"},
    {"WscV2Support", "at-once+radio 2:at-once+save", "at-once+radio 2:at-once+save"},
    {"WdsList", "save WdsEnable=1:radio", "save WdsEnable=1:radio"},
    {"Key1Str", "save WdsEnable=1 AuthMode:1=WEP:radio", "save WdsEnable=1 AuthMode:1=WEP:radio"},
};

TEST(Explain, TellsWhatTheLibraryAnswersAboutAChange) {
  Words keys;
  for (const auto& row : kEffects) keys.emplace_back(row.key);
  std::map<std::string, Json> answers = all_explained(keys);
  for (const auto& row : kEffects) {
    const Json& data = answers[row.key];
    EXPECT_EQ(row.on_2_4g, effects_of(band_of(data, "2.4g"))) << row.key;
    EXPECT_EQ(row.on_5g, effects_of(band_of(data, "5g"))) << row.key;
    EXPECT_EQ("library", band_of(data, "2.4g")["effects"][0]["source"]) << row.key;
  }
}

TEST(Explain, AsksTheLibraryAboutEveryKeyThatHasAValueToAskWith) {
  std::string script = kInit;
  const Json keys = json_of("keys")["data"]["keys"];
  for (const Json& key : keys) script += "wlanctl explain " + key["key"].get<std::string>() + ";";
  const Result result = run(script);
  EXPECT_EQ(0, result.status);
  Words from_table;
  std::string name;
  for (const std::string& line : lines_of(result.out)) {
    if (line[0] != ' ' && line != "2.4g" && line != "5g" && line != "traps") name = line;
    if (line.find("(the table's word") != std::string::npos) from_table.push_back(name);
    EXPECT_LE(line.size(), 80u) << line;
  }
  EXPECT_THAT(from_table, testing::ElementsAre("MacAddress", "MacAddress", "ApCliMacManual", "ApCliMacManual"));
}

TEST(Explain, SaysWhenItIsTheTablesWord) {
  const Json band = band_of(explained("MacAddress"), "5g");
  EXPECT_EQ("table", band["effects"][0]["source"]);
  EXPECT_THAT(run(std::string(kInit) + "wlanctl explain MacAddress").out,
              HasSubstr("change    an apply saves it without a restart (the table's word: it could not\n"));
}

TEST(Explain, TellsWhatAnApplyMakesOfValues) {
  const Json burst = band_of(explained("TxBurst"), "2.4g")["normalisation"];
  EXPECT_EQ(Json::parse(R"([{"values":[0],"makes":[{"key":"TxBurst","index":-1,"to":1}]}])"), burst);
  // Also where the value in the store would be changed anyway.
  const Json operation = band_of(explained("HT_OpMode"), "2.4g")["normalisation"];
  EXPECT_EQ(Json::parse(R"([{"values":[0],"makes":[{"key":"HT_OpMode","index":-1,"to":1}]}])"), operation);
  const std::string mode = run(std::string(kInit) + "wlanctl explain AuthMode").out;
  EXPECT_THAT(mode, HasSubstr("makes of OPEN: DefaultKeyID:1=0, EncrypType:1=NONE, WPAPSK:1=0\n"));
  EXPECT_EQ(Json::array(), band_of(explained("CountryCode"), "2.4g")["normalisation"]);
}

// Whether one of an apply's changes is of the setting itself.
bool is_overwritten(const Json& data) {
  for (const Json& band : data["bands"]) {
    for (const Json& one : band["normalisation"]) {
      for (const Json& made : one["makes"]) {
        if (made["key"] == data["key"]) return true;
      }
    }
  }
  return false;
}

TEST(Explain, SaysWhyAnApplyOverwritesASetting) {
  const Words keys = {"BasicRate", "DefaultKeyID", "FixedTxMode", "HT_OpMode", "Key1Str",
                      "Key4Type",  "TxBurst",      "TxPower",     "WmmCapable"};
  for (const auto& [name, data] : all_explained(keys)) {
    EXPECT_TRUE(is_overwritten(data)) << name;
    EXPECT_THAT(data["traps"].dump(), HasSubstr("an apply ")) << name;
  }
}

TEST(Explain, KnowsTheTraps) {
  std::map<std::string, Json> answers =
      all_explained({"AccessControlList", "AuthMode", "HideSSID", "WPAPSK", "MboSupport", "WscConfMode", "Channel",
                     "HT_OpMode", "WmmCapable"});
  EXPECT_THAT(answers["HT_OpMode"]["traps"].dump(),
              HasSubstr("overwrites it by WirelessMode: on 2.4g 1 in modes 0, 1"));
  EXPECT_THAT(answers["WmmCapable"]["traps"].dump(), HasSubstr("overwrites it by WirelessMode: on 2.4g 0 in modes 6"));
  EXPECT_THAT(answers["AccessControlList"]["traps"].dump(), HasSubstr("the driver gets the first one only"));
  EXPECT_THAT(answers["AuthMode"]["traps"].dump(), HasSubstr("OPEN loses the passphrase"));
  EXPECT_THAT(answers["HideSSID"]["traps"].dump(), HasSubstr("an SSID's empty value ends the list at a save"));
  EXPECT_THAT(answers["HideSSID"]["traps"].dump(), HasSubstr("cut behind 149 characters"));
  EXPECT_THAT(answers["WPAPSK"]["traps"].dump(), HasSubstr("a save leaves it out for SSIDs behind BssidNum"));
  EXPECT_THAT(answers["MboSupport"]["traps"].dump(), Not(HasSubstr("leaves it out")));
  EXPECT_THAT(answers["WscConfMode"]["traps"].dump(), HasSubstr("neither a revert nor a roll back"));
  EXPECT_EQ(Json::array(), answers["Channel"]["traps"]);
}

TEST(Explain, ShowsNoSecret) {
  const Result result =
      run("wlanctl set 2.4g WPAPSK:1=hush-hush-1 Key1Str:1=hushy RADIUS_Key:1=hush-hush-2 >/dev/null; for key in "
          "WPAPSK Key1Str RADIUS_Key WdsKey; do wlanctl explain $key; wlanctl explain $key --json; done");
  EXPECT_EQ(0, result.status);
  EXPECT_THAT(result.out, Not(HasSubstr("hush")));
  EXPECT_THAT(result.out, Not(HasSubstr("sample-")));
  EXPECT_THAT(result.out, HasSubstr("  value     ********\n"));
}

TEST(Explain, TakesTheNameOfTheDatFileAndAnIndexToo) {
  EXPECT_EQ("SSID", explained("SSID2")["key"]);
  EXPECT_EQ("AccessPolicy", explained("AccessPolicy0")["key"]);
  EXPECT_EQ("HideSSID", explained("hidessid:2")["key"]);
}

TEST(Explain, HintsAtWhatMayHaveBeenMeant) {
  const auto steps = run_steps({"wlanctl explain Chanel", "wlanctl explain qqqq --json", "wlanctl explain"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ("wlanctl: there is no key \"Chanel\"; do you mean Channel?\n", steps[0].err);
  EXPECT_EQ("wlanctl keys lists all", document_in(steps[1].out)["problems"][0]["next"]);
  EXPECT_EQ(2, steps[2].status);
}

TEST(Explain, OfOneBandTellsThatOne) {
  const Json data = explained("CountryRegionABand");
  EXPECT_EQ(1u, data["bands"].size());
  EXPECT_EQ("5g", data["bands"][0]["band"]);
}

TEST(Explain, ChangesNothing) {
  const auto steps =
      run_steps({functions() + kInit + "segment 2.4g >one; segment 5g >two; ls -A /run >files; cp " + kDat +
                     " dat; for key in WscConfMode BssidNum AuthMode WdsList; do wlanctl explain $key "
                     ">/dev/null; done",
                 functions() +
                     "segment 2.4g | cmp - one && segment 5g | cmp - two && ls -A /run | cmp - "
                     "files && cmp " +
                     kDat + " dat && echo same; commands | wc -l"});
  EXPECT_EQ("same\n0\n", steps[1].out);
}

TEST(Explain, OfNoStoreAsksTheDatFileAndOfNoneTheTable) {
  const auto steps = run_steps({"wlanctl explain Channel --json", "wlanctl explain Channel",
                                "grep -c . /proc/sysvipc/shm; rm -r /etc/Wireless; wlanctl explain Channel",
                                "wlanctl explain Channel --json"});
  const Json file = band_of(document_in(steps[0].out)["data"], "2.4g");
  EXPECT_EQ("file", file["values_from"]);
  EXPECT_EQ(Json::parse("[6]"), file["values"]);
  EXPECT_EQ("library", file["effects"][0]["source"]);
  EXPECT_THAT(steps[1].out, HasSubstr("  value     6 (in the dat file)\n"));
  EXPECT_EQ(0, steps[2].status);
  EXPECT_THAT(steps[2].out, testing::StartsWith("1\n"));
  EXPECT_THAT(steps[2].out, HasSubstr("  value     - (there is no store)\n"));
  const Json none = band_of(document_in(steps[3].out)["data"], "2.4g");
  EXPECT_EQ("none", none["values_from"]);
  EXPECT_EQ("radio", effects_of(none));
  EXPECT_EQ("table", none["effects"][0]["source"]);
}

TEST(Explain, SaysWhichStoreCannotBeAsked) {
  const Result result =
      run(std::string(kInit) + "wlanctl set 2.4g BssidNum=9 --force >/dev/null; wlanctl explain Channel");
  EXPECT_EQ(0, result.status);
  EXPECT_THAT(result.err, HasSubstr("note: the store of 2.4g cannot be asked; wlanctl diff 2.4g tells more\n"));
  EXPECT_THAT(result.out, HasSubstr("  value     -\n  change    an apply restarts the radio (the table's word"));
  EXPECT_THAT(result.out, HasSubstr("  value     36\n"));
}

Words names_of(const std::string& words) {
  Words names;
  const Json keys = json_of("keys " + words)["data"]["keys"];
  for (const Json& key : keys) names.push_back(key["key"]);
  return names;
}

TEST(KeysFiltered, ByAPartOfTheName) {
  EXPECT_THAT(names_of("RekeyI"), testing::ElementsAre("RekeyInterval"));
  EXPECT_THAT(names_of("psk"), testing::ElementsAre("WPAPSK"));
  EXPECT_THAT(names_of("aifsn"), testing::ElementsAre("APAifsn", "BSSAifsn"));
}

TEST(KeysFiltered, ByScopeBandAndMeaningTogether) {
  EXPECT_THAT(names_of("--scope link"), testing::ElementsAre("WdsKey"));
  EXPECT_THAT(names_of("country --band 5g"), testing::ElementsAre("CountryCode", "CountryRegionABand"));
  EXPECT_THAT(names_of("5g --about REGULATORY"), testing::ElementsAre("CountryRegionABand"));
  EXPECT_THAT(names_of("--about pre-shared --scope ssid"), testing::ElementsAre("WPAPSK"));
}

TEST(KeysFiltered, ToNothingIsAMistake) {
  const auto steps = run_steps(
      {"wlanctl keys chanel", "wlanctl keys --about qqqq", "wlanctl keys --scope room", "wlanctl keys --band 6g"});
  for (const Result& step : steps) EXPECT_EQ(2, step.status);
  EXPECT_EQ("wlanctl: no setting is like that: \"chanel\"; do you mean Channel?\n", steps[0].err);
}

TEST(Explain, TellsWhatTheDriverReadsWhenTheRadioStarts) {
  EXPECT_THAT(run("wlanctl explain RTSThreshold").out,
              HasSubstr("change    an apply saves it without a restart (asked with 1); the driver reads\n"
                        "            it at the radio's next start\n"));
  EXPECT_THAT(run("wlanctl explain HideSSID").out, Not(HasSubstr("reads it")));
}

}  // namespace
}  // namespace wlanctl_test

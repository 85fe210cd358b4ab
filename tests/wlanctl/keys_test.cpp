// keys: the settings are those of the library's table, and its setters take what is said of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

struct Probe {
  std::string key;  // with its index
  std::string value;
};

// Both sides of what a setting takes, from the words that `keys` prints.
struct Bounds {
  std::vector<Probe> good;
  std::vector<Probe> bad;
};

std::string name_of(const Json& key) {
  return key["key"].get<std::string>() + (key["scope"] == "band" ? "" : ":1");
}

void add_number(const std::string& name, long lowest, long highest, Bounds* bounds) {
  bounds->good.push_back({name, std::to_string(lowest)});
  bounds->good.push_back({name, std::to_string(highest)});
  bounds->bad.push_back({name, std::to_string(lowest - 1)});
  bounds->bad.push_back({name, std::to_string(highest + 1)});
}

// By its words; false for a rule of its own.
bool add_by_words(const Json& key, Bounds* bounds) {
  const std::string name = name_of(key);
  const std::string words = key["accepted"];
  long lowest = 0;
  long highest = 0;
  char between[4] = "";
  int used = 0;
  if (std::sscanf(words.c_str(), "%ld %3[a-z] %ld%n", &lowest, between, &highest, &used) == 3 &&
      static_cast<size_t>(used) == words.size()) {
    add_number(name, lowest, highest, bounds);
  } else if (words.rfind("one of ", 0) == 0) {
    for (const Json& choice : key["choices"]) {
      // Not all of them go with the SSID's authentication mode.
      const bool is_cipher = key["key"] == "EncrypType" && choice.get<std::string>().find("AES") == std::string::npos;
      if (!is_cipher) bounds->good.push_back({name, choice});
    }
    bounds->bad.push_back({name, "NEITHER"});
    bounds->bad.push_back({name, ""});
  } else if (words.rfind("at most ", 0) == 0) {
    const size_t most = std::stoul(words.substr(8));
    bounds->good.push_back({name, std::string(most, 'x')});
    bounds->bad.push_back({name, std::string(most + 1, 'x')});
  } else if (words == "digits") {
    bounds->good.push_back({name, "0123456789"});
    bounds->bad.push_back({name, "1x"});
  } else if (words == "any text") {
    bounds->good.push_back({name, "anytext"});
  } else if (words == "nothing: read-only") {
    bounds->bad.push_back({name, "02:28:10:24:00:00"});
    bounds->bad.push_back({name, ""});
  } else {
    return false;
  }
  return true;
}

struct Rule {
  Words good;
  Words bad;
};

const std::string kMac = "00:11:22:33:44:55";

std::string four_of(const std::string& word) {
  return word + ";" + word + ";" + word + ";" + word;
}

std::string text_of(size_t length, char c) {
  return std::string(length, c);
}

// The rules of their own, by the key's name; the wireless mode's differ by band.
std::map<std::string, Rule> own_rules(const std::string& band) {
  const Rule ipv4 = {{"0.0.0.0", "255.255.255.255"}, {"256.0.0.0", "1.2.3", "1.2.3.x"}};
  const Rule wep_key = {{"0", "ab-cd", text_of(13, 'x'), text_of(10, 'f'), text_of(26, 'f')},
                        {"abcd", text_of(10, 'x'), text_of(26, 'x')}};
  std::map<std::string, Rule> rules = {
      {"own_ip_addr", ipv4},
      {"RADIUS_Server:1", ipv4},
      {"SSID:1", {{"x", text_of(32, 'x')}, {"", text_of(33, 'x')}}},
      {"WPAPSK:1",
       {{"0", text_of(8, 'x'), text_of(63, 'x'), text_of(64, 'f')}, {"", text_of(7, 'x'), text_of(64, 'x')}}},
      {"Channel", band == "2.4g" ? Rule{{"0", "1", "14"}, {"15", "36"}}
                                 : Rule{{"0", "36", "64", "100", "144", "149", "177"}, {"1", "34", "38", "68", "181"}}},
      {"CountryRegion", {{"0", "7", "31", "32", "33"}, {"8", "30", "34"}}},
      {"HT_MCS:1", {{"0", "15", "32", "33"}, {"16", "31", "34"}}},
      {"WscKeyASCII:1", {{"0", "1", "8", "63"}, {"2", "7", "64"}}},
      {"RADIUS_Key:1",
       {{text_of(8, 'x'), text_of(63, 'x'), text_of(64, 'f')}, {text_of(7, 'x'), text_of(64, 'x'), text_of(65, 'f')}}},
      {"Key1Str:1", wep_key},
      {"Key2Str:1", wep_key},
      {"Key3Str:1", wep_key},
      {"Key4Str:1", wep_key},
      {"WdsList", {{four_of(kMac)}, {four_of(kMac) + ";" + kMac, four_of("00:11"), kMac}}},
      {"WdsPhyMode", {{"CCK;OFDM;HTMIX;GREENFIELD"}, {"CCK;OFDM;HTMIX", four_of("VHT")}}},
      {"WdsEncrypType", {{"NONE;WEP;TKIP;AES", four_of("AES")}, {"NONE;WEP;TKIP", four_of("GCMP256")}}},
      {"WdsKey:1", {{text_of(8, 'x'), text_of(63, 'x'), text_of(64, 'f')}, {text_of(7, 'x'), text_of(64, 'x')}}},
  };
  rules["WirelessMode"] =
      band == "2.4g"
          ? Rule{{"0", "1", "3", "4", "5", "6", "7", "8", "9", "10", "16"}, {"2", "11", "15", "17"}}
          : Rule{{"2", "3", "5", "8", "10", "11", "14", "15", "17"}, {"0", "1", "4", "6", "7", "9", "12", "16"}};
  for (const char* const list : {"AckPolicy", "APACM", "APAifsn", "APCwmax", "APCwmin", "APTxop", "BSSACM", "BSSAifsn",
                                 "BSSCwmax", "BSSCwmin", "BSSTxop"}) {
    rules[list] = {{"0;1;2;3"}, {"0;1;2", "0;1;2;3;4", "0;1;2;x", "0;;2;3"}};
  }
  return rules;
}

Bounds bounds_of(const Json& keys, const std::string& band) {
  Bounds bounds;
  const std::map<std::string, Rule> rules = own_rules(band);
  for (const Json& key : keys) {
    if (add_by_words(key, &bounds)) continue;
    const auto rule = rules.find(name_of(key));
    if (rule == rules.end()) {
      ADD_FAILURE() << "no values for " << key;
      continue;
    }
    for (const std::string& value : rule->second.good) bounds.good.push_back({rule->first, value});
    for (const std::string& value : rule->second.bad) bounds.bad.push_back({rule->first, value});
  }
  return bounds;
}

std::string assignments(const std::vector<Probe>& probes) {
  std::string words;
  for (const Probe& probe : probes) words += " '" + probe.key + "=" + probe.value + "'";
  return words;
}

void expect_bounds(const std::string& band) {
  const Bounds bounds = bounds_of(json_of("keys " + band)["data"]["keys"], band);
  const std::vector<Result> steps = run_steps(
      {"wlanctl set " + band + assignments(bounds.good), "wlanctl set --json " + band + assignments(bounds.bad)});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ(1, steps[1].status);
  std::multiset<std::string> refused;
  std::multiset<std::string> expected;
  for (const Probe& probe : bounds.bad) expected.insert(probe.key);
  const Json document = document_in(steps[1].out);
  for (const Json& problem : document["problems"]) refused.insert(problem["key"]);
  EXPECT_EQ(expected, refused);
}

TEST(Keys, AreThoseOfTheSettingsTable) {
  const Result result =
      sim_test::shell("sh '" + source_folder() + "/scripts/settings.sh' rows | cut -f 1 | sed 's/%d//'");
  std::set<std::string> listed;
  const Json keys = json_of("keys")["data"]["keys"];
  for (const Json& key : keys) listed.insert(key["key"]);
  const Words rows = lines_of(result.out);
  EXPECT_EQ(std::set<std::string>(rows.begin(), rows.end()), listed);
  EXPECT_LT(100u, listed.size());
}

TEST(Keys, TellTheUnitBehindWhatIsMeasured) {
  const std::string text = run("wlanctl keys").out;
  EXPECT_THAT(text, HasSubstr("Beacon interval in time units of 1.024 ms\n"));
  EXPECT_THAT(text, HasSubstr("TX power in percent; on 2.4G the normalisation"));
}

TEST(Keys, TheSettersOf24gTakeAndRefuseWhatIsSaid) {
  expect_bounds("2.4g");
}

TEST(Keys, TheSettersOf5gTakeAndRefuseWhatIsSaid) {
  expect_bounds("5g");
}

TEST(Keys, AreInTheDatFilesOfAGateway) {
  const Json keys = json_of("keys")["data"]["keys"];
  std::map<std::string, std::string> names;
  for (const Json& key : keys) {
    for (const Json& band : key["bands"]) names[band] += " " + name_of(key);
  }
  ASSERT_EQ(2u, names.size());
  std::string script = "library_probe init 0 init 1 >/dev/null\n";
  for (const auto& [band, words] : names) script += "wlanctl get " + band + words + " >/dev/null\n";
  EXPECT_EQ("", run(script).err);
}

TEST(Keys, OfOneBandLeaveOutTheOthers) {
  const std::vector<Result> steps = run_steps({"wlanctl keys 2.4g", "wlanctl keys 5g", "wlanctl keys"});
  EXPECT_THAT(steps[0].out, HasSubstr("\nCountryRegion "));
  EXPECT_THAT(steps[0].out, Not(HasSubstr("\nCountryRegionABand ")));
  EXPECT_THAT(steps[1].out, Not(HasSubstr("\nCountryRegion ")));
  EXPECT_THAT(steps[2].out, AllOf(HasSubstr("\nCountryRegion "), HasSubstr("\nCountryRegionABand ")));
}

Json choices_of(const std::string& words, const std::string& name) {
  const Json document = json_of(words);
  for (const Json& key : document["data"]["keys"]) {
    if (key["key"] == name) return key["choices"];
  }
  return {};
}

TEST(Keys, ListTheChannelsAndModesOfTheBand) {
  EXPECT_EQ((Json{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14"}),
            choices_of("keys 2.4g", "Channel"));
  EXPECT_EQ(29u, choices_of("keys 5g", "Channel").size());
  EXPECT_EQ(43u, choices_of("keys", "Channel").size()) << "of both bands";
  EXPECT_EQ((Json{"2", "3", "5", "8", "10", "11", "14", "15", "17"}), choices_of("keys 5g", "WirelessMode"));
  EXPECT_EQ((Json{"0", "1", "2", "3", "4", "5", "6", "7", "31", "32", "33"}), choices_of("keys", "CountryRegion"));
  EXPECT_EQ(Json::array(), choices_of("keys", "WscKeyASCII")) << "too many";
}

TEST(Keys, SayWhoKnowsTheChannelsOfARegion) {
  const std::string text = run("wlanctl keys | tr -s '\\n ' ' '").out;
  for (const char* const meaning : {"Channel number; 0 lets the driver choose; which", "Regulatory region; which"}) {
    EXPECT_THAT(text, HasSubstr(std::string(meaning) + " of the channels a region allows is the driver's to say"));
  }
}

TEST(Keys, NeedNoStore) {
  const std::vector<Result> steps =
      run_steps({"rm -r /etc/Wireless; wlanctl keys --json >/dev/null", "wc -l </proc/sysvipc/shm"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_EQ("1\n", steps[1].out);
}

TEST(Keys, RefuseABandThatIsNone) {
  EXPECT_EQ(2, run("wlanctl keys 6g --json >/dev/null").status);
}

TEST(Keys, FitAConsoleOfEightyColumns) {
  for (const std::string& line : lines_of(run("wlanctl keys").out)) EXPECT_LE(line.size(), 80u) << line;
}

}  // namespace
}  // namespace wlanctl_test

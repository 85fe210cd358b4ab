// Values that a shell would act on: an experiment over every setting finds the places where the library passes a value
// on unescaped, and set refuses exactly there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

struct Setting {
  std::string name;  // with its index
  std::string setter;
  std::string index;
};

struct Payload {
  std::string name;
  std::string begin;
  std::string end;
};

// A RADIUS secret must have eight characters; each makes a file when a shell acts on it.
const std::vector<Payload> kPayloads = {
    {"dollar", "aaaaaaaa$(touch ", ")"}, {"backtick", "aaaaaaaa`touch ", "`"}, {"semicolon", "aaaaaaaa;touch ", ""},
    {"line", "aaaaaaaa\ntouch ", ""},    {"number", "1\ntouch ", "\n"},
};

std::string value_of(const Payload& payload, const std::string& file) {
  return payload.begin + file + payload.end;
}

// Between them they write every line of the script.
const Words kModes = {"set wifimgr_lib_set_authMode % 1 WPA2PSK",
                      "set wifimgr_lib_set_authMode % 1 WEP set wifimgr_lib_set_ieee8021x % 1 1"};

// A place: setting and payload.
using Places = std::set<std::string>;

struct Side {
  std::string label;
  std::string number;
  std::string other;  // the marker of rows that are not of this band
  std::string folder;
};

const Side k2_4G = {"2.4g", "0", "ONLY_5G", "RT2860AP"};
const Side k5G = {"5g", "1", "ONLY_2_4G", "RT2860AP_AC"};

// Those of a band. The count of SSIDs comes last: no SSID is left when it is no number.
std::vector<Setting> settings_of(const Side& side) {
  std::vector<Setting> settings;
  Setting count;
  const std::regex row(
      "^WIFIMGR_SETTING\\(\"(\\w+)(?:%d)?(\\w*)\", (\\w+), \\w+, (\\w+), \\w+, \\w+, \\w+, (\\w+), .*");
  for (const std::string& line : lines_of(read_file(source_folder() + "/include/wifimgr_settings.h"))) {
    std::smatch found;
    if (!std::regex_match(line, found, row) || found[4] == side.other) continue;
    const bool is_band_wide = found[3] == "BAND";
    const Setting setting = {found[1].str() + found[2].str() + (is_band_wide ? "" : ":1"), found[5],
                             is_band_wide ? "-1" : "1"};
    if (found[1] == "BssidNum") {
      count = setting;
    } else {
      settings.push_back(setting);
    }
  }
  settings.push_back(count);
  return settings;
}

std::string probe_word(const Side& side, const Setting& setting, const std::string& value) {
  return " set " + setting.setter + " " + side.number + " " + setting.index + " '" + value + "'";
}

std::string for_side(std::string text, const Side& side) {
  for (size_t at = text.find('%'); at != std::string::npos; at = text.find('%')) text.replace(at, 1, side.number);
  return text;
}

// The driver's commands do nothing here: it is the shell that is watched.
std::string quiet_driver() {
  return "rm -f /userfs/bin/iwpriv; ";
}

// Which settings the library itself takes each payload for, whatever a shell would do. WPS settings go to the driver at
// once; none of them may have made a hit.
std::vector<std::vector<Setting>> taken(const Side& side, const std::vector<Setting>& settings) {
  Words steps;
  for (const Payload& payload : kPayloads) {
    std::string step = quiet_driver() + "library_probe init " + side.number;
    for (const Setting& setting : settings) step += probe_word(side, setting, value_of(payload, "hit"));
    steps.push_back(step + " 2>/dev/null; [ ! -e hit ] || echo hit");
  }
  const std::vector<Result> results = run_steps(steps);
  std::vector<std::vector<Setting>> all;
  for (const Result& result : results) {
    Words lines = lines_of(result.out);
    EXPECT_EQ(settings.size() + 1, lines.size()) << result.out;
    all.emplace_back();
    for (size_t i = 0; i < settings.size() && i + 1 < lines.size(); ++i) {
      if (lines[i + 1] == settings[i].setter + " 0") all.back().push_back(settings[i]);
    }
  }
  return all;
}

// Writes and runs the execute script of an SSID with each of them, on a store made anew each time.
Places hits(const Side& side, const std::vector<std::vector<Setting>>& settings) {
  const std::string script = "/etc/Wireless/" + side.folder + "/WLAN_exec.sh";
  std::string all = quiet_driver();
  for (size_t i = 0; i < kPayloads.size(); ++i) {
    all += "\nlibrary_probe";
    std::string names;
    for (const Setting& setting : settings[i]) {
      const std::string file = "hit" + std::to_string(names.empty() ? 0 : lines_of(names).size());
      names += setting.name + " " + kPayloads[i].name + "\n";
      for (const std::string& mode : kModes) {
        all += " init % oper % 0 " + mode + probe_word(side, setting, value_of(kPayloads[i], file));
        all += " script % 0 flag 1 run % " + script;
      }
    }
    all += " >/dev/null 2>&1\ni=0; while read place; do [ ! -e hit$i ] || echo $place; i=$((i+1)); done <<END\n" +
           names + "END\nrm -f hit*";
  }
  const Result result = run(for_side(all, side));
  const Words lines = lines_of(result.out);
  return {lines.begin(), lines.end()};
}

// What set refuses because of a shell.
Places refused(const Side& side, const std::vector<std::vector<Setting>>& settings) {
  Words steps;
  for (size_t i = 0; i < kPayloads.size(); ++i) {
    steps.push_back("wlanctl set " + side.label + " --json");
    for (const Setting& setting : settings[i])
      steps.back() += " '" + setting.name + "=" + value_of(kPayloads[i], "hit") + "'";
  }
  const std::vector<Result> results = run_steps(steps);
  Places places;
  for (size_t i = 0; i < kPayloads.size(); ++i) {
    const Json document = document_in(results[i].out);
    for (const Json& problem : document["problems"]) {
      if (problem["reason"].get<std::string>().rfind("a shell acts on", 0) == 0) {
        places.insert(problem["key"].get<std::string>() + " " + kPayloads[i].name);
      }
    }
  }
  return places;
}

// The list of the places.
Places known_places() {
  Places places;
  for (const char* const quoted : {"SSID:1", "WPAPSK:1", "Key1Str:1", "Key2Str:1", "Key3Str:1", "Key4Str:1"}) {
    for (const char* const payload : {" dollar", " backtick"}) places.insert(std::string(quoted) + payload);
  }
  for (const char* const bare : {"AccessControlList:1", "RADIUS_Key:1"}) {
    for (const char* const payload : {" dollar", " backtick", " semicolon", " line"}) {
      places.insert(std::string(bare) + payload);
    }
  }
  places.insert("AccessControlList:1 number");
  places.insert("RADIUS_Key:1 number");
  return places;
}

void expect_exactly_the_dangerous_refused(const Side& side) {
  const auto settings = taken(side, settings_of(side));
  const Places hit = hits(side, settings);
  EXPECT_EQ(known_places(), hit);
  EXPECT_EQ(hit, refused(side, settings));
}

TEST(Danger, SetRefusesExactlyWhereAShellActs24g) {
  expect_exactly_the_dangerous_refused(k2_4G);
}

TEST(Danger, SetRefusesExactlyWhereAShellActs5g) {
  expect_exactly_the_dangerous_refused(k5G);
}

TEST(Danger, ALineEndIsRefusedForEverySetting) {
  for (const Side& side : {k2_4G, k5G}) {
    const auto settings = taken(side, settings_of(side));
    std::string call = "wlanctl set " + side.label + " --json";
    for (const Setting& setting : settings[3]) call += " '" + setting.name + "=" + value_of(kPayloads[3], "hit") + "'";
    const std::vector<Result> steps = run_steps({call});
    EXPECT_EQ(settings[3].size(), document_in(steps[0].out)["problems"].size());
  }
}

TEST(Danger, AListOfAddressesIsNoDanger) {
  const std::vector<Result> steps = run_steps(
      {"wlanctl set 2.4g 'AccessControlList:1=00:11:22:33:44:55;00:11:22:33:44:66'",
       "wlanctl set 2.4g 'AccessControlList:1=00:11:22:33:44:55;reboot'", "wlanctl set 2.4g AccessControlList:1="});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ(1, steps[1].status);
  EXPECT_EQ(0, steps[2].status);
}

TEST(Danger, ForceStoresAllTheSame) {
  const std::vector<Result> steps = run_steps(
      {"wlanctl set 2.4g 'SSID:1=a`b`$c'", "wlanctl set 2.4g --force 'SSID:1=a`b`$c'", "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ(
      "wlanctl: SSID:1 cannot be \"a`b`$c\": a shell acts on $ and ` when the driver's script runs; choose another "
      "value, or insist with --force\n",
      steps[0].err);
  EXPECT_EQ("a`b`$c\n", steps[2].out);
}

TEST(Danger, WordsOfTheCommandLineReachNoShell) {
  const Result result =
      run("wlanctl get 2.4g 'Channel;touch hit' '$(touch hit)'; wlanctl set 2.4g '`touch hit`=1' --file "
          "'SSID:1=$(touch hit)'; wlanctl check '$(touch hit)'; wlanctl show '$(touch hit)'; [ ! -e hit ]");
  EXPECT_EQ(0, result.status);
}

}  // namespace
}  // namespace wlanctl_test

// apply --dry-run: it shows what the apply then does, and touches nothing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

Words texts(const Json& array) {
  Words words;
  for (const Json& text : array) words.push_back(text.get<std::string>());
  return words;
}

// The calls that a recorder sees of the shown command lines: a script's path stands for its lines, and a shell takes the
// quotes away.
Words calls_of(const Json& band) {
  Words calls;
  size_t script = 0;
  for (const std::string& command : texts(band["commands"])) {
    if (command.starts_with("cat ")) continue;
    if (!command.ends_with("/WLAN_exec.sh")) {
      calls.push_back(command);
      continue;
    }
    for (std::string line : texts(band["scripts"].at(script++)["lines"])) {
      line.erase(std::remove(line.begin(), line.end(), '"'), line.end());
      if (!line.empty()) calls.push_back(line);
    }
  }
  return calls;
}

// The file that the shown changes make of the one before, as a patch would.
Words patched(const Words& before, const Json& changes) {
  Words lines = before;
  size_t at = 0;
  for (const Json& change : changes) {
    const std::string line = change["line"];
    if (change["change"] == "removed") {
      while (at < lines.size() && lines[at] != line) ++at;
      EXPECT_LT(at, lines.size()) << line;
      if (at < lines.size()) lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(at));
    }
  }
  for (const Json& change : changes) {
    if (change["change"] == "added") lines.push_back(change["line"]);
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

struct Story {
  Json shown;
  Words calls;
  Words file_before;
  Words file_after;
  std::string script;
};

// Dry run, then apply.
Story tell(const std::string& band, const std::string& changes, const std::string& folder) {
  const std::string dat = "/etc/Wireless/" + folder + "/RT2860AP.dat";
  const Result result = run_story(
      "for value in " + changes + "; do wlanctl set " + band + " \"$value\" >/dev/null || exit 1; done; cat " + dat +
          " >before; wlanctl apply " + band + " --dry-run --secrets --json >shown.json; wlanctl apply " + band +
          " >/dev/null || exit 1; cat shown.json; echo == commands; commands; echo == before;" +
          " cat before; echo == after; cat " + dat + "; echo == script; cat /etc/Wireless/" + folder + "/WLAN_exec.sh",
      {"--chips", "7603,7612"});
  EXPECT_EQ(0, result.status) << result.err;
  Story story;
  story.shown = document_in(result.out.substr(0, result.out.find("== ")))["data"]["bands"].at(0);
  story.calls = lines_of(behind(result.out, "commands"));
  story.file_before = lines_of(behind(result.out, "before"));
  story.file_after = lines_of(behind(result.out, "after"));
  story.script = behind(result.out, "script");
  return story;
}

void expect_as_shown(const Story& story) {
  EXPECT_EQ(story.calls, calls_of(story.shown));
  Words after = story.file_after;
  std::sort(after.begin(), after.end());
  EXPECT_EQ(after, patched(story.file_before, story.shown["dat"]["changes"]));
  EXPECT_EQ(lines_of(story.script), texts(story.shown["scripts"].back()["lines"]));
}

TEST(DryRun, ShowsWhatTheApplyOfTheRadioDoes) {
  const Story story = tell("2.4g", "Channel=1 SSID:1=Kitchen HideSSID:2=1", "RT2860AP");
  EXPECT_EQ("commit", story.shown["action"]);
  EXPECT_EQ("radio", story.shown["apply"]);
  expect_as_shown(story);
}

TEST(DryRun, ShowsWhatAnApplyWithoutARestartDoes) {
  const Story story = tell("5g", "HideSSID:1=1 WPAPSK:1=correct-horse", "RT2860AP_AC");
  EXPECT_EQ("save", story.shown["action"]);
  EXPECT_EQ("save", story.shown["apply"]);
  expect_as_shown(story);
}

TEST(DryRun, ShowsTheReloadOfTheDriverThatTheBusAsksFor) {
  const Story story = tell("5g", "BssidNum=3 EnableSSID:3=1 WdsEnable=1", "RT2860AP_AC");
  EXPECT_EQ("reboot", story.shown["apply"]);
  const Words commands = texts(story.shown["commands"]);
  EXPECT_THAT(commands, Contains("cat /proc/bus/pci/devices > /tmp/devices"));
  EXPECT_THAT(commands, Contains("insmod /lib/modules/4.4.115/mt7662e_ap.ko"));
  expect_as_shown(story);
}

TEST(DryRun, TouchesNeitherStoresNorFilesNorInterfaces) {
  const Result result = run_story(
      "all() { segment 2.4g | md5sum; segment 5g | md5sum; for f in $(find /etc/Wireless /run/ /tmp -xdev -type f |"
      "  grep -v -e gateway-sim -e sim_test | sort); do stat -c '%n %a %Y' $f; md5sum $f; done; ls /tmp; commands; }\n"
      "wlanctl set 2.4g Channel=1 BssidNum=3 >/dev/null; wlanctl set 5g HideSSID:1=1 >/dev/null; all >before;"
      "wlanctl apply --dry-run >shown; echo $?; wc -l <shown; all >after; cmp before after && echo == same",
      {"--chips", "7603,7612"});
  EXPECT_THAT(result.out, testing::StartsWith("0\n"));
  EXPECT_THAT(result.out, testing::EndsWith("== same\n"));
}

TEST(DryRun, LeavesTheApplyBehindItAsHeavyAsItWas) {
  const Result result =
      run_story("wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --dry-run >/dev/null; wlanctl diff 2.4g");
  EXPECT_THAT(result.out, HasSubstr("radio"));
}

TEST(DryRun, MasksPassphrasesAndKeysUnlessAsked) {
  const Result result = run_story(
      "wlanctl set 2.4g WPAPSK:1=correct-horse RADIUS_Key:1=battery-staple Key1Str:2=wepwe AuthMode:2=WEPAUTO;"
      "wlanctl set 2.4g Channel=1; wlanctl apply 2.4g --dry-run; wlanctl apply 2.4g --dry-run --json;"
      "echo == open; wlanctl apply 2.4g --dry-run --secrets");
  const std::string masked = result.out.substr(0, result.out.find("== open"));
  for (const char* const secret : {"correct-horse", "battery-staple", "wepwe", "sample-passphrase", "sample-secret"}) {
    EXPECT_THAT(masked + result.err, Not(HasSubstr(secret)));
  }
  EXPECT_THAT(masked, HasSubstr("iwpriv ra0 set WPAPSK=\"********\"\n"));
  EXPECT_THAT(masked, HasSubstr("iwpriv ra1 set Key1=\"********\"\n"));
  EXPECT_THAT(masked, HasSubstr("+WPAPSK1=********\n"));
  EXPECT_THAT(behind(result.out, "open"), HasSubstr("set WPAPSK=\"correct-horse\"\n"));
  EXPECT_THAT(behind(result.out, "open"), HasSubstr("+WPAPSK1=correct-horse\n"));
}

TEST(DryRun, MasksAPassphraseOfSeveralLines) {
  const Result result = run_story(
      "wlanctl set --force 2.4g \"WPAPSK:1=$(printf 'correct\\nhorse')\" >/dev/null; wlanctl apply 2.4g --dry-run");
  EXPECT_THAT(behind("== all\n" + result.out.substr(result.out.find("WLAN_exec.sh for SSID 1")), "all"),
              Not(HasSubstr("horse")));
}

TEST(DryRun, SparesAReaderWhatEverySaveLeavesOut) {
  const Result result = run_story("wlanctl set 2.4g SSID:1=Kitchen >/dev/null; wlanctl apply 2.4g --dry-run");
  EXPECT_THAT(result.out, HasSubstr("    -SSID1=Gateway-Home\n    +SSID1=Kitchen\n"));
  EXPECT_THAT(result.out, HasSubstr("WmmCapable"));
  EXPECT_THAT(result.out, Not(HasSubstr("-SSID3=")));
  EXPECT_THAT(result.out, Not(HasSubstr("-PreAuth=")));
  EXPECT_THAT(result.out, HasSubstr("comments and blank lines"));
}

TEST(DryRun, ShowsNothingToDoAsEmptyArrays) {
  EXPECT_EQ((Json{{"band", "2.4g"},
                  {"apply", "nothing"},
                  {"action", "none"},
                  {"commands", Json::array()},
                  {"dat", {{"path", kDat}, {"changes", Json::array()}}},
                  {"scripts", Json::array()}}),
            json_of("apply 2.4g --dry-run")["data"]["bands"].at(0));
}

TEST(DryRun, SaysThatTheApplyWouldBeRefusedAndShowsItAllTheSame) {
  const Json document = json_of("apply 2.4g --dry-run", "wlanctl set --force 2.4g 'SSID:1=a`id`'");
  EXPECT_EQ(1, document["exit_code"]);
  EXPECT_EQ("SSID:1", document["problems"].at(0)["key"]);
  EXPECT_EQ("save", document["data"]["bands"].at(0)["action"]);
}

TEST(DryRun, WaitsForNobody) {
  const Result result =
      run_story("flock /var/run/wlanctl.lock sh -c 'wlanctl apply --dry-run --wait 0 >/dev/null; echo $?'");
  EXPECT_EQ("0\n", result.out);
}

}  // namespace
}  // namespace wlanctl_test

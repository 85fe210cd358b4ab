// ssid: SSIDs listed, added, renamed and switched, on one band or on both.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// The steps behind an initialised store, in a folder with a passphrase in the file "word".
std::vector<Result> run_with_word(Words steps, const Words& options = {}) {
  return run_live(std::move(steps), options, "echo guest-word-1 >word; ");
}

const std::string kAdd = "wlanctl ssid add --passphrase-file word ";

Json only_band(const Json& document) {
  EXPECT_EQ(1u, document["data"]["bands"].size());
  return document["data"]["bands"][0];
}

TEST(SsidList, TellsWhatEachIs) {
  const auto steps = run_with_word({"wlanctl set 2.4g HideSSID:2=1 EnableSSID:2=0 AuthMode:2=WPA3PSK >/dev/null",
                                    "wlanctl ssid list 2.4g", "wlanctl ssid list --json"});
  EXPECT_EQ(
      "2.4g\n"
      "  SSID  INTERFACE  STATE  ENABLED  HIDDEN  SECURITY     NAME\n"
      "  1     ra0        up     yes      no      WPA2PSK/AES  Gateway-Home\n"
      "  2     ra1        up     no       yes     WPA3PSK/AES  Gateway-Guest\n",
      steps[1].out);
  const Json document = document_in(steps[2].out);
  EXPECT_EQ(2u, document["data"]["bands"].size());
  EXPECT_EQ(Json::parse(R"({"ssid":2,"interface":"ra1","name":"Gateway-Guest","enabled":false,"hidden":true,
                            "security":"WPA3PSK/AES","state":"up"})"),
            document["data"]["bands"][0]["ssids"][1]);
}

TEST(SsidList, MakesNoStore) {
  EXPECT_EQ("1\n", run_steps({"wlanctl ssid list >/dev/null; grep -c . /proc/sysvipc/shm"})[0].out);
}

TEST(SsidAdd, GivesTheNewOneSafeValuesWhateverAnEarlierOneHasLeft) {
  const auto steps = run_with_word(
      {"library_probe attach put HideSSID 0 3 1 put EnableSSID 0 3 0 put AuthMode 0 3 OPEN put IEEE8021X 0 3 1 put "
       "AccessPolicy2 0 -1 1 put AccessControlList2 0 -1 02:00:00:00:00:01 >/dev/null",
       kAdd + "2.4g Kitchen",
       "wlanctl get 2.4g BssidNum SSID:3 EnableSSID:3 HideSSID:3 NoForwarding:3 AuthMode:3 EncrypType:3 WPAPSK:3 "
       "IEEE8021X:3 RADIUS_Key:3 AccessPolicy:3 AccessControlList:3 WscConfMode:3 WscDefaultSSID:3 WSC_UUID_E:3"});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_EQ("2.4g: SSID 3 \"Kitchen\" (ra2) is added\nnext: wlanctl apply 2.4g\n", steps[1].out);
  EXPECT_EQ(
      "BssidNum             3\n"
      "SSID:3               Kitchen\n"
      "EnableSSID:3         1\n"
      "HideSSID:3           0\n"
      "NoForwarding:3       0\n"
      "AuthMode:3           WPA2PSK\n"
      "EncrypType:3         AES\n"
      "WPAPSK:3             guest-word-1\n"
      "IEEE8021X:3          0\n"
      "RADIUS_Key:3         sample-secret-3\n"
      "AccessPolicy:3       0\n"
      "AccessControlList:3\n"
      "WscConfMode:3        0\n"
      "WscDefaultSSID:3     Kitchen\n"
      "WSC_UUID_E:3         28102400aaaa4bbb8ccc022810000003\n",
      steps[2].out);
}

TEST(SsidAdd, TakesNoValueThatAnotherGatewayRefuses) {
  const std::string settings =
      run_with_word({kAdd + "2.4g Kitchen >/dev/null; wlanctl save 2.4g >/dev/null 2>&1; wlanctl export 2.4g",
                     "wlanctl check /etc/Wireless/RT2860AP/RT2860AP.dat"})[0]
          .out;
  const auto steps =
      run_with_word({"cat >f.json <<'.'\n" + settings + ".\nwlanctl import f.json >/dev/null", "wlanctl export 2.4g"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ(settings, steps[1].out);
}

TEST(SsidAdd, SaysWhyAPassphraseCannotBeRead) {
  const auto steps = run_with_word({"wlanctl ssid add 2.4g Kitchen --passphrase-file nowhere",
                                    "mkfifo pipe; wlanctl ssid add 2.4g Kitchen --passphrase-file pipe"});
  for (const Result& step : steps) EXPECT_EQ(2, step.status);
  EXPECT_THAT(steps[0].err, HasSubstr("cannot read the passphrase: No such file or directory"));
  EXPECT_THAT(steps[1].err, HasSubstr("cannot read the passphrase: it is a pipe that nobody writes to"));
}

TEST(SsidAdd, LeavesAllOthersAsTheyAre) {
  const auto steps = run_with_word(
      {"wlanctl show 2.4g 1 --secrets >one; wlanctl show 2.4g 2 --secrets >two; wlanctl show 5g >other",
       kAdd + "2.4g Kitchen",
       "wlanctl show 2.4g 1 --secrets | cmp - one && wlanctl show 2.4g 2 --secrets | cmp - two && wlanctl show 5g "
       "| cmp - other && echo same"});
  EXPECT_EQ("same\n", steps[2].out);
}

TEST(SsidAdd, HidesAndIsolatesWhereThatIsSaid) {
  const auto steps = run_with_word({kAdd + "5g Kitchen --hide --isolate", "wlanctl get 5g HideSSID:3 NoForwarding:3"});
  EXPECT_EQ("HideSSID:3      1\nNoForwarding:3  1\n", steps[1].out);
}

constexpr struct {
  const char* name;
  const char* values;
} kSecurities[] = {
    {"wpa2-psk", "WPA2PSK AES 0 0"},         {"wpa-wpa2-psk", "WPAPSKWPA2PSK TKIPAES 0 0"},
    {"wpa2-wpa3", "WPA2PSKWPA3PSK AES 1 0"}, {"wpa3", "WPA3PSK AES 1 1"},
    {"WPA3PSK", "WPA3PSK AES 1 1"},
};

TEST(SsidAdd, KnowsTheSecuritiesByTheirNamesAndTheLibrarys) {
  for (const auto& row : kSecurities) {
    const auto steps =
        run_with_word({kAdd + "2.4g Kitchen --security " + row.name,
                       "echo $(wlanctl get 2.4g AuthMode:3) $(wlanctl get 2.4g EncrypType:3) $(wlanctl get "
                       "2.4g PMFMFPC:3) $(wlanctl get 2.4g PMFMFPR:3)",
                       "wlanctl apply 2.4g >/dev/null 2>&1; wlanctl get 2.4g AuthMode:3 WPAPSK:3"});
    EXPECT_EQ(row.values + std::string("\n"), steps[1].out) << row.name << steps[0].err;
    EXPECT_THAT(steps[2].out, HasSubstr("guest-word-1")) << row.name;
  }
}

TEST(SsidAdd, OpensANetworkOnlyWhenAsked) {
  const auto steps =
      run_with_word({"wlanctl ssid add 2.4g Kitchen </dev/null", "wlanctl ssid add 2.4g Kitchen --security open",
                     "wlanctl get 2.4g AuthMode:3 EncrypType:3 WPAPSK:3", kAdd + "2.4g Cellar --security open",
                     "wlanctl ssid add 2.4g Cellar --security no"});
  EXPECT_EQ(2, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("wpa2-psk needs a passphrase; --passphrase-file FILE"));
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_EQ("AuthMode:3    OPEN\nEncrypType:3  NONE\nWPAPSK:3      0\n", steps[2].out);
  EXPECT_EQ(2, steps[3].status);
  EXPECT_THAT(steps[3].err, HasSubstr("an open network has no passphrase"));
  EXPECT_EQ(2, steps[4].status);
  EXPECT_THAT(steps[4].err, HasSubstr("there is no security \"no\""));
}

TEST(SsidAdd, TakesThePassphraseFromStandardInputAndTellsItNobody) {
  const auto steps = run_with_word({"echo hush-hush-1 | wlanctl ssid add 2.4g Kitchen --passphrase-file -",
                                    "wlanctl get 2.4g WPAPSK:3",
                                    "echo hush-hush-1 | wlanctl ssid add 5g Kitchen --passphrase-file - --json",
                                    "ls /run | grep -e storing -e edit"});
  EXPECT_EQ("hush-hush-1\n", steps[1].out);
  for (const size_t i : {0u, 2u}) EXPECT_THAT(steps[i].out + steps[i].err, Not(HasSubstr("hush"))) << i;
  EXPECT_THAT(steps[3].out, IsEmpty());
}

constexpr struct {
  const char* words;
  const char* passphrase;
  int status;
  const char* reason;
} kRefused[] = {
    {"2.4g Kitchen", "short", 1, "a passphrase has 8 characters at least"},
    {"2.4g Kitchen", "", 2, "there is no passphrase"},
    {"2.4g Kitchen", "0", 2, "there is no passphrase"},
    {"2.4g ''", "guest-word-1", 1, "the network has no name then"},
    {"2.4g 123456789012345678901234567890123", "guest-word-1", 1, "a network's name has 32 bytes at most"},
    {"2.4g 'a;b'", "guest-word-1", 1, "the dat file takes ; for the next SSID's value"},
    {"2.4g 'a`id`'", "guest-word-1", 1, "a shell acts on $ and `"},
    {"2.4g \"$(printf 'a\\tb')\"", "guest-word-1", 1, "the name has control characters"},
    {"2.4g Gateway-Guest", "guest-word-1", 1, "2.4g has an SSID of that name: SSID 2 \"Gateway-Guest\" (ra1)"},
    {"2.4g", "guest-word-1", 2, "behind the band stands one name"},
    {"2.4g Kitchen Cellar", "guest-word-1", 2, "behind the band stands one name"},
    {"--both 2.4g Kitchen", "guest-word-1", 2, "behind --both stands one name"},
    {"6g Kitchen", "guest-word-1", 2, "there is no band \"6g\"; say 2.4g or 5g; --both stands for both"},
};

TEST(SsidAdd, RefusesWithTheReasonAndChangesNothing) {
  for (const auto& row : kRefused) {
    const auto steps = run_with_word({functions() + "segment 2.4g >before; printf '%s\\n' '" + row.passphrase +
                                          "' | wlanctl ssid add --passphrase-file - " + row.words,
                                      functions() + "segment 2.4g | cmp - before && echo same"});
    EXPECT_EQ(row.status, steps[0].status) << row.words;
    EXPECT_THAT(steps[0].err, HasSubstr(row.reason)) << row.words;
    EXPECT_EQ("same\n", steps[1].out) << row.words;
  }
}

TEST(SsidAdd, TakesANameOf32BytesAndATakenOneByForce) {
  const auto steps =
      run_with_word({kAdd + "2.4g 12345678901234567890123456789012", kAdd + "2.4g --force Gateway-Guest"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
}

TEST(SsidAdd, GoesUpToTheEighth) {
  const auto steps = run_with_word({"wlanctl set 2.4g BssidNum=1 >/dev/null",
                                    "for i in 2 3 4 5 6 7 8; do " + kAdd +
                                        "2.4g Name-$i >/dev/null || echo $i; done; wlanctl get 2.4g BssidNum SSID:8",
                                    kAdd + "2.4g Name-9"});
  EXPECT_EQ("BssidNum  8\nSSID:8    Name-8\n", steps[1].out);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_THAT(steps[2].err, HasSubstr("2.4g has 8 SSIDs, the most there are; wlanctl ssid remove 2.4g takes one away"));
}

TEST(SsidAdd, RunsNoCommandAndTouchesNoFile) {
  const auto steps = run_with_word({functions() + "cp " + kDat + " file; commands | wc -l", kAdd + "2.4g Kitchen",
                                    functions() + "commands | wc -l; cmp " + kDat + " file && echo same"});
  EXPECT_EQ("0\n", steps[0].out);
  EXPECT_EQ("0\nsame\n", steps[2].out);
}

TEST(SsidBoth, AddsToBothOrToNone) {
  const auto steps =
      run_with_word({kAdd + "--both Kitchen", "wlanctl get 2.4g SSID:3; wlanctl get 5g SSID:3",
                     "wlanctl set 5g BssidNum=8 >/dev/null; " + kAdd + "--both Cellar", "wlanctl get 2.4g BssidNum"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_THAT(steps[0].out, HasSubstr("5g: SSID 3 \"Kitchen\" (rai2) is added\nnext: wlanctl apply\n"));
  EXPECT_EQ("Kitchen\nKitchen\n", steps[1].out);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_EQ("3\n", steps[3].out);
}

TEST(SsidBoth, IsJudgedOnBothBeforeEitherChanges) {
  const auto steps =
      run_with_word({"wlanctl set 5g SSID:2=Gateway-Home >/dev/null; wlanctl ssid disable --both Gateway-Home",
                     "wlanctl get 2.4g EnableSSID:1; wlanctl get 5g EnableSSID:2",
                     "wlanctl ssid rename --both Gateway-Guest Visitors", "wlanctl get 2.4g SSID:2"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("0\n0\n", steps[1].out);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_THAT(steps[2].err, HasSubstr("5g has no SSID \"Gateway-Guest\", by number or by name"));
  EXPECT_EQ("Gateway-Guest\n", steps[3].out);
}

TEST(SsidSwitch, EnablesAndDisablesByNumberOrName) {
  const auto steps = run_with_word({"wlanctl ssid disable 2.4g 2", "wlanctl get 2.4g EnableSSID:1 EnableSSID:2",
                                    "wlanctl ssid enable 2.4g Gateway-Guest", "wlanctl get 2.4g EnableSSID:2",
                                    "wlanctl ssid disable 2.4g 3"});
  EXPECT_EQ("2.4g: SSID 2 \"Gateway-Guest\" (ra1) is disabled\nnext: wlanctl apply 2.4g\n", steps[0].out);
  EXPECT_EQ("EnableSSID:1  1\nEnableSSID:2  0\n", steps[1].out);
  EXPECT_EQ(0, steps[2].status);
  EXPECT_EQ("1\n", steps[3].out);
  EXPECT_EQ(1, steps[4].status);
}

TEST(SsidSwitch, TellsTheApplyThatBringsItIntoForce) {
  const auto steps = run_with_word({"$(wlanctl ssid disable 2.4g 2 | sed -n 's/^next: //p') >/dev/null",
                                    "wlanctl ssid list 2.4g | grep ra1",
                                    "$(wlanctl ssid enable --both 2 | sed -n 's/^next: //p') >/dev/null",
                                    "wlanctl ssid list 2.4g | grep ra1", "wlanctl ssid disable 2.4g 1"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("  2     ra1        down   no       no      WPA2PSK/AES  Gateway-Guest\n", steps[1].out);
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_EQ("  2     ra1        up     yes      no      WPA2PSK/AES  Gateway-Guest\n", steps[3].out);
  EXPECT_THAT(steps[4].out, HasSubstr("next: wlanctl apply 2.4g\n"));
}

TEST(SsidSwitch, TellsItsChangesAsADocument) {
  const auto steps = run_with_word({"wlanctl ssid disable --both 2 --json", "wlanctl ssid enable 2.4g 2 --json",
                                    "wlanctl ssid enable 2.4g 2 --json", "wlanctl ssid enable 2.4g 3 --json"});
  const Json disabled = document_in(steps[0].out);
  EXPECT_EQ("ssid disable", disabled["verb"]);
  EXPECT_EQ(2u, disabled["data"]["bands"].size());
  EXPECT_EQ("wlanctl apply", disabled["data"]["next"]);
  const Json enabled = document_in(steps[1].out);
  EXPECT_EQ("ssid enable", enabled["verb"]);
  EXPECT_EQ("wlanctl apply 2.4g", enabled["data"]["next"]);
  const Json band = only_band(enabled);
  EXPECT_EQ(Json::parse(R"([{"key":"EnableSSID","index":2,"before":"0","after":"1"}])"), band["changes"]);
  EXPECT_EQ("Gateway-Guest", band["name"]);
  EXPECT_EQ("ra1", band["interface"]);
  EXPECT_EQ(Json::array(), only_band(document_in(steps[2].out))["changes"]);
  EXPECT_EQ(1, document_in(steps[3].out)["exit_code"]);
  EXPECT_EQ("2.4g", document_in(steps[3].out)["problems"][0]["band"]);
}

TEST(SsidRename, TellsItsChangeAsADocument) {
  const auto steps = run_with_word({"wlanctl ssid rename 2.4g Gateway-Guest Visitors --json --dry-run",
                                    "wlanctl ssid rename 2.4g Gateway-Guest Visitors --json",
                                    "wlanctl ssid rename 2.4g 2 Gateway-Home --json"});
  EXPECT_EQ(true, document_in(steps[0].out)["data"]["dry_run"]);
  const Json renamed = document_in(steps[1].out);
  EXPECT_EQ("ssid rename", renamed["verb"]);
  EXPECT_EQ(false, renamed["data"]["dry_run"]);
  const Json band = only_band(renamed);
  EXPECT_EQ(Json::parse(R"([{"key":"SSID","index":2,"before":"Gateway-Guest","after":"Visitors"}])"), band["changes"]);
  EXPECT_EQ(2, band["ssid"]);
  const Json refused = document_in(steps[2].out);
  EXPECT_EQ(1, refused["exit_code"]);
  EXPECT_THAT(refused["problems"][0]["message"].get<std::string>(), HasSubstr("2.4g has an SSID of that name"));
}

TEST(SsidRename, OnBothFindsTheNameOnEachAndChangesTheTwo) {
  const auto steps =
      run_with_word({"wlanctl ssid remove 5g 1 --yes >/dev/null; wlanctl set 5g SSID:1=Gateway-Guest >/dev/null",
                     "wlanctl ssid rename --both Gateway-Guest Visitors", "wlanctl get 2.4g SSID:2 SSID:1",
                     "wlanctl get 5g SSID:1", "wlanctl ssid rename --both Visitors Cellar --json"});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[1].out, testing::StartsWith("2.4g: SSID 2 \"Gateway-Guest\" (ra1) is renamed to \"Visitors\"\n"
                                                "5g: SSID 1 \"Gateway-Guest\" (rai0) is renamed to \"Visitors\"\n"
                                                "next: wlanctl apply"));
  EXPECT_EQ("SSID:2  Visitors\nSSID:1  Gateway-Home\n", steps[2].out);
  EXPECT_EQ("Visitors\n", steps[3].out);
  const Json bands = document_in(steps[4].out)["data"]["bands"];
  ASSERT_EQ(2u, bands.size());
  EXPECT_EQ(Json::parse(R"([{"key":"SSID","index":2,"before":"Visitors","after":"Cellar"}])"), bands[0]["changes"]);
  EXPECT_EQ(Json::parse(R"([{"key":"SSID","index":1,"before":"Visitors","after":"Cellar"}])"), bands[1]["changes"]);
}

TEST(SsidRename, GivesAnotherNameByTheRulesOfOne) {
  const auto steps = run_with_word(
      {"wlanctl ssid rename 2.4g 2 Visitors", "wlanctl get 2.4g SSID:2", "wlanctl ssid rename 2.4g Visitors ''",
       "wlanctl ssid rename 2.4g 2 123456789012345678901234567890123",
       "wlanctl ssid rename 2.4g 2 \"$(printf 'a\\033b')\"", "wlanctl ssid rename 2.4g 2 Gateway-Home",
       "wlanctl ssid rename 2.4g 2 Visitors", "wlanctl get 2.4g SSID:2", "wlanctl ssid rename 2.4g 2"});
  EXPECT_EQ("2.4g: SSID 2 \"Gateway-Guest\" (ra1) is renamed to \"Visitors\"\nnext: wlanctl apply 2.4g\n",
            steps[0].out);
  EXPECT_EQ("Visitors\n", steps[1].out);
  for (const size_t refused : {2u, 3u, 4u, 5u}) EXPECT_EQ(1, steps[refused].status) << refused;
  EXPECT_THAT(steps[5].err, HasSubstr("2.4g has an SSID of that name"));
  EXPECT_EQ(0, steps[6].status) << steps[6].err;
  EXPECT_EQ("Visitors\n", steps[7].out);
  EXPECT_EQ(2, steps[8].status);
}

TEST(SsidDryRun, SaysWhatWouldChangeAndChangesNothing) {
  const auto steps =
      run_with_word({functions() + "segment 2.4g >before; ls /run >files; " + kAdd + "2.4g Kitchen --dry-run",
                     functions() + "segment 2.4g | cmp - before && ls /run | cmp - files && echo same",
                     kAdd + "--both Kitchen --dry-run --json"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].out, HasSubstr("2.4g: SSID 3 \"Kitchen\" (ra2) would be added\n  BssidNum = 3  (was 2)\n"));
  EXPECT_THAT(steps[0].out, HasSubstr("  WPAPSK:3 = ********  (was ********)\n"));
  EXPECT_EQ("same\n", steps[1].out);
  EXPECT_EQ(true, document_in(steps[2].out)["data"]["dry_run"]);
}

TEST(SsidDryRun, NeedsNoStore) {
  const Result result = run("wlanctl ssid disable 2.4g 1 --dry-run; grep -c . /proc/sysvipc/shm");
  EXPECT_EQ("2.4g: SSID 1 \"Gateway-Home\" (ra0) would be disabled\n  EnableSSID:1 = 0  (was 1)\n1\n", result.out);
}

TEST(Ssid, SaysWhatItChangedInJson) {
  const Json band = only_band(json_of("ssid disable 5g 2", "library_probe init 0 init 1 >/dev/null"));
  EXPECT_EQ(Json::parse(R"([{"key":"EnableSSID","index":2,"before":"1","after":"0"}])"), band["changes"]);
  EXPECT_EQ("rai1", band["interface"]);
  EXPECT_EQ(2, band["count"]);
}

TEST(Ssid, AnUnconfirmedApplyHasToBeDecidedFirst) {
  const Result result = run_story(
      "echo guest-word-1 >word; wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; "
      "for words in 'add 2.4g A --passphrase-file word' 'remove 2.4g 2 --yes' 'disable 2.4g 1' 'rename 2.4g 1 B'; do "
      "wlanctl ssid $words; echo $?; done; wlanctl confirm 2.4g; no_guardian; wlanctl ssid disable 2.4g 1; echo $?");
  EXPECT_EQ("1\n1\n1\n1\n", result.out.substr(0, 8));
  EXPECT_THAT(result.err, HasSubstr("an apply of 2.4g waits for its confirmation; wlanctl confirm 2.4g keeps it"));
  EXPECT_TRUE(result.out.ends_with("0\n"));
}

TEST(Ssid, TellsWhatAnApplyWillMakeOfIt) {
  const auto steps = run_with_word({"wlanctl set 2.4g WirelessMode=16 >/dev/null; " + kAdd + "2.4g Kitchen"});
  EXPECT_THAT(steps[0].err, HasSubstr("note: 2.4g: WmmCapable:3: an apply will make it 0\n"));
}

// The whole way: onto the air on both bands, and off it.
TEST(Ssid, IsServedAfterTheApplyAndGoneAfterItsRemoval) {
  const auto steps = run_with_word(
      {kAdd + "--both Visitors --isolate", "wlanctl apply >/dev/null", "wlanctl status",
       "for i in ra2 rai2; do grep -c . /sys/class/net/$i/operstate; done; cut -f2 /run/gateway-sim/journal | grep "
       "'set SSID=Visitors'",
       "wlanctl ssid remove --both Visitors --yes", "wlanctl apply --force >/dev/null", "wlanctl status",
       "ls /sys/class/net | grep -c -e ra2 -e rai2"},
      {"--chips", "7603,7612"});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[2].out, HasSubstr("  3     ra2        up     off   0         Visitors\n"));
  EXPECT_THAT(steps[2].out, HasSubstr("  3     rai2       up     off   0         Visitors\n"));
  EXPECT_THAT(steps[3].out, HasSubstr("1\n1\n"));
  EXPECT_THAT(steps[3].out, HasSubstr("iwpriv ra2 set SSID=Visitors"));
  EXPECT_THAT(steps[3].out, HasSubstr("iwpriv rai2 set SSID=Visitors"));
  EXPECT_EQ(0, steps[4].status) << steps[4].err;
  EXPECT_THAT(steps[4].out, HasSubstr("next: wlanctl apply --force\n"));
  EXPECT_EQ(0, steps[5].status) << steps[5].err;
  EXPECT_THAT(steps[6].out, Not(HasSubstr("Visitors")));
  EXPECT_EQ("0\n", steps[7].out);
}

}  // namespace
}  // namespace wlanctl_test

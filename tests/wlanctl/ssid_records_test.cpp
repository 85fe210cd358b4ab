// ssid add where the store lacks the keys of the new SSID: with room for them, and without; and at the bounds of lists.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

std::vector<Result> run_with_word(Words steps) {
  return run_live(std::move(steps), {}, functions() + "echo guest-word-1 >word; ");
}

const std::string kAdd = "wlanctl ssid add --passphrase-file word ";

// The store as a boot makes it of a saved file, which has no keys of SSIDs behind the second, and this many lines more
// that are no records. Each makes room for one.
std::string reboot_with(int comments) {
  const std::string dat = kDat;
  return "wlanctl save 2.4g --force >/dev/null 2>&1; i=0; while [ $i -lt " + std::to_string(comments) +
         " ]; do echo '# line' >>" + dat + "; i=$((i + 1)); done; ipcrm -M 0x12345; library_probe init 0 >/dev/null; ";
}

// Behind a save and a revert the segment is as large as it was.
const std::string kDropped = "wlanctl save 2.4g --force >/dev/null 2>&1; wlanctl revert 2.4g >/dev/null; ";

constexpr char kKeys[] =
    "AccessControlList2 AccessPolicy2 Key1Str3 Key2Str3 Key3Str3 Key4Str3 RADIUS_Key3 SSID3 WPAPSK3 WSC_UUID_E3 "
    "WSC_UUID_Str3 WscDefaultSSID3";

std::string sorted_records(const Json& document) {
  Words records = document["data"]["bands"][0]["added_records"];
  std::sort(records.begin(), records.end());
  std::string text;
  for (const std::string& record : records) text += (text.empty() ? "" : " ") + record;
  return text;
}

TEST(SsidRecords, ThatAreMissingGoIntoTheStoresFreeRoom) {
  const auto steps = run_with_word(
      {kDropped + "wlanctl dump 2.4g | grep -c SSID3=", kAdd + "2.4g Kitchen --json",
       "wlanctl get 2.4g SSID:3 WPAPSK:3 WSC_UUID_Str:3", "library_probe attach get SSID3 0 -1 get WPAPSK3 0 -1",
       "wlanctl save 2.4g; grep -e ^SSID3= -e ^BssidNum= -e ^WPAPSK3= " + std::string(kDat)});
  EXPECT_EQ("0\n", steps[0].out);
  EXPECT_EQ(kKeys, sorted_records(document_in(steps[1].out)));
  EXPECT_EQ(
      "SSID:3          Kitchen\nWPAPSK:3        guest-word-1\nWSC_UUID_Str:3  28102400-aaaa-4bbb-8ccc-022810000003\n",
      steps[2].out);
  EXPECT_THAT(steps[3].out, HasSubstr("Kitchen"));
  EXPECT_THAT(steps[3].out, HasSubstr("guest-word-1"));
  EXPECT_THAT(steps[4].out, HasSubstr("BssidNum=3\n"));
}

TEST(SsidRecords, AreReadByAProcessThatAttachedBefore) {
  const auto steps =
      run_with_word({kDropped + "mkfifo go; (read line <go; exec segment_bytes 0x12345) | tr -s '\\0' '\\n' >seen & " +
                     kAdd + "2.4g Kitchen >/dev/null; echo >go; wait; grep -A1 -x SSID3 seen"});
  EXPECT_EQ("SSID3\nKitchen\n", steps[0].out);
}

TEST(SsidRecords, OfADryRunAreOnlyTold) {
  const auto steps = run_with_word({kDropped + "segment_bytes 0x12345 >before", kAdd + "2.4g Kitchen --dry-run",
                                    "segment_bytes 0x12345 | cmp - before && echo same"});
  EXPECT_THAT(steps[1].out, HasSubstr("\n  + SSID3\n"));
  EXPECT_EQ("same\n", steps[2].out);
}

TEST(SsidRecords, GoUpToTheLastFreeOne) {
  for (const int comments : {7, 6}) {
    const auto steps = run_with_word({reboot_with(comments), kAdd + "2.4g Kitchen", "wlanctl get 2.4g SSID:3"});
    EXPECT_EQ(comments == 7 ? 0 : 1, steps[1].status) << steps[1].err;
    EXPECT_EQ(comments == 7 ? "Kitchen\n" : "", steps[2].out);
  }
}

TEST(SsidRecords, WithoutRoomAreRefusedAndNothingChanges) {
  const auto steps = run_with_word({reboot_with(0) + "segment_bytes 0x12345 >before", kAdd + "2.4g Kitchen",
                                    kAdd + "--both Kitchen >/dev/null 2>&1; wlanctl get 5g BssidNum",
                                    "segment_bytes 0x12345 | cmp - before && ! ls /run | grep storing && echo same"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("the store of 2.4g has room for 5 more records, and SSID 3 needs 12: "));
  EXPECT_THAT(steps[1].err, HasSubstr("SSID3, "));
  EXPECT_THAT(steps[1].err, HasSubstr("--to-file writes it to the dat file, and says what to restart for it"));
  EXPECT_EQ("2\n", steps[2].out);
  EXPECT_EQ("same\n", steps[3].out);
}

TEST(SsidRecords, WithoutRoomGoIntoTheFileAndComeWithTheStepsThatAreTold) {
  const auto steps = run_with_word(
      {reboot_with(0) + "wlanctl set 2.4g Channel=11 >/dev/null; segment_bytes 0x12345 >before",
       kAdd + "2.4g Kitchen --to-file", "segment_bytes 0x12345 | cmp - before && echo same",
       "grep -e ^SSID3 -e ^BssidNum -e ^Channel -e ^EnableSSID " + std::string(kDat),
       "ipcrm -M 0x12345; wlanctl apply 2.4g --again >/dev/null; wlanctl get 2.4g BssidNum SSID:3 WPAPSK:3 Channel"});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[1].out, HasSubstr("2.4g: SSID 3 \"Kitchen\" (ra2) is added in the dat file\n"));
  const size_t stop = steps[1].out.find("1. stop the management processes");
  const size_t remove = steps[1].out.find("2. ipcrm -M 0x12345\n");
  const size_t apply = steps[1].out.find("3. wlanctl apply 2.4g --again ");
  const size_t start = steps[1].out.find("4. start the management processes\n");
  EXPECT_TRUE(stop < remove && remove < apply && apply < start && start != std::string::npos) << steps[1].out;
  EXPECT_THAT(steps[1].err,
              HasSubstr("until then a save or an apply of the live store writes the dat file without it"));
  EXPECT_EQ("same\n", steps[2].out);
  EXPECT_EQ("Channel=11\nBssidNum=3\nEnableSSID=1;1;1\nSSID3=Kitchen\n", steps[3].out);
  EXPECT_EQ("BssidNum  3\nSSID:3    Kitchen\nWPAPSK:3  guest-word-1\nChannel   11\n", steps[4].out);
}

TEST(SsidRecords, IntoTheFilesOfBothOrOfNone) {
  const auto steps = run_with_word({"cp " + std::string(kDat) +
                                        " file; mv /etc/Wireless/RT2860AP_AC/RT2860AP.dat away; mkdir "
                                        "/etc/Wireless/RT2860AP_AC/RT2860AP.dat; " +
                                        kAdd + "--both Kitchen --to-file",
                                    "cmp " + std::string(kDat) + " file && echo same"});
  EXPECT_NE(0, steps[0].status);
  EXPECT_THAT(steps[0].out, Not(HasSubstr("added")));
  EXPECT_EQ("same\n", steps[1].out);
}

TEST(SsidRecords, StayAwayWhileAnotherHoldsTheLock) {
  const auto steps = run_with_word({kDropped +
                                    "segment_bytes 0x12345 >before; hold_store 0x12348 & until [ -e held ]; do sleep "
                                    "0.02; done; " +
                                    kAdd +
                                    "2.4g Kitchen; echo $?; touch done; wait; segment_bytes 0x12345 | "
                                    "cmp - before && echo same"});
  EXPECT_EQ("3\nsame\n", steps[0].out);
  EXPECT_THAT(steps[0].err, HasSubstr("which does not let go"));
}

// The line of the list has 12 characters of its key, 149 of the first, and 10 of the new one, with a ; between them.
TEST(SsidBounds, AListsLineMayBeAsLongAsTheLoaderTakesIt) {
  for (const size_t second : {11u, 12u}) {
    const auto steps =
        run_with_word({"wlanctl set 2.4g WEPAuthType:1=" + std::string(149, 'x') +
                           " WEPAuthType:2=" + std::string(second, 'y') + " >/dev/null; " + kAdd + "2.4g Kitchen",
                       "wlanctl save 2.4g >/dev/null && wlanctl revert 2.4g >/dev/null && wlanctl get 2.4g "
                       "WEPAuthType:3"});
    EXPECT_EQ(second == 11 ? 0 : 1, steps[0].status) << steps[0].err;
    if (second == 11) {
      EXPECT_EQ("OpenSystem\n", steps[1].out);
    } else {
      EXPECT_THAT(steps[0].err,
                  HasSubstr("WEPAuthType has no room for one more SSID: its line would have 185 characters, "
                            "and the dat file holds 184 at most; set shorter values for the others"));
    }
  }
}

TEST(SsidBounds, AListThatEndsBeforeIsLeftAtThatWhereNothingIsSaid) {
  const auto steps =
      run_with_word({"wlanctl set --force 2.4g HideSSID:2= >/dev/null; library_probe attach put HideSSID 0 3 1 "
                     ">/dev/null; " +
                         kAdd + "2.4g Kitchen",
                     "wlanctl dump 2.4g | grep ' HideSSID='", kAdd + "2.4g Cellar --hide",
                     "wlanctl ssid list 2.4g | grep -c Cellar"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_THAT(steps[1].out, Not(HasSubstr("0;;1")));
  EXPECT_EQ(1, steps[2].status);
  EXPECT_THAT(steps[2].err,
              HasSubstr("in the dat file, HideSSID: value 2 is empty, and a save loses all behind it, from "
                        "value 4 on"));
  EXPECT_EQ("0\n", steps[3].out);
}

TEST(SsidBounds, AnEmptySecurityOfAnotherIsRefused) {
  const auto steps = run_with_word({"wlanctl set --force 2.4g AuthMode:2= >/dev/null; " + kAdd + "2.4g Kitchen"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("in the dat file, AuthMode: value 2 is empty"));
}

}  // namespace
}  // namespace wlanctl_test

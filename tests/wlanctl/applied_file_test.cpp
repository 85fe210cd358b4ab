// The dat file while an apply waits for its confirmation: others may cut it off, or write into it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr char kBefore[] = "/etc/Wireless/wlanctl-before-2.4g";

// All that the tool knows is of an apply of its own.
std::string waiting(const std::string& seconds = "600") {
  return "dat=" + std::string(kDat) + " kept=/var/run/wlanctl-kept-2.4g before=" + kBefore +
         "; wlanctl apply >/dev/null 2>&1; cp $dat ./old; wlanctl set 2.4g SSID:1=Kitchen >/dev/null 2>&1; "
         "wlanctl apply 2.4g --confirm " +
         seconds + " >/dev/null 2>&1; cp $dat ./new; ";
}

constexpr const char* kDamages[] = {": >$dat", "truncate -s 900 $dat", "sed -i /^WPAPSK2=/d $dat"};

TEST(Confirm, RefusesADatFileThatHasNotAllOfWhatWasApplied) {
  for (const char* const damage : kDamages) {
    const Result result =
        run_story(waiting() + damage +
                  "; echo == confirm; wlanctl confirm 2.4g; echo $?; echo == looks; "
                  "ls $before $pending-2.4g; echo == save; wlanctl save 2.4g --force >/dev/null 2>&1; "
                  "wlanctl confirm 2.4g; cmp new $dat && echo same; ls $before");
    EXPECT_EQ("1\n", behind(result.out, "confirm")) << damage;
    EXPECT_THAT(result.err,
                HasSubstr("RT2860AP.dat has not all of what was applied to 2.4g, a boot would come up without "))
        << damage;
    EXPECT_THAT(result.err,
                HasSubstr("wlanctl save 2.4g --force writes the file anew, confirm then; wlanctl rollback 2.4g"));
    EXPECT_EQ(std::string(kBefore) + "\n/var/run/wlanctl-pending-2.4g\n", behind(result.out, "looks")) << damage;
    EXPECT_EQ("2.4g: confirmed; the settings stay\nsame\n", behind(result.out, "save")) << damage;
  }
}

TEST(Confirm, NamesTheFirstKeysThatTheDatFileLacks) {
  const Result result =
      run_story(waiting() + ": >$dat; wlanctl confirm 2.4g; sed /^WPAPSK2=/d new >$dat; wlanctl confirm 2.4g");
  EXPECT_THAT(result.err, HasSubstr("without BssidNum, CountryRegion, CountryRegionABand, CountryCode, and "));
  EXPECT_THAT(result.err, HasSubstr("without WPAPSK2; "));
}

TEST(Confirm, RefusesADatFileThatLacksSettingsAfterAPowerCutToo) {
  for (const char* const damage : kDamages) {
    const Result result =
        run_story(waiting() + damage +
                  "; simctl power-cut >/dev/null; echo == confirm; wlanctl confirm 2.4g; "
                  "echo $?; ls $before; echo == rollback; wlanctl rollback 2.4g; cmp old $dat && echo same");
    EXPECT_EQ("1\n" + std::string(kBefore) + "\n", behind(result.out, "confirm")) << damage;
    EXPECT_THAT(result.err, AllOf(HasSubstr("a boot would come up without "), Not(HasSubstr("wlanctl save"))))
        << damage;
    // Booted with an empty file, the driver made no interface of SSID 2.
    const std::string told = damage[0] == ':' ? "2.4g: rolled back, but not on the air: ra1"
                                              : "2.4g: rolled back; the settings before the apply are in force";
    EXPECT_EQ(told + "\nsame\n", behind(result.out, "rollback")) << damage;
  }
}

TEST(Confirm, KeepsADatFileThatLacksSettingsByForce) {
  const Result result = run_story(waiting() +
                                  "truncate -s 900 $dat; echo == confirm; wlanctl confirm 2.4g --force; echo $?; "
                                  "ls $before $pending-2.4g");
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\n", behind(result.out, "confirm"));
  EXPECT_THAT(result.err, HasSubstr("all the same, by --force: "));
}

TEST(Confirm, TakesADatFileInWhichOthersHaveChangedAValue) {
  const Result result = run_story(waiting() +
                                  "sed -i s/^WPAPSK2=.*/WPAPSK2=foreign-secret-x/ $dat; echo == confirm; "
                                  "wlanctl confirm 2.4g; echo $?");
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\n", behind(result.out, "confirm"));
  EXPECT_THAT(result.err, HasSubstr("has changed since wlanctl last applied it"));
}

TEST(Confirm, TakesADatFileOfFewerSsids) {
  const std::string fewer =
      "wlanctl apply >/dev/null 2>&1; wlanctl set 2.4g BssidNum=1 >/dev/null; wlanctl apply 2.4g --force "
      "--confirm 600 >/dev/null 2>&1; ";
  for (const char* const then : {"", "simctl power-cut >/dev/null;"}) {
    const Result result = run_story(fewer + then + "echo == confirm; wlanctl confirm 2.4g; echo $?");
    EXPECT_EQ("2.4g: confirmed; the settings stay\n0\n", behind(result.out, "confirm")) << result.err;
  }
}

const std::string kForeign = "sed -i s/^WPAPSK2=.*/WPAPSK2=foreign-secret-x/ $dat; cp $dat foreign; ";

TEST(Rollback, KeepsWhatOthersHaveWrittenIntoTheDatFile) {
  const Result result = run_story(waiting() + kForeign +
                                  "echo == rollback; wlanctl rollback 2.4g; echo $?; cmp old $dat; "
                                  "cmp foreign $kept; stat -c %a $kept");
  EXPECT_EQ("2.4g: rolled back; the settings before the apply are in force\n0\n600\n", behind(result.out, "rollback"));
  EXPECT_THAT(result.err,
              HasSubstr("RT2860AP.dat since the apply of 2.4g; as it was before the roll back it is kept in "
                        "/var/run/wlanctl-kept-2.4g"));
}

TEST(Rollback, OfAFileThatIsAsTheApplyLeftItKeepsNoneAndSaysNothing) {
  const Result result =
      run_story(waiting() + "rm -f $kept; echo == rollback; wlanctl rollback 2.4g 2>&1; echo $?; ls $kept");
  EXPECT_EQ("2.4g: rolled back; the settings before the apply are in force\n0\n", behind(result.out, "rollback"));
}

TEST(Rollback, ByTheGuardianKeepsWhatOthersHaveWrittenAndTellsTheLog) {
  const Result result =
      run_story(waiting() + kForeign +
                "overdue 2.4g; gone 2.4g; no_guardian; echo == looks; cmp old $dat; "
                "cmp foreign $kept && echo kept; until grep 'since the apply of 2.4g; as it was before' "
                "/run/gateway-sim/syslog; do sleep 0.02; done");
  EXPECT_THAT(behind(result.out, "looks"), AllOf(HasSubstr("kept\n"), HasSubstr("others have changed "))) << result.err;
}

TEST(Rollback, ThatCannotKeepWhatOthersHaveWrittenSaysSoAndGoesOn) {
  const Result result = run_story(waiting() + kForeign +
                                  "rm -f $kept; mkdir $kept; echo == rollback; wlanctl rollback 2.4g; "
                                  "echo $?; cmp old $dat && echo same");
  EXPECT_EQ("2.4g: rolled back; the settings before the apply are in force\n0\nsame\n", behind(result.out, "rollback"));
  EXPECT_THAT(result.err, HasSubstr("cannot be kept in /var/run/wlanctl-kept-2.4g"));
  EXPECT_THAT(result.err, HasSubstr("; the roll back overwrites it"));
}

TEST(Rollback, AfterAPowerCutKeepsTheFileThatNobodyKnows) {
  const Result result = run_story(waiting() + kForeign +
                                  "simctl power-cut >/dev/null; echo == rollback; wlanctl rollback 2.4g; "
                                  "cmp old $dat; cmp foreign $kept");
  EXPECT_EQ("2.4g: rolled back; the settings before the apply are in force\n", behind(result.out, "rollback"));
  EXPECT_THAT(result.err,
              HasSubstr("nobody knows whether /etc/Wireless/RT2860AP/RT2860AP.dat is as the apply of 2.4g left it"));
}

}  // namespace
}  // namespace wlanctl_test

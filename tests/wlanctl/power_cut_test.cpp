// A boot while an apply waits for its confirmation: what the boot took was never confirmed, and somebody decides.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr char kKept[] = "/etc/Wireless/wlanctl-before-2.4g";

std::string cut(const std::string& confirm = "--confirm 600") {
  return "wlanctl show >/dev/null 2>&1; cp " + std::string(kDat) +
         " /etc/file; wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null; wlanctl apply 2.4g " + confirm +
         " >/dev/null; simctl power-cut >/dev/null; mkdir -p /real /front;";
}

TEST(PowerCut, IsToldAndLeavesTheDecision) {
  const Result result = run_story(
      cut() +
      "for verb in diff status 'set 2.4g HideSSID:2=0'; do echo == ${verb%% *}; wlanctl "
      "$verb 2>&1 | tr -s '\\n ' ' ' | grep -o 'the gateway went down before the apply of 2.4g was confirmed.*'; done;"
      "echo == apply; wlanctl apply 2.4g; echo $?");
  for (const char* const verb : {"diff", "status", "set"}) {
    EXPECT_THAT(behind(result.out, verb), HasSubstr("wlanctl rollback 2.4g puts back what was before")) << verb;
  }
  EXPECT_EQ("1\n", behind(result.out, "apply"));
  EXPECT_THAT(result.err, HasSubstr("the gateway went down before the apply of 2.4g was confirmed"));
}

TEST(PowerCut, KeepsWhatIsConfirmedAfterIt) {
  const Result result = run_story(cut() + "echo == confirm; wlanctl confirm; echo $?; wlanctl get 2.4g SSID:1; ls " +
                                  kKept + " 2>&1; echo == second; wlanctl confirm; echo $?");
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\nKitchen\nls: cannot access '" + std::string(kKept) +
                "': No such file or directory\n",
            behind(result.out, "confirm"));
  EXPECT_EQ("nothing waits to be confirmed\n0\n", behind(result.out, "second"));
}

TEST(PowerCut, IsRolledBackWhenAsked) {
  const Result result =
      run_story(cut() + "echo == rollback; wlanctl rollback; echo $?; wlanctl get 2.4g SSID:1 Channel; cmp " + kDat +
                " /etc/file && echo file; commands | grep 'ra0 set SSID' | tail -1; ifconfig ra0 | grep -c UP;"
                "ls /etc/Wireless | grep before; wlanctl diff 2.4g 2>&1 | grep 'went down'");
  EXPECT_EQ(
      "2.4g: rolled back; the settings before the apply are in force\n0\nSSID:1   Gateway-Home\nChannel  6\nfile\n"
      "/userfs/bin/iwpriv ra0 set SSID=Gateway-Home\n1\n",
      behind(result.out, "rollback"));
}

TEST(PowerCut, ThatDamagedTheWayBackIsNotTakenForConfirmed) {
  const Result result =
      run_story(cut() + "truncate -s -1 " + kKept +
                "; for verb in 'confirm 2.4g' 'rollback 2.4g' 'apply 2.4g' 'confirm 2.4g --force' "
                "'confirm 2.4g'; do echo \"== $verb\"; wlanctl $verb; echo $?; done; echo == looks; ls " +
                kKept);
  for (const char* const verb : {"confirm 2.4g", "rollback 2.4g", "apply 2.4g"})
    EXPECT_EQ("1\n", behind(result.out, verb));
  EXPECT_THAT(result.err,
              HasSubstr(std::string("kept for its roll back, in ") + kKept +
                        ", is damaged: nobody knows whether it was confirmed; wlanctl confirm 2.4g --force"));
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\n", behind(result.out, "confirm 2.4g --force"));
  EXPECT_EQ("", behind(result.out, "looks"));
}

TEST(PowerCut, ThatDamagedTheWayBackIsToldByWhoLooks) {
  const Result result =
      run_story(cut() + "truncate -s -1 " + kKept +
                "; for verb in status diff 'set 2.4g HideSSID:2=0'; do wlanctl $verb 2>&1 | tr -s '\\n ' ' ' | "
                "grep -c 'nobody knows whether it was confirmed'; done; wlanctl doctor 2.4g --json");
  EXPECT_THAT(result.out, testing::StartsWith("1\n1\n1\n"));
  EXPECT_THAT(result.out, HasSubstr("pending-damaged"));
}

// The file has changed, though nobody has made a store of it yet.
TEST(PowerCut, LeavesWhatItsRollBackChangedInTheHistory) {
  const Result result = run_story(cut() + "wlanctl rollback >/dev/null; echo == log; wlanctl log --json");
  const Json entry = document_in(behind(result.out, "log"))["data"]["entries"][0];
  EXPECT_EQ("rollback", entry["operation"]);
  EXPECT_THAT(entry["changes"].dump(), HasSubstr(R"({"key":"SSID","index":1,"from":"Kitchen","to":"Gateway-Home"})"));
}

TEST(PowerCut, IsRolledBackThoughTheDatFileIsHalf) {
  const Result result = run_story(cut() + ": >" + kDat + "; echo == rollback; wlanctl rollback 2.4g --json >r.json;" +
                                  "echo $?; cmp " + kDat + " /etc/file && echo file; wlanctl get 2.4g SSID:1");
  EXPECT_EQ("0\nfile\nGateway-Home\n", behind(result.out, "rollback"));
}

TEST(PowerCut, WithoutAConfirmationToWaitForIsNothing) {
  const Result result = run_story(cut("") +
                                  "wlanctl diff 2.4g 2>&1 | grep 'went down'; echo == confirm; wlanctl "
                                  "confirm; echo $?; wlanctl get 2.4g SSID:1");
  EXPECT_EQ("nothing waits to be confirmed\n0\nKitchen\n", behind(result.out, "confirm"));
}

TEST(PowerCut, FindsWhatWasKeptInTheFolderThatWasChosen) {
  const Result result =
      run_story("mkdir /etc/chosen; export WLANCTL_FOLDER=/etc/chosen;" + cut() +
                "ls /etc/chosen | grep before; ls /etc/Wireless | grep before; wlanctl rollback >/dev/null;"
                "echo $?; wlanctl get 2.4g SSID:1");
  EXPECT_EQ("wlanctl-before-2.4g\n0\nGateway-Home\n", result.out);
}

TEST(PowerCut, FindsNothingWhereNothingIsToBeWritten) {
  const Result result = run_story("export WLANCTL_FOLDER=;" + cut() +
                                  "ls /etc/Wireless | grep before; wlanctl confirm; echo $?; wlanctl get 2.4g SSID:1");
  EXPECT_EQ("nothing waits to be confirmed\n0\nKitchen\n", result.out);
}

// The power goes while the roll back restarts the interfaces; the store and, by the commit, the dat file are half back.
std::string cut_in_rollback(const std::string& begin) {
  return "wlanctl show >/dev/null 2>&1; cp " + std::string(kDat) +
         " /etc/file; wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 "
         ">/dev/null; simctl fail ifconfig hang ra0 >/dev/null; count=$(commands | grep -c ifconfig);" +
         begin +
         " until [ $(commands | grep -c ifconfig) -gt $count ]; do sleep 0.02; done; simctl power-cut >/dev/null; "
         "mkdir "
         "-p /real /front;";
}

TEST(PowerCut, InARollBackIsNotConfirmed) {
  for (const char* const begin : {"wlanctl rollback 2.4g >/dev/null 2>&1 &", "overdue 2.4g;"}) {
    const Result result = run_story(
        cut_in_rollback(begin) +
        "echo == confirm; wlanctl confirm 2.4g; echo $?; echo == apply; wlanctl apply 2.4g; echo $?;"
        "echo == status; wlanctl status 2.4g 2>&1 | tr -s '\\n ' ' ' | grep -c 'had begun when the gateway went down';"
        "echo == rollback; wlanctl rollback 2.4g; echo $?; wlanctl get 2.4g SSID:1 Channel; cmp " +
        kDat + " /etc/file && echo file; ls " + kKept + "; echo == after; wlanctl confirm 2.4g; echo $?");
    EXPECT_EQ("1\n", behind(result.out, "confirm")) << begin;
    EXPECT_EQ("1\n", behind(result.out, "apply")) << begin;
    EXPECT_EQ("1\n", behind(result.out, "status")) << begin;
    EXPECT_THAT(result.err,
                HasSubstr("the roll back of the apply of 2.4g had begun when the gateway went down: of settings and "
                          "dat file, some may be those of before; wlanctl rollback 2.4g finishes it; wlanctl confirm "
                          "2.4g --force keeps what is there"));
    EXPECT_EQ(
        "2.4g: rolled back; the settings before the apply are in force\n0\nSSID:1   Gateway-Home\nChannel  6\nfile\n",
        behind(result.out, "rollback"))
        << begin;
    EXPECT_EQ("1\n", behind(result.out, "after")) << begin;
  }
}

TEST(PowerCut, InARollBackIsKeptByForceAlone) {
  const Result result = run_story(cut_in_rollback("wlanctl rollback 2.4g >/dev/null 2>&1 &") +
                                  "wlanctl confirm 2.4g --force; echo $?; ls /etc/Wireless | grep before; wlanctl "
                                  "confirm; echo $?");
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\nnothing waits to be confirmed\n0\n", result.out);
}

// The boot has finished it then, but it is no confirmation.
TEST(PowerCut, InARollBackThatHadPutTheFileBackIsNotConfirmed) {
  const Result result = run_story(cut_in_rollback("wlanctl rollback 2.4g >/dev/null 2>&1 &") + "cp /etc/file " + kDat +
                                  "; wlanctl confirm 2.4g; echo $?; wlanctl set 2.4g Channel=3 >/dev/null; wlanctl "
                                  "apply 2.4g >/dev/null; wlanctl confirm 2.4g; echo $?");
  EXPECT_EQ("1\nnothing waits to be confirmed on 2.4g\n0\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("was taken back before the gateway went down; set the values again, and apply"));
}

// Once in the middle of the roll back that makes up for the first.
TEST(PowerCut, InARollBackAfterAPowerCutIsFinishedByTheNext) {
  const Result result = run_story(
      cut() +
      "simctl fail ifconfig hang ra0 >/dev/null; count=$(commands | grep -c ifconfig); with_pid pid wlanctl rollback "
      "2.4g >/dev/null 2>&1 & until [ $(commands | grep -c ifconfig) -gt $count ]; do sleep 0.02; done;"
      "kill -9 $(cat pid); simctl fail none >/dev/null; wlanctl confirm 2.4g; echo $?; wlanctl rollback 2.4g; echo $?;"
      "cmp " +
      std::string(kDat) + " /etc/file && echo file");
  EXPECT_EQ("1\n2.4g: rolled back; the settings before the apply are in force\n0\nfile\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("the roll back of the apply of 2.4g had begun when it was cut off"));
}

// The interfaces wait for their restart, the dat file is written.
std::string cut_in_apply(const std::string& confirm) {
  return "wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null; simctl fail ifconfig hang ra0 up >/dev/null; "
         "count=$(commands "
         "| grep -c 'ra0 up'); wlanctl apply 2.4g " +
         confirm +
         " >/dev/null 2>&1 & until [ $(commands | grep -c 'ra0 up') -gt $count ]; do sleep 0.02; done; simctl "
         "power-cut "
         ">/dev/null;";
}

TEST(PowerCut, InAnApplyIsToldAndLeftToItsOperator) {
  const Result result = run_story(
      cut_in_apply("--confirm 600") +
      "echo == log; wlanctl log --json; echo == status; wlanctl status 2.4g 2>&1 | tr -s '\\n ' ' ' | grep -c "
      "'the gateway went down before the apply of 2.4g was confirmed'; echo == apply; wlanctl apply 2.4g; echo "
      "$?; echo == confirm; wlanctl confirm 2.4g; echo $?; wlanctl get 2.4g SSID:1 Channel");
  EXPECT_EQ("begun", document_in(behind(result.out, "log"))["data"]["entries"][0]["state"]);
  EXPECT_EQ("1\n", behind(result.out, "status"));
  EXPECT_EQ("1\n", behind(result.out, "apply"));
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\nSSID:1   Kitchen\nChannel  1\n", behind(result.out, "confirm"));
}

TEST(PowerCut, InAnApplyIsRolledBackWhenAsked) {
  const Result result = run_story(
      cut_in_apply("--confirm 600") +
      "echo == rollback; wlanctl rollback 2.4g; echo $?; wlanctl get 2.4g SSID:1 Channel; wlanctl confirm 2.4g; "
      "echo $?");
  EXPECT_EQ("2.4g: rolled back; the settings before the apply are in force\n0\nSSID:1   Gateway-Home\nChannel  6\n1\n",
            behind(result.out, "rollback"));
}

// The boot has taken the file, and nobody had asked to decide.
TEST(PowerCut, InAnApplyThatNobodyWasToConfirmLeavesWhatTheBootTook) {
  const Result result = run_story(cut_in_apply("") +
                                  "echo == log; wlanctl log --json; echo == confirm; wlanctl confirm 2.4g; echo $?; "
                                  "echo == apply; wlanctl apply 2.4g; echo $?; wlanctl get 2.4g SSID:1 Channel");
  EXPECT_EQ("begun", document_in(behind(result.out, "log"))["data"]["entries"][0]["state"]);
  EXPECT_EQ("nothing waits to be confirmed on 2.4g\n0\n", behind(result.out, "confirm"));
  EXPECT_EQ(
      "2.4g: nothing to apply; the store is as the dat file, which counts as in force\n0\nSSID:1   Kitchen\nChannel  "
      "1\n",
      behind(result.out, "apply"));
}

TEST(PowerCut, BeforeTheDatFileChangesLeavesNothingToDecide) {
  const std::string kept = kKept;
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; cp -p " + kept +
      " /etc/kept; wlanctl rollback >/dev/null; cp -p /etc/kept " + kept +
      "; simctl power-cut >/dev/null; echo == after; wlanctl diff 2>&1 | grep 'went down'; wlanctl set 2.4g Channel=1 "
      ">/dev/null; wlanctl save 2.4g; ls /etc/Wireless | grep before; wlanctl diff 2>&1 | grep 'went down'");
  EXPECT_EQ("2.4g: saved to /etc/Wireless/RT2860AP/RT2860AP.dat\n", behind(result.out, "after"));
}

TEST(KeptOverABoot, IsForItsOwnerAlone) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null;"
      "stat -c %a " +
      std::string(kKept));
  EXPECT_EQ("600\n", result.out);
}

TEST(KeptOverABoot, IsGoneWithTheWaiting) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; wlanctl confirm >/dev/null;"
      "ls /etc/Wireless | grep before; wlanctl set 2.4g Channel=2 >/dev/null; wlanctl apply 2.4g --confirm 600 "
      ">/dev/null; wlanctl rollback; ls /etc/Wireless | grep before; no_guardian; wlanctl get 2.4g Channel");
  EXPECT_EQ("2.4g: rolled back; the settings before the apply are in force\n1\n", result.out);
}

TEST(KeptOverABoot, ThatCannotBeWrittenIsSaid) {
  const Result result = run_story(
      "export WLANCTL_FOLDER=/nowhere; wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 "
      ">/dev/null; echo $?");
  EXPECT_EQ("0\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("cannot write /nowhere/wlanctl-before-2.4g (No such file or directory): after a "
                                    "power cut, nothing puts 2.4g back"));
}

TEST(KeptOverABoot, ThatCannotBeToldOfARollBackIsSaid) {
  const Result result = run_story(
      "mkdir /etc/chosen; export WLANCTL_FOLDER=/etc/chosen; wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g "
      "--confirm 600 >/dev/null; mount --bind /etc/chosen /etc/chosen; mount -o remount,ro,bind /etc/chosen; wlanctl "
      "rollback 2.4g; echo $?; umount /etc/chosen; wlanctl get 2.4g Channel");
  EXPECT_EQ("1\n6\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("cannot write into /etc/chosen/wlanctl-before-2.4g that the roll back begins "
                                    "(Read-only file system): after a power cut before its end, look with wlanctl diff "
                                    "before you confirm"));
  EXPECT_THAT(result.err, HasSubstr("cannot remove /etc/chosen/wlanctl-before-2.4g: Read-only file system"));
}

TEST(Rollback, OfNothingIsRefused) {
  const Json document = json_of("rollback 5g");
  EXPECT_EQ(1, document["exit_code"]);
  EXPECT_EQ(Json::array(), document["data"]["bands"]);
  EXPECT_THAT(document["problems"].at(0)["message"].dump(), HasSubstr("nothing waits for a confirmation on 5g"));
  EXPECT_EQ("wlanctl log lists what was done, and wlanctl undo takes it back", document["problems"].at(0)["next"]);
}

TEST(Rollback, PutsBackWhatADamagedFileDoesNotTell) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; kill -9 $(guardian);"
      "no_guardian; echo x >>$pending-2.4g; wlanctl rollback; wlanctl get 2.4g Channel");
  EXPECT_EQ("2.4g: rolled back; the settings before the apply are in force\n6\n", result.out);
}

TEST(Rollback, WaitsForAnotherOneAndGivesUp) {
  const Result result = run_story("flock /var/run/wlanctl.lock sh -c 'wlanctl rollback --wait 0; echo $?'");
  EXPECT_EQ("4\n", result.out);
}

}  // namespace
}  // namespace wlanctl_test

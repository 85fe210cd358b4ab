// What puts one more SSID on the air by its count and its switch: a save has left out what it had.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

// The gateway as a boot finds it that served one SSID before.
const std::string kOne =
    "wlanctl set 5g BssidNum=1 >/dev/null; wlanctl apply 5g --force >/dev/null 2>&1; simctl power-cut >/dev/null; "
    "wlanctl apply 5g --again >/dev/null 2>&1; ";
// Lines of a dat file that are no records each make room for one.
const std::string kRoom =
    "wlanctl set 5g BssidNum=1 >/dev/null; wlanctl apply 5g --force >/dev/null 2>&1; i=0; while [ $i -lt 20 ]; do echo "
    "'# line' >>/etc/Wireless/RT2860AP_AC/RT2860AP.dat; i=$((i + 1)); done; simctl power-cut >/dev/null; "
    "wlanctl apply 5g --again >/dev/null 2>&1; ";
constexpr char kAcDat[] = "/etc/Wireless/RT2860AP_AC/RT2860AP.dat";

TEST(SetCount, OfAnSsidWithoutANameIsRefused) {
  const auto steps = run_steps(
      {kOne + "wlanctl set 5g BssidNum=2 EnableSSID:2=1 --json", "wlanctl get 5g BssidNum EnableSSID:1 | tr -s ' '"});
  EXPECT_EQ(1, steps[0].status);
  const Json document = document_in(steps[0].out);
  ASSERT_EQ(1u, document["problems"].size());
  EXPECT_EQ("EnableSSID:2 cannot be \"1\": SSID 2 would be on the air, and SSID:2 is empty",
            document["problems"][0]["message"]);
  EXPECT_EQ("set that too, or wlanctl ssid add 5g NAME sets one up; --force insists", document["problems"][0]["next"]);
  EXPECT_EQ("BssidNum 1\nEnableSSID:1 1\n", steps[1].out);
}

TEST(SetCount, OfAnSsidWithoutSecurityIsRefused) {
  const auto steps = run_steps({kRoom + "wlanctl set 5g BssidNum=2 EnableSSID:2=1 SSID:2=Guest"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("SSID 2 would be on the air, and AuthMode:2 is empty"));
}

TEST(SetCount, OfAnSsidThatIsOffIsTakenAndItsSwitchIsNot) {
  const auto steps = run_steps({kOne + "wlanctl set 5g BssidNum=2", "wlanctl set 5g EnableSSID:2=1"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("SSID 2 would be on the air, and SSID:2 is empty"));
}

TEST(SetCount, OfAnSsidThatWasOnBeforeKeepsNobodyFromOtherValues) {
  const auto steps = run_steps({kOne + "wlanctl set 5g BssidNum=2 EnableSSID:2=1 --force", "wlanctl set 5g Channel=44",
                                "wlanctl set 5g EnableSSID:2=1"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("EnableSSID:2 is taken all the same: SSID 2 would be on the air"));
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
}

TEST(SetCount, OfAnSsidWhoseKeysHaveNoRoomSaysWhatMakesIt) {
  const auto steps = run_steps({kOne + "wlanctl set 5g BssidNum=2 SSID:2=Guest"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("SSID:2 cannot be \"Guest\": the store of 5g has no room for the keys of SSID "
                                      "2; wlanctl ssid add 5g NAME --to-file makes room"));
}

TEST(SetCount, WithNameAndSecurityMakesTheKeysThatTheStoreLacks) {
  const auto steps =
      run_steps({kRoom + "wlanctl set 5g BssidNum=2 EnableSSID:2=1 SSID:2=Guest EncrypType:2=AES WPAPSK:2=guest-word-1 "
                         "AuthMode:2=WPA2PSK",
                 "wlanctl apply 5g --force >/dev/null 2>&1; grep -e ^SSID2= -e ^WPAPSK2= " + std::string(kAcDat)});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("SSID2=Guest\nWPAPSK2=guest-word-1\n", steps[1].out);
}

TEST(SetCount, IsNotGotRoundBySsidEnable) {
  const auto steps = run_steps({kOne + "wlanctl set 5g BssidNum=2", "wlanctl ssid enable 5g 2",
                                "wlanctl get 5g EnableSSID:2", "wlanctl ssid enable 5g 2 --force"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err,
              HasSubstr("5g: SSID 2 would be on the air, and SSID:2 is empty; wlanctl set 5g gives it what "
                        "it needs; --force insists"));
  EXPECT_EQ("\n", steps[2].out);
  EXPECT_EQ(0, steps[3].status);
  EXPECT_THAT(steps[3].err, HasSubstr("all the same, by --force: 5g: SSID 2 would be on the air"));
}

TEST(SetCount, OfAnImportIsJudgedLikewise) {
  const auto steps = run_steps({kOne + "printf 'BssidNum=2\\nEnableSSID=1;1\\n' >two.dat; wlanctl import two.dat 5g"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("SSID 2 would be on the air, and SSID:2 is empty"));
}

TEST(SetCount, OfAnUndoIsTakenWithANote) {
  const auto steps = run_steps({kOne + "wlanctl set 5g BssidNum=2 EnableSSID:2=1 --force; wlanctl apply 5g --force; "
                                       "wlanctl set 5g EnableSSID:2=0; wlanctl apply 5g",
                                "wlanctl undo", "wlanctl get 5g EnableSSID:2"});
  EXPECT_THAT(steps[1].err, HasSubstr("EnableSSID:2 is taken all the same: SSID 2 would be on the air"));
  EXPECT_THAT(steps[2].out, HasSubstr("1"));
}

// What is refused takes nothing.
TEST(SetCount, OfAnUndoThatIsRefusedIsNotSaidToBeTaken) {
  const auto steps =
      run_steps({kOne + "wlanctl set 5g BssidNum=2 EnableSSID:2=1 --force; wlanctl apply 5g --force; "
                        "wlanctl set 5g EnableSSID:2=0 Channel=40; wlanctl apply 5g; wlanctl set 5g Channel=44",
                 "wlanctl undo"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("Channel of 5g has changed since"));
  EXPECT_THAT(steps[1].err, Not(HasSubstr("is taken all the same")));
}

}  // namespace
}  // namespace wlanctl_test

// The settings of which the driver is told when they are stored: the command that does so may hang or fail.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

const std::string kHang = "simctl fail iwpriv hang >/dev/null;";
const std::string kExport =
    "wlanctl set 2.4g WscConfMode:1=2 WscConfMode:2=2 >/dev/null; wlanctl export 2.4g >w.json;"
    "wlanctl set 2.4g WscConfMode:1=0 WscConfMode:2=0 >/dev/null;";

// Begins a verb, and ends it when the driver's command hangs.
std::string terminated(const std::string& verb) {
  return "printf '#!/bin/sh\\n: >/front/hangs\\nexec sleep 1000\\n' >/front/hang; chmod 755 /front/hang;"
         "rm -f /userfs/bin/iwpriv; ln -s /front/hang /userfs/bin/iwpriv; with_pid /front/pid wlanctl " +
         verb + " & until [ -e /front/hangs ]; do sleep 0.02; done; kill -TERM $(cat /front/pid); wait $!; code=$?;" +
         "echo == code; echo $code; wlanctl get 2.4g WscConfMode:1 WscConfMode:2;";
}

const std::string kEditor = "export EDITOR='sed -i s/^WscConfMode:1=.*/WscConfMode:1=2/';";

// An undo has WscConfMode to bring back.
const std::string kSaved =
    "wlanctl save 2.4g >/dev/null 2>&1; wlanctl set 2.4g WscConfMode:1=7 >/dev/null; wlanctl save 2.4g >/dev/null "
    "2>&1;";

class ToldAtOnce : public testing::TestWithParam<const char*> {};

TEST_P(ToldAtOnce, ACommandThatHangsIsEndedAfterTheTimeThatWasAllowed) {
  const Result result = run_story(kEditor + kExport + kSaved + kHang + "wlanctl " + GetParam() +
                                  " --command-timeout 1; code=$?; echo == code; echo $code");
  EXPECT_EQ("5\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr("the driver did not take WscConfMode:1, which is in the store now"));
  EXPECT_THAT(result.err, HasSubstr("did not end in time, and was ended"));
}

INSTANTIATE_TEST_SUITE_P(Verbs, ToldAtOnce,
                         testing::Values("set 2.4g WscConfMode:1=2", "import w.json", "edit 2.4g", "undo"));

TEST(ToldAtOnce, AnInterruptEndsTheCommandAndTheValuesAreStored) {
  for (const char* const verb : {"set 2.4g WscConfMode:1=2 WscConfMode:2=2", "import w.json"}) {
    const Result result = run_story(kExport + terminated(verb));
    EXPECT_EQ("5\nWscConfMode:1  2\nWscConfMode:2  2\n", behind(result.out, "code")) << verb;
    EXPECT_THAT(result.err, HasSubstr("wlanctl: interrupted; the values are stored first, and the result told"));
    EXPECT_THAT(result.err, HasSubstr("the driver did not take WscConfMode:1, which is in the store now: "
                                      "\"/userfs/bin/iwpriv ra0 set WscConfMode=2\" was interrupted, and ended"));
    EXPECT_THAT(result.err, HasSubstr("the driver did not take WscConfMode:2, which is in the store now: "
                                      "\"/userfs/bin/iwpriv ra1 set WscConfMode=2\" was not run any more"));
  }
}

TEST(ToldAtOnce, AnUndoToo) {
  const Result result = run_story(
      "wlanctl apply 2.4g >/dev/null 2>&1; wlanctl set 2.4g WscConfMode:1=2 >/dev/null; wlanctl save 2.4g >/dev/null;" +
      terminated("undo"));
  EXPECT_THAT(behind(result.out, "code"), HasSubstr("WscConfMode:1  7\n"));
  EXPECT_THAT(result.err, HasSubstr("wlanctl: interrupted; the values are stored first, and the result told"));
  EXPECT_THAT(result.err, HasSubstr("the driver did not take WscConfMode:1"));
}

TEST(ToldAtOnce, ARefusalSaysWhatTellsTheDriverAgain) {
  const auto steps = run_steps({kExport + "simctl fail iwpriv exit=1 >/dev/null; wlanctl import w.json",
                                "simctl reset; wlanctl import w.json", "wlanctl set 2.4g WscConfMode:1=2",
                                "grep -c 'iwpriv ra0 set WscConfMode=2' /run/gateway-sim/journal"});
  EXPECT_EQ(5, steps[0].status);
  EXPECT_THAT(steps[0].err,
              HasSubstr("when that is mended, wlanctl set 2.4g WscConfMode:1=2 tells it again; an import of the same "
                        "value does not, nor an apply without a restart"));
  EXPECT_THAT(steps[1].out, HasSubstr("nothing changes; the store has it all"));
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_EQ("3\n", steps[3].out);
}

}  // namespace
}  // namespace wlanctl_test

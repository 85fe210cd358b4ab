// A list of the whole band, of which a save keeps as many values as there are SSIDs: compared as a whole, and nothing of
// it goes unsaid.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::string kSetLonger = "wlanctl set 2.4g 'AutoChannelSkipList=12;13;1'";
constexpr char kCut[] = "a save keeps the first 2 of its 3 values, as many as there are SSIDs";

TEST(BandList, IsComparedBehindTheSsidCountToo) {
  const auto steps = run_steps({"wlanctl apply 2.4g", kSetLonger, "wlanctl diff 2.4g --in-force --json",
                                "wlanctl revert 2.4g; wlanctl set 2.4g 'AutoChannelSkipList=12;13'",
                                "wlanctl diff 2.4g --in-force", "wlanctl status 2.4g | grep settings:"});
  EXPECT_EQ(Json::parse(R"([{"key":"AutoChannelSkipList","live":"12;13;1","in_force":"12;13;14"}])"),
            document_in(steps[2].out)["data"]["bands"][0]["changes"]);
  EXPECT_THAT(steps[4].out, HasSubstr("  AutoChannelSkipList  12;13;14 -> 12;13\n"));
  EXPECT_THAT(steps[5].out, HasSubstr("store/in force 1"));
}

TEST(BandList, ThatDiffersBehindTheCountOnlyIsADifferenceFromTheFile) {
  const auto steps = run_steps({kSetLonger, "wlanctl diff 2.4g"});
  EXPECT_THAT(steps[1].out, HasSubstr("2.4g: 1 value differs (dat file -> store)"));
  EXPECT_THAT(steps[1].out, HasSubstr("  AutoChannelSkipList  12;13;14 -> 12;13;1\n"));
}

TEST(BandList, ThatASaveWouldCutIsToldBySetImportAndDiff) {
  const auto steps =
      run_steps({kSetLonger, "wlanctl diff 2.4g", "wlanctl export 2.4g --format dat >all.dat; wlanctl revert 2.4g",
                 "wlanctl import all.dat 2.4g --dry-run", "wlanctl set 2.4g Channel=11",
                 "wlanctl set 2.4g BssidNum=3 " + std::string("'AutoChannelSkipList=12;13;2'")});
  EXPECT_THAT(steps[0].err, HasSubstr(std::string("AutoChannelSkipList: ") + kCut));
  EXPECT_THAT(steps[1].err, HasSubstr(std::string("AutoChannelSkipList of 2.4g: ") + kCut));
  EXPECT_THAT(steps[3].err, HasSubstr(std::string("AutoChannelSkipList: ") + kCut)) << steps[3].out;
  EXPECT_THAT(steps[4].err, Not(HasSubstr("a save keeps")));
  EXPECT_THAT(steps[5].err, Not(HasSubstr("a save keeps")));
}

TEST(BandList, ThatASaveWouldCutIsNotWrittenWithoutForce) {
  const auto steps = run_steps({kSetLonger, "wlanctl save 2.4g", "wlanctl apply 2.4g", "wlanctl apply 2.4g --dry-run",
                                std::string("grep ^AutoChannelSkipList= ") + kDat, "wlanctl apply 2.4g --force",
                                std::string("grep ^AutoChannelSkipList= ") + kDat});
  for (const size_t i : {1u, 2u, 3u}) {
    EXPECT_EQ(1, steps[i].status) << i;
    EXPECT_THAT(steps[i].err, AllOf(HasSubstr(std::string("AutoChannelSkipList: ") + kCut), HasSubstr("--force"))) << i;
  }
  EXPECT_EQ("AutoChannelSkipList=12;13;14\n", steps[4].out);
  EXPECT_EQ(0, steps[5].status) << steps[5].err;
  EXPECT_THAT(steps[5].err, HasSubstr(kCut));
  EXPECT_EQ("AutoChannelSkipList=12;13\n", steps[6].out);
}

// The gateway had it so: whoever changes something else cannot help it.
TEST(BandList, ThatIsInForceAlreadyKeepsNoChangeFromBeingApplied) {
  const auto steps = run_steps({"wlanctl set 2.4g Channel=11; wlanctl apply 2.4g", "wlanctl diff 2.4g",
                                "wlanctl set 2.4g Channel=1; wlanctl apply 2.4g", "wlanctl save 2.4g"});
  for (const size_t i : {0u, 2u, 3u}) {
    EXPECT_EQ(0, steps[i].status) << i << steps[i].err;
    EXPECT_THAT(steps[i].err, HasSubstr(kCut)) << i;
  }
  EXPECT_THAT(steps[1].out, HasSubstr("2.4g: the store is as the dat file; an apply would mean: nothing\n"));
  EXPECT_THAT(steps[1].err, HasSubstr("AutoChannelSkipList of 2.4g is cut in the dat file, and so at the next boot: "));
}

// So it is on a gateway whose settings come from another one that has them in force.
TEST(BandList, OfWhichTheFileHasNoMoreKeepsNoImportFromBeingApplied) {
  const auto steps = run_steps({"wlanctl set 2.4g SSID:1=Moved; wlanctl apply 2.4g; wlanctl export >all.json",
                                "wlanctl set 2.4g 'AutoChannelSkipList=12;13' SSID:1=Old; wlanctl apply 2.4g",
                                "wlanctl import all.json", "wlanctl apply", "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[2].err, HasSubstr(kCut));
  EXPECT_EQ(0, steps[3].status) << steps[3].err;
  EXPECT_EQ("Moved\n", steps[4].out);
}

// By --force, and no second time beside that.
TEST(BandList, ThatIsCutByForceIsToldOnce) {
  for (const std::string verb : {"save", "apply"}) {
    const auto steps = run_steps({kSetLonger, "wlanctl " + verb + " 2.4g --force"});
    EXPECT_EQ(0, steps[1].status) << steps[1].err;
    const size_t first = steps[1].err.find(kCut);
    ASSERT_NE(std::string::npos, first) << steps[1].err;
    EXPECT_EQ(std::string::npos, steps[1].err.find(kCut, first + 1)) << steps[1].err;
    EXPECT_THAT(steps[1].err, HasSubstr("all the same, by --force: the store of 2.4g: AutoChannelSkipList"));
  }
}

const std::string kLongPower = std::string("sed -i 's/^TxPower=.*/TxPower=100;100;50/' ") + kDat;

// A value for each SSID, and one more; it is one setting to the radio.
TEST(BandKey, WithMoreValuesThanSsidsIsAsTheFileAfterARevert) {
  const auto steps =
      run_steps({kLongPower, "wlanctl revert 2.4g", "wlanctl diff 2.4g", std::string("wlanctl diff 2.4g ") + kDat,
                 "wlanctl apply 2.4g --again", "wlanctl diff 2.4g --in-force"});
  EXPECT_THAT(steps[2].out, HasSubstr("2.4g: the store is as the dat file"));
  EXPECT_THAT(steps[3].out, HasSubstr("2.4g: the store is as the file\n"));
  EXPECT_EQ(0, steps[4].status) << steps[4].err;
  EXPECT_THAT(steps[5].out, HasSubstr("2.4g: the store is as what is in force"));
  for (const size_t i : {2u, 3u, 5u}) EXPECT_THAT(steps[i].out, Not(HasSubstr("TxPower"))) << i;
}

TEST(BandKey, WithMoreValuesThanSsidsIsNoListThatASaveCuts) {
  const auto steps = run_steps(
      {kLongPower, "wlanctl revert 2.4g; wlanctl set 2.4g Channel=11", "wlanctl diff 2.4g", "wlanctl save 2.4g"});
  EXPECT_EQ(0, steps[3].status);
  for (const Result& step : steps) EXPECT_THAT(step.err, Not(HasSubstr("TxPower"))) << step.err;
}

TEST(BandList, ThatWasShortenedComesBackWithARevert) {
  const auto steps = run_steps({"wlanctl set 2.4g 'AutoChannelSkipList=12;13'", "wlanctl revert 2.4g",
                                "wlanctl get 2.4g AutoChannelSkipList", "wlanctl undo 2.4g --dry-run"});
  EXPECT_EQ("2.4g: 1 value put back to the dat file's\n", steps[1].out);
  EXPECT_EQ("12;13;14\n", steps[2].out);
  EXPECT_THAT(steps[3].out, HasSubstr("AutoChannelSkipList = 12;13  (was 12;13;14)"));
}

}  // namespace
}  // namespace wlanctl_test

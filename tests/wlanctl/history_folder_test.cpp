// Where the history is kept, how much of it, and what is in the way.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char kFolder[] = "/etc/Wireless/wlanctl-history";
const std::string kSave = "wlanctl save 2.4g >/dev/null 2>&1;";

TEST(HistoryFolder, IsForItsOwnerAlone) {
  const Result result = run_story("umask 0; " + kSave + "stat -c %a " + kFolder + " " + kFolder + "/entry-1");
  EXPECT_EQ("700\n600\n", result.out);
}

TEST(HistoryFolder, IsBesideWhatElseOutlivesABoot) {
  EXPECT_EQ("entry-1\n", run_story("mkdir /etc/chosen; export WLANCTL_FOLDER=/etc/chosen;" + kSave +
                                   "ls /etc/chosen/wlanctl-history; ls /etc/Wireless | grep history")
                             .out);
}

TEST(HistoryFolder, CanBeChosen) {
  EXPECT_EQ(
      "entry-1\n",
      run_story("export WLANCTL_HISTORY=/etc/told;" + kSave + "ls /etc/told; ls /etc/Wireless | grep history").out);
}

TEST(HistoryFolder, IsNotThereWhereNoHistoryIsWanted) {
  for (const char* const wish : {"WLANCTL_HISTORY=off", "WLANCTL_HISTORY=", "WLANCTL_FOLDER="}) {
    const Result result = run_story("export " + std::string(wish) +
                                    ";wlanctl save 2.4g 2>err; grep history err; ls /etc/Wireless;"
                                    "ls off; wlanctl log; echo $?; wlanctl undo; echo $?");
    EXPECT_EQ("2.4g: saved to /etc/Wireless/RT2860AP/RT2860AP.dat\nRT2860AP\nRT2860AP_AC\n2\n2\n", result.out) << wish;
    EXPECT_THAT(result.err, HasSubstr("no history is kept; WLANCTL_HISTORY names a folder for it"));
  }
}

TEST(HistoryFolder, HoldsNoMoreThanAHundredEntries) {
  const Result result =
      run_story("for i in $(seq 103); do " + kSave + " done; ls " + kFolder + " | wc -l; ls " + kFolder +
                " | grep -cx -e entry-1 -e entry-2 -e entry-3; wlanctl log -n 1 | head -c 3; wlanctl log "
                "-n 100 | grep -c save");
  EXPECT_EQ("100\n0\n103100\n", result.out);
}

TEST(HistoryFolder, HoldsNoMoreBytesThanItMay) {
  const Result result =
      run_story(kSave + "for i in 2 3 4 5; do head -c 65000 /dev/zero >" + std::string(kFolder) +
                "/entry-$i; done; head -c 2100 /dev/zero >" + kFolder + "/entry-6;" + kSave + "ls " + kFolder);
  EXPECT_EQ("entry-3\nentry-4\nentry-5\nentry-6\nentry-7\n", result.out);
}

TEST(HistoryFolder, IsTidiedOfWhatWasNotFinished) {
  const Result result = run_story(kSave + "touch " + kFolder + "/entry-2.aBcDeF; wlanctl log 2>&1 | grep skipped;" +
                                  kSave + "ls " + kFolder);
  EXPECT_EQ("entry-1\nentry-2\n", result.out);
}

// What stands in the place of an entry, by what is said of it.
TEST(HistoryFolder, NamesAndSkipsWhatIsNoEntry) {
  const struct {
    const char* harm;
    const char* reason;
  } kRows[] = {
      {"echo x >>%", "it is damaged"},
      {": >%", "it is damaged"},
      {"sed -i 's/save/bake/' %", "it is damaged"},
      {"cp % /etc/e; rm %; ln -s /etc/e %", "it is a link"},
      {"rm %; ln -s /nowhere %", "it is a link"},
      {"rm %; mkfifo %", "it is no plain file"},
      {"rm %; mkdir %", "it is no plain file"},
      {"head -c 70000 /dev/zero >>%", "it is too large"},
      {"chmod 644 %", "it is not its owner's alone"},
      {"cp -p % /etc/Wireless/wlanctl-history/entry-9; rm %", "entry-9 is skipped: it is damaged"},
      {"touch /etc/Wireless/wlanctl-history/notes", "notes is skipped: it is no entry"},
      {"mv % /etc/Wireless/wlanctl-history/entry-0002", "entry-0002 is skipped: it is no entry"},
  };
  for (const auto& row : kRows) {
    std::string harm = row.harm;
    for (size_t at = 0; (at = harm.find('%')) != std::string::npos;)
      harm.replace(at, 1, std::string(kFolder) + "/entry-2");
    const Result result =
        run_story(kSave + kSave + harm + "; timeout 10 wlanctl log; echo $?; wlanctl log --json >l.json;" +
                  "wlanctl undo >/dev/null 2>&1; " + kSave + "echo == after; wlanctl log 2>/dev/null | head -n 1");
    EXPECT_THAT(result.out, HasSubstr("\n0\n")) << row.harm;
    EXPECT_THAT(result.out, HasSubstr("1  ")) << row.harm;
    EXPECT_THAT(result.err, HasSubstr(row.reason)) << row.harm;
    EXPECT_THAT(behind(result.out, "after"), HasSubstr("save")) << row.harm;
  }
}

TEST(HistoryFolder, NamesAFewOfManyThatAreNoEntries) {
  const Result result = run_story(kSave + "for i in $(seq 30); do touch " + kFolder + "/x$i; done; wlanctl log");
  EXPECT_THAT(result.err, HasSubstr("and 22 more files are skipped"));
}

TEST(HistoryFolder, WithTooManyFilesIsNotUsed) {
  const Result result = run_story(kSave + "for i in $(seq 1001); do : >" + kFolder +
                                  "/x$i; done; wlanctl save 2.4g >/dev/null; "
                                  "echo $?; wlanctl log; echo $?");
  EXPECT_EQ("0\n2\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("has more than 1000 files"));
}

TEST(HistoryFolder, WithTheLastNumberThereIsSaysSo) {
  const Result result =
      run_story(kSave + "touch " + kFolder + "/entry-999999999; wlanctl save 2.4g >/dev/null; echo $?");
  EXPECT_EQ("0\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("has the last number that there is"));
}

// Whatever is wrong with it: the operation is done, and a note says so, once.
TEST(HistoryFolder, IsInNobodysWay) {
  const struct {
    const char* harm;
    const char* reason;
  } kRows[] = {
      {"export WLANCTL_HISTORY=/nowhere/at/all", "cannot make /nowhere/at/all: No such file or directory"},
      {"touch /etc/file; export WLANCTL_HISTORY=/etc/file", "cannot open /etc/file: Not a directory"},
      {"export WLANCTL_HISTORY=here", "cannot use here: its name does not begin with /"},
      {"mkdir -m 777 /etc/open; export WLANCTL_HISTORY=/etc/open", "cannot use /etc/open: others may write it"},
      {"mkdir /etc/his; chown 12 /etc/his; export WLANCTL_HISTORY=/etc/his",
       "cannot use /etc/his: it is somebody else's"},
      {"mkdir -m 700 /etc/full; mount -t tmpfs -o size=4k,mode=700 none /etc/full; head -c 9000 /dev/zero >/etc/full/x "
       "2>/dev/null; export WLANCTL_HISTORY=/etc/full",
       "No space left on device"},
      {"mkdir -m 700 /etc/ro; mount -t tmpfs -o ro,mode=700 none /etc/ro; export WLANCTL_HISTORY=/etc/ro",
       "Read-only file system"},
  };
  for (const auto& row : kRows) {
    const Result result =
        run_story(std::string(row.harm) +
                  "; wlanctl set 2.4g Channel=1 >/dev/null 2>&1; wlanctl apply 2.4g --json >a.json; echo $?;"
                  "cat a.json; wlanctl apply 2.4g --again --confirm 600 >/dev/null; echo == rest; wlanctl confirm;"
                  "echo $?; wlanctl save 2.4g; echo $?");
    EXPECT_THAT(result.out, testing::StartsWith("0\n")) << row.harm;
    EXPECT_EQ("2.4g: confirmed; the settings stay\n0\n2.4g: saved to /etc/Wireless/RT2860AP/RT2860AP.dat\n0\n",
              behind(result.out, "rest"));
    const Json notes = document_in(result.out.substr(2, result.out.find("== ") - 2))["notes"];
    size_t told = 0;
    for (const Json& note : notes) told += note.get<std::string>().find("the history is not kept: ") == 0 ? 1 : 0;
    EXPECT_EQ(1u, told) << notes;
    EXPECT_THAT(notes.dump(), HasSubstr(row.reason));
    EXPECT_THAT(notes.dump(), HasSubstr("WLANCTL_HISTORY names another folder, or off"));
  }
}

TEST(HistoryFolder, ThatCannotBeUsedIsAProblemForWhoLooks) {
  const Result result =
      run_story("mkdir -m 777 /etc/open; export WLANCTL_HISTORY=/etc/open; wlanctl log --json; echo $?");
  EXPECT_EQ(2, document_in(result.out.substr(0, result.out.rfind('2')))["exit_code"]);
}

TEST(HistoryFolder, IsLeftAsItIs) {
  EXPECT_EQ(
      "755\n",
      run_story("mkdir -m 755 /etc/mine; export WLANCTL_HISTORY=/etc/mine;" + kSave + "stat -c %a /etc/mine").out);
}

TEST(History, OfVeryManyChangesSaysHowManyFoundNoRoom) {
  const Result result = run_story(
      "for i in $(seq 900); do echo Strange$i=$(printf 'v%0100d' $i); done >more; wlanctl show >/dev/null 2>&1;"
      "library_probe init 0 init 1 >/dev/null 2>&1; cp " +
      std::string(kDat) + " /etc/old; cat more >>" + kDat +
      "; ipcrm -M 0x12345; wlanctl save 2.4g >/dev/null 2>&1; wlanctl log show 1 --json >s.json; cp /etc/old " + kDat +
      "; wlanctl revert 2.4g --force; wlanctl log -n 1 --json; ls -l " + kFolder +
      " >&2; wlanctl undo >/dev/null; echo == $?");
  const Json entry = document_in(
      result.out.substr(result.out.find('{'), result.out.find("\n==") - result.out.find('{')))["data"]["entries"][0];
  EXPECT_GT(entry["left_out"], 0) << result.err;
  EXPECT_GT(entry["changes"].size(), 100u);
  EXPECT_THAT(result.out, HasSubstr("== 1"));
}

}  // namespace
}  // namespace wlanctl_test

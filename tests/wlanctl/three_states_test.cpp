// What the store holds, what the dat file holds, and what is in force, told apart by diff and status.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

const std::string kKnown = "wlanctl set 2.4g Channel=3 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1;";
// The store, the file and what is in force: three channels.
const std::string kThree = kKnown +
                           "wlanctl set 2.4g Channel=9 >/dev/null; wlanctl save 2.4g >/dev/null 2>&1; wlanctl set 2.4g "
                           "Channel=11 SSID:1=Kitchen >/dev/null;";

Json data_after(const std::string& script, const std::string& call) {
  return document_in(run_story(script + call + " --json").out)["data"];
}

TEST(DiffInForce, ComparesWithWhatWasLastApplied) {
  const Json data = data_after(kThree, "wlanctl diff 2.4g --in-force");
  EXPECT_EQ(Json::parse(R"({"against":"in_force","file":null,"bands":[{"band":"2.4g","changes":[
      {"key":"Channel","live":11,"in_force":3},{"key":"SSID:1","live":"Kitchen","in_force":"Gateway-Home"}]}]})"),
            data);
}

TEST(DiffInForce, IsATableInText) {
  const Result result = run_story(kThree + "wlanctl diff 2.4g --in-force");
  EXPECT_EQ(
      "2.4g: 2 values differ (what is in force -> store)\n  Channel  3 -> 11\n  SSID:1   Gateway-Home -> Kitchen\n",
      result.out);
}

TEST(DiffInForce, SaysThatNothingDiffers) {
  EXPECT_EQ("2.4g: the store is as what is in force\n", run_story(kKnown + "wlanctl diff 2.4g --in-force").out);
}

TEST(DiffInForce, SaysWhereNothingIsKnownAndWhatToDo) {
  const Result result = run_story(kKnown + "wlanctl diff --in-force --exit-code; echo $?");
  EXPECT_EQ("2.4g: the store is as what is in force\n2\n", result.out);
  EXPECT_THAT(result.err,
              HasSubstr("nothing is known of what was last applied to 5g; wlanctl apply 5g makes it known"));
}

TEST(DiffInForce, KnowsNothingAfterABoot) {
  EXPECT_EQ("2\n", run_story(kKnown + "simctl power-cut >/dev/null; wlanctl diff 2.4g --in-force; echo $?").out);
}

TEST(DiffInForce, MasksSecrets) {
  const Result result =
      run_story(kKnown +
                "wlanctl set 2.4g WPAPSK:1=topsecret >/dev/null; wlanctl diff 2.4g --in-force; wlanctl "
                "diff 2.4g --in-force --json; echo == wanted; wlanctl diff 2.4g --in-force --secrets");
  EXPECT_THAT(result.out.substr(0, result.out.find("== wanted")), testing::Not(HasSubstr("topsecret")));
  EXPECT_THAT(behind(result.out, "wanted"), HasSubstr("sample-passphrase-1 -> topsecret"));
}

TEST(DiffDatFile, SaysWhatItComparesWith) {
  const Json data = data_after("", "wlanctl diff 2.4g");
  EXPECT_EQ("dat_file", data["against"]);
  EXPECT_EQ(nullptr, data["file"]);
}

TEST(DiffFile, ComparesWithAnotherDatFile) {
  const std::string copy =
      std::string("wlanctl show >/dev/null 2>&1; sed s/^Channel=.*/Channel=9/ ") + kDat + " >other;";
  const Json data = data_after(copy, "wlanctl diff 2.4g other");
  EXPECT_EQ(
      Json::parse(
          R"({"against":"file","file":"other","bands":[{"band":"2.4g","changes":[{"key":"Channel","live":6,"file":9}]}]})"),
      data);
  EXPECT_EQ("2.4g: 1 value differs (the file -> store)\n  Channel  9 -> 6\n",
            run_story("wlanctl set 2.4g Channel=6 >/dev/null 2>&1;" + copy + "wlanctl diff other 2.4g").out);
}

TEST(DiffFile, TellsTheBandByTheFolder) {
  const Result result = run_story(
      "library_probe init 0 init 1 >/dev/null 2>&1; cd /etc/Wireless/RT2860AP_AC; cp RT2860AP.dat old.dat;"
      "wlanctl diff old.dat; wlanctl diff 2.4g old.dat | head -1 | grep -c differ");
  EXPECT_EQ("5g: the store is as the file\n1\n", result.out) << result.err;
}

TEST(DiffFile, AsksForTheBandWhereItIsNotToBeTold) {
  const Result result = run_story(std::string("cp ") + kDat + " other; wlanctl diff other; echo $?");
  EXPECT_EQ("2\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("the band of other is not to be told from its name; wlanctl diff 2.4g FILE"));
}

TEST(DiffFile, RefusesWhatCannotBeRead) {
  const Result result = run_story(
      "mkfifo pipe; : >empty; for file in nowhere pipe ./ empty; do timeout 10 wlanctl diff 2.4g $file; echo "
      "$?; done; wlanctl diff 6g --json");
  EXPECT_EQ("2\n2\n2\n2\n", result.out.substr(0, 8));
  EXPECT_EQ(2, document_in(result.out.substr(8))["exit_code"]);
  for (const char* const said : {"there is no band and no file \"nowhere\"; say 2.4g or 5g, or name a file",
                                 "cannot read pipe: it is a pipe, no file", "cannot read ./: it is a folder, no file",
                                 "empty has no settings; is it a dat file, or an export?"}) {
    EXPECT_THAT(result.err, HasSubstr(said));
  }
}

TEST(DiffFile, RefusesWhatIsNeitherDatFileNorExport) {
  const Result result = run_story(
      "printf '# a\\nroot:x:0\\n' >users; printf 'PATH=/bin\\nHOME=/\\n' >variables; printf '{\"a\" 1' >half; for file "
      "in "
      "users variables half; do wlanctl diff 2.4g $file; echo $?; done");
  EXPECT_EQ("2\n2\n2\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("users:2: there is no = in the line; is it a dat file, or an export?"));
  EXPECT_THAT(result.err, HasSubstr("variables:1: no such key is in a dat file; is it a dat file, or an export?"));
  EXPECT_THAT(result.err,
              HasSubstr("half:1: this is no JSON that can be read: unexpected number literal, where ':' is expected; "
                        "compare it with what wlanctl export prints\n"));
}

TEST(DiffFile, RefusesMoreThanOne) {
  const Result result = run_story(
      "cd /etc/Wireless/RT2860AP; for words in '2.4g 5g' 'RT2860AP.dat RT2860AP.dat' '--in-force RT2860AP.dat'; "
      "do wlanctl diff $words; echo $?; done");
  EXPECT_EQ("2\n2\n2\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("there is more than one band"));
  EXPECT_THAT(result.err, HasSubstr("there is more than one file"));
  EXPECT_THAT(result.err, HasSubstr("--in-force and a file are two comparisons"));
}

TEST(DiffFile, MayBeNamedAsABand) {
  EXPECT_EQ("2.4g: the store is as the file\n",
            run_story(std::string("cp ") + kDat + " 5g; wlanctl diff 2.4g ./5g 2>/dev/null").out);
}

// Behind its own count a table has values that nobody uses, and a file has not.
TEST(Status, CountsTheSameAgainstTwoThatAreAlike) {
  const Result result = run_story(
      "library_probe init 0 init 1 >/dev/null; wlanctl set 2.4g AutoChannelSkipList=12 BssidNum=3 >/dev/null; wlanctl "
      "apply 2.4g >/dev/null "
      "2>&1; wlanctl ssid remove 2.4g 3 --yes >/dev/null 2>&1; wlanctl apply 2.4g --force >/dev/null 2>&1; wlanctl "
      "undo "
      ">/dev/null 2>&1; wlanctl status 2.4g | sed -n 's/.*store.file \\([0-9]*\\), store.in force \\1; alike: "
      "file.in force/same/p'; wlanctl diff 2.4g | head -1 | cut -d' ' -f2 >file; wlanctl diff 2.4g --in-force | head "
      "-1 | "
      "cut -d' ' -f2 | cmp - file && echo same");
  EXPECT_EQ("same\nsame\n", result.out) << result.err;
}

TEST(DiffExitCode, TellsWhetherSomethingDiffers) {
  const Result result =
      run_story(kKnown + "cp " + kDat +
                " old; d() { wlanctl diff 2.4g \"$@\" >/dev/null; printf \"$? \"; };"
                "d; d --exit-code; d --exit-code --in-force; d --exit-code old; wlanctl set 2.4g Channel=11 "
                ">/dev/null; d; d --exit-code; d --exit-code --in-force; d --exit-code old; d --in-force; d old;"
                "wlanctl diff 2.4g --exit-code --json >d.json; echo $?");
  EXPECT_EQ("0 0 0 0 0 1 1 1 0 0 1\n", result.out);
  EXPECT_THAT(result.err, testing::Not(HasSubstr("differ")));
}

TEST(DiffExitCode, LeavesTheCodesOfErrorsAlone) {
  const Result result =
      run_story("wlanctl set 2.4g Channel=11 >/dev/null; rm " + std::string(kDat) +
                "; wlanctl diff 2.4g --exit-code; echo $?; wlanctl diff 2.4g nowhere --exit-code; echo $?");
  EXPECT_EQ("2\n2\n", result.out);
  const Result lacking = run_story(
      "simctl fail brctl exit=1 addif ra1 >/dev/null; wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g "
      ">/dev/null 2>&1; wlanctl set 2.4g Channel=3 >/dev/null; wlanctl diff 2.4g --exit-code >/dev/null; "
      "echo $?");
  EXPECT_EQ("6\n", lacking.out);
}

TEST(Diff, OnlyLooks) {
  const Result result =
      run_story("cp " + std::string(kDat) +
                " old; for words in '' --in-force old; do wlanctl diff 2.4g $words >/dev/null; "
                "done; ipcs -m | grep -c 0x00012345; ls /run | grep wlanctl; ls /etc/Wireless; commands | wc -l");
  EXPECT_EQ("0\nRT2860AP\nRT2860AP_AC\n0\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("there is no live store of 2.4g yet; this is what its dat file says"));
}

Json settings_of(const std::string& script) {
  return data_after(script, "wlanctl status 2.4g")["bands"][0]["settings"];
}

TEST(StatusSettings, TellWhetherTheThreeAgree) {
  const Json agreed = settings_of(kKnown);
  EXPECT_EQ(
      Json::parse(
          R"({"agree":true,"has_store":true,"store_from_file":0,"store_from_in_force":0,"file_from_in_force":0})"),
      agreed);
  const Json apart = settings_of(kThree);
  EXPECT_EQ(
      Json::parse(
          R"({"agree":false,"has_store":true,"store_from_file":2,"store_from_in_force":2,"file_from_in_force":1})"),
      apart);
}

TEST(StatusSettings, TellWhatIsNotKnown) {
  EXPECT_EQ(Json::parse(R"({"agree":null,"has_store":false,"store_from_file":null,"store_from_in_force":null,
                            "file_from_in_force":null})"),
            settings_of(""));
  EXPECT_EQ(Json::parse(R"({"agree":null,"has_store":true,"store_from_file":0,"store_from_in_force":null,
                            "file_from_in_force":null})"),
            settings_of("library_probe init 0 init 1 >/dev/null 2>&1;"));
  EXPECT_EQ(nullptr, settings_of(kKnown + "rm " + kDat + ";")["store_from_file"]);
}

// The store has it once for each SSID, as one text; what is loaded of the file has a field for each.
TEST(StatusSettings, AgreeOnANumberThatIsStoredForEachSsid) {
  const Result result = run_story(
      "wlanctl set 5g VHT_BW=0 >/dev/null 2>&1; wlanctl apply 5g >/dev/null 2>&1; wlanctl status 5g "
      "| grep settings; wlanctl diff 5g --exit-code; echo $?; wlanctl log show 1 | grep VHT_BW");
  EXPECT_THAT(result.out,
              testing::StartsWith("  settings: store, dat file and what is in force agree\n5g: the store is as "
                                  "the dat file; an apply would mean: nothing\n0\n"));
  EXPECT_THAT(result.out, testing::EndsWith("  VHT_BW  1 -> 0\n")) << result.out;
}

TEST(DiffFile, ComparesWithAnExport) {
  const Result result = run_story(
      "wlanctl show >/dev/null 2>&1; library_probe init 0 init 1 >/dev/null 2>&1; wlanctl export --output all.json "
      ">/dev/null; wlanctl export 5g --no-secrets --output 5g.json >/dev/null; wlanctl set 5g Channel=40 "
      "WPAPSK:1=topsecret >/dev/null; echo == all; wlanctl diff all.json --exit-code; echo $?; echo == 5g; wlanctl "
      "diff 5g.json; echo == band; wlanctl diff all.json 2.4g; wlanctl diff ./5g.json 2.4g; echo $?; wlanctl diff "
      "5g.json --json >d.json; echo == json; cat d.json");
  EXPECT_EQ(
      "2.4g: the store is as the file\n5g: 2 values differ (the file -> store)\n  Channel   36 -> 40\n"
      "  WPAPSK:1  ******** -> ******** (new)\n1\n",
      behind(result.out, "all"));
  EXPECT_EQ("5g: 1 value differs (the file -> store)\n  Channel  36 -> 40\n", behind(result.out, "5g"));
  EXPECT_EQ("2.4g: the store is as the file\n2\n", behind(result.out, "band"));
  EXPECT_THAT(result.err, HasSubstr("./5g.json has no settings of 2.4g; leave the band out"));
  EXPECT_EQ(Json::parse(R"([{"key":"Channel","live":40,"file":36}])"),
            document_in(behind(result.out, "json"))["data"]["bands"][0]["changes"]);
}

TEST(DiffFile, RefusesADamagedExport) {
  const Result result = run_story("echo '{\"format\": 1' >broken.json; wlanctl diff broken.json; echo $?");
  EXPECT_EQ("2\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("broken.json:"));
}

TEST(StatusSettings, AreOneLineForEachBand) {
  const std::string line = "wlanctl status 2>/dev/null | grep settings; echo ==;";
  const Result result = run_story(line + kKnown + line + kThree + line);
  const std::string other = "  settings: no store; in force is not known\n==\n";
  EXPECT_THAT(result.out, testing::StartsWith("  settings: no store; in force is not known\n" + other +
                                              "  settings: store, dat file and what is in force agree\n" + other));
  EXPECT_THAT(result.out, HasSubstr("  settings: values apart: store/file 2, store/in force 2, file/in force 1\n"));
}

}  // namespace
}  // namespace wlanctl_test

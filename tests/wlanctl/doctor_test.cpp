// wlanctl doctor: each thing that can be wrong is made wrong once, and found with its cure.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

constexpr char kInit[] = "library_probe init 0 init 1 >/dev/null\n";
constexpr char kDat[] = "/etc/Wireless/RT2860AP/RT2860AP.dat";
constexpr char kDat5G[] = "/etc/Wireless/RT2860AP_AC/RT2860AP.dat";

const Words kChips = {"--chips", "7603,7612"};

// A way to damage a gateway, and what is found then; "dat-missing 2.4g".
struct Damage {
  const char* what;
  std::string script;
  std::set<std::string> finds;
  std::string call = "wlanctl doctor --json";
};

// Damages one after the other in one gateway: starting one takes longer than looking at it.
using Damages = std::vector<Damage>;

// What waits for a confirmation, its time moved into the past.
constexpr char kOver[] = R"python(
import sys
head, text = open(sys.argv[1], "rb").read().split(b"\n", 1)
words, rest = text.split(b"\n", 1)
words = words.split(b" ")
words[2] = b"1"
text = b" ".join(words) + b"\n" + rest
total = 0xCBF29CE484222325
for byte in text:
    total = (total ^ byte) * 0x100000001B3 % 2**64
open(sys.argv[1], "wb").write(b" ".join(head.split(b" ")[:2] + [b"%d" % total]) + b"\n" + text)
)python";

const std::vector<Damages>& gateways() {
  static const std::string dat = kDat;
  static const std::string dat_5g = kDat5G;
  static const std::vector<Damages> all = {
      {{"a user without rights",
        "",
        {"not-root", "no-net-admin", "no-sys-module", "no-net-raw"},
        "unshare -U wlanctl doctor --json"},
       {"tools that are not there",
        "",
        {"tool-missing", "tool-lacking"},
        "PATH=/nowhere \"$WLANCTL_PROGRAM\" doctor --json"},
       {"interfaces that are not as they should",
        "ifconfig ra1 down; brctl delif br-lan rai0; simctl fail channel EIO ra0",
        {"interface-down 2.4g", "interface-unbridged 5g", "driver-silent 2.4g"}},
       {"interfaces in two bridges",
        "simctl fail none; ifconfig ra0 up; brctl addif br-lan rai0 2>/dev/null; brctl delif br-lan rai1; brctl addif "
        "br0 rai1",
        {"bridges-differ 5g"}},
       {"modules that are not there",
        "rm /lib/modules/4.4.115/mt7603eap.ko; rmmod mt7662e_ap",
        {"module-missing 2.4g", "module-unloaded 5g", "interface-missing 5g", "driver-silent 5g"}},
       {"a /tmp without protection",
        "rm /proc/sys; mkdir -p /proc/sys/fs; echo 0 | tee /proc/sys/fs/protected_symlinks "
        ">/proc/sys/fs/protected_regular",
        {"tmp-links", "tmp-files"}},
       {"a full folder", "mount -t tmpfs -o size=8k tmpfs /etc/Wireless/RT2860AP", {"no-room"}}},
      {{"dat files that are damaged",
        ": >" + dat + "; printf 'NoSuchKey=1\\nthis is no setting' >>" + dat_5g,
        {"dat-empty 2.4g", "dat-unended 5g", "dat-errors 5g", "dat-doubts 5g", "store-missing 2.4g",
         "store-missing 5g"}},
       {"dat files that are none",
        "rm " + dat + " " + dat_5g + "; mkdir " + dat_5g,
        {"dat-missing 2.4g", "dat-no-file 5g"}},
       {"a dat file without settings", "echo Default >" + dat, {"dat-no-settings 2.4g"}}},
      {{"stores that do not fit",
        "echo Channel=11 >>" + dat_5g + "\n" + kInit + "for i in 1 2 3 4 5 6; do echo '#' >>" + dat +
            "; done; damage_store fill 0x12346",
        {"store-small 2.4g", "store-unended 5g", "store-duplicate 5g"}},
       {"files and folders with no right to them",
        "chmod 0 " + dat + "; chmod 400 " + dat_5g + "; chmod 555 /tmp",
        {"dat-unreadable 2.4g", "dat-unwritable 5g", "tmp-unwritable"},
        "setpriv --bounding-set -dac_override,-dac_read_search --inh-caps -dac_override,-dac_read_search wlanctl "
        "doctor --json"}},
      {{"locks that are held",
        kInit + std::string("hold_store 0x12348 & echo $! >holder; until [ -e held ]; do sleep 0.02; done\n"
                            "hold_store 0x12349 forever"),
        {"lock-held 2.4g", "lock-orphaned 5g"},
        "wlanctl doctor --json; status=$?; touch done\n"
        "while kill -0 $(cat holder) 2>/dev/null; do sleep 0.02; done; exit $status"},
       {"a lock whose holder is stopped",
        "rm held done; hold_store 0x12348 & echo $! >holder; until [ -e held ]; do sleep 0.02; done\n"
        "kill -STOP $(cat holder); until grep -q ' T ' /proc/$(cat holder)/stat; do sleep 0.02; done",
        {"lock-stopped 2.4g"},
        "wlanctl doctor --json; status=$?; kill -9 $(cat holder); exit $status"},
       {"locks of another kind",
        "ipcrm -S 0x12348; damage_store raise 0x12349; damage_store raise 0x12349",
        {"lock-missing 2.4g", "lock-twofold 5g"}},
       {"stores that are not as they should",
        "damage_store forbid 0x12345; damage_store empty 0x12346",
        {"store-refused 2.4g", "store-empty 5g"},
        "setpriv --bounding-set -ipc_owner --inh-caps -ipc_owner wlanctl doctor --json"}},
      {{"stores with values that cannot be",
        "sed -i 's/^HideSSID=.*/HideSSID=7;0/; s/^WscConfStatus=.*/WscConfStatus=2;0/; /^TxPower=/d' " + dat + "\n" +
            kInit +
            "wlanctl set 2.4g --force AuthMode:1=wpa2psk WscConfMode:1=4 >/dev/null 2>&1\n"
            "long=$(printf 'x%.0s' $(seq 110))\n"
            "wlanctl set 5g --force WEPAuthType:1=$long WEPAuthType:2=$long >/dev/null 2>&1",
        {"store-errors 2.4g", "store-doubts 2.4g", "store-list-cut 2.4g", "store-lacks-keys 2.4g", "wps-mode 2.4g",
         "wps-status 2.4g", "store-unsaveable 5g"}},
       {"a count of SSIDs without their keys",
        "wlanctl save 2.4g --force >/dev/null 2>&1; sed -i 's/^BssidNum=.*/BssidNum=3/' " + dat +
            "; wlanctl revert 2.4g --force >/dev/null 2>&1",
        {"store-lacks-ssid 2.4g"}},
       {"a segment that was removed under a process",
        "hold_store 0x12346 segment & echo $! >holder; until [ -e held ]; do sleep 0.02; done; ipcrm -M 0x12346",
        {"store-removed 5g", "store-missing 5g"},
        "wlanctl doctor --json; status=$?; touch done\n"
        "while kill -0 $(cat holder) 2>/dev/null; do sleep 0.02; done; exit $status"},
       {"a kernel that makes no such segment",
        "rm /proc/sys; mkdir -p /proc/sys/kernel; echo 4096 >/proc/sys/kernel/shmmax; echo 1 >/proc/sys/kernel/shmall",
        {"shm-limit 2.4g", "shm-limit 5g"}},
       {"an ifconfig of another kind",
        "mkdir tools; printf '#!/bin/sh\\necho inet 192.168.2.1\\n' >tools/ifconfig; chmod +x tools/ifconfig",
        {"ifconfig-foreign"},
        "PATH=$PWD/tools:$PATH; wlanctl doctor --json"}},
      {{"an apply that is not in force",
        kInit + std::string("wlanctl set 2.4g Channel=11 >/dev/null; simctl fail ifconfig exit=1 ra0 up\n"
                            "wlanctl apply 2.4g >/dev/null 2>&1; true"),
        {"not-in-force 2.4g"}},
       {"a driver that was not told all of it",
        "simctl fail none; simctl fail iwpriv exit=1\nwlanctl set 5g HideSSID:1=1 >/dev/null; wlanctl apply 5g "
        ">/dev/null "
        "2>&1; simctl fail none",
        {"not-in-force 5g"}},
       {"an apply that waits, and files of the tool that are damaged",
        "simctl fail none; wlanctl set 2.4g Channel=1 >/dev/null\n"
        "wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1\n"
        "echo nonsense >/var/run/wlanctl-pending-5g; echo nonsense >/var/run/wlanctl-applied-5g",
        {"pending 2.4g", "pending-damaged 5g", "state-damaged 5g"}},
       {"an apply whose time is over",
        "kill -9 $(cat /var/run/wlanctl-guard-2.4g); python3 - /var/run/wlanctl-pending-2.4g <<'END'" +
            std::string(kOver) + "END\n",
        {"pending-over 2.4g"}}},
  };
  return all;
}

struct Kind {
  std::string name;
  std::string severity;
  std::string finding;
  std::string cure;
};

// What the program can find.
std::vector<Kind> kinds() {
  const std::string text = read_file(source_folder() + "/wlanctl/doctor/ills.def");
  const std::regex row(R"re(WLANCTL_ILL\(\w+, "([^"]+)", k(\w+), "([^"]+)",\s*"([^"]+)"\))re");
  std::vector<Kind> found;
  for (std::sregex_iterator it(text.begin(), text.end(), row), end; it != end; ++it) {
    std::string severity = (*it)[2];
    severity[0] = static_cast<char>(severity[0] - 'A' + 'a');
    found.push_back({(*it)[1], severity, (*it)[3], (*it)[4]});
  }
  return found;
}

const Kind& kind_named(const std::string& name) {
  static const std::vector<Kind> all = kinds();
  static const Kind none;
  const auto found = std::find_if(all.begin(), all.end(), [&](const Kind& kind) { return kind.name == name; });
  return found == all.end() ? none : *found;
}

std::set<std::string> found_in(const Json& document) {
  std::set<std::string> found;
  for (const Json& row : document["data"]["rows"]) {
    if (row["kind"].is_null()) continue;
    const std::string band = row["band"].is_null() ? "" : " " + row["band"].get<std::string>();
    found.insert(row["kind"].get<std::string>() + band);
  }
  return found;
}

int expected_code(const Json& data) {
  if (data["errors"] > 0) return 1;
  return data["warnings"] > 0 ? 7 : 0;
}

// In a document each row has the severity, the finding and the cure of its kind.
void expect_rows_of_the_table(const Json& document) {
  for (const Json& row : document["data"]["rows"]) {
    if (row["kind"].is_null()) continue;
    const Kind& kind = kind_named(row["kind"]);
    EXPECT_EQ(kind.severity, row["severity"]);
    EXPECT_EQ(kind.finding, row["finding"]);
    std::string cure = kind.cure;
    if (!row["band"].is_null()) cure = std::regex_replace(cure, std::regex("BAND"), row["band"].get<std::string>());
    EXPECT_EQ(cure, row["cure"]);
  }
}

class Doctor : public testing::TestWithParam<size_t> {};

INSTANTIATE_TEST_SUITE_P(Gateways, Doctor, testing::Range(size_t{0}, gateways().size()));

TEST_P(Doctor, FindsWhatIsWrongWithItsCure) {
  const Damages& damages = gateways()[GetParam()];
  Words scripts;
  for (const Damage& damage : damages) {
    scripts.push_back(damage.script + "\ntrue");
    scripts.push_back(damage.call);
  }
  const std::vector<Result> steps = run_steps(scripts, kChips);
  for (size_t i = 0; i < damages.size(); ++i) {
    SCOPED_TRACE(damages[i].what);
    EXPECT_EQ("", steps[2 * i].err);
    const Result& call = steps[2 * i + 1];
    const Json document = document_in(call.out);
    EXPECT_THAT(found_in(document), IsSupersetOf(damages[i].finds)) << call.err;
    EXPECT_EQ(expected_code(document["data"]), call.status);
    expect_rows_of_the_table(document);
  }
}

TEST(Doctor, FindsAnApplyThatABootInterrupted) {
  const Result result =
      run(std::string(kInit) +
              "{ wlanctl set 2.4g Channel=11 SSID:1=Kitchen; wlanctl apply 2.4g --confirm 600; } >/dev/null 2>&1\n"
              "simctl power-cut >/dev/null; wlanctl doctor --json",
          kChips);
  EXPECT_THAT(found_in(document_in(result.out)), Contains("interrupted 2.4g"));
}

TEST(Doctor, HasATestForEachFinding) {
  std::set<std::string> tested = {"interrupted"};
  for (const Damages& damages : gateways()) {
    for (const Damage& damage : damages) {
      for (const std::string& found : damage.finds) tested.insert(found.substr(0, found.find(' ')));
    }
  }
  std::set<std::string> known;
  for (const Kind& kind : kinds()) known.insert(kind.name);
  EXPECT_GT(known.size(), 40u);
  EXPECT_EQ(known, tested);
}

TEST(Doctor, HasTheFindingsAndCuresOfTheDocumentation) {
  const std::string page = read_file(source_folder() + "/INTEGRATION.md");
  const std::string table = page.substr(page.find("| Name | Severity | Finding | Cure |"));
  std::string expected;
  for (const Kind& kind : kinds()) {
    expected += "| `" + kind.name + "` | " + kind.severity + " | " + kind.finding + " | " + kind.cure + " |\n";
  }
  EXPECT_THAT(table, HasSubstr("| --- | --- | --- | --- |\n" + expected));
  const std::vector<std::string> lines = lines_of(table);
  const auto rows =
      std::count_if(lines.begin(), lines.end(), [](const std::string& line) { return line.starts_with("| `"); });
  EXPECT_EQ(kinds().size(), static_cast<size_t>(rows));
}

TEST(Doctor, FindsNothingWorseThanNotesOnAHealthyGateway) {
  const std::vector<Result> steps = run_steps({kInit, "wlanctl doctor --json", "wlanctl doctor"}, kChips);
  EXPECT_EQ(0, steps[1].status) << steps[1].out;
  const Json data = document_in(steps[1].out)["data"];
  EXPECT_EQ(0, data["errors"]);
  EXPECT_EQ(0, data["warnings"]);
  EXPECT_EQ(data["notes"], data["rows"].size());
  EXPECT_EQ(0, steps[2].status);
  EXPECT_EQ("", steps[2].err);
}

TEST(Doctor, TakesAProtectedTmpForWell) {
  const Json document = json_of("doctor --all",
                                "rm /proc/sys; mkdir -p /proc/sys/fs; echo 1 >/proc/sys/fs/protected_symlinks; "
                                "echo 2 >/proc/sys/fs/protected_regular",
                                kChips);
  EXPECT_THAT(found_in(document), AllOf(Not(Contains("tmp-links")), Not(Contains("tmp-files"))));
}

TEST(Doctor, NamesEachToolThatIsMissing) {
  const std::string absolute = "/userfs/bin/iwpriv /sbin/ifconfig /usr/bin/wscd /userfs/bin/mtd";
  const std::vector<Result> steps =
      run_steps({"rm " + absolute + "; PATH=/nowhere \"$WLANCTL_PROGRAM\" doctor --json", "true"}, kChips);
  std::set<std::string> missing;
  const Json document = document_in(steps[0].out);
  for (const Json& row : document["data"]["rows"]) {
    if (row["check"] == "tool") missing.insert(row["looked_at"]);
  }
  EXPECT_EQ((std::set<std::string>{"ifconfig", "brctl", "/userfs/bin/iwpriv", "insmod", "rmmod", "cat", "killall",
                                   "reboot", "sys", "/sbin/ifconfig", "/usr/bin/wscd", "/userfs/bin/mtd"}),
            missing);
}

TEST(Doctor, ShowsWhatIsWellWhenAskedAndCountsItAnyway) {
  const std::vector<Result> steps =
      run_steps({kInit, "wlanctl doctor --all", "wlanctl doctor", "wlanctl doctor --all --json"}, kChips);
  EXPECT_THAT(steps[1].out, HasSubstr("ok       2.4g driver: ra0 is on channel 6\n"));
  EXPECT_THAT(steps[2].out, Not(HasSubstr("ok       ")));
  const Json data = document_in(steps[3].out)["data"];
  EXPECT_EQ(data["checks"], data["rows"].size());
  EXPECT_EQ(lines_of(steps[1].out).back(), lines_of(steps[2].out).back());
  EXPECT_THAT(lines_of(steps[2].out).back(), HasSubstr(" " + std::to_string(data["ok"].get<int>()) + " ok"));
}

TEST(Doctor, LooksAtOneBandWhenAsked) {
  const Json document = json_of("doctor 5g --all", kInit, kChips);
  for (const Json& row : document["data"]["rows"]) EXPECT_NE("2.4g", row["band"]);
}

TEST(Doctor, SaysTheSameAsTextInEightyColumns) {
  const std::vector<Result> steps =
      run_steps({kInit + ("rm " + std::string(kDat)), "wlanctl doctor 2.4g", "ls -d $PWD >/dev/null"}, kChips);
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].out, HasSubstr("error    2.4g dat file: there is no dat file\n"
                                      "         /etc/Wireless/RT2860AP/RT2860AP.dat\n"
                                      "         cure: check the path and the mount, and call init again\n"));
  EXPECT_THAT(steps[1].err, HasSubstr("wlanctl: 1 error; begin with the first"));
  for (const std::string& line : lines_of(steps[1].out)) EXPECT_LE(line.size(), 80u);
}

TEST(Doctor, TellsTheBridgesOfABandWhereTheyDiffer) {
  const std::string looks = "wlanctl doctor 5g --json";
  const std::vector<Result> steps =
      run_steps({kInit, "brctl delif br-lan rai1; " + looks, "brctl addif br0 rai1; " + looks});
  EXPECT_THAT(steps[1].out, HasSubstr("\"rai1; of the band: rai0 in br-lan, rai1 in none\""));
  EXPECT_THAT(steps[2].out, HasSubstr("\"rai0 in br-lan, rai1 in br0\""));
}

TEST(Doctor, WarnsWithItsOwnExitCode) {
  const std::vector<Result> steps = run_steps({kInit, "ifconfig ra1 down; wlanctl doctor"}, kChips);
  EXPECT_EQ(7, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("wlanctl: 1 warning; begin with"));
}

TEST(Doctor, ChangesNothing) {
  for (const char* const before : {"", kInit}) {
    const Result result =
        run(std::string(before) +
                "state() { ipcs -m -s | awk '{print $1, $2, $4, $5}'; ls -l --full-time /run /etc/Wireless "
                "/etc/Wireless/*; "
                "ls -l --full-time /tmp | grep -v sim_test; ls | grep -v state; }\n"
                "state >state-1; wlanctl doctor >/dev/null 2>&1; state >state-2; diff state-1 state-2",
            kChips);
    EXPECT_EQ(0, result.status) << result.out;
  }
}

std::string rows_of(const Json& document, const std::string& check) {
  std::string rows;
  for (const Json& row : document["data"]["rows"]) {
    if (row["check"] == check) rows += row["looked_at"].get<std::string>() + "\n";
  }
  return rows;
}

TEST(Doctor, TakesAnEditOfTheDatFileForNoNewsOfADriverThatWasNotTold) {
  const std::vector<Result> steps =
      run_steps({"wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g >/dev/null; wlanctl doctor 2.4g --all "
                 "--json",
                 "wlanctl set 2.4g HideSSID:1=0 >/dev/null; simctl fail iwpriv exit=1; wlanctl apply 2.4g >/dev/null "
                 "2>&1; simctl fail none; echo '#' >>" +
                     std::string(kDat) + "; wlanctl doctor 2.4g --all --json"},
                kChips);
  EXPECT_THAT(rows_of(document_in(steps[0].out), "apply"), HasSubstr("what was applied is in force"));
  EXPECT_THAT(rows_of(document_in(steps[1].out), "apply"), Not(HasSubstr("what was applied is in force")));
}

TEST(Doctor, TakesALackThatCannotBeReadForNoneThatIsNotThere) {
  const Json document = json_of("doctor 2.4g --all",
                                std::string(kInit) +
                                    "wlanctl set 2.4g Channel=11 >/dev/null; simctl fail ifconfig exit=1 ra0 up\n"
                                    "wlanctl apply 2.4g >/dev/null 2>&1; truncate -s -3 /run/wlanctl-lacking-2.4g",
                                kChips);
  EXPECT_THAT(found_in(document), Contains("state-damaged 2.4g"));
  EXPECT_THAT(rows_of(document, "apply"),
              AllOf(HasSubstr("/var/run/wlanctl-lacking-2.4g\n"), Not(HasSubstr("what was applied is in force"))));
}

TEST(Doctor, JudgesNoIfconfigThatFailsOrHangs) {
  for (const char* const fault : {"exit=1 print=nothing", "hang"}) {
    const Json document =
        json_of("doctor --all", std::string("simctl fail ifconfig ") + fault + " br0 >/dev/null", kChips);
    EXPECT_THAT(found_in(document), Not(Contains("ifconfig-foreign"))) << fault;
    EXPECT_THAT(rows_of(document, "tool"), Not(HasSubstr("ifconfig br0\n"))) << fault;
  }
}

TEST(Doctor, NamesTheListsThatASaveWouldCutUntilItHas) {
  const std::vector<Result> steps =
      run_steps({std::string(kInit) + "wlanctl set 2.4g 'AutoChannelSkipList=12;13;1' >/dev/null 2>&1; "
                                      "wlanctl doctor 2.4g --json",
                 "wlanctl save 2.4g --force >/dev/null 2>&1; wlanctl doctor 2.4g --json"},
                kChips);
  EXPECT_THAT(rows_of(document_in(steps[0].out), "store"),
              HasSubstr("AutoChannelSkipList: a save keeps the first 2 of its 3 values, as many as there are SSIDs\n"));
  EXPECT_THAT(found_in(document_in(steps[0].out)), Contains("store-list-cut 2.4g"));
  EXPECT_THAT(found_in(document_in(steps[1].out)), Not(Contains("store-list-cut 2.4g")));
}

}  // namespace
}  // namespace wlanctl_test

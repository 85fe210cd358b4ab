// Execute scripts, written by the library and run by the machine's shell in the simulated gateway: what the driver took.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::HasSubstr;
using testing::Not;

// In single quotes, for the shell that starts the probe.
std::string quoted(const std::string& text) {
  std::string word = "'";
  for (const char c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return word + "'";
}

constexpr char kRun[] = " run 0 'sh /etc/Wireless/RT2860AP/WLAN_exec.sh'";

// Changes SSID 1 of 2.4G by the probe's steps, writes its script and runs it; the settings of ra0 are what it prints
// last.
Result run_of(const std::string& steps, const std::string& before = "", const std::string& after = "") {
  return run_script(before + library_probe_program() + " init 0 oper 0 0 " + steps + " script 0 0" + kRun + "; echo; " +
                    after + " iwpriv ra0 show");
}

std::string put(const std::string& key, const std::string& value) {
  return " put " + key + " 0 1 " + quoted(value);
}

// A value in double quotes and what the driver is to have of it.
struct Row {
  std::string value;
  std::string taken;
};

void expect_taken(const std::vector<Row>& rows, const std::string& before = "") {
  struct {
    const char* store_key;
    const char* key;
    const char* auth_mode;
  } const kPlaces[] = {{"SSID1", "SSID", "OPEN"}, {"WPAPSK1", "WPAPSK", "WPA2PSK"}, {"Key1Str1", "Key1", "WEP"}};
  for (const auto& place : kPlaces) {
    for (const Row& row : rows) {
      SCOPED_TRACE(std::string(place.key) + " " + testing::PrintToString(row.value));
      const Result result = run_of(put("AuthMode", place.auth_mode) + put(place.store_key, row.value), before);
      EXPECT_THAT(result.out, HasSubstr(std::string("\n") + place.key + "=" + row.taken + "\n")) << result.err;
      EXPECT_EQ("", result.err);
    }
  }
}

TEST(Script, QuotesAndBackslashesReachTheDriver) {
  expect_taken({{"Bob's \"Home\"", "Bob's \"Home\""},
                {"back\\slash", "back\\slash"},
                {"\\", "\\"},
                {"\\\\", "\\\\"},
                {"a\\n\\\"b\\", "a\\n\\\"b\\"},
                {"\"", "\""}});
}

TEST(Script, SpacesAndSignsReachTheDriver) {
  expect_taken({{"  two  words ", "  two  words "},
                {"*?[a] ~ #no; a&b | c > d < (e) {f} !g", "*?[a] ~ #no; a&b | c > d < (e) {f} !g"},
                {"a=b=c", "a=b=c"},
                {"\ttab", "\ttab"},
                {"%s%d%%", "%s%d%%"}});
}

TEST(Script, BytesAbove127ReachTheDriver) {
  expect_taken({{"Caf\xc3\xa9 \xe2\x98\x95", "Caf\xc3\xa9 \xe2\x98\x95"}, {"\x80\xff\xfe", "\x80\xff\xfe"}});
}

TEST(Script, LineEndIsLeftOutAndOneWithinReachesTheDriver) {
  expect_taken(
      {{"abc\r\n", "abc"}, {"abc\n", "abc"}, {"abc\r", "abc"}, {"a\r\nbc", "a\r\nbc"}, {"a\n\"b\"c", "a\n\"b\"c"}});
}

TEST(Script, OverlongValueReachesTheDriverCutBetweenCharacters) {
  const std::string kept(79, '"');
  expect_taken({{std::string(149, '"'), kept}, {std::string(79, '"') + "ab", kept + "a"}});
}

// Known: '$' and '`' keep their meaning within the double quotes. Whoever may set an SSID or a passphrase can so run
// commands; callers have to refuse these two characters where that matters.
TEST(Script, ShellStillExpandsDollarAndBackquoteWithinTheQuotes) {
  expect_taken({{"pay $NAME now", "pay a  b now"},
                {"${NAME}x", "a  bx"},
                {"$UNSET.", "."},
                {"$(echo ran)", "ran"},
                {"`echo ran`", "ran"},
                {"$((6*7))", "42"},
                {"\\$NAME", "\\a  b"},
                {"5$", "5$"},
                {"$ 5", "$ 5"}},
               "export NAME='a  b'; ");
}

TEST(Script, ShellRunsACommandInAValue) {
  const Result result = run_of(put("AuthMode", "OPEN") + put("SSID1", "a$(touch /tmp/ran)b"), "", "ls /tmp/ran;");
  EXPECT_THAT(result.out, HasSubstr("\n/tmp/ran\n"));
  EXPECT_THAT(result.out, HasSubstr("\nSSID=ab\n"));
}

// The lines before it have taken effect, its own has not.
TEST(Script, OddBackquoteEndsTheScript) {
  const Result result = run_of(put("AuthMode", "OPEN") + put("HideSSID", "1") + put("SSID1", "a`b"));
  EXPECT_NE("", result.err);
  EXPECT_THAT(result.out, HasSubstr("\nHideSSID=1\n"));
  EXPECT_THAT(result.out, HasSubstr("\nAuthMode=OPEN\n"));
  EXPECT_THAT(result.out, HasSubstr("\nSSID=Gateway-Home\n"));
}

// A WPA script has its SSID twice: the backquotes of the two lines make a pair, and what stands between is lost.
TEST(Script, OddBackquoteOfAWpaSsidSwallowsThePassphrase) {
  const Result result = run_of(put("AuthMode", "WPA2PSK") + put("SSID1", "a`b") + put("WPAPSK1", "new-passphrase"));
  EXPECT_NE("", result.err);
  EXPECT_THAT(result.out, HasSubstr("\nSSID=ab\n"));
  EXPECT_THAT(result.out, HasSubstr("\nWPAPSK=sample-passphrase-1\n"));
}

// Values without quotes are open to the whole of the shell's grammar.
TEST(Script, ShellSplitsAndInterpretsUnquotedValues) {
  const Result list =
      run_of(put("AuthMode", "OPEN") + put("AccessControlList0", "02:00:00:00:00:01;02:00:00:00:00:02"));
  EXPECT_THAT(list.out, HasSubstr("\nACLAddEntry=02:00:00:00:00:01\n"));
  EXPECT_THAT(list.err, HasSubstr("02:00:00:00:00:02"));  // taken for a command of its own

  const Result words = run_of(put("AuthMode", "WPA2PSK") + put("RADIUS_Key1", "two words"));
  EXPECT_THAT(words.out, Not(HasSubstr("\nRADIUS_Key=")));
  EXPECT_THAT(words.err, HasSubstr("set (8BE2): Invalid argument"));

  const Result command =
      run_of(put("AuthMode", "WPA2PSK") + put("RADIUS_Key1", "a;touch /tmp/ran"), "", "ls /tmp/ran;");
  EXPECT_THAT(command.out, HasSubstr("\nRADIUS_Key=a\n"));
  EXPECT_THAT(command.out, HasSubstr("\n/tmp/ran\n"));

  const Result quotes = run_of(put("AuthMode", "WPA2PSK") + put("RADIUS_Key1", "a\"b c\"\\d#e"));
  EXPECT_THAT(quotes.out, HasSubstr("\nRADIUS_Key=ab cd#e\n"));
}

TEST(Script, UnquotedValueOfACrLfFileKeepsItsCarriageReturn) {
  const Result result = run_of(put("AuthMode", "WPA2PSK\r\n") + put("HideSSID", "1\r\n") + put("EncrypType", "AES\n"));
  EXPECT_THAT(result.out, HasSubstr("\nHideSSID=1\r\n"));
  EXPECT_THAT(result.out, HasSubstr("\nEncrypType=AES\n"));
  EXPECT_THAT(result.out, HasSubstr("\nAuthMode=WPA2PSK\r\n"));
}

TEST(Script, SetsEverythingOfAnSsidAndNothingOfAnother) {
  const Result result = run_script(
      library_probe_program() +
      " init 0 oper 0 0 put AuthMode 0 2 WPA put EncrypType 0 2 TKIPAES put SSID2 0 2 'New Guest' put HideSSID 0 2 1"
      " put RADIUS_Server 0 2 10.1.2.3 put RADIUS_Port 0 2 1645 put RADIUS_Key2 0 2 secret put RekeyInterval 0 2 77"
      " put WPAPSK2 0 2 'a phrase' put WmmCapable 0 2 0 put AccessPolicy1 0 2 2 put AccessControlList1 0 2 "
      "02:00:00:00:00:09"
      " put WirelessMode 0 -1 0 script 0 1 run 0 /etc/Wireless/RT2860AP/WLAN_exec.sh >/dev/null;"
      " iwpriv ra0 show >ra0; iwpriv ra1 show");
  for (const char* line :
       {"\nACLAddEntry=02:00:00:00:00:09\n", "\nACLClearAll=1\n", "\nAuthMode=WPA\n", "\nDefaultKeyID=2\n",
        "\nEncrypType=TKIPAES\n", "\nHideSSID=1\n", "\nIEEE8021X=0\n", "\nRADIUS_Key=secret\n", "\nRADIUS_Port=1645\n",
        "\nRADIUS_Server=10.1.2.3\n", "\nRekeyInterval=77\n", "\nSSID=New Guest\n", "\nTxBurst=1\n",
        "\nWPAPSK=a phrase\n", "\nWmmCapable=0\n", "\nAccessPolicy=2\n"}) {
    EXPECT_THAT(std::string("\n") + result.out, HasSubstr(line));
  }
  EXPECT_EQ("", result.err);
}

TEST(Script, LeavesTheOtherSsidsAlone) {
  const Result result = run_script(std::string("iwpriv ra1 show >before; ") + library_probe_program() +
                                   " init 0 oper 0 0 put SSID1 0 1 New script 0 0" + kRun +
                                   " >/dev/null; iwpriv ra1 show | cmp before - && iwpriv ra0 show | grep ^SSID=");
  EXPECT_EQ("SSID=New\n", result.out);
}

TEST(Script, RunsOn5GOncePerFlag) {
  const std::string script = " 'sh /etc/Wireless/RT2860AP_AC/WLAN_exec.sh'";
  const std::string probe = library_probe_program() + " init 1 oper 1 0 ";
  const std::string show = " >/dev/null; iwpriv rai0 show | grep -e ^SSID= -e ^WmmCapable= -e ^TxBurst=";
  const std::string write = " put WirelessMode 1 -1 14 put WmmCapable 1 1 0 put SSID1 1 1 New script 1 0";
  EXPECT_EQ("SSID=New\nTxBurst=1\nWmmCapable=1\n", run_script(probe + write + " flag 1 run 1" + script + show).out);
  EXPECT_THAT(run_script(probe + write + " run 1" + script + show).out, Not(HasSubstr("SSID=New\n")));
  EXPECT_THAT(run_script(probe + write + " flag 1 run 1 true run 1" + script + show).out, Not(HasSubstr("SSID=New\n")));
}

}  // namespace
}  // namespace sim_test

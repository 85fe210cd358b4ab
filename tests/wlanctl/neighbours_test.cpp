// wlanctl neighbours.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

TEST(Neighbours, AreListedTheStrongestFirst) {
  const Json document = json_of("neighbours 2.4g",
                                "simctl neighbour remove 2.4G all;"
                                "simctl neighbour add 2.4G 02:11:22:33:44:01 signal=-70 channel=1 ssid=Weak wps=1;"
                                "simctl neighbour add 2.4G 02:11:22:33:44:02 signal=-40 channel=13 ssid='A B' "
                                "security=WPA3PSK/AES");
  EXPECT_EQ(0, document["exit_code"]);
  const Json list = document["data"]["bands"][0]["neighbours"];
  ASSERT_EQ(2u, list.size());
  Json first = list[0];
  EXPECT_TRUE(first["age_seconds"].is_number_unsigned());
  first.erase("age_seconds");
  EXPECT_EQ(Json::parse(R"({"bssid": "02:11:22:33:44:02", "ssid": "A B", "channel": 13, "signal_dbm": -40,
                            "security": "WPA3PSK/AES", "mode": "11b/g/n/ax", "wps": false})"),
            first);
  EXPECT_EQ(true, list[1]["wps"]);
}

TEST(Neighbours, BothBandsAreShownWithoutAName) {
  const Json document = json_of("neighbours");
  EXPECT_EQ(2u, document["data"]["bands"].size());
  EXPECT_EQ("", document["data"]["bands"][1]["neighbours"][2]["ssid"]) << "a hidden one has no name";
}

TEST(Neighbours, NobodyIsAnEmptyList) {
  const std::vector<Result> results =
      run_steps({"simctl neighbour remove 5G all; wlanctl neighbours 5g --json", "wlanctl neighbours 5g"});
  EXPECT_EQ(Json::array(), document_in(results[0].out)["data"]["bands"][0]["neighbours"]);
  EXPECT_EQ("5g: 0 neighbours\n", results[1].out);
}

TEST(Neighbours, ATableThatTheDriverRefusesIsNullAndTheOtherBandIsShown) {
  const Json document = json_of("neighbours", "simctl fail neighbours EIO ra0");
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_TRUE(document["data"]["bands"][0]["neighbours"].is_null());
  EXPECT_EQ(3u, document["data"]["bands"][1]["neighbours"].size());
}

TEST(Neighbours, ATableOfAnotherLayoutIsNotShown) {
  const std::vector<Result> results =
      run_steps({"simctl neighbour add 2.4G 02:11:22:33:44:01 signal=-300; wlanctl neighbours 2.4g --json",
                 "simctl neighbour remove 2.4G all; simctl neighbour add 2.4G 02:11:22:33:44:01 channel=0;"
                 "wlanctl neighbours 2.4g --json",
                 "simctl neighbour remove 2.4G all; simctl neighbour add 2.4G 03:11:22:33:44:01;"
                 "wlanctl neighbours 2.4g --json"});
  for (const Result& result : results) {
    EXPECT_EQ(5, result.status);
    const Json document = document_in(result.out);
    EXPECT_TRUE(document["data"]["bands"][0]["neighbours"].is_null());
    EXPECT_THAT(document["problems"][0]["message"].get<std::string>(), HasSubstr("not laid out as expected"));
  }
}

// A table of one good entry, with what is done to it; the driver's layout.
std::string table_with(uint32_t count, size_t at, const std::string& bytes) {
  constexpr size_t kFirst = 4;
  std::string table(18436, '\0');
  for (size_t i = 0; i < 4; ++i) table[i] = static_cast<char>(count >> (8 * i) & 0xff);
  const std::string entry("\x02\x11\x22\x33\x44\x01\x06\x00\xc4\xff\xff\xff\x09\x00\x00\x00\x04\x01Name", 22);
  for (size_t i = 0; i < 128; ++i) table.replace(kFirst + 144 * i, entry.size(), entry);
  return table.replace(kFirst + at, bytes.size(), bytes);
}

Json json_of_table(const std::string& table) {
  const TestFolder folder;
  write_file(folder / "table", table);
  const std::string script = prelude(folder) + "LD_PRELOAD=\"$LD_PRELOAD " + build_folder() +
                             "/lib/libgiven_neighbour_table.so\" NEIGHBOUR_TABLE=table "
                             "wlanctl neighbours 2.4g --json";
  const Result result = sim_test::run_in(folder.path(), {"--", "sh", "-c", script});
  validate_documents(folder);
  return document_in(result.out);
}

TEST(Neighbours, ATableIsReadByTheDriversLayout) {
  const Json document = json_of_table(table_with(128, 0, ""));
  EXPECT_EQ(0, document["exit_code"]);
  const Json list = document["data"]["bands"][0]["neighbours"];
  ASSERT_EQ(128u, list.size());
  EXPECT_EQ(Json::parse(R"({"bssid": "02:11:22:33:44:01", "ssid": "Name", "channel": 6, "signal_dbm": -60,
                            "age_seconds": 9, "security": "", "mode": "", "wps": true})"),
            list[127]);
}

TEST(Neighbours, ATableThatCannotBeTrueIsNotShown) {
  const std::pair<const char*, std::string> tables[] = {
      {"more than there is room for", table_with(129, 0, "")},
      {"no count at all", table_with(0xffffffff, 0, "")},
      {"a channel that is none", table_with(1, 6, std::string("\xea\x00", 2))},
      {"a signal above all", table_with(1, 8, std::string("\x15\x00\x00\x00", 4))},
      {"a name that is too long", table_with(1, 16, "\x21")},
      {"neither yes nor no", table_with(1, 17, "\x02")},
      {"a security without an end", table_with(1, 52, std::string(32, 'x'))},
      {"a security that is no text", table_with(1, 52, "\x01")},
      {"a mode that is no text", table_with(1, 84, "\xff")},
  };
  for (const auto& table : tables) {
    SCOPED_TRACE(table.first);
    const Json document = json_of_table(table.second);
    EXPECT_EQ(5, document["exit_code"]);
    EXPECT_TRUE(document["data"]["bands"][0]["neighbours"].is_null());
    ASSERT_EQ(1u, document["problems"].size());
    EXPECT_THAT(document["problems"][0]["message"].get<std::string>(), HasSubstr("not laid out as expected"));
  }
}

TEST(Neighbours, LongNamesAreCutToATerminalOfEightyColumns) {
  const Result result =
      run("simctl neighbour add 2.4G 02:11:22:33:44:01 signal=-10 security=WPA1PSKWPA2PSK/TKIPAES "
          "ssid=\"$(printf '\\303\\274bcdefghijklmnopqrstuvwxyz01234')\"; wlanctl neighbours 2.4g");
  EXPECT_THAT(result.out, HasSubstr("TKIPAES  \303\274bcdefghijklmnop...\n"));
}

TEST(Neighbours, ANameThatIsNoUtf8IsStillADocument) {
  const Json document =
      json_of("neighbours 2.4g", "simctl neighbour add 2.4G 02:11:22:33:44:01 signal=-10 ssid=\"$(printf 'x\\377')\"");
  EXPECT_EQ("x\xef\xbf\xbd", document["data"]["bands"][0]["neighbours"][0]["ssid"]);
}

TEST(Neighbours, ABandWithoutDriverIsAProblem) {
  const Json document = json_of("neighbours 5g", "rmmod mt7662e_ap", {"--chips", "7603,7612"});
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_TRUE(document["data"]["bands"][0]["neighbours"].is_null());
}

}  // namespace
}  // namespace wlanctl_test

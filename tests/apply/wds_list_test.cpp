// The WDS peers.
#include "apply/wds_checks.h"

namespace {

using wds::expect_refused;
using wds::expect_stored;
using wds::kSettings;
using wds::kZero;

const char kCountRefusal[] = "[wifimgr_lib_set_wdslist]:===Fail Exit===Please input 4 Mac addresses\n";
const char kLengthRefusal[] = "[wifimgr_lib_set_wdslist]:===Fail Exit===Please input acceptable Mac address.\n";
const char kDigitRefusal[] = "[wifimgr_lib_set_wdslist]:===Fail Exit===Mac address check error!\n";

// Four peers of which one is given.
std::string peers(const std::string& peer, int place) {
  std::string list;
  for (int i = 0; i < 4; ++i) list.append(i > 0 ? ";" : "").append(i == place ? peer : kZero);
  return list;
}

TEST(WdsList, AcceptsHexadecimalDigitsWithAnySeparator) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (int place = 0; place < 4; ++place) {
    for (const char* peer :
         {"00:11:22:33:44:55", "00-11-22-33-44-55", "aa.bb.cc.dd.ee.ff", "AA:BB:CC:DD:EE:FF", "00x11 22:33_44G55",
          "01:00:5e:00:00:01", "ff:ff:ff:ff:ff:ff", kZero, "00-00-00-00-00-00"}) {
      expect_stored(kSettings[3], peers(peer, place));
    }
  }
}

TEST(WdsList, RefusesOtherDigitsInEveryPlace) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (size_t at = 0; at < 17; ++at) {
    if (at % 3 == 2) continue;
    std::string peer = "00:11:22:33:44:55";
    for (const char wrong : {'g', 'G', ':', ' ', '/', '@'}) {
      peer[at] = wrong;
      expect_refused(wifimgr_lib_set_wdslist, peers(peer, static_cast<int>(at % 4)), kDigitRefusal);
    }
  }
}

TEST(WdsList, RefusesAnotherLengthThan17Characters) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const std::string& peer :
       std::vector<std::string>{"0", "00:11:22:33:44:5", "00:11:22:33:44:555", "00:11:22:33:44:55\n",
                                " 00:11:22:33:44:55", "001122334455", "00:11:22:33:44:5G0", std::string(300, 'a')}) {
    for (const int place : {0, 3}) expect_refused(wifimgr_lib_set_wdslist, peers(peer, place), kLengthRefusal);
  }
}

TEST(WdsList, RefusesAnotherCountThanFour) {
  for (const int band : {0, 1}) dat::load(band, {});
  const std::string peer = "00:11:22:33:44:55";
  for (const std::string& value :
       {std::string(), std::string(";"), std::string(";;;"), peer, peer + ";" + peer, peer + ";" + peer + ";" + peer,
        peer + ";" + peer + ";" + peer + ";", peer + ";;" + peer + ";" + peer, peers(peer, 0) + ";",
        std::string(";").append(peers(peer, 0)), peers(peer, 0) + ";" + peer,
        peer + ";;" + peer + ";" + peer + ";" + peer}) {
    expect_refused(wifimgr_lib_set_wdslist, value, kCountRefusal);
  }
}

TEST(WdsList, JudgesTheEntriesInOrderAndTheirCountLast) {
  for (const int band : {0, 1}) dat::load(band, {});
  expect_refused(wifimgr_lib_set_wdslist, "short", kLengthRefusal);
  expect_refused(wifimgr_lib_set_wdslist, "00:11:22:33:44:5G", kDigitRefusal);
  expect_refused(wifimgr_lib_set_wdslist, "00:11:22:33:44:5G;short", kDigitRefusal);
  expect_refused(wifimgr_lib_set_wdslist, "short;00:11:22:33:44:5G", kLengthRefusal);
  expect_refused(wifimgr_lib_set_wdslist, peers(kZero, 0) + ";short", kLengthRefusal);
  expect_refused(wifimgr_lib_set_wdslist, peers(kZero, 0) + ";00:11:22:33:44:5G", kDigitRefusal);
}

// What lies behind the first 127 characters is only counted for its separators.
TEST(WdsList, JudgesTheFirst127CharactersAndCountsSeparatorsInAll) {
  for (const int band : {0, 1}) dat::load(band, {});
  const std::string peer = "00:11:22:33:44:55";
  std::string seven = peer;
  for (int i = 1; i < 7; ++i) seven += ";" + peer;
  ASSERT_EQ(125U, seven.size());
  expect_refused(wifimgr_lib_set_wdslist, seven + ";", kCountRefusal);
  expect_refused(wifimgr_lib_set_wdslist, seven + ";x", kLengthRefusal);
  expect_refused(wifimgr_lib_set_wdslist, seven + ";;x", kCountRefusal);
}

}  // namespace

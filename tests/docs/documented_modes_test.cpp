// The words and numbers that the header and INTEGRATION.md explain are those that the library knows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "support/sandbox.h"

namespace {

using testing::IsEmpty;
using testing::Not;

std::string text_of(const char* path) {
  std::ifstream file(std::string(SOURCES "/") + path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// Read before a test gets files of its own.
const std::string kHeader = text_of("include/wifimgr_lib.h");
const std::string kPage = text_of("INTEGRATION.md");
const std::string kModesOfTheLibrary = text_of("apply/security_mode.h");

struct Mode {
  std::string spelling;
  std::string kind;
  std::string stored;
  bool operator==(const Mode&) const = default;
};

void PrintTo(const Mode& mode, std::ostream* out) {
  *out << mode.spelling << ", " << mode.kind << ", then " << mode.stored;
}

std::vector<Mode> rows_of(const std::string& text, const char* row) {
  std::vector<Mode> modes;
  const std::regex pattern(row, std::regex::multiline);
  for (auto i = std::sregex_iterator(text.begin(), text.end(), pattern); i != std::sregex_iterator(); ++i) {
    modes.push_back({(*i)[1], (*i)[2], (*i)[3]});
  }
  return modes;
}

std::vector<Mode> modes_of_header() {
  return rows_of(kHeader, R"(^ \*   (\S+) +(personal|enterprise|WEP|open) +(\S+)$)");
}

std::vector<Mode> modes_of_page() {
  return rows_of(kPage, R"(^\| `(\S+)` \| (personal|enterprise|WEP|open) \| `(\S+)` \|$)");
}

// What the normalisation leaves of SSID 1 with this mode, 802.1X and a passphrase.
struct Normalised {
  std::string mode;
  std::string cipher;
  std::string ieee8021x;
  std::string passphrase;
};

Normalised normalise(const std::string& mode) {
  EXPECT_EQ(0, update_attr(0, 1, "AuthMode", mode.c_str()));
  EXPECT_EQ(0, update_attr(0, 1, "EncrypType", "AES"));
  EXPECT_EQ(0, update_attr(0, 1, "IEEE8021X", "7"));
  EXPECT_EQ(0, update_attr(0, 1, "WPAPSK1", "a passphrase"));
  update_auth_mode(0, 1);
  return {sandbox::field(0, "AuthMode", 1), sandbox::field(0, "EncrypType", 1), sandbox::field(0, "IEEE8021X", 1),
          sandbox::field(0, "WPAPSK1", 1)};
}

std::string kind_of(const Normalised& after) {
  if (after.cipher == "WEP") return "WEP";
  if (after.cipher == "NONE" && after.passphrase == "0") return "open";
  if (after.passphrase != "a passphrase" || after.cipher != "AES") return "neither";
  return after.ieee8021x == "0" ? "enterprise" : "personal";
}

TEST(DocumentedModes, AreTheSameInTheHeaderAndThePage) {
  EXPECT_THAT(modes_of_header(), Not(IsEmpty()));
  EXPECT_EQ(modes_of_header(), modes_of_page());
}

TEST(DocumentedModes, BecomeInTheNormalisationWhatTheTableSays) {
  sandbox::load(0, sandbox::full_dat(0));
  for (const Mode& mode : modes_of_header()) {
    SCOPED_TRACE(mode.spelling);
    const Normalised after = normalise(mode.spelling);
    EXPECT_EQ(mode.stored, after.mode);
    EXPECT_EQ(mode.kind, kind_of(after));
  }
}

TEST(DocumentedModes, LeaveOutNoneThatTheLibraryKnows) {
  std::set<std::string> documented;
  for (const Mode& mode : modes_of_header()) documented.insert(mode.spelling);
  const std::regex word("\"(WPA[A-Z0-9]*)\"");
  std::vector<std::string> missing;
  int words = 0;
  for (auto i = std::sregex_iterator(kModesOfTheLibrary.begin(), kModesOfTheLibrary.end(), word);
       i != std::sregex_iterator(); ++i, ++words) {
    if (!documented.contains((*i)[1])) missing.push_back((*i)[1]);
  }
  EXPECT_LT(0, words);
  EXPECT_THAT(missing, IsEmpty());
}

TEST(DocumentedModes, TurnWepRadiusInto8021x) {
  sandbox::load(0, sandbox::full_dat(0));
  EXPECT_EQ("1", normalise("WEPRadius").ieee8021x);
  EXPECT_EQ("0", normalise("WEP").ieee8021x);
}

TEST(DocumentedModes, DoNotCoverTheSpellingsThatOpenTheNetwork) {
  sandbox::load(0, sandbox::full_dat(0));
  for (const char* spelling : {"WPA1PSKWPA2PSK", "WPA2-PSK", "WPA3SAE", "wpa2psk"}) {
    SCOPED_TRACE(spelling);
    EXPECT_THAT(kHeader, testing::HasSubstr("\"" + std::string(spelling) + "\""));
    EXPECT_THAT(kPage, testing::HasSubstr("`" + std::string(spelling) + "`"));
    EXPECT_EQ("open", kind_of(normalise(spelling)));
  }
}

// The numbers of the page's row for these bands.
std::set<int> documented_numbers(const std::string& bands) {
  std::set<int> numbers;
  std::smatch row;
  const std::regex pattern("\\| `WirelessMode`, " + bands + " \\| ([0-9, ]+) \\|");
  if (!std::regex_search(kPage, row, pattern)) return numbers;
  std::string list = row[1];
  std::replace(list.begin(), list.end(), ',', ' ');
  std::istringstream words(list);
  for (int number = 0; words >> number;) numbers.insert(number);
  return numbers;
}

TEST(DocumentedWirelessModes, AreThoseThatTheSettersTake) {
  const std::set<int> both = documented_numbers("both");
  for (const int band : {0, 1}) {
    sandbox::load(band, sandbox::full_dat(band));
    std::set<int> documented = documented_numbers(band == 0 ? "2.4G" : "5G");
    EXPECT_THAT(documented, Not(IsEmpty()));
    documented.insert(both.begin(), both.end());
    std::set<int> accepted;
    for (int mode = 0; mode < 32; ++mode) {
      const std::string value = std::to_string(mode);
      if (wifimgr_lib_set_wirelessMode(static_cast<uint32_t>(band), -1, value.c_str()) == 0) accepted.insert(mode);
    }
    EXPECT_EQ(documented, accepted) << "band " << band;
  }
}

}  // namespace

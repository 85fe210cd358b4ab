// The predicates on IPv4 and MAC addresses.
#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>

#include "params/setting_checks.h"

namespace {

using settings::repeat;

TEST(AddressPart, IsANumberBelow256) {
  for (int number = 0; number < 1000; ++number) {
    EXPECT_EQ(number < 256 ? 1 : 0, checkV4(std::to_string(number).c_str())) << number;
  }
}

TEST(AddressPart, TakesTheEmptyTextAsZero) {
  EXPECT_EQ(1, checkV4(""));
}

TEST(AddressPart, TakesLeadingZeros) {
  EXPECT_EQ(1, checkV4("0255"));
  EXPECT_EQ(1, checkV4("0000000000000000000000001"));
  EXPECT_EQ(0, checkV4("0256"));
}

TEST(AddressPart, ThatDoesNotFit32BitsIsInvalid) {
  for (const char* text : {"2147483648", "4294967296", "4294967297", "18446744073709551616", "18446744073709551617"}) {
    EXPECT_EQ(0, checkV4(text)) << text;
  }
  EXPECT_EQ(0, checkV4(repeat("9", 300).c_str()));
}

TEST(AddressPart, ThatIsNotAllDigitsIsInvalid) {
  for (const char* text : {"-1", "+1", " 1", "1 ", "1\n", "1a", "x", "."}) EXPECT_EQ(0, checkV4(text)) << text;
}

TEST(AddressPart, NullIsInvalid) {
  EXPECT_EQ(0, checkV4(nullptr));
}

std::string address_with(int position, const std::string& part) {
  return settings::list_with(position, part, '.');
}

TEST(Ipv4Address, HasFourPartsBelow256) {
  for (int position = 0; position < 4; ++position) {
    for (int number = 0; number < 1000; ++number) {
      const std::string address = address_with(position, std::to_string(number));
      EXPECT_EQ(number < 256 ? 1 : 0, IPV4check(address.c_str())) << address;
    }
  }
}

TEST(Ipv4Address, HasNoEmptyPart) {
  for (int position = 0; position < 4; ++position) {
    const std::string address = address_with(position, "");
    EXPECT_EQ(0, IPV4check(address.c_str())) << address;
  }
  EXPECT_EQ(0, IPV4check("..."));
}

TEST(Ipv4Address, HasAtMostThreeDigitsInAPart) {
  for (int position = 0; position < 4; ++position) {
    EXPECT_EQ(1, IPV4check(address_with(position, "001").c_str())) << position;
    EXPECT_EQ(0, IPV4check(address_with(position, "0001").c_str())) << position;
  }
}

TEST(Ipv4Address, HasDigitsOnlyInItsParts) {
  for (int position = 0; position < 4; ++position) {
    for (const char* part : {"a", "1a", "-1", "+1", " 1", "1 ", "1\n", "0x1"}) {
      const std::string address = address_with(position, part);
      EXPECT_EQ(0, IPV4check(address.c_str())) << address;
    }
  }
}

TEST(Ipv4Address, HasExactlyThreeDots) {
  for (const char* text : {"", "1", "1.1", "1.1.1", "1.1.1.1.", ".1.1.1.1", "1.1.1.1.1", "1.1..1.1"}) {
    EXPECT_EQ(0, IPV4check(text)) << text;
  }
}

TEST(Ipv4Address, OfSixteenCharactersIsJudgedOnItsFirstFifteen) {
  EXPECT_EQ(1, IPV4check("192.168.100.2001"));
  EXPECT_EQ(1, IPV4check("255.255.255.255x"));
  EXPECT_EQ(1, IPV4check("255.255.255.255."));
  EXPECT_EQ(0, IPV4check("192.168.100.2561"));
  EXPECT_EQ(0, IPV4check("10.168.100.20011"));
}

TEST(Ipv4Address, OfSeventeenCharactersIsInvalid) {
  EXPECT_EQ(0, IPV4check("192.168.100.20011"));
  EXPECT_EQ(0, IPV4check("255.255.255.255xx"));
  EXPECT_EQ(0, IPV4check(("1.1.1.1" + repeat("0", 4000)).c_str()));
}

TEST(Ipv4Address, NullIsInvalid) {
  EXPECT_EQ(0, IPV4check(nullptr));
}

// Counts and splits in another way than the library does.
bool is_address(const std::string& text) {
  int parts[4];
  char end = 0;
  for (const char c : text) {
    if (c != '.' && (c < '0' || c > '9')) return false;
  }
  if (std::sscanf(text.c_str(), "%3d.%3d.%3d.%3d%c", &parts[0], &parts[1], &parts[2], &parts[3], &end) != 4)
    return false;
  for (const int part : parts) {
    if (part > 255) return false;
  }
  return true;
}

TEST(Ipv4Address, AgreesWithAnotherJudgeOnRandomTexts) {
  const unsigned seed = std::random_device()();
  std::printf("seed %u\n", seed);
  std::mt19937 random(seed);
  const std::string alphabet = "0012.25..9a";
  for (int i = 0; i < 200000; ++i) {
    std::string text;
    for (size_t length = random() % 16; length > 0; --length) text += alphabet[random() % alphabet.size()];
    ASSERT_EQ(is_address(text) ? 1 : 0, IPV4check(text.c_str())) << text << " with seed " << seed;
  }
}

TEST(MacAddress, IsNeverAccepted) {
  for (const char* text : {"00:1a:22:aa:dc:a1", "02:00:00:00:00:01", "FC:FF:FF:FF:FF:FF", "01:00:5e:00:00:01",
                           "00:00:00:00:00:00", "00-1a-22-aa-dc-a1", "", "00:1a:22:aa:dc:a", "00:1a:22:aa:dc:a1 "}) {
    EXPECT_EQ(0, MacCheck(text)) << text;
  }
}

TEST(MacAddress, NullIsInvalid) {
  EXPECT_EQ(0, MacCheck(nullptr));
}

TEST(MacAddress, OfAnyLengthIsRefused) {
  for (int length = 0; length < 400; ++length) EXPECT_EQ(0, MacCheck(repeat(":", length).c_str())) << length;
}

}  // namespace

// The predicates on number texts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "params/setting_checks.h"
#include "support/seams.h"

namespace {

using settings::repeat;
using testing::ElementsAre;

const std::string kDecimal = "0123456789";
const std::string kHexadecimal = "0123456789ABCDEFabcdef";

// Calls `check` for every character but NUL, in a text with valid neighbours.
template <typename Check>
void for_each_character(Check check) {
  for (int code = 1; code < 256; ++code) {
    SCOPED_TRACE("character " + std::to_string(code));
    check(static_cast<char>(code));
  }
}

bool is_in(const std::string& set, char c) {
  return set.find(c) != std::string::npos;
}

TEST(DecimalText, TakesDecimalDigitsAndNothingElse) {
  for_each_character(
      [](char c) { EXPECT_EQ(is_in(kDecimal, c) ? 1 : 0, doStrDecCheck((std::string("1") + c).c_str())); });
}

TEST(DecimalText, LooksAtTheFirstCharacterToo) {
  EXPECT_EQ(0, doStrDecCheck("-1"));
  EXPECT_EQ(0, doStrDecCheck("x1"));
}

TEST(DecimalText, TakesTheEmptyText) {
  EXPECT_EQ(1, doStrDecCheck(""));
}

TEST(DecimalText, TakesAnyLength) {
  EXPECT_EQ(1, doStrDecCheck(repeat("9", 4000).c_str()));
}

TEST(DecimalText, DoesNotStopAtALineEnd) {
  EXPECT_EQ(0, doStrDecCheck("1\n"));
  EXPECT_EQ(0, doStrDecCheck("\n"));
}

TEST(DecimalText, NullIsInvalid) {
  EXPECT_EQ(0, doStrDecCheck(nullptr));
}

TEST(HexadecimalCharacter, IsADigitOrALetterOfEitherCase) {
  for_each_character([](char c) { EXPECT_EQ(is_in(kHexadecimal, c) ? 1 : -1, doHexCheck(c)); });
  EXPECT_EQ(-1, doHexCheck('\0'));
}

TEST(HexadecimalText, TakesHexadecimalDigitsAndNothingElse) {
  for_each_character(
      [](char c) { EXPECT_EQ(is_in(kHexadecimal, c) ? 1 : 0, doStrHexCheck((std::string("f") + c).c_str())); });
}

TEST(HexadecimalText, LooksAtTheFirstCharacterToo) {
  EXPECT_EQ(0, doStrHexCheck("gf"));
}

TEST(HexadecimalText, TakesTheEmptyText) {
  EXPECT_EQ(1, doStrHexCheck(""));
}

TEST(HexadecimalText, DoesNotStopAtALineEnd) {
  EXPECT_EQ(0, doStrHexCheck("f\n"));
}

TEST(HexadecimalText, NullIsInvalid) {
  EXPECT_EQ(0, doStrHexCheck(nullptr));
}

TEST(NumberLine, ZeroMeansDecimalDigitsOnly) {
  for_each_character([](char c) {
    if (c != '\n') {
      EXPECT_EQ(is_in(kDecimal, c) ? 0 : 1, check_is_num((std::string("1") + c).c_str()));
    }
  });
}

TEST(NumberLine, EndsAtTheFirstLineEnd) {
  EXPECT_EQ(0, check_is_num("12\n"));
  EXPECT_EQ(0, check_is_num("12\nabc"));
  EXPECT_EQ(0, check_is_num("\nabc"));
  EXPECT_EQ(1, check_is_num("1a\n"));
}

TEST(NumberLine, TakesTheEmptyText) {
  EXPECT_EQ(0, check_is_num(""));
}

TEST(NumberLine, NullIsInvalid) {
  EXPECT_EQ(1, check_is_num(nullptr));
}

TEST(HexadecimalLine, ZeroMeansHexadecimalDigitsOnly) {
  for_each_character([](char c) {
    if (c != '\n') {
      EXPECT_EQ(is_in(kHexadecimal, c) ? 0 : 1, check_hex_valid((std::string("f") + c).c_str()));
    }
  });
}

TEST(HexadecimalLine, EndsAtTheFirstLineEnd) {
  EXPECT_EQ(0, check_hex_valid("1f\nxyz"));
  EXPECT_EQ(0, check_hex_valid("\nxyz"));
  EXPECT_EQ(1, check_hex_valid("1g\n"));
}

TEST(HexadecimalLine, TakesTheEmptyText) {
  EXPECT_EQ(0, check_hex_valid(""));
}

TEST(HexadecimalLine, NullIsInvalid) {
  EXPECT_EQ(1, check_hex_valid(nullptr));
}

TEST(CharacterCount, CountsEveryOccurrence) {
  EXPECT_EQ(3, charCnt("a;b;;", ';'));
  EXPECT_EQ(3, charCnt(";a;b;", ';'));
  EXPECT_EQ(0, charCnt("abc", ';'));
  EXPECT_EQ(300, charCnt(repeat(".", 300).c_str(), '.'));
}

TEST(CharacterCount, OfNoTextIsZero) {
  EXPECT_EQ(0, charCnt(nullptr, ';'));
  EXPECT_EQ(0, charCnt("", ';'));
}

TEST(CharacterCount, OfTheTerminatorIsZero) {
  EXPECT_EQ(0, charCnt("abc", '\0'));
  EXPECT_EQ(0, charCnt("", '\0'));
}

TEST(Checks, WithoutAMessageTraceNothing) {
  EXPECT_THAT(seams::trace_of([] {
                doStrDecCheck("x");
                doHexCheck('x');
                doStrHexCheck("x");
                check_is_num("x");
                check_hex_valid("x");
                charCnt("x", 'x');
                checkV4("x");
                IPV4check("x");
                MacCheck("00:1a:22:aa:dc:a1");
              }),
              ElementsAre());
}

struct Fields {
  char text[4][WIFIMGR_FIELD_SIZE] = {};
  int check(const char* list) { return check_para_valid(list, text[0], text[1], text[2], text[3]); }
};

TEST(NumberList, ReturnsItsFourFields) {
  Fields fields;
  EXPECT_EQ(0, fields.check("3;70;1;255"));
  EXPECT_STREQ("3", fields.text[0]);
  EXPECT_STREQ("70", fields.text[1]);
  EXPECT_STREQ("1", fields.text[2]);
  EXPECT_STREQ("255", fields.text[3]);
}

TEST(NumberList, KeepsALineEndInItsLastField) {
  Fields fields;
  EXPECT_EQ(0, fields.check("3;7;1;1\n"));
  EXPECT_STREQ("1\n", fields.text[3]);
}

TEST(NumberList, TakesALineEndForTheLastNumber) {
  EXPECT_EQ(0, Fields().check("3;7;1;\n"));
}

TEST(NumberList, CountsSeparatorsUpToTheLineEndOnly) {
  EXPECT_EQ(0, Fields().check("3;7;1;1\n;;x"));
  EXPECT_EQ(1, Fields().check("3;7;1\n;1"));
}

TEST(NumberList, IsRefusedWithItsMessage) {
  const char* const lists[] = {"",          "\n",         ";",        ";3;7;1;1", ";7;1;1",    "3;;7;1;1",
                               "3;;1;1",    "3;7;1;;1",   "3;7;1",    "3",        "3;7;1;",    "3;7;1;1;",
                               "3;7;1;1;2", "3;7;1;1;\n", "a;7;1;1",  "3;b;1;1",  "3;7;c;1",   "3;7;1;d",
                               "3;7;1;1 ",  " 3;7;1;1",   "-3;7;1;1", "3,7,1,1",  "3;7;1;1d\n"};
  for (const char* list : lists) {
    SCOPED_TRACE(list);
    EXPECT_THAT(seams::errors_of([list] { EXPECT_EQ(1, Fields().check(list)); }),
                ElementsAre("[check_para_valid]:===Fail Exit===The input parameter is invalid.\n"));
  }
}

TEST(NumberList, HasFieldsOfUpTo149Digits) {
  const std::string longest = repeat("8", 149);
  for (int long_field = 0; long_field < 4; ++long_field) {
    SCOPED_TRACE(long_field);
    const std::string list = settings::list_with(long_field, longest, ';');
    const std::string too_long = settings::list_with(long_field, longest + "8", ';');
    Fields fields;
    EXPECT_EQ(0, fields.check(list.c_str()));
    EXPECT_EQ(longest, fields.text[long_field]);
    EXPECT_EQ(1, fields.check(too_long.c_str()));
  }
}

TEST(NumberList, NullIsRefusedWithItsMessage) {
  Fields f;
  for (int null_at = 0; null_at < 5; ++null_at) {
    SCOPED_TRACE(null_at);
    EXPECT_THAT(seams::errors_of([&] {
                  EXPECT_EQ(1, check_para_valid(null_at == 0 ? nullptr : "3;7;1;1", null_at == 1 ? nullptr : f.text[0],
                                                null_at == 2 ? nullptr : f.text[1], null_at == 3 ? nullptr : f.text[2],
                                                null_at == 4 ? nullptr : f.text[3]));
                }),
                ElementsAre("[check_para_valid]:===Fail Exit===The input parameter is invalid.\n"));
  }
}

TEST(NumberList, TracesItsEntryAndItsSuccess) {
  EXPECT_THAT(seams::trace_of([] { Fields().check("3;7;1;1"); }),
              ElementsAre("[check_para_valid]:===Enter===\n", "[check_para_valid]:===Success Exit===\n"));
}

}  // namespace

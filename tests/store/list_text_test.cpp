// The string helpers for ';'-separated lists, and the cutting of line ends.
#include <gtest/gtest.h>

#include <string>

#include "support/sandbox.h"

namespace {

TEST(LineEnd, IsCutByOneCharacterEachForCrAndLfAnywhere) {
  const struct {
    const char* text;
    const char* cut;
  } rows[] = {{"abc\n", "abc"},  {"abc\r\n", "abc"}, {"abc\r", "abc"},   {"abc", "abc"},       {"00\n", "00"},
              {"a\nbc", "a\nb"}, {"\rabc", "\rab"},  {"\n\n\n", "\n\n"}, {"a\r\nbc", "a\r\n"}, {"0\r\n", "0"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    std::string text = row.text;
    EXPECT_EQ(0, parserstr(text.data(), static_cast<int>(text.size())));
    EXPECT_STREQ(row.cut, text.c_str());
  }
}

TEST(LineEnd, OfATextBelowThreeCharactersStays) {
  for (const char* original : {"", "\n", "0\n", "\r\n"}) {
    std::string text = original;
    EXPECT_EQ(5, parserstr(text.data(), static_cast<int>(text.size()))) << original;
    EXPECT_EQ(original, text);
  }
  std::string long_text = "abc\n";
  EXPECT_EQ(5, parserstr(long_text.data(), 2));
  EXPECT_EQ(5, parserstr(long_text.data(), -1));
  EXPECT_EQ("abc\n", long_text);
}

TEST(LineEnd, IsLookedForUpToTheEndOfTheTextOnly) {
  char text[] = "abc\0\n\r";
  EXPECT_EQ(0, parserstr(text, 6));
  EXPECT_EQ(std::string("abc\0\n\r", 6), std::string(text, 6));
}

TEST(LineEnd, NullIsAnsweredAsTooShort) {
  EXPECT_EQ(5, parserstr(nullptr, 8));
}

TEST(Tokens, AreTakenOneByOne) {
  char text[] = ";;a;b,;c;;";
  EXPECT_STREQ("a", rstrtok(text, ";,"));
  EXPECT_STREQ("b", rstrtok(nullptr, ";,"));
  EXPECT_STREQ("c", rstrtok(nullptr, ";,"));
  EXPECT_EQ(nullptr, rstrtok(nullptr, ";,"));
  EXPECT_EQ(nullptr, rstrtok(nullptr, ";,"));
}

TEST(Tokens, DelimitersMayChangeFromCallToCall) {
  char text[] = "a;b,c";
  EXPECT_STREQ("a", rstrtok(text, ";"));
  EXPECT_STREQ("b", rstrtok(nullptr, ","));
  EXPECT_STREQ("c", rstrtok(nullptr, ";"));
}

TEST(Tokens, SaveThePositionBehindTheDelimiter) {
  EXPECT_EQ(nullptr, __rstrtok);
  char text[] = "ab;cd";
  EXPECT_EQ(text, rstrtok(text, ";"));
  EXPECT_EQ(text + 3, __rstrtok);
  EXPECT_EQ('\0', text[2]);
  EXPECT_EQ(text + 3, rstrtok(nullptr, ";"));
  EXPECT_EQ(nullptr, __rstrtok);
}

TEST(Tokens, NothingLeftClearsThePosition) {
  char delimiters[] = ";;;";
  __rstrtok = delimiters;
  EXPECT_EQ(nullptr, rstrtok(nullptr, ";"));
  EXPECT_EQ(nullptr, __rstrtok);
  char empty[] = "";
  EXPECT_EQ(nullptr, rstrtok(empty, ";"));
  EXPECT_EQ(nullptr, rstrtok(nullptr, ";"));
}

TEST(Tokens, ANewTextStartsANewScan) {
  char first[] = "a;b";
  char second[] = "c;d";
  EXPECT_STREQ("a", rstrtok(first, ";"));
  EXPECT_STREQ("c", rstrtok(second, ";"));
  EXPECT_STREQ("d", rstrtok(nullptr, ";"));
}

TEST(Tokens, ContinueWhereTheExportedPositionSays) {
  char text[] = "a;b";
  __rstrtok = text;
  EXPECT_STREQ("a", rstrtok(nullptr, ";"));
}

TEST(Tokens, NullDelimitersGiveNone) {
  char text[] = "a;b";
  EXPECT_EQ(nullptr, rstrtok(text, nullptr));
  EXPECT_STREQ("a;b", text);
}

TEST(TextsEqualButForCase, OneMeansEqual) {
  const struct {
    const char* a;
    const char* b;
    int equal;
  } rows[] = {{"", "", 1},        {"AES", "aes", 1}, {"aEs", "AeS", 1},   {"aes", "aes", 1}, {"aes", "aesx", 0},
              {"aesx", "aes", 0}, {"", "a", 0},      {"aes", "aet", 0},   {"AZ", "az", 1},   {"@", "`", 0},
              {"[", "{", 0},      {"1_a", "1_A", 1}, {"\xc4", "\xe4", 0}, {"a b", "a  b", 0}};
  for (const auto& row : rows) EXPECT_EQ(row.equal, rtstrcasecmp(row.a, row.b)) << row.a << " " << row.b;
}

TEST(TextsEqualButForCase, NullIsEqualToNothing) {
  EXPECT_EQ(0, rtstrcasecmp(nullptr, "a"));
  EXPECT_EQ(0, rtstrcasecmp("a", nullptr));
  EXPECT_EQ(0, rtstrcasecmp(nullptr, nullptr));
}

TEST(FirstFourFields, AreCopied) {
  const struct {
    const char* text;
    const char* copied;
  } rows[] = {{"a;b;c;d;e", "a;b;c;d"}, {"a;b;c;d;", "a;b;c;d"}, {";;;;", ";;;"}, {"10;20;;4;5;6", "10;20;;4"}};
  for (const auto& row : rows) {
    char out[32];
    for (char& c : out) c = 'x';
    strextract(out, row.text);
    EXPECT_STREQ(row.copied, out);
    EXPECT_EQ('x', out[std::string(row.copied).size() + 1]);
  }
}

TEST(FirstFourFields, AreCopiedAcrossANul) {
  const char text[] = "a\0b;c;d;e;f";
  char out[32] = "";
  strextract(out, text);
  EXPECT_EQ(std::string("a\0b;c;d;e\0", 10), std::string(out, 10));
}

TEST(FirstFourFields, NullCopiesNothing) {
  char out[8] = "old";
  strextract(out, nullptr);
  strextract(nullptr, "a;b;c;d;");
  EXPECT_STREQ("old", out);
}

}  // namespace

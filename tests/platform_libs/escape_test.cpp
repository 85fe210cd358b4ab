// The stand-in for the platform's escaping of shell words.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "api_lib_utility.h"
#include "support/sandbox.h"

namespace {

constexpr char kMeaningful[] = "|&;<>()$`\\\"' \t\n*?[]#~=%!{}";
constexpr char kPlain[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-.,:/@+";

struct Escaped {
  int result;
  std::string text;
};

Escaped escape(const std::string& in, int out_size = 1000) {
  std::string out(1010, 'x');
  Escaped escaped{api_escape_parameter(in.c_str(), out.data(), out_size), out.c_str()};
  for (size_t at = static_cast<size_t>(out_size); at < out.size(); ++at) EXPECT_EQ('x', out[at]) << "beyond the buffer";
  return escaped;
}

// What the shell makes of a word.
std::string word_of(const std::string& text) {
  FILE* const shell = popen(("printf %s " + text).c_str(), "r");
  std::string word;
  for (int c; (c = std::fgetc(shell)) != EOF;) word += static_cast<char>(c);
  EXPECT_EQ(0, pclose(shell));
  return word;
}

TEST(Escape, PutsABackslashBeforeWhatAShellGivesAMeaning) {
  for (const char* c = kMeaningful; *c != '\0'; ++c) {
    EXPECT_EQ(std::string("a\\") + *c + "b", escape(std::string("a") + *c + "b").text);
    EXPECT_EQ(0, escape(std::string(1, *c)).result);
  }
}

TEST(Escape, CoversAllWhiteSpace) {
  EXPECT_EQ("\\ \\\t\\\n\\\v\\\f\\\r", escape(" \t\n\v\f\r").text);
}

TEST(Escape, LeavesPlainTextAlone) {
  EXPECT_EQ(kPlain, escape(kPlain).text);
  EXPECT_EQ("\xc3\xa4\xe2\x82\xac", escape("\xc3\xa4\xe2\x82\xac").text);
  EXPECT_EQ("", escape("").text);
  EXPECT_EQ(0, escape("").result);
}

TEST(Escape, GivesTheShellTheSameWordAgain) {
  for (int c = 1; c < 256; ++c) {
    if (c == '\n') continue;  // a shell takes a backslash and a line end as nothing
    const std::string text = std::string("a") + static_cast<char>(c) + "b";
    EXPECT_EQ(text, word_of(escape(text).text)) << c;
    const std::string first = std::string(1, static_cast<char>(c)) + "x";
    EXPECT_EQ(first, word_of(escape(first).text)) << c;
  }
  const std::string attack = "x'; rm -rf /tmp/nothing; echo \"$(id)`id`\" # & | > /tmp/y ~ * \\";
  EXPECT_EQ(attack, word_of(escape(attack).text));
}

TEST(Escape, WantsRoomForTheWholeText) {
  const struct {
    const char* in;
    int needed;
  } rows[] = {{"", 1}, {"a", 2}, {"abc", 4}, {" ", 3}, {"a b", 5}, {"$$$", 7}};
  for (const auto& row : rows) {
    EXPECT_EQ(0, escape(row.in, row.needed).result) << row.in;
    if (row.needed == 1) continue;
    const Escaped refused = escape(row.in, row.needed - 1);
    EXPECT_EQ(-1, refused.result) << row.in;
    EXPECT_EQ("", refused.text) << row.in;
  }
}

TEST(Escape, WithoutABufferIsAFailure) {
  char out[8] = "old";
  EXPECT_EQ(-1, api_escape_parameter("a", nullptr, 8));
  EXPECT_EQ(-1, api_escape_parameter("a", out, 0));
  EXPECT_EQ(-1, api_escape_parameter("a", out, -1));
  EXPECT_STREQ("old", out);
}

TEST(Escape, OfNullIsAFailureWithAnEmptyText) {
  char out[8] = "old";
  EXPECT_EQ(-1, api_escape_parameter(nullptr, out, sizeof out));
  EXPECT_STREQ("", out);
}

}  // namespace

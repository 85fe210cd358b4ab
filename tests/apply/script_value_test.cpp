// Values in double quotes of the execute script: line ends, escapes, and what does not fit.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "apply/dat_text.h"
#include "apply/script_text.h"

namespace {

using script::written;
using ScriptValue = script::Script;

struct Place {
  const char* store_key;
  const char* key;
  const char* auth_mode;
  int lines;  // how many have the value
};
constexpr Place kPlaces[] = {
    {"SSID1", "SSID", "OPEN", 1},        {"SSID1", "SSID", "WPA2PSK", 2},  {"SSID1", "SSID", "WPA3-192", 2},
    {"WPAPSK1", "WPAPSK", "WPA2PSK", 1}, {"WPAPSK1", "WPAPSK", "WPA2", 1}, {"Key1Str1", "Key1", "WEP", 1},
    {"Key2Str1", "Key2", "WEP", 1},      {"Key3Str1", "Key3", "WEP", 1},   {"Key4Str1", "Key4", "WEP", 1},
};

void load(int band, const char* auth_mode) {
  dat::load(band, {});
  script::take_snapshot(band);
  dat::put(band, 1, "AuthMode", auth_mode);
}

int count_of(const std::string& text, const std::string& part) {
  int count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

// The value stands as `quoted` in every line that has it, and nowhere otherwise.
void expect_quoted(const std::string& value, const std::string& quoted) {
  SCOPED_TRACE(testing::PrintToString(value));
  for (const int band : {0, 1}) {
    for (const Place& place : kPlaces) {
      SCOPED_TRACE(std::string(place.key) + " of " + place.auth_mode + " on band " + std::to_string(band));
      load(band, place.auth_mode);
      dat::put(band, 1, place.store_key, value);
      const std::string text = written(band, 0);
      const std::string set =
          std::string("/userfs/bin/iwpriv ") + (band == 0 ? "ra0" : "rai0") + " set " + place.key + "=";
      EXPECT_EQ(place.lines, count_of(text, set + "\"" + quoted + "\"\n")) << text;
      EXPECT_EQ(place.lines, count_of(text, set)) << text;
    }
  }
}

TEST_F(ScriptValue, QuotesAndBackslashesAreEscapedOnce) {
  expect_quoted("plain", "plain");
  expect_quoted("a\"b", "a\\\"b");
  expect_quoted("a\\b", "a\\\\b");
  expect_quoted("\"", "\\\"");
  expect_quoted("\\", "\\\\");
  expect_quoted("\\\"", "\\\\\\\"");
  expect_quoted("\\\\\"\"", "\\\\\\\\\\\"\\\"");
}

TEST_F(ScriptValue, EverythingElseStays) {
  std::string others;
  for (int c = 1; c < 128; ++c) {
    if (c != '"' && c != '\\') others += static_cast<char>(c);
  }
  expect_quoted(others, others);
  std::string bytes;
  for (int c = 128; c < 256; ++c) bytes += static_cast<char>(c);
  expect_quoted(bytes, bytes);
}

TEST_F(ScriptValue, OneLineEndIsTakenOff) {
  expect_quoted("ab\n", "ab");
  expect_quoted("ab\r", "ab");
  expect_quoted("ab\r\n", "ab");
  expect_quoted("ab\n\n", "ab");
  expect_quoted("ab\n\r", "ab");
  expect_quoted("a\n", "a");
  expect_quoted("\\\n", "\\\\");
  expect_quoted("\"\r\n", "\\\"");
  // Two characters go when the last but one is a line end, whatever the last is.
  expect_quoted("ab\nc", "ab");
  expect_quoted("ab\n\"", "ab");
  expect_quoted("ab\n\n\n", "ab\n");
  expect_quoted("ab\r\n\r\n", "ab\r\n");
  expect_quoted("a\nbc", "a\nbc");
  expect_quoted(" ab ", " ab ");
}

TEST_F(ScriptValue, LineEndAloneIsEmpty) {
  expect_quoted("\n", "");
  expect_quoted("\r", "");
  expect_quoted("\r\n", "");
}

TEST_F(ScriptValue, EmptySsidAndPassphraseHaveTheirLines) {
  load(0, "WPA2PSK");
  dat::put(0, 1, "SSID1", "");
  dat::put(0, 1, "WPAPSK1", "");
  const std::string text = written(0, 0);
  EXPECT_EQ(2, count_of(text, " set SSID=\"\"\n"));
  EXPECT_EQ(1, count_of(text, " set WPAPSK=\"\"\n"));
}

std::string repeated(int count, const std::string& part) {
  std::string text;
  for (int i = 0; i < count; ++i) text += part;
  return text;
}

TEST_F(ScriptValue, UpTo159CharactersFit) {
  expect_quoted(std::string(149, 'a'), std::string(149, 'a'));
  expect_quoted(std::string(139, 'a') + repeated(10, "\""), std::string(139, 'a') + repeated(10, "\\\""));
  expect_quoted(repeated(10, "\\") + std::string(139, 'a'), repeated(10, "\\\\") + std::string(139, 'a'));
  expect_quoted(repeated(79, "\""), repeated(79, "\\\""));
  expect_quoted(repeated(79, "\\") + "a", repeated(79, "\\\\") + "a");
}

TEST_F(ScriptValue, WhatDoesNotFitIsCutBetweenEscapeSequences) {
  // 160 characters escaped: the last sequence has no room.
  expect_quoted(std::string(138, 'a') + repeated(11, "\""), std::string(138, 'a') + repeated(10, "\\\""));
  expect_quoted(repeated(80, "\\"), repeated(79, "\\\\"));
  expect_quoted(repeated(79, "\\") + "ab", repeated(79, "\\\\") + "a");
  expect_quoted(std::string("a") + repeated(148, "\""), std::string("a") + repeated(79, "\\\""));
  expect_quoted(repeated(149, "\\"), repeated(79, "\\\\"));
}

TEST_F(ScriptValue, NothingFollowsACut) {
  expect_quoted(std::string(136, 'a') + repeated(11, "\"") + "\\z", std::string(136, 'a') + repeated(11, "\\\""));
}

TEST_F(ScriptValue, LineEndIsTakenOffBeforeTheCut) {
  expect_quoted(repeated(80, "\"") + "\r\n", repeated(79, "\\\""));
  expect_quoted(repeated(79, "\"") + "a\n", repeated(79, "\\\"") + "a");
}

// What a POSIX shell makes of the text between the quotes, for texts without '$' and '`'.
std::string unescaped(const std::string& quoted) {
  std::string text;
  for (size_t i = 0; i < quoted.size(); ++i) {
    if (quoted[i] == '\\' && i + 1 < quoted.size() && (quoted[i + 1] == '"' || quoted[i + 1] == '\\')) ++i;
    text += quoted[i];
  }
  return text;
}

TEST_F(ScriptValue, RandomTextsComeBackWhole) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  load(0, "OPEN");
  constexpr char kMarker[] = " set SSID=\"";
  for (int round = 0; round < 2000; ++round) {
    std::string value(1 + random() % 149, 'x');
    for (char& c : value) c = "\"\\\\\"ab #'"[random() % 9];
    dat::put(0, 1, "SSID1", value);
    const std::string text = written(0, 0);
    const size_t start = text.rfind(kMarker) + sizeof kMarker - 1;
    ASSERT_EQ("\"\n", text.substr(text.size() - 2));
    const std::string quoted = text.substr(start, text.size() - 2 - start);
    ASSERT_LE(quoted.size(), 159U);
    const std::string back = unescaped(quoted);
    ASSERT_EQ(value.substr(0, back.size()), back);
    // Cut only where not one more would have fitted.
    if (back.size() < value.size()) {
      const char next = value[back.size()];
      ASSERT_GT(quoted.size() + (next == '"' || next == '\\' ? 2 : 1), 159U);
    }
  }
}

}  // namespace

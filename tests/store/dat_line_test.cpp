// How one line of a dat file becomes an attribute.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Fields = std::vector<std::string>;

struct Parsed {
  int result;
  std::string key;
  Fields fields;
};

Parsed parse(const std::string& line) {
  std::vector<char> text(line.c_str(), line.c_str() + line.size() + 1);
  wifimgr_attr_record record = {};
  Parsed parsed{parse_data_from_line(text.data(), &record), record.key, {}};
  for (const auto& field : record.field) {
    if (field[0] == '\0') break;
    parsed.fields.emplace_back(field);
  }
  EXPECT_EQ(line, text.data()) << "the line was changed";
  return parsed;
}

TEST(DatLine, IsSplitIntoKeyAndFields) {
  const struct {
    const char* line;
    const char* key;
    Fields fields;
  } rows[] = {
      {"Channel=6\n", "Channel", {"6\n"}},
      {"Channel=6", "Channel", {"6"}},
      {"Key=a;b;c\n", "Key", {"a", "b", "c\n"}},
      {"Key=a;;b\n", "Key", {"a", "b\n"}},
      {"Key=;a\n", "Key", {"a\n"}},
      {"Key=;;;a;;;b\n", "Key", {"a", "b\n"}},
      {"Key=a;\n", "Key", {"a"}},
      {"Key=a;", "Key", {"a"}},
      {"Key=a;;\n", "Key", {"a"}},
      {"Key=;\n", "Key", {}},
      {"Key=;;;\n", "Key", {}},
      {"Key=\n", "Key", {}},
      {"Key=", "Key", {}},
      {"Key=1;2;3;4;5;6;7;8\n", "Key", {"1", "2", "3", "4", "5", "6", "7", "8\n"}},
      {"Key=1;2;3;4;5;6;7;8;\n", "Key", {"1", "2", "3", "4", "5", "6", "7", "8"}},
      {"Key=1;2;3;4;5;6;7;8;9;10\n", "Key", {"1", "2", "3", "4", "5", "6", "7", "8"}},
      {"Key=x=y\n", "Key", {"x"}},
      {"Key=a;x=y;z\n", "Key", {"a", "x"}},
      {"Key==y\n", "Key", {}},
      {" Key = a b \n", " Key ", {" a b \n"}},
      {"Key=a #b\n", "Key", {"a #b\n"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.line);
    const Parsed parsed = parse(row.line);
    EXPECT_EQ(0, parsed.result);
    EXPECT_EQ(row.key, parsed.key);
    EXPECT_THAT(parsed.fields, ElementsAreArray(row.fields));
  }
}

TEST(DatLine, KeepsTheCarriageReturnOfAField) {
  EXPECT_THAT(parse("Channel=6\r\n").fields, ElementsAre("6\r\n"));
  EXPECT_THAT(parse("Key=a;b\r\n").fields, ElementsAre("a", "b\r\n"));
  EXPECT_THAT(parse("Key=\r\n").fields, ElementsAre("\r\n"));
}

TEST(DatLine, WithoutAnEqualsSignIsAKeyWithItsLineEnd) {
  EXPECT_EQ("Channel\n", parse("Channel\n").key);
  EXPECT_THAT(parse("Channel\n").fields, IsEmpty());
  EXPECT_EQ("\r\n", parse("\r\n").key);
  EXPECT_EQ("Default\r\n", parse("Default\r\n").key);
}

TEST(DatLine, BeginningWithAnEqualsSignIsAnAttributeWithoutAKey) {
  for (const char* line : {"=6\n", "=\n", "=a=b\n"}) {
    SCOPED_TRACE(line);
    const Parsed parsed = parse(line);
    EXPECT_EQ(0, parsed.result);
    EXPECT_EQ("", parsed.key);
    EXPECT_THAT(parsed.fields, IsEmpty());
  }
}

TEST(DatLine, CutsTheKeyTo35Characters) {
  EXPECT_EQ(std::string(34, 'k'), parse(std::string(34, 'k') + "=a\n").key);
  EXPECT_EQ(std::string(35, 'k'), parse(std::string(35, 'k') + "=a\n").key);
  EXPECT_EQ(std::string(35, 'k'), parse(std::string(36, 'k') + "=a\n").key);
  EXPECT_EQ(std::string(35, 'k'), parse(std::string(185, 'k')).key);
  EXPECT_THAT(parse(std::string(36, 'k') + "=a\n").fields, ElementsAre("a\n"));
}

TEST(DatLine, CutsAFieldTo149Characters) {
  EXPECT_THAT(parse("K=" + std::string(149, 'v')).fields, ElementsAre(std::string(149, 'v')));
  EXPECT_THAT(parse("K=" + std::string(150, 'v')).fields, ElementsAre(std::string(149, 'v')));
  EXPECT_THAT(parse("K=" + std::string(183, 'v')).fields, ElementsAre(std::string(149, 'v')));
  EXPECT_THAT(parse("K=a;" + std::string(160, 'v') + ";b\n").fields, ElementsAre("a", std::string(149, 'v'), "b\n"));
  EXPECT_THAT(parse("WdsList=" + std::string(160, 'v') + "\n").fields, ElementsAre(std::string(149, 'v')));
}

TEST(DatLine, ValueEndsAfter185Characters) {
  const std::string first(100, 'a');
  EXPECT_THAT(parse("K=" + first + ";" + std::string(84, 'b')).fields, ElementsAre(first, std::string(84, 'b')));
  EXPECT_THAT(parse("K=" + first + ";" + std::string(85, 'b')).fields, ElementsAre(first, std::string(84, 'b')));
}

TEST(DatLine, CommentIsNoAttribute) {
  for (const char* line : {"#\n", "#", "#Channel=6\n", "##\n"}) EXPECT_EQ(1, parse(line).result) << line;
  EXPECT_EQ(0, parse(" #Channel=6\n").result);
}

TEST(DatLine, PrefixOfDefaultIsNoAttribute) {
  for (const char* line :
       {"Default\n", "Defaul\n", "Def\n", "D\n", "\n", "Default", "DefaultX", "DefX", "D", "X", ""}) {
    EXPECT_EQ(1, parse(line).result) << line;
  }
  for (const char* line : {"Defaults\n", "Default=1\n", "default\n", "Dex\n", "Default \n", "XY"}) {
    EXPECT_EQ(0, parse(line).result) << line;
  }
}

TEST(DatLine, ThatIsNoAttributeLeavesTheRecordAlone) {
  for (const char* line : {"#Channel=6\n", "Default\n", "\n", ""}) {
    wifimgr_attr_record record;
    std::memset(&record, 0x5a, sizeof record);
    const std::string before(reinterpret_cast<const char*>(&record), sizeof record);
    std::string text = line;
    EXPECT_EQ(1, parse_data_from_line(text.data(), &record));
    EXPECT_EQ(before, std::string(reinterpret_cast<const char*>(&record), sizeof record)) << line;
  }
}

TEST(DatLine, SaysWhyItIsNoAttribute) {
  EXPECT_THAT(seams::trace_of([] { parse("#x\n"); }),
              ElementsAre("[parse_data_from_line]:===Enter===\n",
                          "[parse_data_from_line]:===Debug Exit===This is a comment, and do not need to parse.\n"));
  for (const char* line : {"Default\n", "Def\n", "\n"}) {
    EXPECT_THAT(
        seams::trace_of([&] { parse(line); }),
        ElementsAre("[parse_data_from_line]:===Enter===\n",
                    "[parse_data_from_line]:===Debug Exit===This is a \"Default\", and do not need to parse.\n"));
  }
  EXPECT_THAT(seams::trace_of([] { parse("#x\n"), parse("Default\n"), parse("\n"); }, 7), IsEmpty());
}

TEST(DatLine, TracesItsSuccess) {
  EXPECT_THAT(seams::trace_of([] { parse("Channel=6\n"); }),
              ElementsAre("[parse_data_from_line]:===Enter===\n", "[parse_data_from_line]:===Success Exit===\n"));
}

TEST(DatLine, NullIsAFailure) {
  wifimgr_attr_record record = {};
  char line[] = "Channel=6\n";
  EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1, parse_data_from_line(nullptr, &record)); }),
              ElementsAre("[parse_data_from_line]:===Enter===\n", "[parse_data_from_line]:===Fail Exit===\n"));
  EXPECT_EQ(1, parse_data_from_line(line, nullptr));
  EXPECT_EQ('\0', record.key[0]);
}

}  // namespace

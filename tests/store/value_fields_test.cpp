// How a value is cut into fields, and which values stay whole.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/sandbox.h"

namespace {

using testing::ElementsAreArray;

constexpr const char* kWholeValueKeys[] = {"APAifsn",   "APCwmin",  "APCwmax",       "APTxop",    "APACM",
                                           "BSSAifsn",  "BSSCwmin", "BSSCwmax",      "BSSTxop",   "BSSACM",
                                           "AckPolicy", "WdsList",  "WdsEncrypType", "WdsPhyMode"};

struct Split {
  unsigned count = 77;
  std::vector<std::string> fields;
};

Split split(const char* key, std::string value) {
  Split result;
  char unused = 0;
  char* fields[8];
  for (char*& field : fields) field = &unused;
  EXPECT_EQ(0, attr_value_parser(key, value.data(), &result.count, fields));
  for (char* field : fields) {
    if (field != &unused) result.fields.emplace_back(field);
  }
  return result;
}

TEST(ValueFields, AreCountedAndPointedAt) {
  const struct {
    const char* value;
    unsigned count;
    std::vector<std::string> fields;
  } rows[] = {
      {"", 1, {}},
      {"\n", 1, {}},
      {";", 1, {}},
      {";;;\n", 1, {}},
      {"6\n", 1, {"6\n"}},
      {"a;\n", 1, {"a"}},
      {";a\n", 1, {"a\n"}},
      {"a;b\n", 2, {"a", "b\n"}},
      {"a;;b", 2, {"a", "b"}},
      {"a;b;;;", 2, {"a", "b"}},
      {"a\nb;c\n", 1, {"a\nb;c\n"}},
      {"1;2;3;4;5;6;7;8\n", 8, {"1", "2", "3", "4", "5", "6", "7", "8\n"}},
      {"1;2;3;4;5;6;7;8;9\n", 8, {"1", "2", "3", "4", "5", "6", "7", "8"}},
      {";;1;;2;3;4;5;6;7;8;9;10\n", 8, {"1", "2", "3", "4", "5", "6", "7", "8"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.value);
    const Split result = split("Key", row.value);
    EXPECT_EQ(row.count, result.count);
    EXPECT_THAT(result.fields, ElementsAreArray(row.fields));
  }
}

TEST(ValueFields, OfTheWholeValueKeysAreOneWithoutItsLineEnd) {
  for (const char* key : kWholeValueKeys) {
    SCOPED_TRACE(key);
    const Split result = split(key, "3;7;1;1\n");
    EXPECT_EQ(1U, result.count);
    EXPECT_THAT(result.fields, ElementsAreArray({"3;7;1;1"}));
    EXPECT_THAT(split(key, "3;7;1;1\r\n").fields, ElementsAreArray({"3;7;1;1"}));
    EXPECT_THAT(split(key, "3;;1").fields, ElementsAreArray({"3;;1"}));
  }
}

TEST(ValueFields, OfTheWholeValueKeysMatchByPrefix) {
  for (const char* key : kWholeValueKeys) {
    SCOPED_TRACE(key);
    EXPECT_THAT(split((std::string(key) + "X").c_str(), "a;b\n").fields, ElementsAreArray({"a;b"}));
    std::string shorter = key;
    shorter.pop_back();
    EXPECT_THAT(split(shorter.c_str(), "a;b\n").fields, ElementsAreArray({"a", "b\n"}));
    EXPECT_THAT(split((std::string("X") + key).c_str(), "a;b\n").fields, ElementsAreArray({"a", "b\n"}));
  }
}

TEST(ValueFields, OfOtherWdsAndWmmKeysAreSplit) {
  for (const char* key : {"WdsEnable", "WdsKey", "Wds0Key", "WmmCapable", "HT_TxStream", "apaifsn", "APSDCapable"}) {
    EXPECT_THAT(split(key, "a;b\n").fields, ElementsAreArray({"a", "b\n"})) << key;
  }
}

TEST(ValueFields, OfAVeryShortWholeValueKeepTheirLineEnd) {
  EXPECT_THAT(split("WdsList", "\n").fields, ElementsAreArray({"\n"}));
  EXPECT_THAT(split("APACM", "0\n").fields, ElementsAreArray({"0\n"}));
  EXPECT_THAT(split("APACM", "\r\n").fields, ElementsAreArray({"\r\n"}));
  EXPECT_THAT(split("APACM", "10\n").fields, ElementsAreArray({"10"}));
  EXPECT_THAT(split("APACM", "0\r\n").fields, ElementsAreArray({"0"}));
  EXPECT_THAT(split("APACM", "").fields, ElementsAreArray({""}));
}

TEST(ValueFields, MayBeLongerThanALine) {
  const std::string value(1000, 'v');
  EXPECT_THAT(split("WdsList", value + "\n").fields, ElementsAreArray({value}));
  EXPECT_THAT(split("Key", value + ";b\n").fields, ElementsAreArray({value, std::string("b\n")}));
}

TEST(ValueFields, NullIsAFailureThatTouchesNothing) {
  char value[] = "a;b";
  unsigned count = 77;
  char* fields[8] = {};
  EXPECT_EQ(1, attr_value_parser(nullptr, value, &count, fields));
  EXPECT_EQ(1, attr_value_parser("Key", nullptr, &count, fields));
  EXPECT_EQ(1, attr_value_parser("Key", value, nullptr, fields));
  EXPECT_EQ(1, attr_value_parser("Key", value, &count, nullptr));
  EXPECT_EQ(77U, count);
  EXPECT_EQ(nullptr, fields[0]);
  EXPECT_STREQ("a;b", value);
}

}  // namespace

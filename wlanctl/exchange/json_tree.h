// A JSON text as a tree that knows its lines. The one file behind this pays for the JSON parser.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace wlanctl {

struct JsonMember;

struct JsonNode {
  enum class Kind { kNull, kTruth, kWhole, kFraction, kText, kArray, kObject };
  Kind kind = Kind::kNull;
  int line = 1;
  std::string text;  // of a text; a whole number's digits
  std::vector<JsonMember> members;

  const char* word() const;  // "a text"
};

// A name may come twice: they are in the order of the text.
struct JsonMember {
  std::string name;
  int line = 1;
  JsonNode node;
};

struct JsonText {
  JsonNode root;
  std::string error;  // why it is none; "" when it is one
  int error_line = 1;
};

// What is in arrays is left out. Deeper than `depth` objects and arrays it is an error.
JsonText parse_json(const std::string& bytes, size_t depth);

}  // namespace wlanctl

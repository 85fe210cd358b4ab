#include "wlanctl/base/json_print.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "wlanctl/base/json.h"

namespace wlanctl {
namespace {

using Document = nlohmann::ordered_json;

Document document_of(const Json& value) {
  switch (value.kind()) {
    case Json::Kind::kNull:
      break;
    case Json::Kind::kTruth:
      return value.number() != 0;
    case Json::Kind::kNumber:
      return value.number();
    case Json::Kind::kText:
      return value.text();
    case Json::Kind::kArray: {
      Document array = Document::array();
      for (const Json& item : value.items()) array.push_back(document_of(item));
      return array;
    }
    case Json::Kind::kObject: {
      Document object = Document::object();
      for (size_t i = 0; i < value.names().size(); ++i) object[value.names()[i]] = document_of(value.items()[i]);
      return object;
    }
  }
  return nullptr;
}

// The control characters that JSON allows in a text and a terminal acts on: DEL, and those of the second block, which
// come as two bytes.
std::string without_controls(const std::string& document) {
  std::string text;
  char escape[sizeof "\\u0000"];
  for (size_t at = 0; at < document.size(); ++at) {
    const auto byte = static_cast<unsigned char>(document[at]);
    const auto next = static_cast<unsigned char>(at + 1 < document.size() ? document[at + 1] : ' ');
    const bool is_second_block = byte == 0xc2 && next < 0xa0;
    if (byte != 0x7f && !is_second_block) {
      text += document[at];
      continue;
    }
    (void)std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(is_second_block ? next : byte));
    text += escape;
    if (is_second_block) ++at;
  }
  return text;
}

}  // namespace

std::string printed(const Json& value, Layout layout) {
  constexpr int kNoLineEnds = -1;
  constexpr int kColumnsPerLevel = 2;
  const int indentation = layout == Layout::kIndented ? kColumnsPerLevel : kNoLineEnds;
  return without_controls(document_of(value).dump(indentation, ' ', false, Document::error_handler_t::replace));
}

}  // namespace wlanctl

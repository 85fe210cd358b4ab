#include "wlanctl/base/json_print.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "wlanctl/base/json.h"
#include "wlanctl/base/utf8.h"

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

// JSON allows all control characters in a text but those of the first block, which end its own lines.
std::string without_controls(const std::string& document) {
  std::string text;
  char escape[sizeof "\\u0000"];
  for (size_t at = 0; at < document.size();) {
    const size_t length = static_cast<unsigned char>(document[at]) < ' ' ? 0 : length_of_control(document, at);
    if (length == 0) {
      text += document[at++];
      continue;
    }
    (void)std::snprintf(escape, sizeof escape, "\\u%04x", number_of_character(document, at, length));
    text += escape;
    at += length;
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

#include "wlanctl/base/json_print.h"

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

}  // namespace

std::string printed(const Json& value, Layout layout) {
  constexpr int kNoLineEnds = -1;
  constexpr int kColumnsPerLevel = 2;
  const int indentation = layout == Layout::kIndented ? kColumnsPerLevel : kNoLineEnds;
  return document_of(value).dump(indentation, ' ', false, Document::error_handler_t::replace);
}

}  // namespace wlanctl

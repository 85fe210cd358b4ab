#include "wlanctl/json_value.h"

namespace wlanctl {

Json json_value(const Key& key, const std::string& value) {
  if (key.holds_numbers() && !value.empty() && value.size() < 16 &&
      value.find_first_not_of("0123456789") == std::string::npos) {
    return std::stoll(value);
  }
  return json_text(value);
}

}  // namespace wlanctl

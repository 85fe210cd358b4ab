#include "wlanctl/keys/json_value.h"

namespace wlanctl {

Json json_value(const Key& key, const std::string& value) {
  if (key.holds_numbers() && !value.empty() && value.size() < 16 &&
      value.find_first_not_of("0123456789") == std::string::npos) {
    return std::stoll(value);
  }
  return Json(value);
}

Json json_value(const std::string& dat_key, const std::string& value) {
  int index = 0;
  const Key* const key = find_dat_key(dat_key, &index);
  return key == nullptr ? Json(value) : json_value(*key, value);
}

}  // namespace wlanctl

#include "wlanctl/base/json.h"

#include <algorithm>

namespace wlanctl {

Json::Json() = default;
Json::Json(std::nullptr_t) {}
Json::Json(Kind kind) : kind_(kind) {}
Json::Json(bool truth) : kind_(Kind::kTruth), number_(truth ? 1 : 0) {}
Json::Json(int number) : Json(static_cast<long long>(number)) {}
Json::Json(unsigned number) : Json(static_cast<long long>(number)) {}
Json::Json(long number) : Json(static_cast<long long>(number)) {}
Json::Json(unsigned long number) : Json(static_cast<long long>(number)) {}
Json::Json(unsigned long long number) : Json(static_cast<long long>(number)) {}
Json::Json(long long number) : kind_(Kind::kNumber), number_(number) {}
Json::Json(const char* text) : kind_(Kind::kText), text_(text) {}
Json::Json(const std::string& text) : kind_(Kind::kText), text_(text) {}
Json::Json(const std::vector<std::string>& texts) : kind_(Kind::kArray), items_(texts.begin(), texts.end()) {}

Json::Json(std::initializer_list<Member> members) : kind_(Kind::kObject) {
  for (const Member& member : members) (*this)[member.name] = member.value;
}

Json::Json(const Json& other) = default;
Json::Json(Json&& other) noexcept = default;
Json& Json::operator=(const Json& other) = default;
Json& Json::operator=(Json&& other) noexcept = default;
Json::~Json() = default;

Json Json::array() {
  return Json(Kind::kArray);
}

Json Json::object() {
  return Json(Kind::kObject);
}

Json& Json::operator[](const std::string& name) {
  kind_ = Kind::kObject;
  const auto found = std::find(names_.begin(), names_.end(), name);
  if (found != names_.end()) return items_[static_cast<size_t>(found - names_.begin())];
  names_.push_back(name);
  return items_.emplace_back();
}

void Json::update(const Json& other) {
  for (size_t i = 0; i < other.names_.size(); ++i) (*this)[other.names_[i]] = other.items_[i];
}

void Json::push_back(Json item) {
  kind_ = Kind::kArray;
  items_.push_back(std::move(item));
}

}  // namespace wlanctl

// A JSON value to be filled: a document is made of these, and printed by json_print.h. Braces make objects, as in
// {{"band", "5g"}, {"ssid", 1}}, whose members keep their order.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace wlanctl {

class Json {
 public:
  enum class Kind { kNull, kTruth, kNumber, kText, kArray, kObject };
  struct Member;

  Json();  // null
  Json(std::nullptr_t);
  Json(bool truth);
  Json(int number);
  Json(unsigned number);
  Json(long number);
  Json(unsigned long number);
  Json(long long number);
  Json(unsigned long long number);
  Json(const char* text);
  // Bytes that are no UTF-8 are replaced when it is printed.
  Json(const std::string& text);
  Json(const std::vector<std::string>& texts);
  Json(std::initializer_list<Member> members);
  Json(const Json& other);
  Json(Json&& other) noexcept;
  Json& operator=(const Json& other);
  Json& operator=(Json&& other) noexcept;
  ~Json();

  static Json array();
  static Json object();

  // The member of that name, which comes into being where there is none; null becomes an object.
  Json& operator[](const std::string& name);

  // Sets all members of the other object.
  void update(const Json& other);

  // Null becomes an array.
  void push_back(Json item);

  // Of an array or an object.
  bool empty() const { return items_.empty(); }

  Kind kind() const { return kind_; }
  int64_t number() const { return number_; }  // 0 or 1 for a truth
  const std::string& text() const { return text_; }
  const std::vector<Json>& items() const { return items_; }         // of an array, or an object's values
  const std::vector<std::string>& names() const { return names_; }  // of an object

 private:
  explicit Json(Kind kind);

  Kind kind_ = Kind::kNull;
  int64_t number_ = 0;
  std::string text_;
  std::vector<Json> items_;
  std::vector<std::string> names_;
};

struct Json::Member {
  const char* name;
  Json value;
};

// Of a place that may be empty.
template <typename Value>
Json json_or_null(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

}  // namespace wlanctl

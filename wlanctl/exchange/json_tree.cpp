#include "wlanctl/exchange/json_tree.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <nlohmann/json.hpp>

namespace wlanctl {
namespace {

// How far the parser has read, which it does a character at a time.
struct Progress {
  int lines = 0;  // whole ones
  char last = '\0';
};

// The bytes, for the parser; it counts the lines as they go.
class CountingIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CountingIterator(const char* at, Progress* progress) : at_(at), progress_(progress) {}
  reference operator*() const { return *at_; }
  CountingIterator& operator++() {
    progress_->last = *at_;
    if (*at_ == '\n') ++progress_->lines;
    ++at_;
    return *this;
  }
  bool operator!=(const CountingIterator& other) const { return at_ != other.at_; }

 private:
  const char* at_;
  Progress* progress_;
};

// What the parser found, without the words in front that say where it was, and without the text that it read, which may be
// a passphrase: "unexpected end of input, where ',' or '}' is expected".
std::string reason_in(const std::string& message) {
  const auto behind = [](const std::string& text, const char* mark) {
    const size_t at = text.find(mark);
    return at == std::string::npos ? text : text.substr(at + std::strlen(mark));
  };
  std::string reason = behind(behind(message, ": "), " - ");
  const std::string expected = behind(reason, "; expected ");
  reason.resize(std::min({reason.find("; last read"), reason.find("; expected"), reason.size()}));
  if (message.find("; expected ") != std::string::npos) reason += ", where " + expected + " is expected";
  return reason;
}

class Builder {
 public:
  Builder(const Progress& progress, size_t depth, JsonText* text) : progress_(progress), depth_(depth), text_(text) {}

  bool null() { return add(JsonNode::Kind::kNull, ""); }
  bool boolean(bool /*truth*/) { return add(JsonNode::Kind::kTruth, ""); }
  bool number_integer(std::int64_t number) { return add(JsonNode::Kind::kWhole, std::to_string(number)); }
  bool number_unsigned(std::uint64_t number) { return add(JsonNode::Kind::kWhole, std::to_string(number)); }
  bool number_float(double /*number*/, const std::string& /*digits*/) { return add(JsonNode::Kind::kFraction, ""); }
  bool string(std::string& value) { return add(JsonNode::Kind::kText, value); }
  bool binary(std::vector<std::uint8_t>& /*bytes*/) { return false; }

  bool key(std::string& name) {
    name_ = name;
    name_line_ = line();
    return true;
  }

  bool start_object(std::size_t /*count*/) { return open(JsonNode::Kind::kObject); }
  bool start_array(std::size_t /*count*/) { return open(JsonNode::Kind::kArray); }
  bool end_object() { return close(); }
  bool end_array() { return close(); }

  bool parse_error(std::size_t /*at*/, const std::string& /*token*/, const nlohmann::detail::exception& error) {
    return fail(reason_in(error.what()));
  }

 private:
  // The character behind a number is read with it; a text and a brace end with what was read last.
  int line() const { return 1 + progress_.lines - (progress_.last == '\n' ? 1 : 0); }

  bool fail(const std::string& error) {
    text_->error = error;
    text_->error_line = line();
    return false;
  }

  bool add(JsonNode::Kind kind, const std::string& value) {
    JsonNode node;
    node.kind = kind;
    node.line = line();
    node.text = value;
    if (open_.empty()) {
      text_->root = std::move(node);
    } else if (open_.back().kind == JsonNode::Kind::kObject) {
      open_.back().members.push_back({name_, name_line_, std::move(node)});
    }
    return true;
  }

  bool open(JsonNode::Kind kind) {
    if (open_.size() >= depth_) return fail("it is nested deeper than settings are");
    JsonNode node;
    node.kind = kind;
    node.line = line();
    open_.push_back(std::move(node));
    names_.push_back({name_, name_line_, {}});
    return true;
  }

  bool close() {
    JsonNode node = std::move(open_.back());
    open_.pop_back();
    JsonMember member = std::move(names_.back());
    names_.pop_back();
    if (open_.empty()) {
      text_->root = std::move(node);
    } else if (open_.back().kind == JsonNode::Kind::kObject) {
      member.node = std::move(node);
      open_.back().members.push_back(std::move(member));
    }
    return true;
  }

  const Progress& progress_;
  size_t depth_;
  JsonText* text_;
  std::vector<JsonNode> open_;
  std::vector<JsonMember> names_;  // of those open
  std::string name_;
  int name_line_ = 1;
};

}  // namespace

const char* JsonNode::word() const {
  switch (kind) {
    case Kind::kNull:
      return "null";
    case Kind::kTruth:
      return "true or false";
    case Kind::kWhole:
      return "a number";
    case Kind::kFraction:
      return "a number that is not whole or too large";
    case Kind::kText:
      return "a text";
    case Kind::kArray:
      return "an array";
    case Kind::kObject:
      return "an object";
  }
  return "";
}

JsonText parse_json(const std::string& bytes, size_t depth) {
  JsonText text;
  Progress progress;
  Builder builder(progress, depth, &text);
  const CountingIterator begin(bytes.data(), &progress);
  const CountingIterator end(bytes.data() + bytes.size(), &progress);
  const bool is_one = nlohmann::json::sax_parse(begin, end, &builder);
  if (!is_one && text.error.empty()) text.error = "it is no JSON";
  return text;
}

}  // namespace wlanctl

// What the tests of the settings share: values for a rule, a store in which no two values are alike, and its image.
#pragma once

#include <string>
#include <vector>

#include "wifimgr_lib.h"

namespace settings {

// What a setter must take and what it must refuse.
struct Values {
  std::vector<std::string> accepted;
  std::vector<std::string> refused;
};

// Digits only and both bounds within, the empty text being 0.
Values number(long lowest, long highest);
Values digits();
Values any_text();
Values address();
Values text_of(size_t fewest, size_t most);

std::string repeat(const std::string& text, int count);

// Four values joined by a separator: `part` at one place, "1" at the others.
std::string list_with(int place, const std::string& part, char separator);

// Loads both bands with a text in which no two fields are alike; every key has eight, except BssidNum and ReloadFlag.
void load_distinct(const std::string& ssid_count = "8");

// Loads both bands with the full dat text, without one key.
void load_without(const std::string& key);

// Loads both bands with the full dat text, one key having another value.
void load_with(const std::string& key, const std::string& value);

// Both bands' segments: taken at construction, changed as the test expects the store to change.
class Image {
 public:
  Image();
  void set(int band, const std::string& key, int field, const std::string& value);
  // "" when both segments are as this image, else the first key that is not.
  std::string difference() const;

 private:
  std::string bytes_[2];
};

// The messages of one function.
std::vector<std::string> own_lines(const std::string& function, const std::vector<std::string>& lines);

std::string entered(const std::string& function);
std::string succeeded(const std::string& function);
std::string failed(const std::string& function, const std::string& why = "");

// A caller's buffer, filled with 'Z' to show what was written.
struct Buffer {
  Buffer();
  std::string text() const;
  std::string rest(size_t from) const;  // from a position to the end, as it is
  bool is_untouched() const;
  char bytes[WIFIMGR_VALUE_SIZE];
};

}  // namespace settings

// Dat texts with more than one change, and changes of a loaded store.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/sandbox.h"

namespace dat {

// The text with this key's line replaced by "key=value".
inline std::string with(const std::string& text, const std::string& key, const std::string& value) {
  const size_t start = ("\n" + text).find("\n" + key + "=");
  EXPECT_NE(std::string::npos, start) << key;
  if (start == std::string::npos) return text;
  return text.substr(0, start) + key + "=" + value + text.substr(text.find('\n', start));
}

// Loads the band's full text with some lines replaced.
inline void load(int band, std::initializer_list<std::pair<const char*, const char*>> changes) {
  std::string text = sandbox::full_dat(band);
  for (const auto& [key, value] : changes) text = with(text, key, value);
  sandbox::load(band, text);
}

// Loads the text into the store whether it has a BssidNum or not.
inline void load_text(int band, const std::string& text) {
  sandbox::write_file(sandbox::dat_path(band), text);
  ASSERT_EQ(0, creat_shm_from_datafile(band));
}

// Changes a loaded value past every check of its setter.
inline void put(int band, int index, const std::string& key, const std::string& value) {
  ASSERT_EQ(0, update_attr(band, index, key.c_str(), value.c_str())) << key;
}

}  // namespace dat

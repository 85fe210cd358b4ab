#include "kept_texts.h"

#include <cstdlib>
#include <cstring>

namespace box_test {

Texts& texts() {
  static Texts kept;
  return kept;
}

std::string taken(char* text) {
  const std::string copy = text == nullptr ? "(none)" : text;
  std::free(text);
  return copy;
}

std::string setting(const std::string& interface, const char* key) {
  return taken(plain_setting(texts()[{DRIVER_SETTINGS, interface}].c_str(), key));
}

void start_two() {
  texts().clear();
  start_radio(0, kDat, 2);
}

}  // namespace box_test

using box_test::texts;

extern "C" char* read_state(const char* folder, const char* name) {
  const auto found = texts().find({folder, name});
  return found == texts().end() ? nullptr : strdup(found->second.c_str());
}

extern "C" char* read_radio_list(const char* kind, const char* radio) {
  return read_state(DRIVER_LISTS, (std::string(kind) + "-" + radio).c_str());
}

extern "C" int store_state(const char* folder, const char* name, const char* text) {
  texts()[{folder, name}] = text;
  return 0;
}

extern "C" uint32_t random_number() {
  static uint32_t number = 1234567;
  return number++;
}

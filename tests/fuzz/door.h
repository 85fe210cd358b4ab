// What all fuzz doors share; library_stand.h and tool_stand.h have what those of the library and of the tool do. A door takes any bytes, puts them where a hostile file, driver, process or caller could, and
// ends the process when a rule of the contract is broken; the sanitizers look after memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

#define DOOR(name, stand, about) void try_##name(std::string_view input);
#include "fuzz/doors.def"
#undef DOOR

// No row of that list: finds something in every input.
void try_broken(std::string_view input);

// Says which rule is broken and ends the process.
void require(bool holds, const char* rule);

// Once per process, in namespaces of its own: the folders that the library's own paths lead to.
void prepare();

// Before each input: no store, no lock, nothing recorded. Each stand has its own.
void forget();

// Runs what prints without printing it.
template <typename Run>
void quietly(Run run);

// Takes an input apart from its beginning.
class Bytes {
 public:
  explicit Bytes(std::string_view input) : rest_(input) {}
  bool is_empty() const { return rest_.empty(); }
  uint8_t byte() {
    if (rest_.empty()) return 0;
    const uint8_t first = static_cast<uint8_t>(rest_[0]);
    rest_.remove_prefix(1);
    return first;
  }
  // Up to and without the next NUL, or the rest.
  std::string text() {
    const size_t end = rest_.find('\0');
    std::string found(rest_.substr(0, end));
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    return found;
  }
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

class Silence {
 public:
  Silence();
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;
  ~Silence();

 private:
  int saved_;
};

template <typename Run>
void quietly(Run run) {
  const Silence silence;
  run();
}

}  // namespace fuzz

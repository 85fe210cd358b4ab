// What a hostile or careless caller hands to a function, by the type and the name of each parameter.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "wifimgr_lib.h"

namespace sweep {

inline constexpr size_t kMostParameters = 6;

// One call's choices: which of its values each parameter takes.
struct Call {
  std::array<const char*, kMostParameters> names;  // of the parameters, null behind the last
  std::array<unsigned, kMostParameters> choices;
};

// Memory that ends where a page without access begins. Each parameter has its own.
char* room_before_guard(size_t parameter, size_t size);
inline constexpr size_t kMostRoom = 32768;

const std::vector<std::string>& texts();
const char* text_before_guard(const char* name, size_t text);

bool is_size(const Call& call, size_t parameter);
bool is_band(const char* name);
const std::vector<long long>& numbers(const Call& call, size_t parameter);

// How many bytes a caller's buffer has: what the call says it has, where it does.
size_t size_of_buffers(const Call& call);

// The contents of a buffer before the call.
enum class Content { kZeroes, kGarbage, kText };
inline constexpr unsigned kContents = 3;
char* filled(size_t parameter, size_t size, Content content);

// So many commands are run, and a caller vouches for the number.
void bound_counts(char* restart_request);

// The address of the store as an exported pointer tells it: null or a band's segment.
char* segment(unsigned choice);

template <typename T>
unsigned values_of(const Call& call, size_t parameter) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<unsigned>(numbers(call, parameter).size());
  } else if constexpr (std::is_same_v<T, const char*>) {
    return static_cast<unsigned>(texts().size()) + 1;
  } else if constexpr (std::is_same_v<T, char**>) {
    return 2;
  } else {
    return kContents + 1;
  }
}

template <typename T>
T value_of(const Call& call, size_t parameter) {
  const unsigned choice = call.choices[parameter];
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(numbers(call, parameter)[choice]);
  } else if constexpr (std::is_same_v<T, const char*>) {
    return choice == 0 ? nullptr : text_before_guard(call.names[parameter], choice - 1);
  } else if constexpr (std::is_same_v<T, char**>) {
    constexpr size_t kSize = WIFIMGR_FIELDS * sizeof(char*);
    return choice == 0 ? nullptr : reinterpret_cast<T>(filled(parameter, kSize, Content::kZeroes));
  } else {
    static_assert(std::is_pointer_v<T>);
    if (choice == 0) return nullptr;
    const Content content = static_cast<Content>(choice - 1);
    using Pointed = std::remove_cv_t<std::remove_pointer_t<T>>;
    if constexpr (std::is_same_v<T, char*>) {
      if (call.names[parameter] == std::string("segment")) return segment(choice);
    }
    // A record of the header ends where it ends; what is written row by row has room for every row.
    size_t size = size_of_buffers(call);
    if constexpr (std::is_class_v<Pointed> && !std::is_same_v<Pointed, wifimgr_key_setter>) size = sizeof(Pointed);
    char* const room = filled(parameter, size, content);
    if constexpr (std::is_same_v<Pointed, wifimgr_restart_request>) bound_counts(room);
    return reinterpret_cast<T>(room);
  }
}

}  // namespace sweep

// What an operator hands to the tool by name: a file, or what another program writes into a pipe.
#pragma once

#include <optional>
#include <string>

namespace wlanctl {

struct Input {
  std::optional<std::string> bytes;
  std::string reason;  // where there are none
};

enum class Until { kEnd, kLineEnd };

// A pipe is read to its end as long as somebody has it open for writing; one that nobody writes to is not waited for.
Input read_input(const std::string& path, Until until = Until::kEnd);

// Without its line end; none where there is nothing.
std::optional<std::string> first_line_of(const Input& input);

}  // namespace wlanctl

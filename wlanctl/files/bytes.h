// The bytes of files as they are.
#pragma once

#include <optional>
#include <string>

namespace wlanctl {

// None when it cannot be read, with errno: when it is no plain file, and when it has no end, too.
std::optional<std::string> read_bytes(const std::string& path);

// The same of an open file.
std::optional<std::string> read_open_file(int file);

// Writes them to an open file, all of them. False when that fails, with errno.
bool write_bytes(int file, const std::string& bytes);

// And has them on the disk. The file is closed in any case.
bool finish_file(int file, const std::string& bytes);

}  // namespace wlanctl

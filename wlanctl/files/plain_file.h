// Files that are nothing but files: whoever puts a pipe, a device or a file without an end into the place of one stops
// nobody.
#pragma once

#include <cstddef>
#include <string>

namespace wlanctl {

// Of a file that the tool reads: a dat file of both bands' largest has some 60 KiB, and what is read is held in memory
// several times, on a gateway that has little of it.
inline constexpr size_t kMostBytes = size_t{1} << 20;
inline constexpr char kTooLarge[] = "it is larger than 1 MiB";

// Opens it, without waiting for anybody; -1 with errno when it is no plain file, too.
int open_plain_file(const std::string& path, int flags, unsigned mode = 0);

// "it is a pipe, not a file"; "" of a plain file that can be read, and is not too large.
std::string reason_against_file(const std::string& path);

}  // namespace wlanctl

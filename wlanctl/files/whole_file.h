// Files of others that are replaced as a whole: who is killed in the middle, or loses the power, leaves the old bytes or
// the new ones.
#pragma once

#include <string>

namespace wlanctl {

// With the owner and the mode that it has. What is not replaced by renaming, such as a link, a mount, or a file in a
// folder without room for two, is written in place and so may be left cut. False with errno.
bool write_whole_file(const std::string& path, const std::string& bytes);

}  // namespace wlanctl

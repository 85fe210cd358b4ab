// The flash. A partition is a file; what was never written reads as erased flash does.
#pragma once

#include <string>

namespace gateway {

inline constexpr unsigned long kPartitionSize = 0x400000;

// The range must lie in the partition.
std::string read_flash(const std::string& partition, unsigned long offset, unsigned long length);
void write_flash(const std::string& partition, unsigned long offset, const std::string& content);

}  // namespace gateway

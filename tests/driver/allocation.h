// Stands in for the library's allocation of zeroed memory: records the sizes and runs out of memory on demand.
#pragma once

#include <cstddef>
#include <vector>

namespace allocation {

extern bool fails;
extern std::vector<size_t> sizes;

}  // namespace allocation

// What is measured: the library's works, and the limit of each.
#pragma once

namespace bench {

void register_works();

}  // namespace bench

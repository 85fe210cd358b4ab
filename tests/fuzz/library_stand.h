// What the doors of the library share: a store of its own in the door's namespaces, and the seams of the tests.
#pragma once

#include <string>
#include <string_view>

#include "fuzz/door.h"
#include "wifimgr_lib.h"

namespace fuzz {

// Loads a band anew as a fresh process would; returns what wifimgr_lib_init did.
int load(int band, std::string_view dat_text);

// The lock is free; every key and field ends.
void require_whole_store(int band);

// The keys of a band's segment, in their order.
std::string keys(int band);

}  // namespace fuzz

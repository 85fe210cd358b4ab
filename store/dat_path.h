// Where each band's dat file is.
#pragma once

#include "store/band.h"
#include "wifimgr_lib.h"

namespace store {

// With the path.
inline constexpr char kOpenFailed[] = "Open the file %s failed.";

// A terminated copy of the band's path buffer, which may hold 512 characters without a NUL.
struct DatPath {
  explicit DatPath(int band);
  char text[WIFIMGR_DAT_PATH_SIZE];
};

}  // namespace store

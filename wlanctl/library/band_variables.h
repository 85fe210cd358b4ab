// What the library keeps of each band in variables that are its callers' too.
#pragma once

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

// Where the band's store is in this process; null while it is not attached.
inline char*& address_of(Band band) {
  return band == Band::k2_4G ? shm_addr_2_4g : shm_addr_5g;
}

// The path of the band's dat file, in room for WIFIMGR_DAT_PATH_SIZE characters.
inline char* dat_path_variable(Band band) {
  return band == Band::k2_4G ? dat_path_2_4g : dat_path_5g;
}

}  // namespace wlanctl

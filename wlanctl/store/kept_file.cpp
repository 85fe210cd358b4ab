#include "wlanctl/store/kept_file.h"

#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"

namespace wlanctl {

std::string kept_path_of(Band band) {
  return std::string(place::kKept) + label_of(band);
}

bool keep_dat_bytes(Band band, const std::string& bytes) {
  return write_own_file(kept_path_of(band), bytes);
}

}  // namespace wlanctl

#include "wlanctl/store/private_store.h"

#include <algorithm>
#include <cstring>

#include "wlanctl/library/band_variables.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {

PrivateStore::PrivateStore(Band band) : band_(band), live_(address_of(band)), copy_(size_of_store(band)) {
  {
    const StoreLock lock(band);
    std::memcpy(copy_.data(), live_, copy_.size());
  }
  address_of(band) = copy_.data();
}

// As large as the segment at least: the library asks the system how much room there is.
PrivateStore::PrivateStore(Band band, const std::vector<wifimgr_attr_record>& content)
    : band_(band),
      live_(address_of(band)),
      copy_(std::max(size_of_store(band), (content.size() + 1) * sizeof(wifimgr_attr_record))) {
  if (!content.empty()) std::memcpy(copy_.data(), content.data(), content.size() * sizeof(wifimgr_attr_record));
  address_of(band) = copy_.data();
}

PrivateStore::~PrivateStore() {
  address_of(band_) = live_;
}

}  // namespace wlanctl

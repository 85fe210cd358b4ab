#include "wlanctl/store/private_store.h"

#include <algorithm>

#include "wlanctl/library/band_variables.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {

PrivateStore::PrivateStore(Band band) : band_(band), live_(address_of(band)) {
  const size_t size = size_of_store(band);
  copy_.reserve(size);
  {
    const StoreLock lock(band);
    copy_.assign(live_, live_ + size);
  }
  address_of(band) = copy_.data();
}

// As large as the segment at least: the library asks the system how much room there is.
PrivateStore::PrivateStore(Band band, const std::vector<wifimgr_attr_record>& content)
    : band_(band), live_(address_of(band)) {
  const size_t room = std::max(size_of_store(band), (content.size() + 1) * sizeof(wifimgr_attr_record));
  const char* const bytes = reinterpret_cast<const char*>(content.data());
  copy_.reserve(room);
  copy_.assign(bytes, bytes + content.size() * sizeof(wifimgr_attr_record));
  copy_.resize(room);
  address_of(band) = copy_.data();
}

PrivateStore::~PrivateStore() {
  address_of(band_) = live_;
}

}  // namespace wlanctl

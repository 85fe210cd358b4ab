// Private copies of a band's store.
#pragma once

#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

// Points the library at a private copy of the band's store while it lives; what is done then reaches nobody.
class PrivateStore {
 public:
  explicit PrivateStore(Band band);                                          // of the live store
  PrivateStore(Band band, const std::vector<wifimgr_attr_record>& content);  // of a dat file
  PrivateStore(const PrivateStore&) = delete;
  PrivateStore& operator=(const PrivateStore&) = delete;
  ~PrivateStore();

 private:
  Band band_;
  char* live_;
  std::vector<char> copy_;
};

}  // namespace wlanctl

// A band's segment to be read and nothing else: the library is not told of it, and the lock stays where it is.
#pragma once

#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

class SegmentView {
 public:
  explicit SegmentView(Band band) : band_(band) {}
  SegmentView(const SegmentView&) = delete;
  SegmentView& operator=(const SegmentView&) = delete;
  ~SegmentView() { detach(); }

  // The segment that is there now, which may be another than before. False with errno when none can be attached.
  bool attach();

  // Of the attached one.
  const char* bytes() const { return address_; }
  size_t size() const { return size_; }

  // A copy up to the table's end, as it is at this moment: somebody may be writing it.
  std::vector<wifimgr_attr_record> table() const;

 private:
  void detach();

  Band band_;
  int segment_ = -1;
  const char* address_ = nullptr;
  size_t size_ = 0;
};

}  // namespace wlanctl

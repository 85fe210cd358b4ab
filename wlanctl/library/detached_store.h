// A store of a band that the kernel knows nothing of.
//
// The library takes a band's lock and asks for its segment's room on every access, so a table alone is not enough: the
// tool stands in for semget, semop, shmget and shmctl, and answers them itself while such a store lives. Thereby the
// library's own setters can judge a file on a machine that has no store, and without making one.
#pragma once

#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

class DetachedStore {
 public:
  DetachedStore(Band band, const std::vector<wifimgr_attr_record>& content);
  DetachedStore(const DetachedStore&) = delete;
  DetachedStore& operator=(const DetachedStore&) = delete;
  ~DetachedStore();

  // Undoes what was changed in it.
  void restore() { table_ = content_; }

 private:
  Band band_;
  char* before_;
  std::vector<wifimgr_attr_record> content_;  // with an empty record at the end
  std::vector<wifimgr_attr_record> table_;
};

// While it lives, the library can make a segment, but not take one that is there: initialising would clear it.
class OnlyNewSegments {
 public:
  OnlyNewSegments();
  OnlyNewSegments(const OnlyNewSegments&) = delete;
  OnlyNewSegments& operator=(const OnlyNewSegments&) = delete;
  ~OnlyNewSegments();

  // Whether somebody else had made it by then.
  bool was_there() const;
};

}  // namespace wlanctl

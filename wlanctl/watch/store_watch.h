// The values of a band's live store, seen without taking its lock: a copy is compared with what lies there now.
#pragma once

#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"
#include "wlanctl/store/segment_view.h"
#include "wlanctl/watch/event.h"

namespace wlanctl {

class StoreWatch {
 public:
  explicit StoreWatch(Band band) : band_(band), view_(band) {}

  // Tells what differs from the last look. The first one only tells where there is no store.
  void look(Events& events);

  // As the store has it; "" where there is none.
  std::string ssid_name(int ssid) const;

 private:
  using Table = std::vector<wifimgr_attr_record>;

  bool settled_table(Table* table) const;
  void tell_store(const char* kind, const char* text, Events& events) const;
  void compare(const Table& now, Events& events) const;

  Band band_;
  SegmentView view_;
  bool is_first_ = true;
  bool is_told_missing_ = false;
  unsigned put_off_ = 0;
  Table table_;
};

}  // namespace wlanctl

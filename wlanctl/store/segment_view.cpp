#include "wlanctl/store/segment_view.h"

#include <sys/shm.h>

#include <cstring>

#include "wlanctl/store/segment.h"

namespace wlanctl {

bool SegmentView::attach() {
  const int segment = segment_of(band_);
  if (segment >= 0 && segment == segment_) return true;
  if (segment < 0) {
    detach();
    return false;
  }
  void* const address = shmat(segment, nullptr, SHM_RDONLY);
  detach();
  if (address == reinterpret_cast<void*>(-1)) return false;
  shmid_ds status = {};
  address_ = static_cast<const char*>(address);
  segment_ = segment;
  size_ = shmctl(segment, IPC_STAT, &status) == 0 ? status.shm_segsz : 0;
  return true;
}

void SegmentView::detach() {
  if (address_ != nullptr) (void)shmdt(address_);
  address_ = nullptr;
  segment_ = -1;
  size_ = 0;
}

std::vector<wifimgr_attr_record> SegmentView::table() const {
  std::vector<wifimgr_attr_record> table(size_ / sizeof(wifimgr_attr_record));
  if (!table.empty()) std::memcpy(table.data(), address_, table.size() * sizeof table[0]);
  size_t used = 0;
  while (used < table.size() && table[used].key[0] != '\0') ++used;
  table.resize(used);
  return table;
}

}  // namespace wlanctl

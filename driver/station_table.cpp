// The stations that are associated with an SSID.
#include <cstdio>
#include <cstring>

#include "driver/allocated.h"
#include "driver/request.h"
#include "wifimgr_lib.h"

namespace {

constexpr unsigned kSsids = 8;
constexpr unsigned kInterfaces = 2 * kSsids;
constexpr size_t kEntries = 32;

struct Entry {
  uint8_t ssid;
  uint8_t mac[6];
  uint8_t valid_2_4g;
  uint8_t valid[2];  // 2.4G also reads its first byte as an SSID
  uint8_t rest[30];
};
static_assert(sizeof(Entry) == 40 && offsetof(Entry, mac) == 1 && offsetof(Entry, valid_2_4g) == 7 &&
              offsetof(Entry, valid) == 8);

struct Table {
  uint64_t count;
  Entry entry[kEntries];
  uint8_t rest[2808];
};
static_assert(sizeof(Table) == 4096 && offsetof(Table, entry) == 8);
static_assert(sizeof(wifimgr_station_list) == 392 && offsetof(wifimgr_station_list, mac) == 8);

void append(wifimgr_station_list* list, uint64_t* count, const Entry& entry) {
  std::memcpy(list->mac[*count], entry.mac, sizeof entry.mac);
  ++*count;
}

}  // namespace

extern "C" void getMacEntryByIndex(wifimgr_station_list* out, unsigned index) {
  if (out == nullptr || index >= kInterfaces) return;
  const driver::Allocated<Table> table;
  if (!table) return;
  const bool is_5g = index >= kSsids;
  const unsigned ssid = index % kSsids;
  driver::Request request = driver::make_request(driver::bss_interface(is_5g, static_cast<int>(ssid)), table.get(), 8);
  constexpr driver::Complaints kComplaints = {"==>getMacEntryByIndex(): create socket fail.",
                                              "==>getMacEntryByIndex(): XXXXXX ioctl open fail"};
  const driver::Outcome outcome = driver::ask(driver::kStationTable, request);
  if (const char* const why = driver::complaint_about(outcome, kComplaints)) {
    (void)std::puts(why);
    return;
  }
  if (table->count == 0) {
    (void)std::puts("==>getMacEntryByIndex(): 7915 no sta existance");
    return;
  }
  uint64_t count = 0;
  for (const Entry& entry : table->entry) {
    if (entry.ssid == ssid) {
      if (entry.valid[0] == 0 && entry.valid[1] == 0) break;
      append(out, &count, entry);
    }
    // A second test on 2.4G only, of other bytes of the same entry; deliberate. An entry may be listed twice.
    if (!is_5g && entry.valid[0] == ssid) {
      if (entry.valid_2_4g == 0) break;
      append(out, &count, entry);
    }
  }
  out->count = count;
}

#include "wlanctl/library/station_answer.h"

#include <dlfcn.h>
#include <linux/wireless.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstring>

#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

constexpr unsigned long kStationTable = 0x8BEF;

// As the library asks for it: the count, and room for so many entries behind it.
constexpr size_t kHeadSize = 8;
constexpr size_t kEntrySize = 40;
constexpr size_t kMostEntries = 32;
constexpr size_t kMacAt = 1;
constexpr size_t kMacSize = 6;

// Of who looks; null for nobody.
std::string* g_fault = nullptr;

bool has_mac(const uint8_t* entry) {
  return std::any_of(entry + kMacAt, entry + kMacAt + kMacSize, [](uint8_t byte) { return byte != 0; });
}

// A driver that gives the whole table leaves the length as it was asked, which is that of the head alone.
std::string fault_of(const uint8_t* table, size_t length) {
  if (length < kHeadSize) {
    return "its table is cut off: it has " + count_of(length, "byte") + ", and the count alone takes " +
           std::to_string(kHeadSize);
  }
  uint64_t count = 0;
  std::memcpy(&count, table, sizeof count);
  const size_t entries = static_cast<size_t>(std::min<uint64_t>(count, kMostEntries));
  const size_t needed = kHeadSize + entries * kEntrySize;
  if (length > kHeadSize && length < needed) {
    return "its table is cut off: it has " + count_of(length, "byte") + ", and counts " + count_of(entries, "station") +
           ", for which it takes " + std::to_string(needed);
  }
  for (size_t i = 0; i < entries; ++i) {
    if (has_mac(table + kHeadSize + i * kEntrySize)) return "";
  }
  return entries == 0 ? "" : "its table counts " + count_of(entries, "station") + ", and has none";
}

void look_at(unsigned long number, const void* record) {
  if (g_fault == nullptr || number != kStationTable || record == nullptr) return;
  iwreq request = {};
  std::memcpy(&request, record, sizeof request);
  if (request.u.data.pointer == nullptr) return;
  *g_fault = fault_of(static_cast<const uint8_t*>(request.u.data.pointer), request.u.data.length);
}

// C libraries disagree about the type of a request's number.
template <typename Number>
Number type_of_number(int (*)(int, Number, ...));
using RequestNumber = decltype(type_of_number(&::ioctl));

}  // namespace

StationAnswer::StationAnswer() {
  g_fault = &fault_;
}

StationAnswer::~StationAnswer() {
  g_fault = nullptr;
}

}  // namespace wlanctl

// Each request has one argument. That of the program comes first.
extern "C" int ioctl(int descriptor, wlanctl::RequestNumber number, ...) noexcept {
  va_list arguments;
  va_start(arguments, number);
  void* const argument = va_arg(arguments, void*);
  va_end(arguments);
  static const auto real = reinterpret_cast<decltype(&::ioctl)>(dlsym(RTLD_NEXT, "ioctl"));
  const int answer = real(descriptor, number, argument);
  if (answer >= 0) wlanctl::look_at(static_cast<unsigned long>(number), argument);
  return answer;
}

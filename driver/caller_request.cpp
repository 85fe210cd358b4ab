// Requests whose payload is the caller's own, handed to the driver as it is.
#include <cstdio>

#include "driver/request.h"
#include "store/band.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

using driver::Outcome;

namespace {

constexpr uint16_t kOuiFilter = 0x9220;

}  // namespace

extern "C" int wifimgr_lib_ioctl(int request, void* data, const char* ifname, uint16_t length) {
  trace::enter(__func__);
  driver::Request record = driver::make_request(driver::interface_named(ifname), data, length);
  int result = -1;
  switch (driver::ask(static_cast<unsigned>(request), record, &result)) {
    case Outcome::kNoSocket:
      WIFIMGR_TRACE(trace::kErrorLevel, "[%s]:\n===  create socket fail ===\n", __func__);
      return -1;
    case Outcome::kRefused:
      WIFIMGR_TRACE(trace::kErrorLevel, "[%s]:\n===  ioctl open fail ===\n", __func__);
      return -1;
    case Outcome::kAnswered:
      break;
  }
  return trace::success(__func__).as(result);
}

extern "C" int wifimgr_lib_OidQueryInformation(uint16_t oid, const char* ifname, void* data, uint16_t length) {
  trace::enter(__func__);
  int result = -1;
  switch (driver::ask_oid(driver::interface_named(ifname), oid, data, length, &result)) {
    case Outcome::kNoSocket:
      (void)std::printf("%s %d: socket open fail\n", __func__, 2229);
      return -1;
    case Outcome::kRefused:
      (void)std::puts("@@@ioctl fail\r");
      return result;
    case Outcome::kAnswered:
      break;
  }
  return trace::success(__func__).as(result);
}

extern "C" int wifimgr_lib_get_WIFI_STATS(const char* ifname, void* data, uint16_t length) {
  trace::enter(__func__);
  driver::Request record = driver::make_request(driver::interface_named(ifname), data, length);
  switch (driver::ask(driver::kStatistics, record)) {
    case Outcome::kNoSocket:
      (void)std::printf("==>%s: Create %s socket fail\n", __func__, ifname == nullptr ? "" : ifname);
      return -1;
    case Outcome::kRefused:
      return trace::fail(__func__).as(-1);
    case Outcome::kAnswered:
      break;
  }
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_set_OUI_FILTER(int wifi_type, void* data, uint16_t length) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  const Outcome outcome = driver::ask_oid(driver::radio_interface(wifi_type == store::k5G), kOuiFilter, data, length);
  if (driver::report(__func__, outcome, {"Create socket fail", ":ioctl open fail"}) != 0) return -1;
  return trace::success(__func__);
}

// The driver's AP count record.
#include <cstdio>
#include <cstring>

#include "driver/allocated.h"
#include "driver/request.h"
#include "store/band.h"
#include "wifimgr_lib.h"

namespace {

struct Reply {
  wifimgr_ap_count record;
  uint8_t rest[944];
};
static_assert(sizeof(wifimgr_ap_count) == 80 && offsetof(wifimgr_ap_count, cleared_40) == 40 &&
              offsetof(wifimgr_ap_count, cleared_56) == 56);
static_assert(sizeof(Reply) == 1024);

}  // namespace

// Any other number than 0 is 5G here.
extern "C" int getAPCount(int wifi_type, wifimgr_ap_count* out) {
  if (out == nullptr) return -1;
  const driver::Allocated<Reply> reply;
  if (!reply) return -1;
  driver::Request request =
      driver::make_request(driver::radio_interface(wifi_type != store::k2_4G), reply.get(), sizeof(Reply));
  constexpr driver::Complaints kComplaints = {"==>getAPCount(): XXXXXX socket open fail",
                                              "==>getAPCount(): XXXXXX ioctl open fail"};
  const driver::Outcome outcome = driver::ask(driver::kApCount, request);
  if (const char* const why = driver::complaint_about(outcome, kComplaints)) {
    (void)std::puts(why);
    return -1;
  }
  *out = reply->record;
  std::memset(out->cleared_40, 0, sizeof out->cleared_40);
  std::memset(out->cleared_56, 0, sizeof out->cleared_56);
  return 0;
}

// The processes of the WLAN service.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "driver/request.h"
#include "store/decimal.h"
#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

struct Reply {
  wifimgr_process_info info;
  uint8_t rest[572];
};
static_assert(sizeof(wifimgr_process) == 24 && offsetof(wifimgr_process, pid) == 16 &&
              offsetof(wifimgr_process, running) == 20);
static_assert(sizeof(wifimgr_process_info) == 196 && offsetof(wifimgr_process_info, process) == 4);
static_assert(sizeof(Reply) == 768);

// The id in the first line of the service's pid file, 0 when it has none; false when there is no file.
bool read_service_id(int* id) {
  const store::Stream file(std::fopen("/var/run/wlan_svc.pid", "re"));
  if (!file) return false;
  // Of any length: the id may stand behind any number of blanks.
  char* line = nullptr;
  size_t size = 0;
  *id = getline(&line, &size, file.get()) >= 0 ? store::decimal(line) : 0;
  std::free(line);
  return true;
}

bool is_running(int id) {
  char path[32];
  (void)std::snprintf(path, sizeof path, "/proc/%d/cmdline", id);
  return static_cast<bool>(store::Stream(std::fopen(path, "re")));
}

// Copies the name as far as its NUL; what follows in the driver's record is nobody's business.
void copy_process(wifimgr_process* to, const wifimgr_process& from) {
  std::memcpy(to->name, from.name, strnlen(from.name, sizeof from.name));
  to->pid = from.pid;
  to->running = from.running;
}

}  // namespace

extern "C" int wifimgr_lib_get_wifi_process_info(wifimgr_process_info* record) {
  trace::enter(__func__);
  if (record == nullptr) return trace::fail(__func__);
  Reply reply = {};
  driver::Request request = driver::make_request(driver::radio_interface(true), &reply, sizeof reply);
  if (driver::ask(driver::kProcesses, request) != driver::Outcome::kAnswered) return trace::fail(__func__);

  std::memset(record, 0, sizeof *record);
  const int reported = reply.info.count;
  record->count = static_cast<uint8_t>(reported + 1);  // 255 becomes 0; deliberate
  int next = 0;
  int id = 0;
  if (read_service_id(&id) && is_running(id)) {
    wifimgr_process& service = record->process[next++];
    std::memcpy(service.name, "wlan.svc", sizeof "wlan.svc");
    service.pid = static_cast<uint32_t>(id);
    service.running = 1;
  }
  for (int from = 0; next < WIFIMGR_PROCESSES && next <= reported; ++next, ++from) {
    copy_process(&record->process[next], reply.info.process[from]);
  }
  return trace::success(__func__);
}

// The WPS service actions: a script of iwpriv lines for the caller to run.
#include <sys/stat.h>

#include <cstdio>

#include "store/band.h"
#include "store/decimal.h"
#include "store/record.h"
#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

enum class Action : uint8_t { kResetToUnconfigured, kNewPin, kStop, kStart };

struct Request {
  uint16_t band;
  uint16_t interface;  // 0-based
};

struct Parameters {
  uint32_t mode;
  uint32_t method;
  uint32_t status;
  uint32_t pin;  // 0 for none
};

constexpr uint32_t kMethodPin = 0;
constexpr uint32_t kMethodPushButton = 1;

struct Interface {
  char name[32];
};

// The prefix is in the band's snapshot, which a caller takes before it uses WPS; without one the name is the number.
Interface interface_of(const Request& request) {
  Interface interface;
  const wifimgr_band_snapshot& snapshot = store_global[request.band];
  (void)std::snprintf(interface.name, sizeof interface.name, "%.*s%d", static_cast<int>(sizeof snapshot.prefix),
                      snapshot.prefix, request.interface);
  return interface;
}

bool is_status_known(uint32_t status) {
  const uint32_t low_byte = status & 0xffU;
  return low_byte == 1 || low_byte == 2;
}

void write_start(std::FILE* file, const char* interface, const Parameters& parameters) {
  const auto set = [&](const char* key, uint32_t value) {
    (void)std::fprintf(file, "/userfs/bin/iwpriv %s set %s=%d\n", interface, key, static_cast<int>(value));
  };
  set("WscConfMode", parameters.mode);
  set("WscConfStatus", parameters.status);
  if (parameters.method == kMethodPin) {
    set("WscMode", 1);
    if (parameters.pin != 0) set("WscPinCode", parameters.pin);
  } else if (parameters.method == kMethodPushButton) {
    set("WscMode", 2);
  }
  set("WscGetConf", 1);
}

// A file that cannot be opened counts as success; deliberate. One that was cut is emptied: half of a script must not be
// run.
int write_start_script(const char* path, const char* interface, const Parameters& parameters) {
  store::Stream file(std::fopen(path, "we"));
  if (!file) return 0;
  if (!is_status_known(parameters.status)) return 1;
  write_start(file.get(), interface, parameters);
  const bool is_runnable = chmod(path, 0700) == 0;
  if (file.close()) return is_runnable ? 0 : 1;
  store::empty_file(path);
  return 1;
}

int write_line(const char* path, const char* interface, const char* setting) {
  char line[128];
  (void)std::snprintf(line, sizeof line, "/userfs/bin/iwpriv %s set %s\n", interface, setting);
  return doCmdWrite(path, line) == 0 ? 0 : 1;
}

int wps_service_action_internal(const char* path, Action action, const Request& request, const Parameters& parameters) {
  if (!store::is_band(request.band)) return 0;
  const Interface interface = interface_of(request);
  switch (action) {
    case Action::kResetToUnconfigured:
      return write_line(path, interface.name, "WscOOB=1");
    case Action::kNewPin:
      return write_line(path, interface.name, "WscGenPinCode=1");
    case Action::kStop:
      // Without "=1", unlike the setter; kept, as callers match the line.
      return write_line(path, interface.name, "WscStop");
    case Action::kStart:
      return write_start_script(path, interface.name, parameters);
  }
  return 0;
}

// The number in a WPS setting of an SSID, 0 when it cannot be read.
uint32_t read_number(uint64_t (*getter)(uint32_t, int32_t, char*, uint32_t), int wifi_type, int ssid_index) {
  char text[store::kValueSize] = "";
  const auto from_one = static_cast<int32_t>(static_cast<uint32_t>(ssid_index) + 1U);
  (void)getter(static_cast<uint32_t>(wifi_type), from_one, text, sizeof text);
  return static_cast<uint32_t>(store::decimal(text));
}

bool is_wps_on(uint32_t mode) {
  return mode == 1 || mode == 2 || mode == 7;
}

// While WPS is off for the SSID nothing is written, and that is a success.
int act(const char* path, int wifi_type, int ssid_index, const char* function, Action action,
        const uint32_t* start_argument) {
  trace::enter(function);
  if (path == nullptr) return trace::fail(function);
  Parameters parameters = {};
  parameters.mode = read_number(wifimgr_lib_get_wscConfMode, wifi_type, ssid_index);
  if (!is_wps_on(parameters.mode)) return trace::success(function);
  if (action == Action::kStart) {
    if (start_argument == nullptr) return trace::fail(function);
    parameters.status = read_number(wifimgr_lib_get_WscConfStatus, wifi_type, ssid_index);
    parameters.method = start_argument[0];
    parameters.pin = parameters.method == kMethodPin ? start_argument[1] : 0;
  }
  const Request request = {static_cast<uint16_t>(wifi_type), static_cast<uint16_t>(ssid_index)};
  if (wps_service_action_internal(path, action, request, parameters) != 0) return trace::fail(function);
  return trace::success(function);
}

}  // namespace

extern "C" int wifimgr_lib_service_start_wps(const char* path, int wifi_type, int ssid_index,
                                             const uint32_t* start_argument) {
  return act(path, wifi_type, ssid_index, __func__, Action::kStart, start_argument);
}

extern "C" int wifimgr_lib_service_stop_wps(const char* path, int wifi_type, int ssid_index) {
  return act(path, wifi_type, ssid_index, __func__, Action::kStop, nullptr);
}

extern "C" int wifimgr_lib_service_genpincode(const char* path, int wifi_type, int ssid_index) {
  return act(path, wifi_type, ssid_index, __func__, Action::kNewPin, nullptr);
}

extern "C" int wifimgr_lib_service_resetoob(const char* path, int wifi_type, int ssid_index) {
  return act(path, wifi_type, ssid_index, __func__, Action::kResetToUnconfigured, nullptr);
}

extern "C" int wifimgr_lib_get_wps_info(...) {
  return 0;
}

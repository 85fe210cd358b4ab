#include "apply/calls.h"

#include <cstdint>
#include <set>

#include "wifimgr_lib.h"

namespace calls {

std::vector<std::string> made;

namespace {

int depth = 0;
std::set<std::string> refusing;

std::string text(const char* value) {
  return value == nullptr ? "null" : value;
}

}  // namespace

std::vector<std::string> made_by(const std::function<void()>& run) {
  made.clear();
  run();
  return made;
}

void refuse(const std::string& function) {
  refusing.insert(function);
}

void allow(const std::string& function) {
  refusing.erase(function);
}

Call::Call(const std::string& function, std::initializer_list<std::string> arguments)
    : refused_(refusing.count(function) != 0) {
  if (depth++ > 0) return;
  std::string line = function + "(";
  const char* separator = "";
  for (const std::string& argument : arguments) {
    line += separator + argument;
    separator = ",";
  }
  made.push_back(line + ")");
}

Call::~Call() {
  --depth;
}

}  // namespace calls

using calls::Call;
using calls::real;
using std::to_string;

#define RECORD_SETTER(name)                                                                   \
  uint64_t wifimgr_lib_##name(uint32_t wifi_type, int32_t index, const char* value) {         \
    const Call call(#name, {to_string(wifi_type), to_string(index), calls::text(value)});     \
    if (call.refused()) return 1;                                                             \
    return real<decltype(wifimgr_lib_##name)>("wifimgr_lib_" #name)(wifi_type, index, value); \
  }
#define RECORD_WEP_SETTER(name)                                                                           \
  uint64_t wifimgr_lib_##name(uint32_t wifi_type, int32_t index, int32_t key, const char* value) {        \
    const Call call(#name, {to_string(wifi_type), to_string(index), to_string(key), calls::text(value)}); \
    if (call.refused()) return 1;                                                                         \
    return real<decltype(wifimgr_lib_##name)>("wifimgr_lib_" #name)(wifi_type, index, key, value);        \
  }
#define RECORD_BAND_GETTER(name)                                                                 \
  int wifimgr_lib_##name(int wifi_type, int index, char* buf, unsigned len) {                    \
    const Call call(#name, {to_string(wifi_type), to_string(index)});                            \
    if (call.refused()) return 1;                                                                \
    return real<decltype(wifimgr_lib_##name)>("wifimgr_lib_" #name)(wifi_type, index, buf, len); \
  }
#define RECORD_SSID_GETTER(name)                                                                 \
  uint64_t wifimgr_lib_##name(uint32_t wifi_type, int32_t index, char* buf, uint32_t len) {      \
    const Call call(#name, {to_string(wifi_type), to_string(index)});                            \
    if (call.refused()) return 1;                                                                \
    return real<decltype(wifimgr_lib_##name)>("wifimgr_lib_" #name)(wifi_type, index, buf, len); \
  }

extern "C" {

RECORD_SETTER(set_ieee8021x)
RECORD_SETTER(set_authMode)
RECORD_SETTER(set_encrypType)
RECORD_SETTER(set_defaultKeyID)
RECORD_SETTER(set_WPAPSK)
RECORD_WEP_SETTER(set_keyType)
RECORD_WEP_SETTER(set_keyStr)

RECORD_SETTER(set_wmmCapable)
RECORD_SETTER(set_fixedTxMode)
RECORD_SETTER(set_txBurst)
RECORD_SETTER(set_HT_BW)
RECORD_SETTER(set_VHT_BW)
RECORD_SETTER(set_VHT_SGI)
RECORD_SETTER(set_HT_OpMode)
RECORD_SETTER(set_autoChannelSelect)
RECORD_SETTER(set_basicRate)
RECORD_SETTER(set_txPower)

RECORD_BAND_GETTER(get_wirelessMode)
RECORD_BAND_GETTER(get_bssidnum)
RECORD_BAND_GETTER(get_channel)
RECORD_BAND_GETTER(get_HT_BW)
RECORD_BAND_GETTER(get_txPower)

RECORD_SSID_GETTER(get_authMode)
RECORD_SSID_GETTER(get_wmmCapable)
RECORD_SSID_GETTER(get_fixedTxMode)

uint64_t wifimgr_lib_get_keyStr(uint32_t wifi_type, int32_t index, int32_t key, char* buf, uint32_t len) {
  const Call call("get_keyStr", {to_string(wifi_type), to_string(index), to_string(key)});
  if (call.refused()) return 1;
  return real<decltype(wifimgr_lib_get_keyStr)>("wifimgr_lib_get_keyStr")(wifi_type, index, key, buf, len);
}

}  // extern "C"

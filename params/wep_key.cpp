// The WEP keys: four per SSID, each with a type ("Key%dType", a field per SSID) and a string ("Key%dStr%d", a key per
// SSID). The key number is not checked: a number without keys in the dat file fails in the store.
#include <cstdio>
#include <cstring>

#include "params/ssid_setting.h"
#include "store/decimal.h"
#include "wifimgr_lib.h"

namespace {

struct TypeKey {
  explicit TypeKey(int32_t key_number) { (void)std::snprintf(text, sizeof text, "Key%dType", key_number); }
  char text[store::kValueSize];
};

struct StringKey {
  StringKey(int32_t key_number, int32_t ssid_index) {
    (void)std::snprintf(text, sizeof text, "Key%dStr%d", key_number, ssid_index);
  }
  char text[store::kValueSize];
};

// Exactly one character: "00" is a number in range and refused all the same.
bool is_key_type(const char* value) {
  return std::strlen(value) == 1 && doStrDecCheck(value) != 0 && store::decimal(value) <= 1;
}

}  // namespace

extern "C" uint64_t wifimgr_lib_get_keyType(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, char* buf,
                                            uint32_t len) {
  trace::enter(__func__);
  if (buf == nullptr) return trace::fail(__func__);
  if (!params::is_ssid_of_band(wifi_type, ssid_index, __func__)) return 1;
  return params::read_ssid_value(wifi_type, ssid_index, buf, len, __func__, TypeKey(key_number).text);
}

extern "C" uint64_t wifimgr_lib_set_keyType(uint32_t wifi_type, int32_t ssid_index, int32_t key_number,
                                            const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  if (!params::is_ssid_of_band(wifi_type, ssid_index, __func__)) return 1;
  if (!is_key_type(value)) return params::refuse(__func__, "KeyType", params::kIsInvalid, value);
  return params::write_ssid_value(wifi_type, ssid_index, value, __func__, TypeKey(key_number).text);
}

extern "C" uint64_t wifimgr_lib_get_keyStr(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, char* buf,
                                           uint32_t len) {
  trace::enter(__func__);
  if (buf == nullptr) return trace::fail(__func__);
  if (!params::is_ssid_of_band(wifi_type, ssid_index, __func__)) return 1;
  return params::read_ssid_value(wifi_type, ssid_index, buf, len, __func__, StringKey(key_number, ssid_index).text);
}

extern "C" uint64_t wifimgr_lib_set_keyStr(uint32_t wifi_type, int32_t ssid_index, int32_t key_number,
                                           const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  if (!params::is_ssid_of_band(wifi_type, ssid_index, __func__)) return 1;
  return params::write_ssid_value(wifi_type, ssid_index, value, __func__, StringKey(key_number, ssid_index).text);
}

// The wrappers with the key number in their name, which trace an entry and exit of their own. The caller's arguments come
// first and in its order, so that a wrapper only adds its row.

namespace {

using NumberedGetter = uint64_t (*)(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, char* buf,
                                    uint32_t len);
using NumberedSetter = uint64_t (*)(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, const char* value);

uint64_t get_numbered(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len, const char* function,
                      NumberedGetter getter, int32_t key_number) {
  trace::enter(function);
  if (buf == nullptr) return trace::fail(function);
  if (getter(wifi_type, ssid_index, key_number, buf, len) != 0) return trace::fail(function);
  return trace::success(function);
}

uint64_t set_numbered(uint32_t wifi_type, int32_t ssid_index, const char* value, const char* function,
                      NumberedSetter setter, int32_t key_number) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (setter(wifi_type, ssid_index, key_number, value) != 0) return trace::fail(function);
  return trace::success(function);
}

}  // namespace

#define WEP_KEY_GETTER(wrapper, getter, key_number)                                              \
  extern "C" uint64_t wrapper(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len) { \
    return get_numbered(wifi_type, ssid_index, buf, len, #wrapper, getter, key_number);          \
  }
#define WEP_KEY_SETTER(wrapper, setter, key_number)                                        \
  extern "C" uint64_t wrapper(uint32_t wifi_type, int32_t ssid_index, const char* value) { \
    return set_numbered(wifi_type, ssid_index, value, #wrapper, setter, key_number);       \
  }

WEP_KEY_GETTER(wifimgr_lib_get_key1Type, wifimgr_lib_get_keyType, 1)
WEP_KEY_GETTER(wifimgr_lib_get_key2Type, wifimgr_lib_get_keyType, 2)
WEP_KEY_GETTER(wifimgr_lib_get_key3Type, wifimgr_lib_get_keyType, 3)
WEP_KEY_GETTER(wifimgr_lib_get_key4Type, wifimgr_lib_get_keyType, 4)
WEP_KEY_GETTER(wifimgr_lib_get_key1Str, wifimgr_lib_get_keyStr, 1)
WEP_KEY_GETTER(wifimgr_lib_get_key2Str, wifimgr_lib_get_keyStr, 2)
WEP_KEY_GETTER(wifimgr_lib_get_key3Str, wifimgr_lib_get_keyStr, 3)
WEP_KEY_GETTER(wifimgr_lib_get_key4Str, wifimgr_lib_get_keyStr, 4)
WEP_KEY_SETTER(wifimgr_lib_set_key1Type, wifimgr_lib_set_keyType, 1)
WEP_KEY_SETTER(wifimgr_lib_set_key2Type, wifimgr_lib_set_keyType, 2)
WEP_KEY_SETTER(wifimgr_lib_set_key3Type, wifimgr_lib_set_keyType, 3)
WEP_KEY_SETTER(wifimgr_lib_set_key4Type, wifimgr_lib_set_keyType, 4)
WEP_KEY_SETTER(wifimgr_lib_set_key1Str, wifimgr_lib_set_keyStr, 1)
WEP_KEY_SETTER(wifimgr_lib_set_key2Str, wifimgr_lib_set_keyStr, 2)
WEP_KEY_SETTER(wifimgr_lib_set_key3Str, wifimgr_lib_set_keyStr, 3)
WEP_KEY_SETTER(wifimgr_lib_set_key4Str, wifimgr_lib_set_keyStr, 4)

#include "apply/interposed.h"

#include "apply/calls.h"

namespace interposed {

std::map<std::string, int> calls;
std::map<std::string, uint64_t> answers;
std::function<int(char*, int)> parse_driver_answer;
std::function<int(int, int)> update_datafile_answer;
std::function<int(int, int, const char*, char*, unsigned)> read_attr_answer;
std::function<int(int, int, const char*, const char*)> update_attr_answer;
std::vector<GroupCall> group_calls;

namespace {

template <typename Result, typename... Parameters, typename... Arguments>
Result answer(const char* name, Result (*)(Parameters...), Arguments... arguments) {
  ++calls[name];
  const auto found = answers.find(name);
  if constexpr (std::is_integral_v<Result>) {
    if (found != answers.end()) return static_cast<Result>(found->second);
  }
  return ::calls::real<Result(Parameters...)>(name)(arguments...);
}

}  // namespace
}  // namespace interposed

using interposed::answer;

// clang-format off
#define BAND_GETTERS(X) \
  X(wifimgr_lib_get_HT_BSSCoexistence) X(wifimgr_lib_get_HT_BW) X(wifimgr_lib_get_HT_EXTCHA) \
  X(wifimgr_lib_get_HT_GI) X(wifimgr_lib_get_HT_RxStream) X(wifimgr_lib_get_HT_TxStream) \
  X(wifimgr_lib_get_MuMimoDlEnable) X(wifimgr_lib_get_MuMimoUlEnable) X(wifimgr_lib_get_MuOfdmaDlEnable) \
  X(wifimgr_lib_get_MuOfdmaUlEnable) X(wifimgr_lib_get_SREnable) X(wifimgr_lib_get_SRMode) \
  X(wifimgr_lib_get_SRSDEnable) X(wifimgr_lib_get_TWTSupport) X(wifimgr_lib_get_VHT_BW) X(wifimgr_lib_get_VHT_SGI) \
  X(wifimgr_lib_get_WHNAT) X(wifimgr_lib_get_beaconPeriod) X(wifimgr_lib_get_bssidnum) X(wifimgr_lib_get_channel) \
  X(wifimgr_lib_get_countryRegion) X(wifimgr_lib_get_countryRegionABand) X(wifimgr_lib_get_dtimPeriod) \
  X(wifimgr_lib_get_fragThreshold) X(wifimgr_lib_get_txPower) X(wifimgr_lib_get_wdsenable) \
  X(wifimgr_lib_get_wdsencryptype) X(wifimgr_lib_get_wdskey) X(wifimgr_lib_get_wdslist) \
  X(wifimgr_lib_get_wirelessMode)

#define SSID_GETTERS(X) \
  X(wifimgr_lib_get_apsdCapable) X(wifimgr_lib_get_authMode) X(wifimgr_lib_get_enableSsid) \
  X(wifimgr_lib_get_fixedTxMode) X(wifimgr_lib_get_wmmCapable) X(wifimgr_lib_get_wscV2Support)

#define SETTERS(X) \
  X(wifimgr_lib_set_HT_BW) X(wifimgr_lib_set_HT_OpMode) X(wifimgr_lib_set_VHT_BW) X(wifimgr_lib_set_VHT_SGI) \
  X(wifimgr_lib_set_WPAPSK) X(wifimgr_lib_set_authMode) X(wifimgr_lib_set_autoChannelSelect) \
  X(wifimgr_lib_set_basicRate) X(wifimgr_lib_set_defaultKeyID) X(wifimgr_lib_set_encrypType) \
  X(wifimgr_lib_set_fixedTxMode) X(wifimgr_lib_set_ieee8021x) X(wifimgr_lib_set_txBurst) X(wifimgr_lib_set_txPower) \
  X(wifimgr_lib_set_wmmCapable)

#define WEP_GETTERS(X) \
  X(wifimgr_lib_get_keyStr) X(wifimgr_lib_get_keyType)

#define WEP_SETTERS(X) \
  X(wifimgr_lib_set_keyStr) X(wifimgr_lib_set_keyType)

#define GROUPS(X) \
  X(systemreboot_store) X(systemreboot_compare) X(commoncap_store) X(commoncap_compare) X(entrycap_store) \
  X(entrycap_compare) X(htcap_store) X(htcap_compare) X(vhtcap_store) X(vhtcap_compare) X(hecap_store) \
  X(hecap_compare) X(wds_store) X(wds_compare) X(chipspecial_store) X(chipspecial_compare)

#define TEXT_CHECKS(X) \
  X(IPV4check) X(MacCheck) X(checkV4) X(check_is_num) X(doStrDecCheck) X(doStrHexCheck)

#define BAND_FUNCTIONS(X) \
  X(creat_shm_from_datafile) X(get_dat_para_num) X(init_shm) X(print_shm)

#define SEMAPHORE_FUNCTIONS(X) \
  X(semaphore_p) X(semaphore_v)

#define NUMBER_READERS(X) \
  X(get_attr_num) X(get_attr_num_extended)

#define KEY_CHECKS(X) \
  X(wdskey_check) X(wdskey_check_for_wep)

// Those with a shape of their own.
#define OTHERS(X) \
  X(attr_value_parser) X(charCnt) X(doCmdWrite) X(doHexCheck) X(is_attr_exist) X(merge_para) X(parse_data_from_line) \
  X(parse_driver) X(parserstr) X(read_attr) X(rstrtok) X(rtstrcasecmp) X(set_semvalue) X(update_attr) \
  X(update_attr_by_ssid) X(update_auth_mode) X(update_common_attr) X(update_datafile_from_shm) X(update_fixedTxMode) \
  X(wifimgr_lib_get_reloadFlag) X(wifimgr_lib_set_reloadFlag)
// clang-format on

std::vector<std::string> interposed::names() {
#define NAME(name) #name,
  return {BAND_GETTERS(NAME) SSID_GETTERS(NAME) SETTERS(NAME) WEP_GETTERS(NAME) WEP_SETTERS(NAME) GROUPS(NAME)
              TEXT_CHECKS(NAME) BAND_FUNCTIONS(NAME) SEMAPHORE_FUNCTIONS(NAME) NUMBER_READERS(NAME) KEY_CHECKS(NAME)
                  OTHERS(NAME)};
#undef NAME
}

extern "C" {

#define BAND_GETTER(name)                                       \
  int name(int wifi_type, int index, char* buf, unsigned len) { \
    return answer(#name, &name, wifi_type, index, buf, len);    \
  }
BAND_GETTERS(BAND_GETTER)

#define SSID_GETTER(name)                                                          \
  uint64_t name(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len) { \
    return answer(#name, &name, wifi_type, ssid_index, buf, len);                  \
  }
SSID_GETTERS(SSID_GETTER)

#define SETTER(name)                                                    \
  uint64_t name(uint32_t wifi_type, int32_t index, const char* value) { \
    return answer(#name, &name, wifi_type, index, value);               \
  }
SETTERS(SETTER)

#define WEP_GETTER(name)                                                                               \
  uint64_t name(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, char* buf, uint32_t len) { \
    return answer(#name, &name, wifi_type, ssid_index, key_number, buf, len);                          \
  }
WEP_GETTERS(WEP_GETTER)

#define WEP_SETTER(name)                                                                         \
  uint64_t name(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, const char* value) { \
    return answer(#name, &name, wifi_type, ssid_index, key_number, value);                       \
  }
WEP_SETTERS(WEP_SETTER)

#define GROUP(name)                                                  \
  uint64_t name(wifimgr_band_snapshot* record, uint32_t wifi_type) { \
    interposed::group_calls.push_back({#name, record, wifi_type});   \
    return answer(#name, &name, record, wifi_type);                  \
  }
GROUPS(GROUP)

#define TEXT_CHECK(name)            \
  int name(const char* s) {         \
    return answer(#name, &name, s); \
  }
TEXT_CHECKS(TEXT_CHECK)

#define BAND_FUNCTION(name)                 \
  int name(int wifi_type) {                 \
    return answer(#name, &name, wifi_type); \
  }
BAND_FUNCTIONS(BAND_FUNCTION)

#define SEMAPHORE_FUNCTION(name)        \
  int name(int semid) {                 \
    return answer(#name, &name, semid); \
  }
SEMAPHORE_FUNCTIONS(SEMAPHORE_FUNCTION)

#define NUMBER_READER(name)                                    \
  int name(const char* key, const char* line, unsigned* num) { \
    return answer(#name, &name, key, line, num);               \
  }
NUMBER_READERS(NUMBER_READER)

#define KEY_CHECK(name)                       \
  int name(int length, const char* key) {     \
    return answer(#name, &name, length, key); \
  }
KEY_CHECKS(KEY_CHECK)

#define OTHER(result, name, parameters, ...)  \
  result name parameters {                    \
    return answer(#name, &name, __VA_ARGS__); \
  }
OTHER(int, attr_value_parser, (const char* key, char* value, unsigned* count, char** fields), key, value, count, fields)
OTHER(int, charCnt, (const char* s, char c), s, c)
OTHER(int, doCmdWrite, (const char* path, const char* text), path, text)
OTHER(int, doHexCheck, (char c), c)
OTHER(int, is_attr_exist, (char* segment, const char* name, unsigned* index), segment, name, index)
OTHER(int, merge_para, (wifimgr_attr_record * rec, char* out, int count), rec, out, count)
OTHER(int, parse_data_from_line, (char* line, wifimgr_attr_record* out), line, out)
OTHER(int, parserstr, (char* str, int len), str, len)
OTHER(char*, rstrtok, (char* str, const char* delims), str, delims)
OTHER(int, rtstrcasecmp, (const char* a, const char* b), a, b)
OTHER(int, set_semvalue, (int semid, int value), semid, value)
OTHER(int, update_common_attr, (char* segment, int record, const char* name, const char* value), segment, record, name,
      value)
OTHER(int, update_attr_by_ssid, (char* segment, int record, int index, const char* name, const char* value), segment,
      record, index, name, value)
OTHER(void, update_auth_mode, (uint32_t wifi_type, uint32_t ssid_index), wifi_type, ssid_index)
OTHER(void, update_fixedTxMode, (uint32_t wifi_type, uint32_t ssid_index, uint32_t mode), wifi_type, ssid_index, mode)
OTHER(int, wifimgr_lib_get_reloadFlag, (uint32_t wifi_type, char* buf, uint32_t len), wifi_type, buf, len)
OTHER(int, wifimgr_lib_set_reloadFlag, (uint32_t wifi_type, const char* value), wifi_type, value)

int parse_driver(char* flags, int count) {
  if (interposed::parse_driver_answer) return interposed::parse_driver_answer(flags, count);
  return answer("parse_driver", &parse_driver, flags, count);
}

int update_datafile_from_shm(int wifi_type, int bssid_num) {
  if (interposed::update_datafile_answer) return interposed::update_datafile_answer(wifi_type, bssid_num);
  return answer("update_datafile_from_shm", &update_datafile_from_shm, wifi_type, bssid_num);
}

int read_attr(int wifi_type, int index, const char* name, char* buf, unsigned len) {
  if (interposed::read_attr_answer) return interposed::read_attr_answer(wifi_type, index, name, buf, len);
  return answer("read_attr", &read_attr, wifi_type, index, name, buf, len);
}

int update_attr(int wifi_type, int index, const char* name, const char* value) {
  if (interposed::update_attr_answer) return interposed::update_attr_answer(wifi_type, index, name, value);
  return answer("update_attr", &update_attr, wifi_type, index, name, value);
}

}  // extern "C"

// The security fields of an SSID, brought in line with its authentication mode.
#include <cstdio>
#include <cstring>

#include "apply/line_end.h"
#include "apply/security_mode.h"
#include "store/record.h"
#include "wifimgr_lib.h"

namespace {

using apply::kWepKeys;

constexpr char kIeee8021xFailed[] = "write_wlan_config:wifimgr_lib_set_ieee8021x fail.";
constexpr char kAuthModeFailed[] = "write_wlan_config:wifimgr_lib_set_authMode fail.";
constexpr char kEncrypTypeFailed[] = "write_wlan_config:wifimgr_lib_set_encrypType fail.";
constexpr char kKeyTypeFailed[] = "write_wlan_config:wifimgr_lib_set_keyType fail.";
constexpr char kDefaultKeyIdFailed[] = "write_wlan_config:wifimgr_lib_set_defaultKeyID fail.";
constexpr char kWpaPskFailed[] = "write_wlan_config:wifimgr_lib_set_WPAPSK fail.";
constexpr char kKeyStrFailed[] = "write_wlan_config:wifimgr_lib_set_keyStr fail.";

// One SSID of one band, with setters that report a failure and go on.
class Ssid {
 public:
  Ssid(uint32_t wifi_type, uint32_t ssid_index) : band_(wifi_type), index_(static_cast<int32_t>(ssid_index)) {}

  bool read_auth_mode(char (&mode)[store::kValueSize]) const {
    if (wifimgr_lib_get_authMode(band_, index_, mode, sizeof mode) != 0) return false;
    apply::strip_line_end(mode);
    return true;
  }
  bool read_key_string(int key, char (&text)[store::kValueSize]) const {
    if (wifimgr_lib_get_keyStr(band_, index_, key, text, sizeof text) != 0) return false;
    apply::strip_line_end(text);
    return true;
  }

  void set_auth_mode(const char* value) const {
    report(wifimgr_lib_set_authMode(band_, index_, value), kAuthModeFailed);
  }
  void set_ieee8021x(const char* value) const {
    report(wifimgr_lib_set_ieee8021x(band_, index_, value), kIeee8021xFailed);
  }
  void set_encryp_type(const char* value, const char* failure) const {
    report(wifimgr_lib_set_encrypType(band_, index_, value), failure);
  }
  void set_default_key_id(const char* value) const {
    report(wifimgr_lib_set_defaultKeyID(band_, index_, value), kDefaultKeyIdFailed);
  }
  void set_wpa_psk(const char* value) const { report(wifimgr_lib_set_WPAPSK(band_, index_, value), kWpaPskFailed); }
  void set_key_type(int key, const char* value) const {
    report(wifimgr_lib_set_keyType(band_, index_, key, value), kKeyTypeFailed);
  }
  void set_key_string(int key, const char* value) const {
    report(wifimgr_lib_set_keyStr(band_, index_, key, value), kKeyStrFailed);
  }

 private:
  static void report(uint64_t result, const char* failure) {
    if (result != 0) (void)std::puts(failure);
  }

  uint32_t band_;
  int32_t index_;
};

// 10 or 26 characters are the hexadecimal form of a key; any other non-empty one is taken as characters.
const char* wep_key_type(const char* key) {
  const size_t length = std::strlen(key);
  if (length == 10 || length == 26) return "0";
  return length > 0 ? "1" : "0";
}

void become_wep(const Ssid& ssid, bool with_radius) {
  ssid.set_ieee8021x(with_radius ? "1" : "0");
  ssid.set_auth_mode("WEPAUTO");
  ssid.set_encryp_type("WEP", kEncrypTypeFailed);
  for (int key = 1; key <= kWepKeys; ++key) {
    char text[store::kValueSize] = "";
    if (ssid.read_key_string(key, text)) ssid.set_key_type(key, wep_key_type(text));
  }
}

void clear_wep_keys(const Ssid& ssid) {
  ssid.set_default_key_id("2");
  for (int key = 1; key <= kWepKeys; ++key) {
    ssid.set_key_string(key, "0");
    ssid.set_key_type(key, "0");
  }
}

void become_open(const Ssid& ssid) {
  ssid.set_auth_mode("OPEN");
  // A failing cipher reports the words of the authentication mode; kept, as callers match the text.
  ssid.set_encryp_type("NONE", kAuthModeFailed);
  ssid.set_default_key_id("0");
  ssid.set_wpa_psk("0");
  for (int key = 1; key <= kWepKeys; ++key) {
    ssid.set_key_type(key, "0");
    ssid.set_key_string(key, "0");
  }
}

}  // namespace

// Not idempotent: "WPA3-192", which this writes for "WPA3-192Bit", is none of the modes it knows, so a second run opens
// the SSID. Deliberate: callers set the user-facing mode before each apply.
extern "C" void update_auth_mode(uint32_t wifi_type, uint32_t ssid_index) {
  const Ssid ssid(wifi_type, ssid_index);
  char mode[store::kValueSize] = "";
  if (!ssid.read_auth_mode(mode)) return;
  if (std::strstr(mode, "WEP") != nullptr) {
    become_wep(ssid, std::strstr(mode, "Radius") != nullptr);
  } else if (apply::is_personal(mode)) {
    clear_wep_keys(ssid);
  } else if (apply::is_enterprise(mode)) {
    ssid.set_ieee8021x("0");
    clear_wep_keys(ssid);
  } else if (std::strcmp(mode, "WPA3-192Bit") == 0) {
    ssid.set_auth_mode("WPA3-192");
    ssid.set_ieee8021x("0");
    clear_wep_keys(ssid);
  } else {
    become_open(ssid);
  }
}

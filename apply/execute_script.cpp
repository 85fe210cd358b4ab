// The execute script: driver commands that bring one SSID's settings into force without a restart.
#include <sys/stat.h>

#include <cstdio>
#include <cstring>

#include "apply/band_number.h"
#include "apply/line_end.h"
#include "apply/script_value.h"
#include "apply/security_mode.h"
#include "store/band.h"
#include "store/record.h"
#include "store/shell.h"
#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

using apply::kWepKeys;

constexpr char kScripts[][40] = {"/etc/Wireless/RT2860AP/WLAN_exec.sh", "/etc/Wireless/RT2860AP_AC/WLAN_exec.sh"};

// Whether the band's script was cut when this process last wrote it: a part of it could open a secured network.
constinit bool g_is_cut[store::kBands] = {};

using Value = char[store::kValueSize];
using apply::SsidGetter;

// The script is written after the normalisation, which has changed the spelling of the 192-bit mode.
bool is_enterprise(const char* mode) {
  return apply::is_enterprise(mode) || std::strcmp(mode, "WPA3-192") == 0;
}

// The script of one SSID under way.
class Script {
 public:
  Script(std::FILE* file, uint32_t wifi_type, uint32_t ssid_number)
      : file_(file), band_(wifi_type), number_(ssid_number) {}

  uint32_t band() const { return band_; }
  int32_t ssid() const { return static_cast<int32_t>(number_ + 1U); }

  // Cleared whole: a field that another program filled to its width comes without its NUL.
  bool read(SsidGetter getter, Value& value) const {
    std::memset(value, 0, sizeof value);
    return getter(band_, ssid(), value, sizeof value) == 0;
  }

  void set(const char* key, const char* value) const {
    const wifimgr_band_snapshot& snapshot = store_global[band_];
    (void)std::fprintf(file_, "/userfs/bin/iwpriv %.*s%d set %s=%s\n", static_cast<int>(sizeof snapshot.prefix),
                       snapshot.prefix, static_cast<int>(number_), key, value);
  }

  void set_quoted(const char* key, Value& value) const {
    apply::strip_line_end(value);
    apply::escape_script_value(value);
    char quoted[store::kValueSize + 2];
    (void)std::snprintf(quoted, sizeof quoted, "\"%s\"", value);
    set(key, quoted);
  }

  // As the store has it, line end included.
  void set_if_readable(const char* key, SsidGetter getter) const {
    Value value;
    if (read(getter, value)) set(key, value);
  }

  void set_quoted_if_readable(const char* key, SsidGetter getter) const {
    Value value;
    if (read(getter, value)) set_quoted(key, value);
  }

 private:
  std::FILE* file_;
  uint32_t band_;
  uint32_t number_;
};

void write_access_list(const Script& script) {
  script.set_if_readable("AccessPolicy", wifimgr_lib_get_accessPolicy);
  Value list;
  if (!script.read(wifimgr_lib_get_accessControlList, list)) return;
  script.set("ACLClearAll", "1");
  script.set("ACLAddEntry", list);
}

void write_radius(const Script& script) {
  script.set_if_readable("RADIUS_Server", wifimgr_lib_get_radiusserver);
  script.set_if_readable("RADIUS_Port", wifimgr_lib_get_radiusport);
  script.set_if_readable("RADIUS_Key", wifimgr_lib_get_radiuskey);
  script.set_if_readable("RekeyInterval", wifimgr_lib_get_rekeyInterval);
}

void write_wep_key(const Script& script, int key) {
  Value text = "";
  if (wifimgr_lib_get_keyStr(script.band(), script.ssid(), key, text, sizeof text) != 0 || text[0] == '\0') return;
  char name[16];
  (void)std::snprintf(name, sizeof name, "Key%d", key);
  script.set_quoted(name, text);
}

void write_wep(const Script& script) {
  Value ieee8021x;
  const bool readable = script.read(wifimgr_lib_get_ieee8021x, ieee8021x);
  apply::strip_line_end(ieee8021x);
  if (readable && std::strcmp(ieee8021x, "1") == 0) {
    script.set("IEEE8021X", "1");
    write_radius(script);
  } else {
    script.set("IEEE8021X", "0");
  }
  script.set("AuthMode", "WEPAUTO");
  script.set("EncrypType", "WEP");
  Value key_id;
  script.set("DefaultKeyID", script.read(wifimgr_lib_get_defaultKeyID, key_id) ? key_id : "1");
  for (int key = 1; key <= kWepKeys; ++key) write_wep_key(script, key);
}

// `mode` is what the store has, line end included; `kind` is the same without.
void write_wpa(const Script& script, const char* mode, const char* kind) {
  script.set("AuthMode", mode);
  Value platform_default = "";
  (void)wifimgr_lib_get_IEEE8021X_VAL(platform_default, sizeof platform_default);
  if (is_enterprise(kind)) {
    script.set("IEEE8021X", platform_default);
  } else if (std::strcmp(platform_default, "1") == 0) {
    script.set("IEEE8021X", "0");
  }
  write_radius(script);
  script.set_if_readable("EncrypType", wifimgr_lib_get_encrypType);
  script.set_quoted_if_readable("SSID", wifimgr_lib_get_ssid);
  script.set_quoted_if_readable("WPAPSK", wifimgr_lib_get_WPAPSK);
  script.set("DefaultKeyID", "2");
}

void write_security(const Script& script) {
  Value mode;
  if (!script.read(wifimgr_lib_get_authMode, mode)) return;
  // The last SSID's mode ends in the file's line end; a secured SSID must not become open because of it.
  Value kind;
  std::memcpy(kind, mode, sizeof kind);
  apply::strip_line_end(kind);
  if (std::strstr(kind, "WEP") != nullptr) {
    write_wep(script);
  } else if (apply::is_personal(kind) || is_enterprise(kind)) {
    write_wpa(script, mode, kind);
  } else {
    script.set("AuthMode", "OPEN");
    script.set("EncrypType", "NONE");
    script.set("IEEE8021X", "0");
  }
}

void write_stored_wmm(const Script& script) {
  const int ssids = apply::read_number_or_report(wifimgr_lib_get_bssidnum, script.band(), apply::kSsidCountFailed);
  Value capable;
  if (!script.read(wifimgr_lib_get_wmmCapable, capable)) {
    (void)std::puts(apply::kWmmCapableFailed);
    capable[0] = '\0';
  }
  script.set("WmmCapable", capable);
  // Every SSID's once more, unused; deliberate, the sequence of reads is part of the contract.
  for (int32_t ssid = 1; ssid <= ssids; ++ssid) {
    (void)wifimgr_lib_get_wmmCapable(script.band(), ssid, capable, sizeof capable);
  }
}

void write_wmm_and_burst(const Script& script) {
  const int mode =
      apply::read_number_or_report(wifimgr_lib_get_wirelessMode, script.band(), apply::kWirelessModeFailed);
  if (script.band() == store::k2_4G) {
    // Neither line in these modes, other than on 5G; deliberate.
    if (mode == 6 || mode == 7 || mode == 9 || mode == 16) return;
    write_stored_wmm(script);
  } else if (mode == 8 || mode == 14 || mode == 15 || mode == 17) {
    script.set("WmmCapable", "1");
  } else {
    write_stored_wmm(script);
  }
  script.set("TxBurst", "1");
}

void write_script(const Script& script) {
  write_access_list(script);
  script.set_if_readable("HideSSID", wifimgr_lib_get_hideSSID);
  write_security(script);
  write_wmm_and_burst(script);
  // Once more for the WPA modes, whose part has it already; kept.
  script.set_quoted_if_readable("SSID", wifimgr_lib_get_ssid);
}

// Whichever band it is run for.
bool is_cut_script(const char* command) {
  for (int band = 0; band < store::kBands; ++band) {
    if (g_is_cut[band] && std::strstr(command, kScripts[band]) != nullptr) return true;
  }
  return false;
}

}  // namespace

extern "C" int32_t wifimgr_lib_write_wifi_execute_sh(uint32_t wifi_type, uint32_t ssid_number) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand).as(-1);
  store::Stream file(std::fopen(kScripts[wifi_type], "we"));
  if (!file) return trace::fail(__func__).as(-1);
  write_script(Script(file.get(), wifi_type, ssid_number));
  g_is_cut[wifi_type] = !file.close();
  if (g_is_cut[wifi_type]) {
    store::empty_file(kScripts[wifi_type]);
    return trace::fail(__func__);
  }
  const int32_t result = chmod(kScripts[wifi_type], 0700);
  (void)(result == 0 ? trace::success(__func__) : trace::fail(__func__));
  return result;
}

// On 5G a script runs only when the one-shot flag asks for it, and uses the flag up.
extern "C" uint64_t wifimgr_lib_execute_wlan_script(int32_t wifi_type, const char* command) {
  trace::enter(__func__);
  if (command == nullptr || is_cut_script(command)) return trace::fail(__func__).as(uint64_t{0});
  int result = 0;
  if (wifi_type == store::k2_4G) {
    (void)store::run_line(command);
  } else if (wifi_type == store::k5G && wifimgr_lib_get_11AC_CMDflag() == 1) {
    (void)store::run_line(command);
    result = wifimgr_lib_set_11AC_CMDflag(0);
  }
  return trace::success(__func__).as(static_cast<uint64_t>(result));
}

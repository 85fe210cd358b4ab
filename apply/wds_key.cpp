// The key of one WDS link, checked by that link's cipher.
#include <cstdio>
#include <cstring>

#include "apply/interface.h"
#include "apply/line_end.h"
#include "params/band_setting.h"
#include "store/band.h"
#include "store/record.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

using apply::kWdsLinks;

struct LinkKey {
  explicit LinkKey(int link) { (void)std::snprintf(text, sizeof text, "Wds%dKey", link - 1); }
  char text[store::kValueSize];
};

bool is_link(int link) {
  return link >= 1 && link <= kWdsLinks;
}

bool is_hexadecimal(int length, const char* key) {
  for (int i = 0; i < length; ++i) {
    if (doHexCheck(key[i]) != 1) return false;
  }
  return true;
}

// Copies the cipher of one link out of the four; types are positional, so an empty one stays empty.
void take_cipher(const char* ciphers, int link, char (&cipher)[store::kValueSize + 1]) {
  for (int i = 1; i < link; ++i) ciphers += std::strcspn(ciphers, ";") + 1;
  const size_t length = std::strcspn(ciphers, ";");
  std::memcpy(cipher, ciphers, length);
  cipher[length] = '\0';
  apply::strip_line_end(cipher);
}

// Why `key` cannot be the key of a link with this cipher; null when it can.
const char* refuse_key(const char* cipher, const char* key) {
  const int length = static_cast<int>(strnlen(key, WIFIMGR_FIELD_SIZE));
  if (std::strcmp(cipher, "WEP") == 0) {
    if (wdskey_check_for_wep(length, key) == 0) return nullptr;
    return "Please input 5 or 13 ASCII characters / 10 or 26 hexadecimal characters!";
  }
  if (std::strcmp(cipher, "TKIP") == 0 || std::strcmp(cipher, "AES") == 0) {
    if (wdskey_check(length, key) == 0) return nullptr;
    return "Please input 8 to 64 hexadecimal characters!";
  }
  return "WdsEntryType in datfile is ERR.";
}

}  // namespace

extern "C" int wdskey_check_for_wep(int length, const char* key) {
  if (key == nullptr) return -1;
  if (length == 5 || length == 13) return 0;
  return (length == 10 || length == 26) && is_hexadecimal(length, key) ? 0 : -1;
}

// A passphrase of any characters, or a raw key.
extern "C" int wdskey_check(int length, const char* key) {
  if (key == nullptr || length < 8 || length > 64) return -1;
  return length < 64 || is_hexadecimal(length, key) ? 0 : -1;
}

// Reads field `index` of the link's key while the setter writes field 1, so only link 1 reads what was written;
// deliberate.
extern "C" int wifimgr_lib_get_wdskey(int wifi_type, int index, char* buf, unsigned len) {
  trace::enter(__func__);
  if (buf == nullptr) return trace::fail(__func__);
  if (!is_link(index))
    return trace::fail_printing(__func__, "The wdskey index is invalid, please input 1 to %d.", kWdsLinks);
  if (read_attr(wifi_type, index, LinkKey(index).text, buf, len) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}

extern "C" uint64_t wifimgr_lib_set_wdskey(uint32_t wifi_type, int32_t index, const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  if (!is_link(index)) return trace::fail_printing(__func__, "The wdskey index should be from 1 to %d.", kWdsLinks);
  const int band = store::band_number(wifi_type);
  char ciphers[store::kValueSize] = "";
  if (wifimgr_lib_get_wdsencryptype(band, -1, ciphers, sizeof ciphers) != 0) {
    return trace::fail(__func__, "get_wdsencryptype err.");
  }
  if (charCnt(ciphers, ';') != kWdsLinks - 1)
    return trace::fail_printing(__func__, "The number of WdsEncrypType is should be %d.", kWdsLinks);
  char cipher[store::kValueSize + 1];
  take_cipher(ciphers, index, cipher);
  const char* const refusal = refuse_key(cipher, value);
  if (refusal != nullptr) return trace::fail(__func__, refusal);
  if (update_attr(band, -1, LinkKey(index).text, value) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}

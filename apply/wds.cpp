// The WDS settings of a band: on or off, cipher and PHY mode of each link, peers.
#include <cstring>

#include "apply/interface.h"
#include "params/band_setting.h"
#include "store/band.h"
#include "store/band_value.h"
#include "store/record.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

using apply::kWdsLinks;

constexpr size_t kMacLength = 17;

// What a link may be, one word of four.
using Words = char[4][12];

// Ends the list scan on every way out: its position must not outlive the buffer that it points into.
struct ListScan {
  explicit ListScan(char* list) : token(rstrtok(list, ";")) {}
  ListScan(const ListScan&) = delete;
  ListScan& operator=(const ListScan&) = delete;
  ~ListScan() { __rstrtok = nullptr; }

  void next() { token = rstrtok(nullptr, ";"); }

  const char* token;
};

bool is_one_of(const Words& words, const char* token) {
  for (const auto& word : words) {
    if (rtstrcasecmp(word, token) == 1) return true;
  }
  return false;
}

// Four words, one per link. The caller's arguments come first and in its order.
uint64_t set_link_words(uint32_t wifi_type, int32_t index, const char* value, const char* function, const char* key,
                        const Words& words, const char* word_refusal, const char* count_refusal) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (index != -1) return trace::fail(function, params::kIndexShouldBeMinusOne);
  char list[store::kValueSize + 1] = "";
  std::memcpy(list, value, strnlen(value, store::kValueSize));
  char written[sizeof list];
  std::memcpy(written, list, sizeof list);
  int links = 0;
  // A fifth word is one too many, whatever it says.
  for (ListScan scan(list); scan.token != nullptr && links <= kWdsLinks; scan.next(), ++links) {
    if (links < kWdsLinks && !is_one_of(words, scan.token)) return trace::fail(function, word_refusal);
  }
  if (links != kWdsLinks) return trace::fail_printing(function, count_refusal, kWdsLinks);
  if (update_attr(store::band_number(wifi_type), -1, key, written) != 0) return trace::fail(function);
  return trace::success(function);
}

// Two hexadecimal digits in each of six groups; what separates the groups is not looked at, deliberately.
bool has_mac_digits(const char* token) {
  for (size_t i = 0; i < kMacLength; ++i) {
    if (i % 3 != 2 && doHexCheck(token[i]) != 1) return false;
  }
  return true;
}

}  // namespace

extern "C" int wifimgr_lib_get_wdsenable(int wifi_type, int index, char* buf, unsigned len) {
  return store::get_band_value(wifi_type, index, buf, len, __func__, "WdsEnable");
}

extern "C" int wifimgr_lib_get_wdslist(int wifi_type, int index, char* buf, unsigned len) {
  return store::get_band_value(wifi_type, index, buf, len, __func__, "WdsList");
}

extern "C" int wifimgr_lib_get_wdsencryptype(int wifi_type, int index, char* buf, unsigned len) {
  return store::get_band_value(wifi_type, index, buf, len, __func__, "WdsEncrypType");
}

extern "C" int wifimgr_lib_get_wdsphymode(int wifi_type, int index, char* buf, unsigned len) {
  return store::get_band_value(wifi_type, index, buf, len, __func__, "WdsPhyMode");
}

// "diffrent": callers match the text, keep the spelling.
extern "C" uint64_t wifimgr_lib_set_wdsenable(uint32_t wifi_type, int32_t index, const char* value) {
  return params::set_band_value(wifi_type, index, value, __func__, "WdsEnable",
                                "Please input value from 0 to 4(0:disable;1-4:diffrent modes,recommend 1).",
                                params::ACCEPTS_ONE_DIGIT(0, 4, nullptr));
}

extern "C" uint64_t wifimgr_lib_set_wdsencryptype(uint32_t wifi_type, int32_t index, const char* value) {
  static constexpr Words kWords = {"NONE", "WEP", "TKIP", "AES"};
  return set_link_words(wifi_type, index, value, __func__, "WdsEncrypType", kWords,
                        "Please input value from NONE,WEP,TKIP,AES.", "Please input %d wdsencryptypes");
}

extern "C" uint64_t wifimgr_lib_set_wdsphymode(uint32_t wifi_type, int32_t index, const char* value) {
  static constexpr Words kWords = {"CCK", "OFDM", "HTMIX", "GREENFIELD"};
  return set_link_words(wifi_type, index, value, __func__, "WdsPhyMode", kWords,
                        "Please input value from CCK,OFDM,HTMIX,GREENFIELD.", "Please input %d wdsphyModes");
}

extern "C" uint64_t wifimgr_lib_set_wdslist(uint32_t wifi_type, int32_t index, const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  if (index != -1) return trace::fail(__func__, params::kIndexShouldBeMinusOne);
  char list[128] = "";
  std::memcpy(list, value, strnlen(value, sizeof list - 1));
  int peers = 0;
  for (ListScan scan(list); scan.token != nullptr; scan.next(), ++peers) {
    if (std::strlen(scan.token) != kMacLength) return trace::fail(__func__, "Please input acceptable Mac address.");
    if (std::strcmp(scan.token, "00:00:00:00:00:00") != 0 && !has_mac_digits(scan.token)) {
      return trace::fail(__func__, "Mac address check error!");
    }
  }
  if (peers != kWdsLinks || charCnt(value, ';') > kWdsLinks - 1)
    return trace::fail_printing(__func__, "Please input %d Mac addresses", kWdsLinks);
  if (update_attr(store::band_number(wifi_type), -1, "WdsList", value) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}

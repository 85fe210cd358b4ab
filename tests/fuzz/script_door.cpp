#include <cstring>
#include <memory>

#include "api_lib_utility.h"
#include "fuzz/library_stand.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

// What a shell makes of an escaped word: a backslash takes the meaning from the next character, and a line end behind
// one vanishes. Nothing else may have a meaning.
std::string word_of(const std::string& escaped) {
  static constexpr char kMeaningful[] = "|&;<>()$`\"'*?[]#~ \t\n";
  std::string word;
  for (size_t i = 0; i < escaped.size(); ++i) {
    if (escaped[i] == '\\') {
      fuzz::require(++i < escaped.size(), "an escaped word does not end in a backslash");
      if (escaped[i] != '\n') word += escaped[i];
    } else {
      fuzz::require(std::strchr(kMeaningful, escaped[i]) == nullptr, "nothing of an escaped word has a meaning");
      word += escaped[i];
    }
  }
  return word;
}

void escape(const std::string& text) {
  std::string without_line_ends;
  for (const char character : text) {
    if (character != '\n') without_line_ends += character;
  }
  for (const size_t size : {size_t{1}, text.size() + 1, 2 * text.size() + 1}) {
    const auto out = std::make_unique<char[]>(size);
    const int result = api_escape_parameter(text.c_str(), out.get(), static_cast<int>(size));
    fuzz::require(memchr(out.get(), '\0', size) != nullptr, "an escaped word ends");
    if (result != 0) {
      fuzz::require(size < 2 * text.size() + 1 && out[0] == '\0', "a word is empty that does not fit");
    } else {
      fuzz::require(word_of(out.get()) == without_line_ends, "an escaped word is the text");
    }
  }
}

}  // namespace

// A band and how many SSIDs, then "key", index and value of what a foreign caller stores, each ended by a NUL.
void fuzz::try_script(std::string_view input) {
  Bytes bytes(input);
  const int band = bytes.byte() % 2;
  const uint32_t ssid = bytes.byte() % 10;
  static const std::string kDat[] = {sandbox::full_dat(0), sandbox::full_dat(1)};
  require(load(band, kDat[band]) == 0, "the dat file is loaded");
  for (int changes = 0; changes < 16 && !bytes.is_empty(); ++changes) {
    const std::string key = bytes.text();
    const int index = bytes.byte() % 10 - 1;
    const std::string value = bytes.text();
    (void)update_attr(band, index, key.c_str(), value.c_str());
    escape(value);
  }
  (void)wifimgr_lib_wifi_config_oper(static_cast<uint32_t>(band), 0);
  quietly([&] {
    (void)wifimgr_lib_write_wifi_execute_sh(static_cast<uint32_t>(band), ssid);
    (void)wifimgr_lib_execute_wlan_script(band, "/etc/Wireless/RT2860AP/WLAN_exec.sh");
    const uint32_t start = ssid;
    const int index = static_cast<int>(ssid) - 1;
    (void)wifimgr_lib_service_start_wps("/tmp/wps.sh", band, index, &start);
    (void)wifimgr_lib_service_stop_wps("/tmp/wps.sh", band, index);
    (void)wifimgr_lib_service_genpincode("/tmp/wps.sh", band, index);
    (void)wifimgr_lib_service_resetoob("/tmp/wps.sh", band, index);
  });
  require_whole_store(band);
}

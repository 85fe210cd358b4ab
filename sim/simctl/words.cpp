#include "sim/simctl/words.h"

#include <strings.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "sim/base/text.h"
#include "sim/driver/reading.h"
#include "sim/state/driver_state.h"

namespace gateway::tools::simctl {

void expect_words(const Words& words, size_t least, size_t most) {
  if (words.size() < least) throw UsageError("a word is missing");
  if (words.size() > most) throw UsageError("one word too many: " + words[most]);
}

Band band_from(const std::string& word) {
  for (const Band band : kBands) {
    const std::string label = traits(band).label;
    if (strcasecmp(word.c_str(), label.c_str()) == 0 || word + "G" == label) return band;
  }
  throw UsageError("no band is called " + word + ": 2.4g or 5g");
}

Band loaded_band_from(const std::string& word) {
  const Band band = band_from(word);
  if (driver_interfaces(band).empty())
    throw Refusal("the " + std::string(traits(band).label) + " driver is not loaded");
  return band;
}

std::string interface_from(const std::string& word) {
  const std::optional<Band> band = band_of(word);
  if (!band) throw UsageError("no radio has an interface " + word + ": ra0 to ra7, rai0 to rai7");
  const Words interfaces = driver_interfaces(*band);
  if (std::find(interfaces.begin(), interfaces.end(), word) != interfaces.end()) return word;
  const std::string label = traits(*band).label;
  throw Refusal(interfaces.empty() ? "the " + label + " driver is not loaded"
                                   : "the " + label + " radio has no " + word + ", only " + joined(interfaces, " "));
}

uint32_t number_from(const std::string& word, const char* what, uint32_t most) {
  const bool is_hex = word.rfind("0x", 0) == 0 || word.rfind("0X", 0) == 0;
  const char* const digits = is_hex ? "0123456789abcdefABCDEF" : "0123456789";
  const std::string number = is_hex ? word.substr(2) : word;
  char* end = nullptr;
  errno = 0;
  const unsigned long long value = std::strtoull(number.c_str(), &end, is_hex ? 16 : 10);
  if (number.empty() || number.find_first_not_of(digits) != std::string::npos || errno != 0 || value > most) {
    throw UsageError("not a " + std::string(what) + " from 0 to " + std::to_string(most) + ": " + word);
  }
  return static_cast<uint32_t>(value);
}

long milliseconds_from(const std::string& word, long most) {
  char* end = nullptr;
  const double seconds = std::strtod(word.c_str(), &end);
  if (!is_count(word) || *end != '\0') throw UsageError("not a time in seconds: " + word);
  if (!(seconds * 1000 <= static_cast<double>(most))) {
    throw UsageError("a time has at most " + std::to_string(most / 1000) + " seconds: " + word);
  }
  return std::lround(seconds * 1000);
}

std::string delay_text(long ms) {
  char text[64];
  std::snprintf(text, sizeof text, "waits %ld.%03ld s", ms / 1000, ms % 1000);
  return text;
}

bool is_count(const std::string& word) {
  return !word.empty() && word[0] >= '0' && word[0] <= '9';
}

int count_from(const Words& words, size_t at) {
  const auto count = static_cast<int>(number_from(words[at], "count", INT32_MAX));
  if (count == 0 || at + 1 != words.size()) throw UsageError("the count comes last, from 1 on: " + words[at]);
  return count;
}

std::string times_text(int count) {
  if (count < 0) return {};
  std::string text(1, ' ');
  text += std::to_string(count);
  text += count == 1 ? " time" : " times";
  return text;
}

Mac mac_from(const std::string& word) {
  Mac mac = {};
  if (!parse_mac(word.c_str(), mac.data())) throw UsageError("not a hardware address: " + word);
  return mac;
}

std::string reading_from(const std::string& word, const char* what) {
  if (!is_reading(word.c_str()) || word.size() >= kReadingSize) {
    throw UsageError("not a " + std::string(what) + ": " + word + " (a number, or one after ~ to let it wander)");
  }
  return word;
}

std::map<std::string, std::string> pairs_from(const Words& words, size_t first, const Words& keys) {
  std::map<std::string, std::string> pairs;
  for (size_t i = first; i < words.size(); ++i) {
    const size_t equals = words[i].find('=');
    const std::string key = words[i].substr(0, equals);
    if (equals == std::string::npos || std::find(keys.begin(), keys.end(), key) == keys.end()) {
      throw UsageError("unknown: " + words[i] + " (known: " + joined(keys, "=, ") + "=)");
    }
    pairs[key] = words[i].substr(equals + 1);
  }
  return pairs;
}

}  // namespace gateway::tools::simctl

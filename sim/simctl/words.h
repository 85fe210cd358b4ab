// The words of a command line, understood or refused.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "sim/base/band.h"
#include "sim/driver/lists.h"
#include "sim/simctl/simctl.h"

namespace gateway::tools::simctl {

// Refuses any other number of words.
void expect_words(const Words& words, size_t least, size_t most);

Band band_from(const std::string& word);

// A BSS that the driver has now.
std::string interface_from(const std::string& word);

// A radio whose driver is loaded.
Band loaded_band_from(const std::string& word);

// Decimal, or hexadecimal after 0x.
uint32_t number_from(const std::string& word, const char* what, uint32_t most = UINT32_MAX);

// Seconds, with a fraction or without, as milliseconds.
long milliseconds_from(const std::string& word, long most);

// "waits 0.250 s".
std::string delay_text(long ms);

// A count at the end of the words: from 1 on.
bool is_count(const std::string& word);
int count_from(const Words& words, size_t at);

// " 2 times"; empty for a count without end.
std::string times_text(int count);

using Mac = std::array<uint8_t, kMacSize>;
Mac mac_from(const std::string& word);

// "-92" or "~-92".
std::string reading_from(const std::string& word, const char* what);

// The words from `first` on, each KEY=VALUE with one of the keys.
std::map<std::string, std::string> pairs_from(const Words& words, size_t first, const Words& keys);

}  // namespace gateway::tools::simctl

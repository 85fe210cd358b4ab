// What the tests of this room's settings in the store share.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace store_setting {

// Loads both bands, each with an SSID count of its own and this room's keys; field 1 of "Key" holds "Key.1@<band>".
void load(const std::string& count_of_2_4g = "2", const std::string& count_of_5g = "3");

// Loads one band so; the other stays without a store.
void load_band(int band, const std::string& ssid_count);

// Loads a text without an SSID count, which wifimgr_lib_init would refuse.
void load_without_count(int band, const std::string& text);

struct Setting {
  const char* setter;
  uint64_t (*set)(uint32_t wifi_type, int32_t index, const char* value);
  const char* getter;
  int (*get)(int wifi_type, int index, char* buf, unsigned len);
};

// Sets a value and expects it in field 1 of the key, and no other change in either band.
void expect_written(const Setting& setting, uint32_t band, int32_t index, const std::string& key,
                    const std::string& value);

// Sets a value that must be refused and change nothing; returns the setter's own messages.
std::vector<std::string> refused(const Setting& setting, uint32_t band, int32_t index, const char* value);

// Reads what must be there.
std::string read(const Setting& setting, int band, int index);

// Reads what must be refused and leave the buffer as it was; returns the getter's own messages.
std::vector<std::string> not_read(const Setting& setting, int band, int index, bool into_null = false);

// All messages of a call that succeeds, and of one that fails, for that reason or without one.
std::vector<std::string> succeeds(const std::string& function);
std::vector<std::string> fails(const std::string& function, const std::string& why = "");

// "The ssid index should be from 1 to BssidNum:<count>."
std::string out_of_range(const char* count);

// Numbers, however written, that count as 0 or 1; those that are neither 0, 1 nor 2.
extern const std::vector<const char*> kZeroOrOne, kAboveTwoOrNegative;

extern const std::vector<int32_t> kNeverAnSsid;
extern const std::vector<uint32_t> kUnknownBands;

}  // namespace store_setting

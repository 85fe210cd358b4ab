// Words of more than one verb.
#pragma once

#include <string>

#include "wifimgr_lib.h"
#include "wlanctl/command_line/verb.h"

namespace wlanctl::word {

std::string band_refusal(const std::string& text);

// Both bands where it is left out.
inline constexpr Word kBand = {
    "BAND", &Words::band, "2.4g or 5g; both where it is left out", {.refusal = band_refusal, .offers = "band"}};
inline constexpr Word kOneBand = {
    "BAND", &Words::band, "2.4g or 5g", {.required = true, .refusal = band_refusal, .offers = "band"}};

// All SSIDs where it is left out.
inline constexpr Word kSsid = {"SSID",
                               &Words::ssid,
                               "1 to 8; all where it is left out",
                               {.lowest = 1, .highest = WIFIMGR_FIELDS, .needs = "BAND"}};
inline constexpr Word kOneSsid = {
    "SSID", &Words::ssid, "1 to 8", {.required = true, .lowest = 1, .highest = WIFIMGR_FIELDS}};

inline constexpr Word kSecrets = {"--secrets", &Words::secrets, "Show passphrases and keys"};
inline constexpr Word kWait = {
    "--wait", &Words::wait_seconds, "Seconds to wait for another wlanctl", {.shows_default = true}};

inline constexpr Word kCommandTimeout = {"--command-timeout",
                                         &Words::command_seconds,
                                         "Longest time for each command that is run",
                                         {.lowest = 1, .highest = 3600, .value_name = "SECONDS"}};

}  // namespace wlanctl::word

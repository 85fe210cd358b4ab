// What the verbs of ssid say of a change.
#pragma once

#include "wlanctl/base/report.h"
#include "wlanctl/ssid/change.h"

namespace wlanctl {

enum class ChangeIs { kTried, kInStore, kInFile };

// 'SSID 3 "Guest" (ra2)'
std::string title_of(Band band, int ssid, const std::string& name);

// "WPA2PSK/AES"
std::string security_of(Band band, int ssid);

// Name, security and values of an SSID that goes, and what its going means to those behind it.
std::string farewell(const SsidPlan& plan);

// `done` completes 'SSID 3 "Guest" (ra2) ': "is added".
void tell_change(const JudgedPlan& judged, const std::string& done, ChangeIs is, Report& report);
Json json_of(const JudgedPlan& judged);

}  // namespace wlanctl

// The driver's texts, kept in this process.
#pragma once

#include <map>
#include <string>

extern "C" {
#include "box/driver/bss_settings.h"
#include "box/driver/dat.h"
#include "box/driver/fault_list.h"
#include "box/driver/radio_state.h"
#include "sim/driver/state.h"
}

namespace box_test {

// By folder and name.
using Texts = std::map<std::pair<std::string, std::string>, std::string>;
Texts& texts();

inline constexpr char kDat[] =
    "Default\n"
    "#Channel=1\n"
    "BssidNum=2\n"
    "Channel=11\r\n"
    "Channel=3\n"
    "AuthMode=OPEN;WPA2PSK\n"
    "EnableSSID=1;;0\n"
    "WscConfMode=0;7\n"
    "SSID1=a;b\\c\n"
    "SSID2=second\n"
    "WPAPSK2=passphrase\n"
    "AccessPolicy1=2\n"
    "AccessControlList1=02:aa:bb:cc:dd:01;02:aa:bb:cc:dd:02";

// Takes a text of the driver's over.
std::string taken(char* text);

// What the driver has for an interface, one key.
std::string setting(const std::string& interface, const char* key);

// A radio of the 2.4G band with two BSSs.
void start_two();

}  // namespace box_test

// The checks of `doctor`, by what they look at. They change nothing and wait for nobody, but for a moment where a program
// or a band's driver is asked.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/doctor/diagnosis.h"

namespace wlanctl {

// The settings of a band by their dat keys: the store's or, where there is none, the dat file's.
using Settings = std::map<std::string, std::vector<std::string>>;

void check_dat_file(Band band, Diagnosis& diagnosis);
void check_store(Band band, Diagnosis& diagnosis);
void check_values(Band band, const std::vector<wifimgr_attr_record>& table, Diagnosis& diagnosis);
void check_lock(Band band, Diagnosis& diagnosis);
void check_rights(Diagnosis& diagnosis);
void check_tools(Diagnosis& diagnosis);
void check_address_text(Diagnosis& diagnosis);
void check_module(Band band, Diagnosis& diagnosis);
void check_interfaces(Band band, const Settings& settings, Diagnosis& diagnosis);
void check_driver(Band band, Diagnosis& diagnosis);
void check_folders(const std::vector<Band>& bands, Diagnosis& diagnosis);
void check_applies(Band band, Diagnosis& diagnosis);

Settings settings_of(Band band);

// All of them, in an order in which the first is likely to be the cause of the rest.
Diagnosis diagnose(const std::vector<Band>& bands);

}  // namespace wlanctl

// The history's entries as words of the command line, and as log and undo show them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/report.h"
#include "wlanctl/command_line/verb.h"
#include "wlanctl/history/folder.h"

namespace wlanctl {

std::optional<unsigned> parse_entry_number(const std::string& text);
std::string entry_refusal(const std::string& text);

// Reads what there is; notes about what had to be skipped. False with a problem when none is to be had.
bool look_at_history(History* history, Report& report);

const Entry* find_entry(const History& history, unsigned number);

// A problem says that there is none of that number.
Problem no_such_entry(unsigned number);

// How it went, in pieces: "radio", "in force", "confirmed".
std::vector<std::string> result_words(const History& history, const Entry& entry);

Json json_of(const History& history, const Entry& entry, bool secrets);

// A secret's is masked unless `secrets`.
std::string shown_value(const SettingChange& change, const std::string& value, bool secrets);
Json json_value(const SettingChange& change, const std::string& value, bool secrets);

}  // namespace wlanctl

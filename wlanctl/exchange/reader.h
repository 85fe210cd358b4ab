// Reads settings from a file: JSON as export writes it, a dat file, or lines of KEY[:N]=VALUE.
#pragma once

#include <optional>
#include <string>

#include "wlanctl/exchange/settings_text.h"

namespace wlanctl {

class Report;

// The bytes of a file, or of standard input for "-". None with a problem where it is none, cannot be read, or is larger
// than kLargestSettingsText: a pipe or a device would be waited for.
std::optional<std::string> read_settings_file(const std::string& path, Report& report);

// JSON where the first character says so, else a dat file, which is of `band`: without one it is refused. Touches nothing.
SettingsText read_settings(const std::string& bytes, const std::optional<Band>& band);

// Lines of KEY[:N]=VALUE, with comments (#) and blank lines. They are of `band`; a line "[BAND]" begins those of another
// where there is none.
SettingsText read_lines(const std::string& bytes, const std::optional<Band>& band);

// Tells the problems, each with "FILE:LINE: " in front. Of more than so many only their count is told.
inline constexpr size_t kMostTold = 10;
void report_problems(const std::string& file, const SettingsText& text, Report& report, size_t most = kMostTold);

// "FILE:LINE"; standard input has a name, too.
std::string place_in(const std::string& file, int line);
std::string name_of_file(const std::string& file);

}  // namespace wlanctl

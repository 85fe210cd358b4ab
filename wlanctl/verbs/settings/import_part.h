// A band's part of an import: what is judged, stored and told.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/command_line/verb.h"
#include "wlanctl/exchange/storing.h"
#include "wlanctl/exchange/wishes.h"

namespace wlanctl {

class Report;

struct ImportPart {
  Band band = Band::k2_4G;
  std::vector<LeftAlone> left;
  StorePlan plan;
  std::vector<ValueChange> changes;
  std::vector<std::string> added;  // keys that the dat file lacked
  std::string next;                // "" where nothing is to be done, or more than a command
};

// What the text makes of the store that the library works on. Every refusal is a problem; of a text of both bands, a note
// says of which it is.
ImportPart judged_import(Band band, const SettingsText& text, const Words& words, Report& report);

void note_all(const SettingsText& text, const Words& words, Report& report);

void tell_left(const ImportPart& part, Report& report);

// The values that changed; `where` completes "12 values stored".
void tell_changes(const ImportPart& part, const Words& words, const std::string& where, Report& report);
void tell_data(const Words& words, const SettingsText& text, const std::vector<ImportPart>& parts, Report& report);

}  // namespace wlanctl

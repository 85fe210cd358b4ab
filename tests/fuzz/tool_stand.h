// What the doors of wlanctl share: its own code in the door's process, and what may stand in what it prints.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fuzz/door.h"
#include "wifimgr_lib.h"
#include "wlanctl/base/report.h"

namespace fuzz {

wlanctl::Band band_by(uint8_t byte);

using Table = std::vector<wifimgr_attr_record>;

// The records of a dat file with this text, as the tool reads them.
Table loaded(wlanctl::Band band, std::string_view dat_text);

// A live store with all settings, that the library and the tool work on; what is done in it stays. Its records.
const Table& open_full_store(wlanctl::Band band);

// A file under /tmp with these bytes; returns its path.
std::string file_with(const std::string& name, std::string_view bytes);

// What a run printed, on standard output and standard error.
std::string heard(const std::function<void()>& run);

// Runs a verb twice, for its text and for its JSON; neither has anything that a terminal acts on. Returns both.
std::string told_by(const std::function<int(wlanctl::Report& report)>& verb);

// No control character but line ends, and UTF-8 to the last byte.
void require_printable(const std::string& text);

// The same, and a parser takes it.
void require_json(const std::string& document);

// No longer forms than needed, no halves of pairs, nothing beyond the last character.
bool is_utf8(const std::string& text);

// Whether a value would be known again in what the tool says: neither its own words nor JSON have such a piece.
bool is_telltale(const std::string& value);

}  // namespace fuzz

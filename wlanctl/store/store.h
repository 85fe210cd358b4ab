// The live store of a band, shared with the management processes, and private copies of it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/keys/key.h"

namespace wlanctl {

class Report;

enum class Opening {
  kUsual,
  kLeavePending,  // an apply that waits for its confirmation is left as it is, even if its guardian is lost
  kToFill,        // an empty store will do
};

// Makes the library work on the band's live store: attaches the segment that is there, so that nothing of what other
// processes hold is lost; only where there is none is the dat file loaded. False with a problem when neither works, when
// the store is empty, and when another process holds its lock and does not let go.
bool open_store(Band band, Report& report, Opening how = Opening::kUsual);

// Attaches the segment anew where somebody has removed it, and made another, since it was opened.
bool reopen_if_replaced(Band band, Report& report);

// A record of a store or a dat file: a dat key and its fields, without line ends, empty ones at the end cut.
struct StoreRecord {
  std::string key;
  std::vector<std::string> fields;
};

std::vector<StoreRecord> records_of_store(Band band);

// The records as they lie there, up to the table's end.
std::vector<wifimgr_attr_record> table_of_store(Band band);

// As the library's own parser reads the file, and never in the middle of another process's save; none when it cannot be
// opened.
std::optional<std::vector<wifimgr_attr_record>> parse_dat_file(Band band);
std::vector<StoreRecord> records_of_file(const std::vector<wifimgr_attr_record>& parsed);

std::string dat_path_of(Band band);

// Points the library at a private copy of the band's store while it lives; what is done then reaches nobody.
class PrivateStore {
 public:
  explicit PrivateStore(Band band);                                          // of the live store
  PrivateStore(Band band, const std::vector<wifimgr_attr_record>& content);  // of a dat file
  PrivateStore(const PrivateStore&) = delete;
  PrivateStore& operator=(const PrivateStore&) = delete;
  ~PrivateStore();

 private:
  Band band_;
  char* live_;
  std::vector<char> copy_;
};

// Whether a dat file has all that a save of the live store would have written.
bool is_complete(Band band, const std::vector<wifimgr_attr_record>& file);

// Puts the content of a dat file into the live store, in one step for everybody else. False when it does not fit or the
// lock cannot be had.
bool replace_store(Band band, const std::vector<wifimgr_attr_record>& content);

enum class Reverting { kDone, kUnreadable, kIncomplete, kNoRoom };

struct Reverted {
  Reverting how = Reverting::kDone;
  std::vector<wifimgr_attr_record> before;
  std::vector<wifimgr_attr_record> file;
  std::vector<std::string> missing;  // keys that the store has and the file should have
};

// Puts the band's dat file into the live store, in one step. A file that was cut off, or never written to its end, is
// refused unless `even_if_incomplete`: the store may be all that is left of the settings.
Reverted revert_store(Band band, bool even_if_incomplete);

// Spreads the list that a setter left in one place over the fields, as the loader does with the dat file's line: what is
// left of a longer list would come behind it. Does nothing where a list has a record of its own.
void spread_list(Band band, const Key& key, const std::string& value);

// Field values, without their line end; a list as a whole. None when the key is not in the store.
std::optional<std::string> read_value(Band band, const Key& key, int index);

int ssid_count(Band band);

inline constexpr char kMasked[] = "********";

}  // namespace wlanctl

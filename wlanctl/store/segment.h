// The live store of a band: a segment and its lock, shared with the management processes.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"
#include "wlanctl/library/detached_store.h"

namespace wlanctl {

class Report;

enum class Content {
  kNeeded,
  kToCome,  // an empty store will do
};

// Makes the library work on the band's live store: attaches the segment that is there, so that nothing of what other
// processes hold is lost; only where there is none is the dat file loaded. False with a problem when neither works, when
// the store is empty, and when another process holds its lock and does not let go.
bool open_store(Band band, Report& report, Content content = Content::kNeeded);
bool is_store_open(Band band);

// The key of its segment; and as ipcrm -M takes it.
key_t segment_key(Band band);
std::string segment_key_of(Band band);

// Whether there is a live store that this user may have, opened or not.
bool has_store(Band band);

// Whether the kernel has one at this moment, for whomever.
bool is_store_there(Band band);

// The same for who only looks: where there is no store it is not made, but the dat file is read, with a note.
bool look_at_store(Band band, Report& report);

// Whether it is only the dat file that is looked at.
bool is_store_detached(Band band);

// Attaches the segment anew where somebody has removed it, and made another, since it was opened.
bool reopen_if_replaced(Band band, Report& report);

// The records as they lie there, up to the table's end.
std::vector<wifimgr_attr_record> table_of_store(Band band);

// Puts the content of a dat file into the live store, in one step for everybody else. False when it does not fit or the
// lock cannot be had.
bool replace_store(Band band, const std::vector<wifimgr_attr_record>& content);

// The band's lock, taken for one step, and what needs it.
class StoreLock {
 public:
  explicit StoreLock(Band band);
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;
  ~StoreLock();
  explicit operator bool() const { return held_; }

  bool is_empty() const;  // of records
  std::vector<wifimgr_attr_record> table() const;
  bool replace(const std::vector<wifimgr_attr_record>& content) const;

  // How many records there is room for behind the others, and puts some there: all of them at once, for who takes no lock
  // and after a kill, too. False when they do not fit.
  size_t free_records() const;
  bool append(const std::vector<wifimgr_attr_record>& records) const;

 private:
  Band band_;
  int id_;
  bool held_;
};

// The band's segment; -1 when there is none, or it is not for this user.
int segment_of(Band band);

// The band's semaphore; -1 when there is none, or it is not for this user.
int semaphore_of(Band band);

// The segment's room in bytes, and when it was made, on the clock on the wall; 0 for none.
size_t size_of_store(Band band);
time_t store_made_at(Band band);

// While it lives, the library works on a store with more room than the live one has, and the kernel knows nothing of it.
class EnlargedStore {
 public:
  EnlargedStore(Band band, const std::vector<wifimgr_attr_record>& content);
  EnlargedStore(const EnlargedStore&) = delete;
  EnlargedStore& operator=(const EnlargedStore&) = delete;
  ~EnlargedStore();

 private:
  Band band_;
  DetachedStore store_;
  int opened_;
};

}  // namespace wlanctl

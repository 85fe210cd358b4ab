// The files of a band: its dat file, and what the tool keeps of applies.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "wlanctl/base/band.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/watch/event.h"

namespace wlanctl {

class LinkWatch;

// Which bytes a file has, as far as can be told without reading it.
struct FileMark {
  bool is_there = false;
  uint64_t device = 0;
  uint64_t number = 0;
  int64_t size = 0;
  int64_t seconds = 0;
  int64_t nanoseconds = 0;

  bool operator==(const FileMark&) const = default;
};
FileMark mark_of(const std::string& path);

class FileWatch {
 public:
  // The kind of the events that are about the dat file itself; the others are about applies.
  static constexpr char kOfFile[] = "dat-file";

  explicit FileWatch(Band band);

  // The folders whose files these are.
  static std::string folder_of_state();
  std::string folder_of_dat() const;

  // Tells what differs from the last look. `finished` are the names of files that somebody has just finished: another one
  // is told when it stays the same from one look to the next, as it may still be being written.
  void look(const std::set<std::string>& finished, const LinkWatch& links, Events& events);

 private:
  void look_at_dat(const std::set<std::string>& finished, Events& events);
  void look_at_applied(const LinkWatch& links, Events& events);
  void look_at_pending(Events& events);
  bool is_confirmed() const;

  Band band_;
  FileMark dat_;
  FileMark dat_seen_;
  FileMark applied_;
  std::string in_force_;       // the sum of the settings that were last applied
  bool is_changing_ = false;   // by an apply, or a save
  unsigned long changes_ = 0;  // of the band's interfaces, when that began
  FileMark pending_;
  std::optional<Phase> phase_;
  FileMark applied_at_waiting_;
  std::string dat_before_;  // the sum of the dat file that a roll back would put back
  bool is_first_ = true;
};

}  // namespace wlanctl

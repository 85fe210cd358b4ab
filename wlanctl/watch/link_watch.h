// The interfaces of the radios, as the kernel tells of them: it reports each change by itself. Where it gives no such
// socket, they are looked at, and what comes and goes between two looks is not seen.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "wlanctl/base/band.h"
#include "wlanctl/watch/event.h"

struct nlmsghdr;

namespace wlanctl {

class LinkWatch {
 public:
  LinkWatch();
  LinkWatch(const LinkWatch&) = delete;
  LinkWatch& operator=(const LinkWatch&) = delete;
  ~LinkWatch();

  // Readable when there is something to take; -1 where they are only looked at.
  int file() const { return file_; }

  // Tells what came since the last call. Where the kernel had more to say than it keeps, all interfaces are asked anew.
  void take(Events& events);

  bool is_there(const std::string& interface) const;

  // How often an interface of that band came up, went down, came or went.
  unsigned long changes_of(Band band) const { return changes_[number_of(band)]; }

 private:
  struct Link {
    std::string name;
    bool is_up = false;
    std::string bridge;
    bool is_told = true;  // by the answer to the last question for all
  };

  void ask_for_all();
  void look_around(Events* events);
  void take_message(const nlmsghdr& head, Events* events);
  void change(int index, const std::optional<Link>& now, Events* events);

  int file_;
  bool is_baseline_ = true;
  std::map<int, Link> links_;  // by the kernel's number; those of the radios
  unsigned long changes_[kBandCount] = {};
};

// The band whose driver names its interfaces so: "ra0", "wds3" or "rai0", "wdsi3"; none for others.
std::optional<Band> band_of_interface(const std::string& name);

}  // namespace wlanctl

// What adds an SSID to a band, takes one away, or changes one: as values to be set, in their order.
#pragma once

#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/ssid/security.h"

namespace wlanctl {

struct SsidWrite {
  Target target;
  std::string value;
  // What another SSID had, the default, or nothing at all: stored as it is where the setter refuses it, and not judged.
  bool is_given = false;
};

// An SSID that gets another number, and thereby another interface.
struct MovedSsid {
  std::string name;
  int from;
  int to;
};

struct SsidPlan {
  Band band = Band::k2_4G;
  int ssid = 0;  // which one it is about
  std::string name;
  int count = 0;  // of SSIDs, afterwards
  std::vector<SsidWrite> writes;
  std::vector<wifimgr_attr_record> records;  // that the store lacks for it
  std::vector<MovedSsid> moved;
  std::vector<std::string> unsure;  // dat keys with several values, of which nobody knows whose they are
};

struct NewSsid {
  std::string name;
  const Security* security = nullptr;
  std::string passphrase;  // "" for none
  bool is_hidden = false;
  bool is_isolated = false;
};

// Behind the others. Every setting of an SSID gets a value: what an earlier one with this number has left is none of it.
SsidPlan plan_to_add(Band band, const NewSsid& fresh);

// Those behind it move down by one, each with all of its values.
SsidPlan plan_to_remove(Band band, int ssid);

SsidPlan plan_to_set(Band band, int ssid, const char* key, const std::string& value);

// The number of the SSID that a word names, by its number or its name; 0 when the band has none. A name that several
// have is that of the first.
int find_ssid(Band band, const std::string& word);
std::string name_of_ssid(Band band, int ssid);

}  // namespace wlanctl

// KEY, KEY:INDEX and KEY:INDEX=VALUE, as they stand on the command line.
#pragma once

#include <optional>
#include <string>

#include "wlanctl/base/report.h"
#include "wlanctl/keys/key.h"

namespace wlanctl {

// One setting of a band.
struct Target {
  const Key* key = nullptr;
  int index = -1;  // -1 for the band, else an SSID or a link from 1

  bool operator==(const Target& other) const = default;

  // "HideSSID:2", or "Channel" for the whole band.
  std::string name() const;
};

// Whose value the field of a record is, counted from 0; none where no setting has that dat key.
std::optional<Target> target_of_field(const std::string& dat_key, size_t field);

// The details of a problem with a setting.
Json about_key(const std::string& key, Band band);

// Reads KEY or KEY:INDEX; none with a problem that says what is wrong with it on this band.
std::optional<Target> parse_target(const std::string& text, Band band, Report& report);

// What may have been meant by a key that there is none of.
std::string hint_for_key(const std::string& name);

struct Assignment {
  Target target;
  std::string value;
};

// Reads KEY[:INDEX]=VALUE. A VALUE of "-" is a line of standard input, unless `literal`.
std::optional<Assignment> parse_assignment(const std::string& text, Band band, bool literal, Report& report);

// Reads KEY[:INDEX]=PATH: the value is the first line of that file.
std::optional<Assignment> parse_file_assignment(const std::string& text, Band band, Report& report);

}  // namespace wlanctl

// What was looked at, and what is wrong with it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/check/finding.h"

namespace wlanctl {

enum class Ill {
#define WLANCTL_ILL(name, identifier, severity, finding, cure) name,
#include "wlanctl/doctor/ills.def"
#undef WLANCTL_ILL
};

struct IllKind {
  const char* identifier;  // "dat-missing"
  Severity severity;
  const char* finding;
  const char* cure;
};
const IllKind& kind_of(Ill ill);

struct Row {
  const char* check;         // "dat file"
  std::optional<Band> band;  // none for what is of no band
  std::string looked_at;
  std::optional<Ill> ill;  // none where all is well

  std::string cure() const;  // for its band; "" where all is well
};

// The rows of a run, in their order.
class Diagnosis {
 public:
  void well(const char* check, std::optional<Band> band, const std::string& looked_at) {
    rows_.push_back({check, band, looked_at, std::nullopt});
  }
  void ill(Ill what, const char* check, std::optional<Band> band, const std::string& looked_at) {
    rows_.push_back({check, band, looked_at, what});
  }
  void add(bool is_ill, Ill what, const char* check, std::optional<Band> band, const std::string& looked_at) {
    rows_.push_back({check, band, looked_at, is_ill ? std::optional(what) : std::nullopt});
  }

  const std::vector<Row>& rows() const { return rows_; }

 private:
  std::vector<Row> rows_;
};

}  // namespace wlanctl

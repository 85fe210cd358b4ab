#include "wlanctl/doctor/diagnosis.h"

namespace wlanctl {
namespace {

constexpr IllKind kKinds[] = {
#define WLANCTL_ILL(name, identifier, severity, finding, cure) {identifier, Severity::severity, finding, cure},
#include "wlanctl/doctor/ills.def"
#undef WLANCTL_ILL
};

}  // namespace

const IllKind& kind_of(Ill ill) {
  return kKinds[static_cast<size_t>(ill)];
}

std::string Row::cure() const {
  const std::string place = "BAND";
  std::string text = ill ? kind_of(*ill).cure : "";
  for (size_t at = 0; band && (at = text.find(place, at)) != std::string::npos;) {
    text.replace(at, place.size(), label_of(*band));
  }
  return text;
}

}  // namespace wlanctl

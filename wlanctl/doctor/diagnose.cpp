#include "wlanctl/doctor/checks.h"
#include "wlanctl/live/driver_time.h"

namespace wlanctl {

Diagnosis diagnose(const std::vector<Band>& bands) {
  const DriverTime limited;
  Diagnosis diagnosis;
  check_rights(diagnosis);
  check_tools(diagnosis);
  check_address_text(diagnosis);
  check_folders(bands, diagnosis);
  for (const Band band : bands) {
    check_dat_file(band, diagnosis);
    check_store(band, diagnosis);
    check_lock(band, diagnosis);
    check_module(band, diagnosis);
    check_interfaces(band, settings_of(band), diagnosis);
    check_driver(band, diagnosis);
    check_applies(band, diagnosis);
  }
  return diagnosis;
}

}  // namespace wlanctl

// The WPS PIN that the driver reports for an interface.
#pragma once

#include "driver/request.h"

namespace driver {

// Writes the PIN with leading zeros to eight digits, at most 11 bytes; nothing unless answered.
Outcome read_wps_pin(const InterfaceName& interface, char* out);

}  // namespace driver

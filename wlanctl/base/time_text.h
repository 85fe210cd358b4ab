// Moments as text, of seconds since 1970.
#pragma once

#include <cstdint>
#include <string>

namespace wlanctl {

std::string local_time(int64_t seconds);  // "2026-03-01 12:00:00", by the gateway's zone
std::string utc_time(int64_t seconds);    // "2026-03-01T12:00:00Z"

}  // namespace wlanctl

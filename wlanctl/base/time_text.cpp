#include "wlanctl/base/time_text.h"

#include <ctime>

namespace wlanctl {
namespace {

// "?" for what no calendar has.
std::string time_text(int64_t seconds, const char* format, tm* (*split)(const time_t*, tm*)) {
  const auto time = static_cast<time_t>(seconds);
  tm parts = {};
  char text[64] = "";
  if (split(&time, &parts) == nullptr || std::strftime(text, sizeof text, format, &parts) == 0) return "?";
  return text;
}

}  // namespace

std::string local_time(int64_t seconds) {
  return time_text(seconds, "%Y-%m-%d %H:%M:%S", localtime_r);
}

std::string utc_time(int64_t seconds) {
  return time_text(seconds, "%Y-%m-%dT%H:%M:%SZ", gmtime_r);
}

}  // namespace wlanctl

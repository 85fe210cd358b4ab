// How long the driver of a band is waited for. A request cannot be left before the driver lets go, but one that waits is
// interrupted by a signal; and a driver that is slow once is slow each time, so that the rest is not asked at all.
#pragma once

#include <string>

#include "wlanctl/base/band.h"
#include "wlanctl/base/report.h"
#include "wlanctl/library/query.h"

namespace wlanctl {

// While it lives, each band's driver gets so much time for all that it is asked; without one, each question gets what it
// takes.
inline constexpr int kDriverSeconds = 3;
class DriverTime {
 public:
  DriverTime();
  DriverTime(const DriverTime&) = delete;
  DriverTime& operator=(const DriverTime&) = delete;
  ~DriverTime();

  // Gives it anew, to the next page of a watch.
  static void renew();

 private:
  bool is_first_;  // one within another is part of that
};

// One question's part of it.
class DriverTurn {
 public:
  explicit DriverTurn(Band band);
  DriverTurn(const DriverTurn&) = delete;
  DriverTurn& operator=(const DriverTurn&) = delete;
  ~DriverTurn();

  bool may_ask() const { return may_ask_; }

 private:
  Band band_;
  bool may_ask_;
  bool is_limited_;
  int64_t begin_ms_;
};

// Whether the band's driver has had its time.
bool is_driver_late(Band band);

// Makes `call`, which returns whether it was answered; not where the driver is late.
template <typename Call>
bool ask_in_time(Band band, Call call, std::string* reason) {
  const DriverTurn turn(band);
  return turn.may_ask() && call_quietly(call, reason);
}

// Who is asked, for messages: "2.4g: ra0".
Asked asked_of(Band band, const std::string& interface);

// A problem for what got no answer. Of a driver that is late there is one, which says that the rest was not asked.
void complain_of_driver(Report& report, Band band, const std::string& interface, const std::string& what,
                        const std::string& reason);

// The two together.
template <typename Call>
bool ask_driver(Report& report, Band band, const std::string& interface, const std::string& what, Call call) {
  std::string reason;
  if (ask_in_time(band, call, &reason)) return true;
  complain_of_driver(report, band, interface, what, reason);
  return false;
}

}  // namespace wlanctl

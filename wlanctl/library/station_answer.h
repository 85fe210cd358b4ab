// The seam between the library and the driver's station table: the tool defines ioctl itself, and sees how much of the
// table came. The library tells the stations that it finds there, and of a table that was cut off it finds none.
#pragma once

#include <string>

namespace wlanctl {

// Looks at the answers to the library's requests for the table while it lives. One at a time.
class StationAnswer {
 public:
  StationAnswer();
  StationAnswer(const StationAnswer&) = delete;
  StationAnswer& operator=(const StationAnswer&) = delete;
  ~StationAnswer();

  // Why the last one has not all stations that it counts; "" when it has, and where none came.
  const std::string& fault() const { return fault_; }

 private:
  std::string fault_;
};

}  // namespace wlanctl

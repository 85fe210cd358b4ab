// The system log inside: what programs send to /dev/log ends in a file, a line for each message.
#pragma once

#include "sim/base/file.h"

namespace gateway {

class SystemLog {
 public:
  // Takes messages from now on.
  SystemLog();

  // Readable when there is one.
  int fd() const { return socket_.get(); }

  // Writes down what is there.
  void write_down();

 private:
  UniqueFd socket_;
  UniqueFd file_;
};

}  // namespace gateway

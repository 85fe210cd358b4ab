// The seam to the WLAN driver: the test program defines socket and ioctl itself. Wireless requests go to the test's
// driver, everything else to the kernel; both are recorded.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/seams.h"

namespace requests {

// A request as it was issued: the record's fields, and the payload byte for byte.
struct Request {
  unsigned long number = 0;
  std::string interface;  // all 16 bytes
  bool has_data = false;
  uint16_t length = 0;
  uint16_t flags = 0;
  uint32_t unused = 0;
  std::string payload;  // `length` bytes from the data pointer, none without one
};

// All 16 bytes of a name in a request.
std::string padded(const std::string& name);

struct SocketCall {
  int family;
  int type;  // without SOCK_CLOEXEC
  int protocol;
  bool is_close_on_exec = true;
  bool operator==(const SocketCall&) const = default;
};

extern std::vector<Request> sent;           // wireless requests, in order
extern std::vector<SocketCall> sockets;     // successful calls of socket, in order
extern std::vector<unsigned long> queries;  // the numbers of all other requests, which the kernel answers

// The driver: gets the request and its record (32 bytes, whose bytes 16 to 23 hold the data pointer) and returns what
// ioctl is to return. Negative results set errno. Without one, requests succeed and change nothing.
extern std::function<int(const Request& request, void* record)> driver;

// Stands in for the kernel on all other requests, so that a test sees their records; without one the kernel answers.
extern std::function<int(int descriptor, unsigned long number, void* record)> kernel;

// Faults of the two calls; see seams::fail. A failing ioctl reaches neither driver nor kernel.
extern seams::Fault socket_fault, ioctl_fault;

// Where a record's data pointer leads.
void* data_of(void* record);

// A driver that writes `reply` at the start of the payload and succeeds.
std::function<int(const Request&, void*)> answering(const std::string& reply);

// How many descriptors this process has open.
int open_descriptors();

}  // namespace requests

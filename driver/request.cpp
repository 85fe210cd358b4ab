#include "driver/request.h"

#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace driver {
namespace {

// C libraries disagree about the type of a request's number.
template <typename Number>
Number type_of_number(int (*)(int, Number, ...));
using RequestNumber = decltype(type_of_number(&ioctl));

}  // namespace

InterfaceName interface_named(const char* name) {
  InterfaceName interface = {};
  if (name != nullptr) std::memcpy(interface.text, name, strnlen(name, kInterfaceNameSize - 1));
  return interface;
}

InterfaceName bss_interface(bool is_5g, int number) {
  char name[32];
  (void)std::snprintf(name, sizeof name, is_5g ? "rai%d" : "ra%d", number);
  return interface_named(name);
}

InterfaceName radio_interface(bool is_5g) {
  return bss_interface(is_5g, 0);
}

Request make_request(const InterfaceName& interface, void* data, uint16_t length, uint16_t oid) {
  Request request = {};
  std::memcpy(request.interface, interface.text, sizeof request.interface);
  request.data = data;
  request.length = length;
  request.flags = oid;
  return request;
}

Socket::Socket() : Socket(AF_INET, SOCK_DGRAM, 0) {}

// Close-on-exec: what a command starts, the WPS daemon above all, must not inherit a socket that stays open.
Socket::Socket(int family, int type, int protocol) : descriptor_(socket(family, type | SOCK_CLOEXEC, protocol)) {}

Socket::~Socket() {
  if (descriptor_ >= 0) (void)close(descriptor_);
}

int Socket::send(unsigned long number, void* record) const {
  return ioctl(descriptor_, static_cast<RequestNumber>(number), record);
}

Outcome ask(unsigned long number, Request& request, int* result) {
  const Socket socket;
  if (!socket) return Outcome::kNoSocket;
  const int answer = socket.send(number, &request);
  if (result != nullptr) *result = answer;
  return answer < 0 ? Outcome::kRefused : Outcome::kAnswered;
}

Outcome ask_oid(const InterfaceName& interface, uint16_t oid, void* data, uint16_t length, int* result) {
  Request request = make_request(interface, data, length, oid);
  return ask(kOid, request, result);
}

int report(const char* function, Outcome outcome, const Complaints& complaints) {
  const char* const why = complaint_about(outcome, complaints);
  if (why == nullptr) return 0;
  (void)std::printf("[%s]%s\n", function, why);
  return -1;
}

}  // namespace driver

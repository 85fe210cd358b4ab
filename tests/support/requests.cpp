#include "support/requests.h"

#include <dirent.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstring>

namespace requests {

std::vector<Request> sent;
std::vector<SocketCall> sockets;
std::vector<unsigned long> queries;
std::function<int(const Request& request, void* record)> driver;
std::function<int(int descriptor, unsigned long number, void* record)> kernel;
seams::Fault socket_fault, ioctl_fault;

namespace {

constexpr unsigned long kFirstWireless = 0x8B00;
constexpr unsigned long kLastWireless = 0x8BFF;

struct Record {
  char interface[16];
  void* data;
  uint16_t length;
  uint16_t flags;
  uint32_t unused;
};
static_assert(sizeof(Record) == 32);

bool fails(seams::Fault& fault) {
  ++fault.calls;
  if (fault.countdown == 0 || --fault.countdown != 0) return false;
  errno = fault.error;
  return true;
}

Request request_of(unsigned long number, const Record& record) {
  Request request;
  request.number = number;
  request.interface.assign(record.interface, sizeof record.interface);
  request.has_data = record.data != nullptr;
  request.length = record.length;
  request.flags = record.flags;
  request.unused = record.unused;
  if (request.has_data) request.payload.assign(static_cast<const char*>(record.data), record.length);
  return request;
}

}  // namespace

std::string padded(const std::string& name) {
  std::string bytes = name;
  bytes.resize(16, '\0');
  return bytes;
}

void* data_of(void* record) {
  void* data = nullptr;
  std::memcpy(&data, static_cast<char*>(record) + 16, sizeof data);
  return data;
}

std::function<int(const Request&, void*)> answering(const std::string& reply) {
  return [reply](const Request&, void* record) {
    std::memcpy(data_of(record), reply.data(), reply.size());
    return 0;
  };
}

int open_descriptors() {
  int count = 0;
  DIR* const folder = opendir("/proc/self/fd");
  while (readdir(folder) != nullptr) ++count;
  closedir(folder);
  return count;
}

}  // namespace requests

extern "C" {

int socket(int family, int type, int protocol) noexcept {
  if (requests::fails(requests::socket_fault)) return -1;
  const int descriptor = static_cast<int>(syscall(SYS_socket, family, type, protocol));
  if (descriptor >= 0)
    requests::sockets.push_back({family, type & ~SOCK_CLOEXEC, protocol, (type & SOCK_CLOEXEC) != 0});
  return descriptor;
}

int ioctl(int descriptor, unsigned long number, ...) noexcept {
  va_list arguments;
  va_start(arguments, number);
  void* const record = va_arg(arguments, void*);
  va_end(arguments);
  const bool wireless = number >= requests::kFirstWireless && number <= requests::kLastWireless;
  if (wireless) {
    requests::sent.push_back(requests::request_of(number, *static_cast<requests::Record*>(record)));
  } else {
    requests::queries.push_back(number);
  }
  if (requests::fails(requests::ioctl_fault)) return -1;
  if (!wireless && requests::kernel) return requests::kernel(descriptor, number, record);
  if (!wireless) return static_cast<int>(syscall(SYS_ioctl, descriptor, number, record));
  return requests::driver ? requests::driver(requests::sent.back(), record) : 0;
}

}  // extern "C"

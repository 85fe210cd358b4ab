// The way to the WLAN driver: requests of the Linux wireless extensions on the radios' interfaces. Every query opens a
// socket of its own and closes it again, so calls from several threads and processes may run at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace driver {

inline constexpr unsigned long kGetFrequency = 0x8B05;  // SIOCGIWFREQ
inline constexpr unsigned long kOid = 0x8BE1;           // flags = OID
inline constexpr unsigned long kStatistics = 0x8BE9;
inline constexpr unsigned long kStationTable = 0x8BEF;
inline constexpr unsigned long kWpsStatusWord = 0x8BF2;
inline constexpr unsigned long kApCount = 0x8BFC;
inline constexpr unsigned long kProcesses = 0x8BFE;

inline constexpr size_t kInterfaceNameSize = 16;

// The request record, as the kernel and the driver copy it.
struct Request {
  char interface[kInterfaceNameSize];
  void* data;
  uint16_t length;
  uint16_t flags;
  uint32_t unused;
};
static_assert(std::is_trivially_copyable_v<Request> && std::is_standard_layout_v<Request>);
static_assert(offsetof(Request, data) == 16 && offsetof(Request, length) == 24 && offsetof(Request, flags) == 26 &&
              sizeof(Request) == 32);

// The name of an interface, padded with NUL.
struct InterfaceName {
  char text[kInterfaceNameSize];
};
InterfaceName interface_named(const char* name);      // cut to 15 characters; null gives the empty name
InterfaceName bss_interface(bool is_5g, int number);  // "ra%d", "rai%d"
InterfaceName radio_interface(bool is_5g);            // the radio as a whole: that of its first BSS

Request make_request(const InterfaceName& interface, void* data, uint16_t length, uint16_t oid = 0);

// A socket, closed with its owner.
class Socket {
 public:
  Socket();  // of the kind that all requests to the driver use
  Socket(int family, int type, int protocol);
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  ~Socket();

  explicit operator bool() const { return descriptor_ >= 0; }

  // Returns what ioctl returned; negative is a failure.
  int send(unsigned long number, void* record) const;

  // Stays open for the rest of the process.
  void leak() { descriptor_ = -1; }

 private:
  int descriptor_;
};

enum class Outcome : uint8_t { kAnswered, kNoSocket, kRefused };

// Sends one request over a socket of its own. `result`, when given, receives what ioctl returned.
Outcome ask(unsigned long number, Request& request, int* result = nullptr);
Outcome ask_oid(const InterfaceName& interface, uint16_t oid, void* data, uint16_t length, int* result = nullptr);

// The words for what can go wrong with a request.
struct Complaints {
  const char* no_socket;
  const char* refused;
};

// The one that fits; null when the request was answered.
constexpr const char* complaint_about(Outcome outcome, const Complaints& complaints) {
  if (outcome == Outcome::kAnswered) return nullptr;
  return outcome == Outcome::kNoSocket ? complaints.no_socket : complaints.refused;
}

// Prints the one that fits, behind the function's name in brackets, and returns -1; 0 when the request was answered.
int report(const char* function, Outcome outcome, const Complaints& complaints);

}  // namespace driver

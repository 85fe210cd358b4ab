// A call to the library as its caller and the driver see it: exit, texts, requests, sockets.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/requests.h"

namespace exchange {

struct Seen {
  int result = 0;
  std::string printed;
  std::vector<std::string> trace;     // with everything switched on
  std::vector<std::string> requests;  // each as request() writes it
  std::vector<requests::SocketCall> sockets;
  int socket_calls = 0;  // failing ones too
  int left_open = 0;     // descriptors more than before
};

// Runs a call on a stack of rubbish, with everything recorded. Functions without a result count as 0.
Seen seen(const std::function<int()>& call);
Seen seen_without_socket(const std::function<int()>& call);
Seen seen_with_refusal(const std::function<int()>& call, int nth_request = 1);

// All fields of a request record and its payload as one text, to compare and to read.
std::string request(unsigned long number, const std::string& interface, uint16_t length, uint16_t flags,
                    const std::string& payload);
std::string oid_request(uint16_t oid, const std::string& interface, const std::string& payload);
// The same without a data pointer.
std::string bare_request(unsigned long number, const std::string& interface, uint16_t length, uint16_t flags = 0);

std::string zeros(size_t count);
std::string rubbish(size_t count);  // no two neighbours alike, no zero byte
std::string bytes_of(uint32_t number);

// One socket of the one kind, these requests on it, and nothing left open.
void expect_requests(const Seen& seen, const std::vector<std::string>& expected);
// Neither socket nor request was tried.
void expect_silence(const Seen& seen);

struct Exit {
  int result;
  std::string printed;
  std::vector<std::string> trace;
};
void expect_exit(const Seen& seen, const Exit& expected);

// Trace lines.
std::string entered(const std::string& function);
std::string succeeded(const std::string& function);
std::string failed(const std::string& function, const std::string& why = "");

// Of a function that has both a tracing form and one that does not.
std::vector<std::string> trace_of_success(const std::string& function, bool traces);
std::vector<std::string> trace_of_failure(const std::string& function, bool traces);

// A driver that changes nothing and whose ioctl returns this number.
std::function<int(const requests::Request&, void*)> returning(int result);

// Numbers that are no band.
std::vector<int> wrong_bands();

// A caller's text buffer with marked surroundings.
class Text {
 public:
  Text();
  char* out();
  std::string image() const;
  static std::string untouched();
  static std::string holding(const std::string& text);  // and its NUL, and no byte more

 private:
  char bytes_[64];
};

}  // namespace exchange

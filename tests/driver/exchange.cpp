#include "driver/exchange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

#include "support/sandbox.h"

namespace exchange {
namespace {

constexpr size_t kMargin = 8;

std::string hex(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    char digits[3];
    (void)std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(static_cast<uint8_t>(byte)));
    text += digits;
  }
  return text;
}

std::string written(unsigned long number, const std::string& interface, uint16_t length, uint16_t flags,
                    const std::string& unused_and_data) {
  char fields[64];
  (void)std::snprintf(fields, sizeof fields, " request %#lx length %u flags %#x ", number,
                      static_cast<unsigned>(length), static_cast<unsigned>(flags));
  std::string name = requests::padded(interface);
  for (char& c : name) {
    if (c == '\0') c = '.';
  }
  return name + fields + unused_and_data;
}

std::string written(const requests::Request& sent) {
  return written(sent.number, sent.interface, sent.length, sent.flags,
                 "unused " + std::to_string(sent.unused) + (sent.has_data ? " data " + hex(sent.payload) : " no data"));
}

// What a buffer on the stack holds unless somebody clears it.
__attribute__((noinline)) void soil_the_stack() {
  volatile char rubbish[16384];
  for (volatile char& byte : rubbish) byte = '\x5a';
}

}  // namespace

Seen seen(const std::function<int()>& call) {
  Seen seen;
  requests::sent.clear();
  requests::sockets.clear();
  const int calls_before = requests::socket_fault.calls;
  const int open_before = requests::open_descriptors();
  seen.printed = sandbox::stdout_of([&] {
    seen.trace = seams::trace_of([&] {
      soil_the_stack();
      seen.result = call();
    });
  });
  seen.left_open = requests::open_descriptors() - open_before;
  seen.socket_calls = requests::socket_fault.calls - calls_before;
  seen.sockets = requests::sockets;
  for (const requests::Request& sent : requests::sent) seen.requests.push_back(written(sent));
  return seen;
}

Seen seen_without_socket(const std::function<int()>& call) {
  seams::fail(requests::socket_fault, 1, EMFILE);
  const Seen result = seen(call);
  seams::fail(requests::socket_fault, 0, 0);
  return result;
}

Seen seen_with_refusal(const std::function<int()>& call, int nth_request) {
  seams::fail(requests::ioctl_fault, nth_request, EOPNOTSUPP);
  const Seen result = seen(call);
  seams::fail(requests::ioctl_fault, 0, 0);
  return result;
}

std::string request(unsigned long number, const std::string& interface, uint16_t length, uint16_t flags,
                    const std::string& payload) {
  return written(number, interface, length, flags, "unused 0 data " + hex(payload));
}

std::string oid_request(uint16_t oid, const std::string& interface, const std::string& payload) {
  return request(0x8BE1, interface, static_cast<uint16_t>(payload.size()), oid, payload);
}

std::string bare_request(unsigned long number, const std::string& interface, uint16_t length, uint16_t flags) {
  return written(number, interface, length, flags, "unused 0 no data");
}

std::string zeros(size_t count) {
  return std::string(count, '\0');
}

std::string rubbish(size_t count) {
  std::string bytes(count, '\0');
  for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i % 251 + 1);
  return bytes;
}

std::string bytes_of(uint32_t number) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
  return bytes;
}

void expect_requests(const Seen& seen, const std::vector<std::string>& expected) {
  EXPECT_EQ(expected, seen.requests);
  EXPECT_THAT(seen.sockets, testing::ElementsAre(requests::SocketCall{AF_INET, SOCK_DGRAM, 0}));
  EXPECT_EQ(0, seen.left_open);
}

void expect_silence(const Seen& seen) {
  EXPECT_EQ(0, seen.socket_calls);
  EXPECT_THAT(seen.requests, testing::IsEmpty());
  EXPECT_EQ(0, seen.left_open);
}

void expect_exit(const Seen& seen, const Exit& expected) {
  EXPECT_EQ(expected.result, seen.result);
  EXPECT_EQ(expected.printed, seen.printed);
  EXPECT_EQ(expected.trace, seen.trace);
  EXPECT_EQ(0, seen.left_open);
}

std::string entered(const std::string& function) {
  return "[" + function + "]:===Enter===\n";
}

std::string succeeded(const std::string& function) {
  return "[" + function + "]:===Success Exit===\n";
}

std::string failed(const std::string& function, const std::string& why) {
  return "[" + function + "]:===Fail Exit===" + why + "\n";
}

std::vector<std::string> trace_of_success(const std::string& function, bool traces) {
  if (!traces) return {};
  return {entered(function), succeeded(function)};
}

std::vector<std::string> trace_of_failure(const std::string& function, bool traces) {
  if (!traces) return {};
  return {entered(function)};
}

std::function<int(const requests::Request&, void*)> returning(int result) {
  return [result](const requests::Request&, void*) {
    if (result < 0) errno = EINVAL;
    return result;
  };
}

std::vector<int> wrong_bands() {
  return {2, -1, 256, 65536, INT_MAX, INT_MIN};
}

Text::Text() {
  std::memset(bytes_, 'Z', sizeof bytes_);
}

char* Text::out() {
  return bytes_ + kMargin;
}

std::string Text::image() const {
  return std::string(bytes_, sizeof bytes_);
}

std::string Text::untouched() {
  return std::string(sizeof bytes_, 'Z');
}

std::string Text::holding(const std::string& text) {
  std::string image = untouched();
  image.replace(kMargin, text.size() + 1, text + '\0');
  return image;
}

}  // namespace exchange

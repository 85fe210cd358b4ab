#include "driver_probe.h"

namespace sim_test {

std::string ask(const std::string& interface, const std::string& number, unsigned length, const std::string& more) {
  return request_probe_program() + " " + interface + " " + number + " 0 " + std::to_string(length) + " " + more + "; ";
}

std::string ask_oid(const std::string& interface, const std::string& oid, unsigned length, const std::string& more) {
  return request_probe_program() + " " + interface + " 8be1 " + oid + " " + std::to_string(length) + " " + more + "; ";
}

uint64_t number_at(const std::string& reply, size_t at, size_t size) {
  uint64_t number = 0;
  for (size_t i = size; i-- > 0;) number = number << 8 | std::stoul(reply.substr(2 * (at + i), 2), nullptr, 16);
  return number;
}

std::string bytes_at(const std::string& reply, size_t at, size_t size) {
  return reply.substr(2 * at, 2 * size);
}

std::string text_at(const std::string& reply, size_t at, size_t size) {
  std::string text;
  for (size_t i = 0; i < size; ++i) {
    const char c = static_cast<char>(number_at(reply, at + i, 1));
    if (c == '\0') break;
    text += c;
  }
  return text;
}

}  // namespace sim_test

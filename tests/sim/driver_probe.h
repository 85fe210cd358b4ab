// Command lines that put requests to the driver, and the replies' numbers.
#pragma once

#include <cstdint>
#include <string>

#include "simulation.h"

namespace sim_test {

// A private request, or the OID of one; the reply is printed in hexadecimal, or the error's name.
std::string ask(const std::string& interface, const std::string& number, unsigned length, const std::string& more = "");
std::string ask_oid(const std::string& interface, const std::string& oid, unsigned length,
                    const std::string& more = "");

// Bytes `at`.. of a reply in hexadecimal, as the gateway's little-endian number.
uint64_t number_at(const std::string& reply, size_t at, size_t size);

// The same bytes as they are printed.
std::string bytes_at(const std::string& reply, size_t at, size_t size);

// As text, up to the first NUL.
std::string text_at(const std::string& reply, size_t at, size_t size);

}  // namespace sim_test

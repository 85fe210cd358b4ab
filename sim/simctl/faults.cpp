// Requests that are to fail.
#include <algorithm>
#include <cstring>
#include <optional>

#include "sim/simctl/words.h"
#include "sim/state/driver_lists.h"

namespace gateway::tools::simctl {
namespace {

constexpr unsigned long kOidRequest = 0x8BE1;
constexpr int kAnyOid = -1;
constexpr int kMostErrno = 133;

struct Request {
  const char* name;
  unsigned long number;
  int oid;
};

constexpr Request kRequests[] = {
    {"name", 0x8B01, kAnyOid},
    {"channel", 0x8B05, kAnyOid},
    {"statistics", 0x8BE9, kAnyOid},
    {"stations", 0x8BEF, kAnyOid},
    {"wps-status", 0x8BF2, kAnyOid},
    {"ap-count", 0x8BFC, kAnyOid},
    {"processes", 0x8BFE, kAnyOid},
    {"noise", kOidRequest, 0x069C},
    {"load", kOidRequest, 0x0765},
    {"temperature", kOidRequest, 0x09A1},
    {"neighbours", kOidRequest, 0x0683},
    {"11k", kOidRequest, 0x494C},
    {"11v", kOidRequest, 0x494A},
    {"wps-state", kOidRequest, 0x0751},
    {"wps-peer", kOidRequest, 0x075C},
    {"wps-pin", kOidRequest, 0x0752},
    {"wps-access", kOidRequest, 0x052A},
    {"wps-station", kOidRequest, 0x2044},
    {"oui-filter", kOidRequest, 0x9220},
    {"probe-response", kOidRequest, 0x9204},
    {"probe-response-delete", kOidRequest, 0x9205},
};

bool is_answered(unsigned long number) {
  return number == 0x8B01 || number == 0x8B05 || (number >= 0x8BE0 && number <= 0x8BFF);
}

Request request_from(const std::string& word) {
  for (const Request& request : kRequests) {
    if (word == request.name) return request;
  }
  constexpr char kOidPrefix[] = "oid:";
  if (word.rfind(kOidPrefix, 0) == 0) {
    return {nullptr, kOidRequest, static_cast<int>(number_from(word.substr(4), "OID", UINT16_MAX))};
  }
  if (word.rfind("0x", 0) != 0 && word.rfind("0X", 0) != 0) throw UsageError("no request is called " + word);
  const unsigned long number = number_from(word, "request");
  if (!is_answered(number)) throw Refusal("the driver does not answer " + word + ": 0x8B01, 0x8B05, 0x8BE0 to 0x8BFF");
  return {nullptr, number, kAnyOid};
}

int error_from(const std::string& word) {
  for (int error = 1; error <= kMostErrno; ++error) {
    const char* const name = strerrorname_np(error);
    if ((name != nullptr && word == name) || word == std::to_string(error)) return error;
  }
  throw UsageError("no error is called " + word);
}

std::string name_of_fault(const Fault& fault) {
  for (const Request& request : kRequests) {
    if (request.number == fault.request && request.oid == fault.oid) return request.name;
  }
  char text[32];
  if (fault.oid < 0) {
    std::snprintf(text, sizeof text, "0x%04lX", fault.request);
  } else {
    std::snprintf(text, sizeof text, "oid:0x%04X", static_cast<unsigned>(fault.oid));
  }
  return text;
}

}  // namespace

std::string request_names() {
  std::string text;
  size_t column = 0;
  for (const Request& request : kRequests) {
    const std::string name = std::string(request.name) + (&request + 1 == std::end(kRequests) ? "" : ",");
    if (column == 0 || column + name.size() > 79) {
      text += "\n     ";
      column = 5;
    }
    text += " " + name;
    column += name.size() + 1;
  }
  return text;
}

std::string fault_text(const Fault& fault) {
  const char* const name = strerrorname_np(fault.error);
  const std::string error = name != nullptr ? std::string(name) : std::to_string(fault.error);
  std::string text = name_of_fault(fault) + " fails with " + error;
  if (std::strcmp(fault.interface, "*") != 0) text += std::string(" on ") + fault.interface;
  return text + times_text(fault.count);
}

Changes fail_requests(const Words& words) {
  expect_words(words, 1, 4);
  expect_words(words, 2, 4);
  const Request request = request_from(words[0]);
  Fault fault = {request.number, request.oid, error_from(words[1]), "*", -1};
  for (size_t i = 2; i < words.size(); ++i) {
    if (is_count(words[i])) {
      fault.count = count_from(words, i);
    } else if (i == 2) {
      if (!band_of(words[i])) throw UsageError("no radio has an interface " + words[i]);
      std::memset(fault.interface, 0, sizeof fault.interface);
      words[i].copy(fault.interface, sizeof fault.interface - 1);
    } else {
      throw UsageError("not a count: " + words[i]);
    }
  }
  change_faults([&](std::vector<Fault>* known) {
    // What was said of the same requests before does not hold any more.
    const auto is_same = [&](const Fault& old) {
      return old.request == fault.request && old.oid == fault.oid && std::strcmp(old.interface, fault.interface) == 0;
    };
    known->erase(std::remove_if(known->begin(), known->end(), is_same), known->end());
    known->push_back(fault);
  });
  return {"driver: " + fault_text(fault)};
}

Changes faults(const Words& words) {
  expect_words(words, 1, words.size());
  if (words[0] != "none") return can_fail(words[0]) ? fail_tool(words) : fail_requests(words);
  expect_words(words, 1, 1);
  Changes changes;
  if (!load_faults().empty()) changes.emplace_back("driver: no request fails any more");
  if (!load_tool_faults().empty()) changes.emplace_back("commands: none fails any more");
  change_faults([](std::vector<Fault>* faults) { faults->clear(); });
  change_tool_faults([](std::vector<ToolFault>* faults) { faults->clear(); });
  return changes;
}

}  // namespace gateway::tools::simctl

// Requests that are to go wrong.
#include <algorithm>
#include <cstring>
#include <optional>

#include "sim/base/text.h"
#include "sim/simctl/words.h"
#include "sim/state/driver_lists.h"

namespace gateway::tools::simctl {
namespace {

constexpr unsigned long kOidRequest = 0x8BE1;
constexpr unsigned long kPrivateRequests = 0x8BE0;
constexpr int kAnyOid = -1;
constexpr int kMostErrno = 133;
constexpr int kNoCut = -1;

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

// slow= and cut=.
void take_pair(Fault* fault, const std::string& key, const std::string& value) {
  if (key == "slow") {
    fault->delay_ms = static_cast<unsigned>(milliseconds_from(value, kMostFaultDelayMs));
  } else if (key == "cut") {
    if (fault->request < kPrivateRequests) throw Refusal("that answer lies in the request itself and cannot be cut");
    fault->cut = static_cast<int>(number_from(value, "number of bytes", UINT16_MAX));
  } else {
    throw UsageError("unknown: " + key + "= (known: slow=, cut=)");
  }
}

void take_interface(Fault* fault, const std::string& word) {
  if (!band_of(word)) throw UsageError("no radio has an interface " + word);
  std::memset(fault->interface, 0, sizeof fault->interface);
  word.copy(fault->interface, sizeof fault->interface - 1);
}

// After the request: an error, which may be a number, then pairs, an interface and a count.
void take_words(Fault* fault, const Words& words) {
  bool has_interface = false;
  for (size_t i = 1; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (const size_t equals = word.find('='); equals != std::string::npos) {
      take_pair(fault, word.substr(0, equals), word.substr(equals + 1));
    } else if (i == 1) {
      fault->error = error_from(word);
    } else if (is_count(word)) {
      fault->count = count_from(words, i);
    } else if (has_interface) {
      throw UsageError("not a count: " + word);
    } else {
      take_interface(fault, word);
      has_interface = true;
    }
  }
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
  Words does;
  if (fault.delay_ms > 0) does.push_back(delay_text(fault.delay_ms));
  if (fault.error != 0) {
    const char* const name = strerrorname_np(fault.error);
    does.push_back("fails with " + (name != nullptr ? std::string(name) : std::to_string(fault.error)));
  }
  if (fault.cut != kNoCut) does.push_back("answers with " + std::to_string(fault.cut) + " bytes at most");
  std::string text = name_of_fault(fault) + " " + joined(does, ", ");
  if (std::strcmp(fault.interface, "*") != 0) text += std::string(" on ") + fault.interface;
  return text + times_text(fault.count);
}

Changes fail_requests(const Words& words) {
  expect_words(words, 2, 6);
  const Request request = request_from(words[0]);
  Fault fault = {request.number, request.oid, 0, "*", -1, 0, kNoCut};
  take_words(&fault, words);
  if (fault.error == 0 && fault.delay_ms == 0 && fault.cut == kNoCut) {
    throw UsageError("a wait of no time changes nothing");
  }
  if (fault.error != 0 && fault.cut != kNoCut) throw UsageError("what fails has no answer to cut");
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

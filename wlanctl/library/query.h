// Asking the library: a question that gets no answer becomes a problem, and what the library prints meanwhile becomes
// its reason.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "wlanctl/base/report.h"

namespace wlanctl {

// Makes `call`, which returns whether it was answered, and keeps its prints away from the tool's output. `reason`
// receives what the library had to say.
bool call_quietly(const std::function<bool()>& call, std::string* reason);

// Who is asked, for messages and for the problem's details.
struct Asked {
  std::string name;
  Json details = Json::object();
  std::string next = "the kernel's log may tell more";
};

// `what` completes "did not tell ...".
void complain(Report& report, const Asked& asked, const std::string& what, const std::string& reason);

// The two together.
bool ask(Report& report, const Asked& asked, const std::string& what, const std::function<bool()>& call);

// JSON of a place that may be empty.
template <typename Value>
Json json_or_null(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

}  // namespace wlanctl

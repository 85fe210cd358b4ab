// Asking the library: a question that gets no answer becomes a problem, and what the library prints meanwhile becomes
// its reason.
#pragma once

#include <string>

#include "wlanctl/base/report.h"
#include "wlanctl/library/output.h"

namespace wlanctl {

// Keeps what the library prints away from the tool's output while it lives.
class QuietCall {
 public:
  QuietCall();

  // Ends it; returns what the library had to say.
  std::string end();

 private:
  CaughtOutput output_;
};

// Makes `call`, which returns whether it was answered. `reason` receives what the library had to say.
template <typename Call>
bool call_quietly(Call call, std::string* reason) {
  QuietCall quiet;
  const bool answered = call();
  *reason = quiet.end();
  return answered;
}

// Who is asked, for messages and for the problem's details.
struct Asked {
  std::string name;
  Json details = Json::object();
  std::string next = "the kernel's log may tell more";
};

// `what` completes "did not tell ...".
void complain(Report& report, const Asked& asked, const std::string& what, const std::string& reason);

// The two together.
template <typename Call>
bool ask(Report& report, const Asked& asked, const std::string& what, Call call) {
  std::string reason;
  if (call_quietly(call, &reason)) return true;
  complain(report, asked, what, reason);
  return false;
}

}  // namespace wlanctl

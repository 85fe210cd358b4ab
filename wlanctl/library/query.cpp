#include "wlanctl/library/query.h"

#include "wlanctl/library/messages.h"
#include "wlanctl/library/output.h"

namespace wlanctl {

bool call_quietly(const std::function<bool()>& call, std::string* reason) {
  clear_messages();
  CaughtOutput output;
  const bool answered = call();
  const std::string printed = output.end();
  *reason = printed.empty() ? first_reason() : printed;
  return answered;
}

void complain(Report& report, const Asked& asked, const std::string& what, const std::string& reason) {
  Json details = asked.details;
  details["question"] = what;
  details["reason"] = json_text(reason);
  report.problem({asked.name + " did not tell " + what + (reason.empty() ? std::string() : " (" + reason + ")"),
                  asked.next, std::move(details)});
}

bool ask(Report& report, const Asked& asked, const std::string& what, const std::function<bool()>& call) {
  std::string reason;
  if (call_quietly(call, &reason)) return true;
  complain(report, asked, what, reason);
  return false;
}

}  // namespace wlanctl

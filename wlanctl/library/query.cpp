#include "wlanctl/library/query.h"

#include "wlanctl/library/messages.h"

namespace wlanctl {

QuietCall::QuietCall() {
  clear_messages();
}

std::string QuietCall::end() {
  const std::string printed = output_.end();
  return printed.empty() ? first_reason() : printed;
}

void complain(Report& report, const Asked& asked, const std::string& what, const std::string& reason) {
  Json details = asked.details;
  details["question"] = what;
  details["reason"] = reason;
  report.problem({asked.name + " did not tell " + what + (reason.empty() ? std::string() : " (" + reason + ")"),
                  asked.next, std::move(details)});
}

}  // namespace wlanctl

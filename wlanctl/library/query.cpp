#include "wlanctl/library/query.h"

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "wlanctl/library/messages.h"

namespace wlanctl {

QuietCall::QuietCall() {
  clear_messages();
}

std::string QuietCall::end() {
  const std::string printed = output_.end();
  return printed.empty() ? first_reason() : printed;
}

namespace {

// Most of what the driver is asked needs it.
bool may_ask_driver() {
  __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3] = {};
  return syscall(SYS_capget, &header, data) != 0 || (data[0].effective & (1U << CAP_NET_ADMIN)) != 0;
}

}  // namespace

void complain(Report& report, const Asked& asked, const std::string& what, const std::string& reason) {
  Json details = asked.details;
  details["question"] = what;
  details["reason"] = reason;
  report.problem({asked.name + " did not tell " + what + (reason.empty() ? std::string() : " (" + reason + ")"),
                  may_ask_driver() ? asked.next : "run as root: the driver answers who has CAP_NET_ADMIN",
                  std::move(details)});
}

}  // namespace wlanctl

#include "wlanctl/live/bridge.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstring>

namespace wlanctl {
namespace {

struct Question {
  nlmsghdr head;
  ifinfomsg link;
};

// The attribute of an answer that names the interface's master.
unsigned master_in(const nlmsghdr& head) {
  const auto* const link = static_cast<const ifinfomsg*>(NLMSG_DATA(&head));
  unsigned left = static_cast<unsigned>(IFLA_PAYLOAD(&head));
  for (const rtattr* one = IFLA_RTA(link); RTA_OK(one, left); one = RTA_NEXT(one, left)) {
    if (one->rta_type != IFLA_MASTER || RTA_PAYLOAD(one) < sizeof(unsigned)) continue;
    unsigned master = 0;
    std::memcpy(&master, RTA_DATA(one), sizeof master);
    return master;
  }
  return 0;
}

std::optional<unsigned> ask_for_master(int socket, unsigned interface) {
  Question question = {};
  question.head.nlmsg_len = sizeof question;
  question.head.nlmsg_type = RTM_GETLINK;
  question.head.nlmsg_flags = NLM_F_REQUEST;
  question.link.ifi_index = static_cast<int>(interface);
  alignas(nlmsghdr) char answer[16384];
  if (send(socket, &question, sizeof question, 0) < 0) return std::nullopt;
  const ssize_t length = recv(socket, answer, sizeof answer, 0);
  const auto* const head = reinterpret_cast<const nlmsghdr*>(answer);
  if (length < 0 || !NLMSG_OK(head, static_cast<unsigned>(length)) || head->nlmsg_type != RTM_NEWLINK) {
    return std::nullopt;
  }
  return master_in(*head);
}

}  // namespace

std::optional<std::string> bridge_of(const std::string& interface) {
  const unsigned index = if_nametoindex(interface.c_str());
  if (index == 0) return "";
  const int file = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE);
  if (file < 0) return std::nullopt;
  // The kernel answers at once, or never.
  const timeval longest = {.tv_sec = 2, .tv_usec = 0};
  (void)setsockopt(file, SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest);
  const std::optional<unsigned> master = ask_for_master(file, index);
  (void)close(file);
  if (!master) return std::nullopt;
  char name[IF_NAMESIZE] = "";
  return *master != 0 && if_indextoname(*master, name) != nullptr ? name : "";
}

}  // namespace wlanctl

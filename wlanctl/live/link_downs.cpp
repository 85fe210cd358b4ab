#include "wlanctl/live/link_downs.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace wlanctl {
namespace {

std::string name_in(const nlmsghdr& head) {
  const auto* const link = static_cast<const ifinfomsg*>(NLMSG_DATA(&head));
  unsigned left = static_cast<unsigned>(IFLA_PAYLOAD(&head));
  for (const rtattr* one = IFLA_RTA(link); RTA_OK(one, left); one = RTA_NEXT(one, left)) {
    if (one->rta_type != IFLA_IFNAME) continue;
    const char* const name = static_cast<const char*>(RTA_DATA(one));
    return {name, strnlen(name, RTA_PAYLOAD(one))};
  }
  return "";
}

// A bridge tells in the same way of an interface that it lets go.
bool is_down(const nlmsghdr& head) {
  const auto* const link = static_cast<const ifinfomsg*>(NLMSG_DATA(&head));
  if (link->ifi_family != AF_UNSPEC) return false;
  return head.nlmsg_type == RTM_DELLINK || (link->ifi_flags & IFF_UP) == 0;
}

}  // namespace

LinkDowns::LinkDowns()
    : file_(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE)), is_all_told_(file_ >= 0) {
  sockaddr_nl address = {};
  address.nl_family = AF_NETLINK;
  address.nl_groups = RTMGRP_LINK;
  if (file_ >= 0 && bind(file_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) is_all_told_ = false;
}

LinkDowns::~LinkDowns() {
  if (file_ >= 0) (void)close(file_);
}

bool LinkDowns::may_have_been_down(const std::string& interface) {
  take();
  return !is_all_told_ || down_.contains(interface);
}

void LinkDowns::take() {
  alignas(nlmsghdr) char messages[16384];
  while (is_all_told_) {
    const ssize_t length = recv(file_, messages, sizeof messages, MSG_TRUNC);
    if (length < 0 && errno == EINTR) continue;
    if (length < 0 && errno == EAGAIN) return;
    // Some were lost where there was no room for them.
    if (length < 0 || static_cast<size_t>(length) > sizeof messages) {
      is_all_told_ = false;
      return;
    }
    unsigned left = static_cast<unsigned>(length);
    for (const auto* head = reinterpret_cast<const nlmsghdr*>(messages); NLMSG_OK(head, left);
         head = NLMSG_NEXT(head, left)) {
      const bool is_of_link = head->nlmsg_type == RTM_NEWLINK || head->nlmsg_type == RTM_DELLINK;
      if (is_of_link && is_down(*head)) down_.insert(name_in(*head));
    }
  }
}

}  // namespace wlanctl

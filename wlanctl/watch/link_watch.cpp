#include "wlanctl/watch/link_watch.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

namespace wlanctl {
namespace {

struct Question {
  nlmsghdr head;
  ifinfomsg link;
};

// The kernel answers at once, or never.
constexpr int kAnswerMs = 2000;

// What the attributes of a message say.
struct Told {
  std::string name;
  unsigned master = 0;
};

Told read_attributes(const nlmsghdr& head) {
  const auto* const link = static_cast<const ifinfomsg*>(NLMSG_DATA(&head));
  unsigned left = static_cast<unsigned>(IFLA_PAYLOAD(&head));
  Told told;
  for (const rtattr* one = IFLA_RTA(link); RTA_OK(one, left); one = RTA_NEXT(one, left)) {
    if (one->rta_type == IFLA_IFNAME) {
      const char* const name = static_cast<const char*>(RTA_DATA(one));
      told.name.assign(name, strnlen(name, RTA_PAYLOAD(one)));
    } else if (one->rta_type == IFLA_MASTER && RTA_PAYLOAD(one) >= sizeof told.master) {
      std::memcpy(&told.master, RTA_DATA(one), sizeof told.master);
    }
  }
  return told;
}

std::string name_of_link(unsigned index) {
  char name[IF_NAMESIZE] = "";
  return index != 0 && if_indextoname(index, name) != nullptr ? name : "";
}

constexpr const char* kStems[] = {"ra", "rai", "wds", "wdsi"};

std::string bridge_in_sys(const std::string& interface) {
  char target[PATH_MAX] = "";
  const std::string link = "/sys/class/net/" + interface + "/master";
  const ssize_t length = readlink(link.c_str(), target, sizeof target);
  if (length <= 0 || static_cast<size_t>(length) >= sizeof target) return "";
  const std::string path(target, static_cast<size_t>(length));
  return path.substr(path.rfind('/') + 1);
}

Event event_of(const char* kind, const std::string& interface, const std::string& text) {
  return {kind, band_of_interface(interface), interface + text, {{"interface", interface}}};
}

}  // namespace

std::optional<Band> band_of_interface(const std::string& name) {
  const size_t digits = name.find_first_of("0123456789");
  if (digits == std::string::npos || digits + 1 != name.size()) return std::nullopt;
  const std::string stem = name.substr(0, digits);
  if (stem == "ra" || stem == "wds") return Band::k2_4G;
  if (stem == "rai" || stem == "wdsi") return Band::k5G;
  return std::nullopt;
}

LinkWatch::LinkWatch() : file_(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE)) {
  sockaddr_nl address = {};
  address.nl_family = AF_NETLINK;
  address.nl_groups = RTMGRP_LINK;
  if (file_ >= 0 && bind(file_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    (void)close(file_);
    file_ = -1;
  }
  if (file_ >= 0) ask_for_all();
  Events unheard;
  take(unheard);
  is_baseline_ = false;
}

LinkWatch::~LinkWatch() {
  if (file_ >= 0) (void)close(file_);
}

void LinkWatch::ask_for_all() {
  for (auto& [index, link] : links_) link.is_told = false;
  Question question = {};
  question.head.nlmsg_len = sizeof question;
  question.head.nlmsg_type = RTM_GETLINK;
  question.head.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
  if (send(file_, &question, sizeof question, 0) < 0) return;
  pollfd answer = {file_, POLLIN, 0};
  (void)poll(&answer, 1, kAnswerMs);
}

void LinkWatch::look_around(Events* events) {
  const int file = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (file < 0) return;
  std::map<int, Link> now;
  for (const char* const stem : kStems) {
    for (int digit = 0; digit < 10; ++digit) {
      ifreq asked = {};
      (void)std::snprintf(asked.ifr_name, sizeof asked.ifr_name, "%s%d", stem, digit);
      if (ioctl(file, SIOCGIFFLAGS, &asked) != 0) continue;
      const bool is_up = (asked.ifr_flags & IFF_UP) != 0;
      if (ioctl(file, SIOCGIFINDEX, &asked) != 0) continue;
      now[asked.ifr_ifindex] = {asked.ifr_name, is_up, bridge_in_sys(asked.ifr_name)};
    }
  }
  (void)close(file);
  const std::map<int, Link> before = links_;
  for (const auto& [index, link] : before) {
    if (!now.contains(index)) change(index, std::nullopt, events);
  }
  for (const auto& [index, link] : now) change(index, link, events);
}

void LinkWatch::take(Events& events) {
  if (file_ < 0) look_around(&events);
  alignas(nlmsghdr) char bytes[32768];
  while (file_ >= 0) {
    const ssize_t length = recv(file_, bytes, sizeof bytes, 0);
    if (length < 0 && errno == EINTR) continue;
    if (length < 0 && errno == ENOBUFS) {
      ask_for_all();
      continue;
    }
    if (length <= 0) return;
    auto left = static_cast<unsigned>(length);
    for (const auto* head = reinterpret_cast<const nlmsghdr*>(bytes); NLMSG_OK(head, left);
         head = NLMSG_NEXT(head, left)) {
      take_message(*head, &events);
    }
  }
}

void LinkWatch::take_message(const nlmsghdr& head, Events* events) {
  if (head.nlmsg_type == NLMSG_DONE) {
    for (auto it = links_.begin(); it != links_.end();) {
      const int index = it->first;
      const bool is_gone = !it->second.is_told;
      ++it;
      if (is_gone) change(index, std::nullopt, events);
    }
    return;
  }
  if (head.nlmsg_type != RTM_NEWLINK && head.nlmsg_type != RTM_DELLINK) return;
  const auto* const link = static_cast<const ifinfomsg*>(NLMSG_DATA(&head));
  // What a bridge says of its ports comes besides.
  if (link->ifi_family != AF_UNSPEC) return;
  const Told told = read_attributes(head);
  if (head.nlmsg_type == RTM_DELLINK) {
    change(link->ifi_index, std::nullopt, events);
  } else if (band_of_interface(told.name)) {
    change(link->ifi_index, Link{told.name, (link->ifi_flags & IFF_UP) != 0, name_of_link(told.master)}, events);
  }
}

void LinkWatch::change(int index, const std::optional<Link>& now, Events* events) {
  const auto found = links_.find(index);
  const bool was_there = found != links_.end();
  if (!was_there && !now) return;
  const Link before = was_there ? found->second : Link{now->name, false, ""};
  if (now) {
    links_[index] = *now;
  } else {
    links_.erase(found);
  }
  if (is_baseline_) return;
  const std::string& name = before.name;
  const Link after = now.value_or(Link{name, false, ""});
  const size_t told = events->size();
  if (!was_there) events->push_back(event_of("interface-new", name, " is there"));
  if (before.bridge != after.bridge && !before.bridge.empty()) {
    events->push_back(event_of("bridge-left", name, " out of " + before.bridge));
    events->back().details["bridge"] = before.bridge;
  }
  if (before.is_up && !after.is_up) events->push_back(event_of("interface-down", name, " down"));
  if (!before.is_up && after.is_up) events->push_back(event_of("interface-up", name, " up"));
  if (before.bridge != after.bridge && !after.bridge.empty()) {
    events->push_back(event_of("bridge-joined", name, " into " + after.bridge));
    events->back().details["bridge"] = after.bridge;
  }
  if (!now) events->push_back(event_of("interface-gone", name, " is gone"));
  const std::optional<Band> band = band_of_interface(name);
  if (band) changes_[number_of(*band)] += events->size() - told;
}

bool LinkWatch::is_there(const std::string& interface) const {
  return std::any_of(links_.begin(), links_.end(), [&](const auto& link) { return link.second.name == interface; });
}

}  // namespace wlanctl

#include "sim/network/netlink.h"

#include <arpa/inet.h>
#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <linux/veth.h>
#include <net/if.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstddef>
#include <cstring>

namespace gateway {
namespace {

UniqueFd open_socket() {
  UniqueFd fd(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
  if (!fd) fail("open a routing socket");
  const int size = 1 << 20;
  setsockopt(fd.get(), SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
  return fd;
}

// Receives one datagram and calls `visit` with each message in it until that returns false.
template <typename Visit>
void receive(int fd, Visit visit) {
  std::vector<char> buffer(1 << 16);
  const ssize_t got = recv(fd, buffer.data(), buffer.size(), 0);
  if (got < 0 && errno == EINTR) return;
  if (got < 0) fail("read a routing answer");
  auto left = static_cast<unsigned>(got);
  for (auto* header = reinterpret_cast<nlmsghdr*>(buffer.data()); NLMSG_OK(header, left);
       header = NLMSG_NEXT(header, left)) {
    if (!visit(*header)) return;
  }
}

int error_of(const nlmsghdr& header) {
  return header.nlmsg_type == NLMSG_ERROR ? -static_cast<const nlmsgerr*>(NLMSG_DATA(&header))->error : 0;
}

ifinfomsg link_header(unsigned flags = 0, int index = 0) {
  ifinfomsg link = {};
  link.ifi_index = index;
  link.ifi_flags = flags;
  link.ifi_change = flags;
  return link;
}

unsigned index_of(const std::string& name) {
  const unsigned index = if_nametoindex(name.c_str());
  if (index == 0) fail("look up the interface " + name);
  return index;
}

}  // namespace

// One request under construction; attributes nest.
class NetlinkBatch::Message {
 public:
  template <typename Header>
  Message(uint16_t type, unsigned flags, const Header& header) {
    nlmsghdr start = {};
    start.nlmsg_type = type;
    start.nlmsg_flags = static_cast<uint16_t>(NLM_F_REQUEST | NLM_F_ACK | flags);
    put(&start, sizeof start);
    put(&header, sizeof header);
  }

  void attribute(unsigned type, const void* data, size_t size) {
    rtattr start = {};
    start.rta_len = static_cast<uint16_t>(RTA_LENGTH(size));
    start.rta_type = static_cast<uint16_t>(type);
    put(&start, sizeof start);
    put(data, size);
  }
  void attribute(unsigned type, const std::string& text) { attribute(type, text.c_str(), text.size() + 1); }
  void attribute(unsigned type, uint32_t number) { attribute(type, &number, sizeof number); }

  size_t begin(unsigned type) {
    rtattr start = {};
    start.rta_type = static_cast<uint16_t>(type);
    const size_t at = bytes_.size();
    put(&start, sizeof start);
    return at;
  }
  void end(size_t at) {
    const auto length = static_cast<uint16_t>(bytes_.size() - at);
    std::memcpy(&bytes_[at + offsetof(rtattr, rta_len)], &length, sizeof length);
  }
  template <typename Header>
  void header(const Header& value) {
    put(&value, sizeof value);
  }

  // The finished request, numbered so that its answer can be told from the others'.
  const std::vector<char>& finish(uint32_t number) {
    const auto length = static_cast<uint32_t>(bytes_.size());
    std::memcpy(&bytes_[offsetof(nlmsghdr, nlmsg_len)], &length, sizeof length);
    std::memcpy(&bytes_[offsetof(nlmsghdr, nlmsg_seq)], &number, sizeof number);
    return bytes_;
  }

 private:
  void put(const void* data, size_t size) {
    const char* start = static_cast<const char*>(data);
    bytes_.insert(bytes_.end(), start, start + size);
    bytes_.resize(NLMSG_ALIGN(bytes_.size()));
  }

  std::vector<char> bytes_;
};

void NetlinkBatch::add(Message message, const std::string& purpose) {
  const std::vector<char>& bytes = message.finish(static_cast<uint32_t>(purposes_.size()));
  requests_.insert(requests_.end(), bytes.begin(), bytes.end());
  purposes_.push_back(purpose);
}

void NetlinkBatch::add_radio_interface(const std::string& name, const std::string& address, unsigned group,
                                       int far_end) {
  Message message(RTM_NEWLINK, NLM_F_CREATE | NLM_F_EXCL, link_header());
  message.attribute(IFLA_IFNAME, name);
  message.attribute(IFLA_ADDRESS, address.data(), address.size());
  message.attribute(IFLA_GROUP, group);
  const size_t info = message.begin(IFLA_LINKINFO);
  message.attribute(IFLA_INFO_KIND, "veth");
  const size_t data = message.begin(IFLA_INFO_DATA);
  const size_t peer = message.begin(VETH_INFO_PEER);
  message.header(link_header());
  message.attribute(IFLA_IFNAME, name);
  message.attribute(IFLA_NET_NS_FD, static_cast<uint32_t>(far_end));
  message.end(peer);
  message.end(data);
  message.end(info);
  add(std::move(message), "create the interface " + name + " (the kernel's veth driver, CONFIG_VETH, has to be there)");
}

void NetlinkBatch::add_bridge(const std::string& name, const std::string& address) {
  Message message(RTM_NEWLINK, NLM_F_CREATE | NLM_F_EXCL, link_header());
  message.attribute(IFLA_IFNAME, name);
  message.attribute(IFLA_ADDRESS, address.data(), address.size());
  const size_t info = message.begin(IFLA_LINKINFO);
  message.attribute(IFLA_INFO_KIND, "bridge");
  message.end(info);
  add(std::move(message),
      "create the bridge " + name + " (the kernel's bridge driver, CONFIG_BRIDGE, has to be there)");
}

void NetlinkBatch::add_ipv4_address(const std::string& interface, const std::string& address, unsigned prefix) {
  ifaddrmsg header = {};
  header.ifa_family = AF_INET;
  header.ifa_prefixlen = static_cast<uint8_t>(prefix);
  header.ifa_index = index_of(interface);
  uint32_t bytes = 0;
  inet_pton(AF_INET, address.c_str(), &bytes);
  const uint32_t broadcast = bytes | htonl(prefix == 0 ? ~0U : (1U << (32 - prefix)) - 1);
  Message message(RTM_NEWADDR, NLM_F_CREATE | NLM_F_REPLACE, header);
  message.attribute(IFA_LOCAL, bytes);
  message.attribute(IFA_ADDRESS, bytes);
  message.attribute(IFA_BROADCAST, broadcast);
  message.attribute(IFA_LABEL, interface);
  add(std::move(message), "give " + interface + " the address " + address);
}

void NetlinkBatch::set_up(const std::string& name) {
  Message message(RTM_NEWLINK, 0, link_header(IFF_UP));
  message.attribute(IFLA_IFNAME, name);
  add(std::move(message), "bring " + name + " up");
}

void NetlinkBatch::join_bridge(const std::string& name, const std::string& bridge) {
  Message message(RTM_NEWLINK, 0, link_header());
  message.attribute(IFLA_IFNAME, name);
  message.attribute(IFLA_MASTER, static_cast<uint32_t>(index_of(bridge)));
  add(std::move(message), "put " + name + " into " + bridge);
}

void NetlinkBatch::remove_link(const std::string& name) {
  Message message(RTM_DELLINK, 0, link_header());
  message.attribute(IFLA_IFNAME, name);
  add(std::move(message), "remove " + name);
}

void NetlinkBatch::remove_group(unsigned group) {
  Message message(RTM_DELLINK, 0, link_header());
  message.attribute(IFLA_GROUP, group);
  add(std::move(message), "remove a radio's interfaces");
}

void NetlinkBatch::commit() {
  if (purposes_.empty()) return;
  const UniqueFd fd = open_socket();
  if (send(fd.get(), requests_.data(), requests_.size(), 0) < 0) fail("configure the network");
  size_t answered = 0;
  while (answered < purposes_.size()) {
    receive(fd.get(), [&](const nlmsghdr& header) {
      if (header.nlmsg_type != NLMSG_ERROR) return true;
      ++answered;
      errno = error_of(header);
      if (errno != 0) fail(header.nlmsg_seq < purposes_.size() ? purposes_[header.nlmsg_seq] : "configure the network");
      return true;
    });
  }
  requests_.clear();
  purposes_.clear();
}

void dump_network(uint16_t request, const std::function<void(const nlmsghdr&)>& visit) {
  const UniqueFd fd = open_socket();
  struct {
    nlmsghdr header;
    ifinfomsg link;
  } question = {};
  question.header.nlmsg_len = sizeof question;
  question.header.nlmsg_type = request;
  question.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
  if (send(fd.get(), &question, sizeof question, 0) < 0) fail("read the network's state");
  for (bool more = true; more;) {
    receive(fd.get(), [&](const nlmsghdr& header) {
      if (header.nlmsg_type == NLMSG_ERROR) {
        errno = error_of(header);
        fail("read the network's state");
      }
      more = header.nlmsg_type != NLMSG_DONE;
      if (more) visit(header);
      return more;
    });
  }
}

}  // namespace gateway

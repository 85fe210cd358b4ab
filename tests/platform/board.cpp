#include "platform/board.h"

#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "support/requests.h"
#include "support/sandbox.h"

namespace board {
namespace {

constexpr unsigned kSecondsToHang = 20;

[[noreturn]] void refuse(const std::string& what) {
  std::fprintf(stderr, "tests: %s: %s\n", what.c_str(), std::strerror(errno));
  std::_Exit(1);
}

void make_folder(const char* path) {
  if (mkdir(path, 0755) != 0) refuse(path);
}

void mount_empty(const char* path) {
  if (mount("tmpfs", path, "tmpfs", 0, "mode=0755") != 0) refuse(path);
}

ifreq request_for(const std::string& name) {
  ifreq request = {};
  name.copy(request.ifr_name, sizeof request.ifr_name - 1);
  return request;
}

// To the kernel itself: the seams record what the library asks, not what a test does.
void ask_kernel(unsigned long number, const void* argument, const std::string& what) {
  const int descriptor = static_cast<int>(syscall(SYS_socket, AF_INET, SOCK_DGRAM, 0));
  if (descriptor < 0 || syscall(SYS_ioctl, descriptor, number, argument) != 0) refuse(what);
  (void)close(descriptor);
}

void put_attribute(nlmsghdr* message, unsigned short type, const std::string& text) {
  auto* const attribute = reinterpret_cast<rtattr*>(reinterpret_cast<char*>(message) + NLMSG_ALIGN(message->nlmsg_len));
  attribute->rta_type = type;
  attribute->rta_len = static_cast<unsigned short>(RTA_LENGTH(text.size()));
  std::memcpy(RTA_DATA(attribute), text.data(), text.size());
  message->nlmsg_len = NLMSG_ALIGN(message->nlmsg_len) + RTA_ALIGN(attribute->rta_len);
}

// Over netlink, which emulations of the kernel know, unlike the bridge's requests.
void add_bridge(const std::string& name) {
  alignas(nlmsghdr) char bytes[256] = {};
  auto* const message = reinterpret_cast<nlmsghdr*>(bytes);
  message->nlmsg_len = NLMSG_LENGTH(sizeof(ifinfomsg));
  message->nlmsg_type = RTM_NEWLINK;
  message->nlmsg_flags = NLM_F_REQUEST | NLM_F_CREATE | NLM_F_EXCL | NLM_F_ACK;
  put_attribute(message, IFLA_IFNAME, name + '\0');
  const unsigned used = message->nlmsg_len;
  put_attribute(message, IFLA_LINKINFO, "");
  auto* const info = reinterpret_cast<rtattr*>(bytes + used);
  put_attribute(message, IFLA_INFO_KIND, "bridge");
  info->rta_len = static_cast<unsigned short>(message->nlmsg_len - used);

  const int descriptor = static_cast<int>(syscall(SYS_socket, AF_NETLINK, SOCK_RAW, NETLINK_ROUTE));
  alignas(nlmsghdr) char answer[512] = {};
  if (descriptor < 0 || send(descriptor, bytes, message->nlmsg_len, 0) < 0 ||
      recv(descriptor, answer, sizeof answer, 0) < static_cast<ssize_t>(NLMSG_LENGTH(sizeof(int)))) {
    refuse("add the bridge " + name);
  }
  errno = -reinterpret_cast<const nlmsgerr*>(NLMSG_DATA(reinterpret_cast<nlmsghdr*>(answer)))->error;
  if (errno != 0) refuse("add the bridge " + name);
  (void)close(descriptor);
}

void keep(unsigned long number, const void* record) {
  queries.push_back({number, std::string(static_cast<const char*>(record), sizeof(ifreq))});
}

}  // namespace

std::vector<Query> queries;

void use_own_proc() {
  make_folder("/tmp/kernel");
  if (mount("/proc", "/tmp/kernel", nullptr, MS_BIND | MS_REC, nullptr) != 0) refuse("/tmp/kernel");
  mount_empty("/proc");
  // By its number too: so the leak check at the end of the process asks for it.
  for (const std::string& self : {std::string("self"), std::to_string(getpid())}) {
    const std::string link = std::string("/proc/") + self;
    const std::string target = std::string("/tmp/kernel/") + self;
    if (symlink(target.c_str(), link.c_str()) != 0) refuse(link);
  }
  make_folder("/proc/zq2810");
}

void use_own_etc() {
  mount_empty("/etc");
  make_folder("/etc/Wireless");
  make_folder("/etc/Wireless/RT2860AP_AC");
}

std::string path(const std::string& name) {
  return "/proc/zq2810/" + name;
}

void put(const std::string& name, const std::string& text) {
  sandbox::write_file(path(name), text);
}

void put_all() {
  for (const char* const name : {"ahb_status", "chip_id", "led_wlan", "wlan11ac_button", "wlan_button",
                                 "wlan_wps_button", "wlanshare", "wps_5g_button", "wps_button"}) {
    put(name, name);
  }
}

void put_silent_pipe(const std::string& path) {
  if (mkfifo(path.c_str(), 0600) != 0 || open(path.c_str(), O_RDWR | O_CLOEXEC) < 0) refuse(path);
  (void)alarm(kSecondsToHang);
}

std::vector<std::string> all_files() {
  std::vector<std::string> files;
  DIR* const folder = opendir("/proc/zq2810");
  if (folder == nullptr) return files;
  while (const dirent* const entry = readdir(folder)) {
    const std::string name = entry->d_name;
    if (entry->d_type == DT_REG) files.push_back(name + "=" + sandbox::read_file(path(name)));
  }
  closedir(folder);
  std::sort(files.begin(), files.end());
  return files;
}

void add_interface(const std::string& name, const Mac& mac) {
  add_bridge(name);
  ifreq request = request_for(name);
  request.ifr_hwaddr.sa_family = ARPHRD_ETHER;
  std::memcpy(request.ifr_hwaddr.sa_data, mac.data(), mac.size());
  ask_kernel(SIOCSIFHWADDR, &request, "address of " + name);
}

void set_flags(const std::string& name, short flags) {
  ifreq request = request_for(name);
  request.ifr_flags = flags;
  ask_kernel(SIOCSIFFLAGS, &request, "flags of " + name);
}

void answer_with_address(const Mac& mac, int result) {
  requests::kernel = [mac, result](int, unsigned long number, void* record) {
    keep(number, record);
    // Bytes behind the address are none of its own.
    std::memset(static_cast<char*>(record) + 16, 0x5a, 16);
    std::memcpy(static_cast<char*>(record) + 18, mac.data(), mac.size());
    errno = result < 0 ? ENODEV : 0;
    return result;
  };
}

void answer_with_flags(uint16_t flags, int result) {
  requests::kernel = [flags, result](int, unsigned long number, void* record) {
    keep(number, record);
    std::memcpy(static_cast<char*>(record) + 16, &flags, sizeof flags);
    errno = result < 0 ? ENODEV : 0;
    return result;
  };
}

std::string record_for(const std::string& name, const std::string& rest) {
  std::string record = requests::padded(name) + rest;
  record.resize(sizeof(ifreq), '\0');
  return record;
}

int run(const std::string& line) {
  std::FILE* const shell = popen(line.c_str(), "w");
  return shell == nullptr ? -1 : pclose(shell);
}

}  // namespace board

#include "sim/outside/namespaces.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <optional>

#include "sim/base/file.h"

namespace gateway {
namespace {

constexpr int kNamespaces = CLONE_NEWNS | CLONE_NEWIPC | CLONE_NEWNET | CLONE_NEWPID | CLONE_NEWUTS;

// Settings of the kernel that keep users from making namespaces.
struct Switch {
  const char* path;
  long off;
  const char* meaning;
  const char* remedy;
};

constexpr Switch kSwitches[] = {
    {"/proc/sys/user/max_user_namespaces", 0, "user namespaces are switched off here",
     "user.max_user_namespaces=10000"},
    {"/proc/sys/kernel/unprivileged_userns_clone", 0, "only root may make user namespaces here",
     "kernel.unprivileged_userns_clone=1"},
    {"/proc/sys/kernel/apparmor_restrict_unprivileged_userns", 1,
     "AppArmor withholds permissions in user namespaces here", "kernel.apparmor_restrict_unprivileged_userns=0"},
};

bool has_capability(unsigned capability) {
  __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct data[2] = {};
  if (syscall(SYS_capget, &header, data) != 0) return false;
  return (data[capability / 32].effective & (1U << (capability % 32))) != 0;
}

std::optional<long> setting(const char* path) {
  std::ifstream stream(path);
  long value = 0;
  if (!(stream >> value)) return std::nullopt;
  return value;
}

void map_to_root(uid_t user, gid_t group) {
  write_text("/proc/self/setgroups", "deny");
  write_text("/proc/self/uid_map", "0 " + std::to_string(user) + " 1\n");
  write_text("/proc/self/gid_map", "0 " + std::to_string(group) + " 1\n");
}

}  // namespace

Caller identify_caller() {
  if (geteuid() != 0) return Caller::kUser;
  return has_capability(CAP_SYS_ADMIN) && has_capability(CAP_NET_ADMIN) ? Caller::kPrivileged : Caller::kRestrictedRoot;
}

void enter_namespaces(Caller caller) {
  const uid_t user = geteuid();
  const gid_t group = getegid();
  const bool privileged = caller == Caller::kPrivileged;
  if (unshare(kNamespaces | (privileged ? 0 : CLONE_NEWUSER)) != 0) {
    fail(privileged ? "make namespaces" : "make a user namespace");
  }
  if (!privileged) map_to_root(user, group);
}

void make_air(const std::string& path) {
  write_text(path, "");
  const UniqueFd own = open_file("/proc/self/ns/net", O_RDONLY);
  if (unshare(CLONE_NEWNET) != 0) fail("make a network namespace");
  if (mount("/proc/self/ns/net", path.c_str(), nullptr, MS_BIND, nullptr) != 0) fail("keep a network namespace");
  if (setns(own.get(), CLONE_NEWNET) != 0) fail("return to the network namespace");
}

std::string advice_on(int error, Caller caller) {
  const bool by_permission = error == EPERM || error == EACCES;
  if (caller != Caller::kPrivileged && (by_permission || error == ENOSPC)) {
    for (const Switch& given : kSwitches) {
      if (setting(given.path) != given.off) continue;
      return std::string(given.meaning) + ": run 'sysctl " + given.remedy + "' as root, or run gateway-sim as root";
    }
  }
  if (!by_permission) return {};
  if (caller == Caller::kUser) {
    return "permission to make user namespaces, or to use them fully, is missing: run gateway-sim as root; in a "
           "container, start the container with --privileged";
  }
  return "a permission of root, such as CAP_SYS_ADMIN, or a system call is withheld here: in a container, start the "
         "container with --privileged";
}

}  // namespace gateway

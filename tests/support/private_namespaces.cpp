// The part of the sandbox that needs no test framework.
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "support/sandbox.h"

namespace sandbox {
namespace {

[[noreturn]] void refuse(const char* what) {
  std::fprintf(stderr, "tests: %s: %s (run as root, or allow user namespaces)\n", what, std::strerror(errno));
  std::exit(1);
}

void write_map(const char* path, const std::string& text) {
  const int fd = open(path, O_WRONLY | O_CLOEXEC);
  if (fd < 0 || write(fd, text.data(), text.size()) < 0) refuse(path);
  close(fd);
}

}  // namespace

void enter() {
  const uid_t uid = geteuid();
  const gid_t gid = getegid();
  if (unshare((uid != 0 ? CLONE_NEWUSER : 0) | CLONE_NEWIPC | CLONE_NEWNET | CLONE_NEWNS) != 0) refuse("unshare");
  if (uid != 0) {
    write_map("/proc/self/setgroups", "deny");
    write_map("/proc/self/uid_map", "0 " + std::to_string(uid) + " 1");
    write_map("/proc/self/gid_map", "0 " + std::to_string(gid) + " 1");
  }
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) refuse("private mounts");
  if (mount("tmpfs", "/tmp", "tmpfs", 0, "mode=1777") != 0) refuse("mount on /tmp");
  if (mkdir("/tmp/dat", 0755) != 0) refuse("/tmp/dat");
  use_dat_path(0);
  use_dat_path(1);
}

std::string dat_path(int band) {
  return band == 0 ? "/tmp/dat/2.4g.dat" : "/tmp/dat/5g.dat";
}

void use_dat_path(int band) {
  char path[WIFIMGR_DAT_PATH_SIZE] = "";
  dat_path(band).copy(path, sizeof path - 1);
  std::memcpy(band == 0 ? dat_path_2_4g : dat_path_5g, path, sizeof path);
}

}  // namespace sandbox

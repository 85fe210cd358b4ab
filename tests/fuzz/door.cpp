#include "fuzz/door.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace fuzz {
namespace {

int g_silent = -1;

}  // namespace

void require(bool holds, const char* rule) {
  if (holds) return;
  (void)std::fprintf(stderr, "fuzz: broken: %s\n", rule);
  std::abort();
}

void prepare() {
  require(mount("tmpfs", "/etc", "tmpfs", 0, "mode=0755") == 0, "/etc can be mounted");
  require(mount("tmpfs", "/var", "tmpfs", 0, "mode=0755") == 0, "/var can be mounted");
  for (const char* const folder :
       {"/etc/Wireless", "/etc/Wireless/RT2860AP", "/etc/Wireless/RT2860AP_AC", "/var/run"}) {
    require(mkdir(folder, 0755) == 0, folder);
  }
}

Silence::Silence() {
  if (g_silent < 0) g_silent = open("/tmp", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  (void)std::fflush(stdout);
  saved_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
  require(g_silent >= 0 && saved_ >= 0 && dup2(g_silent, STDOUT_FILENO) >= 0, "output can be caught");
}

Silence::~Silence() {
  (void)std::fflush(stdout);
  (void)dup2(saved_, STDOUT_FILENO);
  (void)close(saved_);
  (void)ftruncate(g_silent, 0);
}

}  // namespace fuzz

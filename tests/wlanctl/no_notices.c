/* Preloaded: a kernel without what WLANCTL_WITHOUT names, "netlink" and "inotify". */
#include <dlfcn.h>
#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>

static int is_without(const char* what) {
  const char* const wish = getenv("WLANCTL_WITHOUT");
  return wish != NULL && strstr(wish, what) != NULL;
}

static int refuse(int reason) {
  errno = reason;
  return -1;
}

int socket(int family, int type, int protocol) {
  int (*real)(int, int, int);
  *(void**)&real = dlsym(RTLD_NEXT, "socket");
  return family == AF_NETLINK && is_without("netlink") ? refuse(EAFNOSUPPORT) : real(family, type, protocol);
}

int inotify_init1(int flags) {
  int (*real)(int);
  *(void**)&real = dlsym(RTLD_NEXT, "inotify_init1");
  return is_without("inotify") ? refuse(ENOSYS) : real(flags);
}

// The chip's package, and the PCIe routing of the 5G radio, which depends on it.
#include <cstdio>

#include "store/shell.h"
#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

struct Routing {
  const char* first;
  const char* second;
};

void write_register(const char* address, const char* value) {
  char line[32];
  (void)std::snprintf(line, sizeof line, "sys memwl %s %s", address, value);
  (void)store::run_line(line);
}

}  // namespace

extern "C" int wifimgr_lib_get_CHIP_ID(int* id) {
  trace::enter(__func__);
  if (id == nullptr) return trace::fail(__func__);
  const store::Stream file(std::fopen("/proc/zq2810/chip_id", "re"));
  if (!file) {
    (void)std::puts("Critical Bugs, Can't get package id!");
    return -1;
  }
  if (std::fscanf(file.get(), "%d", id) == EOF) (void)std::printf("fscanf error!");
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_set_5G_PCIE(int flag) {
  trace::enter(__func__);
  int package = 0;
  (void)wifimgr_lib_get_CHIP_ID(&package);
  Routing routing = {};
  if (flag == 1) {
    routing = {"0", "40000000"};
  } else if (flag == 0) {
    routing = {"80000000", "c0000000"};
  } else {
    return trace::fail(__func__, "The flag value is invalid.");
  }
  switch (package) {
    case 23:
    case 24:
    case 25:
    case 43:
    case 45:
      write_register("bfac030c", routing.first);
      break;
    case 28:
    case 29:
    case 30:
      write_register("bfac080c", routing.second);
      break;
    default:
      (void)std::puts("2810");
      (void)std::puts("unknow package");
      return 1;
  }
  return trace::success(__func__);
}

#include "apply/interface.h"

#include <cstdio>

#include "store/shell.h"

namespace apply {

void take_down(const char* bridge, const char* prefix, int number) {
  (void)store::run_shell("ifconfig %s%d down", prefix, number);
  (void)store::run_shell("brctl delif %s %s%d", bridge, prefix, number);
}

void take_all_down(const char* bridge, const char* prefix, int count) {
  for (int i = 0; i < count; ++i) take_down(bridge, prefix, i);
}

void bring_up(const char* bridge, const char* prefix, int number) {
  (void)store::run_shell("ifconfig %s%d up", prefix, number);
  (void)store::run_shell("brctl addif %s %s%d", bridge, prefix, number);
}

void bring_wds_up(const char* bridge, const char* prefix) {
  for (int link = 0; link < kWdsLinks; ++link) {
    bring_up(bridge, prefix, link);
    (void)std::printf("addif %s%d to br0\n", prefix, link);
  }
}

}  // namespace apply

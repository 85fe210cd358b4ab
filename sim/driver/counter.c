#include "sim/driver/counter.h"

#include <stdio.h>

uint64_t interface_counter(const char* interface, const char* counter) {
  char path[96];
  snprintf(path, sizeof path, "/sys/class/net/%s/statistics/%s", interface, counter);
  FILE* const file = fopen(path, "re");
  if (file == NULL) return 0;
  unsigned long long value = 0;
  if (fscanf(file, "%llu", &value) != 1) value = 0;
  fclose(file);
  return value;
}

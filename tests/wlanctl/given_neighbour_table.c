/* Preloaded: answers the neighbour query with the bytes of the file that NEIGHBOUR_TABLE names. */
#include <stdio.h>
#include <stdlib.h>

enum { kTableSize = 18436 };

int wifimgr_lib_get_neighbourinfo_v1(void* buffer, int wifi_type);

int wifimgr_lib_get_neighbourinfo_v1(void* buffer, int wifi_type) {
  (void)wifi_type;
  const char* path = getenv("NEIGHBOUR_TABLE");
  FILE* file = path == NULL ? NULL : fopen(path, "rb");
  if (file == NULL) return 1;
  const size_t length = fread(buffer, 1, kTableSize, file);
  fclose(file);
  return length == kTableSize ? 0 : 1;
}

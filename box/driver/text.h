// A text that grows.
#pragma once

#include <stdbool.h>
#include <stddef.h>

typedef struct Text {
  char* bytes;  // ends with a NUL; null while nothing was added, or after memory ran out
  size_t length;
  size_t room;
  bool failed;
} Text;

void add_bytes(Text* text, const char* bytes, size_t length);
void add_text(Text* text, const char* more);

// The caller frees it; null when memory ran out on the way.
char* finish_text(Text* text);

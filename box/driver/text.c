#include "box/driver/text.h"

#include <stdlib.h>
#include <string.h>

enum { kFirstRoom = 256 };

static bool make_room(Text* text, size_t more) {
  size_t room = text->room == 0 ? kFirstRoom : text->room;
  while (room < text->length + more + 1) room *= 2;
  if (room == text->room) return true;
  char* const bytes = malloc(room);
  if (bytes == NULL) {
    text->failed = true;
    return false;
  }
  if (text->length > 0) memcpy(bytes, text->bytes, text->length);
  free(text->bytes);
  text->bytes = bytes;
  text->room = room;
  return true;
}

void add_bytes(Text* text, const char* bytes, size_t length) {
  if (text->failed || !make_room(text, length)) return;
  if (length > 0) memcpy(text->bytes + text->length, bytes, length);
  text->length += length;
  text->bytes[text->length] = '\0';
}

void add_text(Text* text, const char* more) {
  add_bytes(text, more, strlen(more));
}

char* finish_text(Text* text) {
  add_bytes(text, "", 0);
  if (!text->failed) return text->bytes;
  free(text->bytes);
  return NULL;
}

// How the driver's texts are read, wherever they come from.
#include <stdlib.h>
#include <string.h>

#include "sim/driver/state.h"

const char* setting_of(const char* settings, const char* key) {
  const size_t length = strlen(key);
  for (const char* line = settings; line != NULL && *line != '\0';) {
    if (strncmp(line, key, length) == 0 && line[length] == '=') return line + length + 1;
    line = strchr(line, '\n');
    if (line != NULL) ++line;
  }
  return NULL;
}

long number_of(const char* settings, const char* key) {
  const char* value = setting_of(settings, key);
  return value == NULL ? 0 : strtol(value, NULL, 10);
}

char* next_line(char** rest) {
  if (*rest == NULL || **rest == '\0') return NULL;
  char* const line = *rest;
  char* const end = strchr(line, '\n');
  *rest = end == NULL ? line + strlen(line) : end + 1;
  if (end != NULL) *end = '\0';
  return line;
}
